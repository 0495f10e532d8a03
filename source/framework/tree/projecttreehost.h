#pragma once
#include <QIcon>
#include <QString>
class QAction;

/// The services that the project tree needs from the window.
class ProjectTreeHost
{
public:
    [[nodiscard]] virtual QAction *action(const QString &name) const = 0; ///< Null if the UI file does not declare it.
    [[nodiscard]] virtual QIcon picture(const QString &name) const = 0;   ///< by file name, such as "treefolder.png"
    [[nodiscard]] virtual QString sourceFilter() const = 0;               ///< of dialogs that ask for source files
    [[nodiscard]] virtual QString filesDirectory() const = 0;             ///< the initial directory of such dialogs
    virtual void setFilesDirectory(const QString &directory) = 0;

protected:
    ~ProjectTreeHost() = default;
};
