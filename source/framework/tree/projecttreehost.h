#pragma once
#include <QIcon>
#include <QString>
class QAction;

/// What the project tree needs of the window around it.
class ProjectTreeHost
{
public:
    [[nodiscard]] virtual QAction *action(const QString &name) const = 0; ///< Null if the UI file does not declare it.
    [[nodiscard]] virtual QIcon picture(const QString &name) const = 0;   ///< By file name, "treefolder.png".
    [[nodiscard]] virtual QString sourceFilter() const = 0;               ///< Of dialogs that ask for source files.
    [[nodiscard]] virtual QString filesDirectory() const = 0;             ///< Where such dialogs start.
    virtual void setFilesDirectory(const QString &directory) = 0;

protected:
    ~ProjectTreeHost() = default;
};
