#pragma once
#include "editorhost.h"
#include "projecttreehost.h"
#include <functional>
#include <QStringList>
class LastDirectories;
class UiConfig;

/// The main window as the project tree sees it.
class TreeWindowHost : public ProjectTreeHost
{
public:
    /// All arguments outlive this object.
    TreeWindowHost(const UiConfig &ui, LastDirectories &directories, const QStringList &extensions)
        : m_ui(ui), m_directories(directories), m_extensions(extensions)
    {}

    [[nodiscard]] QAction *action(const QString &name) const override;
    [[nodiscard]] QIcon picture(const QString &name) const override;
    [[nodiscard]] QString sourceFilter() const override;
    [[nodiscard]] QString filesDirectory() const override;
    void setFilesDirectory(const QString &directory) override;

private:
    const UiConfig &m_ui;
    LastDirectories &m_directories;
    const QStringList &m_extensions;
};

/// The main window as text editors see it.
class EditorWindowHost : public EditorHost
{
public:
    using ToolTips = std::function<QString(const QString &filename, int line)>;

    /// @p ui outlives this object; @p toolTips is as markerToolTip().
    EditorWindowHost(const UiConfig &ui, ToolTips toolTips) : m_ui(ui), m_toolTips(std::move(toolTips)) {}

    [[nodiscard]] QString markerToolTip(const QString &filename, int line) override;
    [[nodiscard]] QAction *sharedAction(const QString &name) override;
    [[nodiscard]] QPixmap picture(const QString &name) override;

private:
    const UiConfig &m_ui;
    const ToolTips m_toolTips;
};
