#pragma once
#include <QStringList>
class ProjectCommands;
class WindowServices;

/// Opens what the command line names without an option: files, workspaces, projects, and directories with them.
class NamedFiles
{
public:
    /// The references outlive this object. @p templates is the directory of the installed project templates.
    NamedFiles(WindowServices &window, ProjectCommands &projects, QString templates);

    /// Opens the first workspace, project or directory, then all files. Further workspaces and projects are skipped,
    /// since only one workspace can be open; so is a directory that the user declines.
    void open(const QStringList &paths);

private:
    void openProjectOf(const QString &path);
    void openDirectory(const QString &directory);
    void offerProject(const QString &directory);

    WindowServices &m_window;
    ProjectCommands &m_projects;
    const QString m_templates;
};
