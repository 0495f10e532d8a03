#pragma once
#include "activitystate.h"
#include <QObject>
#include <QPointer>
class LastDirectories;
class Project;
class ProjectWorkspace;
class QMainWindow;
class RecentFileList;

/// What the project commands ask of the window around them.
class ProjectCommandsHost
{
public:
    [[nodiscard]] virtual ActivityState state() const = 0;
    virtual void setState(ActivityState state) = 0;
    /// Makes the environments that @p project names and binds them to it.
    virtual void bindProjectPlugins(Project *project) = 0;
    /// @p workspace is the open one from now on, though its projects are not bound yet and no window shows it.
    virtual void setProjectWorkspace(ProjectWorkspace *workspace) = 0;
    /// Has every window show @p workspace; null when it is about to go, and none is open from then on.
    virtual void showWorkspace(ProjectWorkspace *workspace) = 0;
    virtual void workspaceChanged() = 0;
    virtual void updateProjectUI() = 0;
    /// Opens the files that were open in the workspace when it was closed.
    virtual void restoreFiles() = 0;
    virtual void stopDebugging() = 0;
    /// False if a document refused to be closed.
    virtual bool closeAllViews() = 0;
    /// The workspace has gone, with its projects and views.
    virtual void workspaceClosed() = 0;
    virtual void setRepopulateVisible(bool visible) = 0;
    virtual void runPyFile(const QString &path) = 0;
    [[nodiscard]] virtual QString sourceFilter() const = 0;

protected:
    ~ProjectCommandsHost() = default;
};

/// Opens and closes workspaces and projects, and saves what they hold. Owns the open workspace.
class ProjectCommands : public QObject
{
    Q_OBJECT
public:
    ProjectCommands(QMainWindow *window, ProjectCommandsHost *host, RecentFileList *recentWorkspaces,
                    LastDirectories *directories, QObject *parent = nullptr);
    ~ProjectCommands() override;

    [[nodiscard]] ProjectWorkspace *workspace() const { return m_projectWorkspace.get(); } ///< Null while none is open.
    [[nodiscard]] Project *currentProject() const;                                         ///< Null if there is none.

    /// Asks for a workspace or a project and opens it, in place of the open one.
    void open();
    void openRecent(int index);
    /// Opens the workspace beside a project file, which is made if it is not there.
    bool openProject(const QString &path, bool addToRecent);
    /// Opens a workspace. False if it or one of its projects could not be loaded; in the latter case it is open. The
    /// status bar tells of the progress and of a failure.
    bool openWorkspace(const QString &path, bool addToRecent);
    /// Closes the open workspace, with the question about saving. False if the user refused, or if a document did: then
    /// the workspace is gone all the same.
    bool closeWorkspace();

    /// Saves all projects and the workspace, modified or not.
    void save();
    /// Saves what is modified of projects and workspace. False if something could not be saved.
    bool saveModified();
    void insertFiles(Project *project);
    void insertProject();

Q_SIGNALS:
    void currentProjectChanged();
    /// A workspace is open with all its projects.
    void workspaceLoaded();

private:
    /// Guarded: message boxes, plug-ins and scripts let anything happen.
    [[nodiscard]] QList<QPointer<Project>> projects() const;
    [[nodiscard]] bool saveProject(Project *project);
    [[nodiscard]] bool saveWorkspace();
    [[nodiscard]] bool offerToSave();
    void rememberDirectories(const QString &path);
    /// Shows what is going on in the status bar, at once and without letting the user do anything meanwhile.
    void tell(const QString &text);
    void tellOutcome();
    bool bindProjects();

    QMainWindow *const m_window;
    ProjectCommandsHost *const m_host;
    RecentFileList *const m_recentWorkspaces;
    LastDirectories *const m_directories;
    std::unique_ptr<ProjectWorkspace> m_projectWorkspace;
};
