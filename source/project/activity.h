#pragma once
#include "activitystate.h"
#include "iexecutionenvironment.h"
#include <memory>
#include <QObject>
#include <QPointer>
#include <vector>
class Project;
class ProjectWorkspace;

/// The state that the whole program shares: the open workspace, which it owns, and the activity state.
///
/// It is the only class that changes the state. Receivers of its signals may run event loops and may change state or
/// workspace again; a change of state that is followed by a newer one in this way is dropped.
class Activity : public QObject
{
    Q_OBJECT
public:
    using Environment = InterfacePtr<IExecutionEnvironment>;

    explicit Activity(QObject *parent = nullptr);
    ~Activity() override;

    [[nodiscard]] ActivityState state() const { return m_state; } ///< StateIdle until it is set for the first time.
    void setState(ActivityState next);
    /// The state of the debug session in which the running build was started; StateIdle if it is not in a session.
    [[nodiscard]] ActivityState stateBehindBuild() const { return m_behindBuild; }
    /// Whether the session that is starting can be stopped already, since a processor starts in the background.
    void setStartCancellable(bool cancellable);
    /// That state, or state() if there is none: what the user works on.
    [[nodiscard]] ActivityState stateOfWork() const { return m_behindBuild == StateIdle ? m_state : m_behindBuild; }
    [[nodiscard]] bool isDebugging() const; ///< There is a current project, and the state is one of a debug session.

    [[nodiscard]] ProjectWorkspace *workspace() const { return m_workspace.get(); } ///< Null while none is open.
    /// Takes ownership of a loaded workspace, which replaces the open one, and sets the idle state. Receivers of the
    /// signals may have closed it again when this returns.
    void openWorkspace(std::unique_ptr<ProjectWorkspace> workspace);
    /// Deletes the open workspace, which must not be null. Sets the state without a workspace.
    void closeWorkspace();
    /// Adds a project to the open workspace, which must not be null, and makes it the current one.
    void addProject(std::unique_ptr<Project> project);

    /// Reads the file of a project of the open workspace again. Plug-ins are bound again if the project names others.
    void reloadProject(Project *project);

    /// In the order of the workspace; empty while none is open. Guarded, since plug-ins and dialogs may remove
    /// projects.
    [[nodiscard]] QList<QPointer<Project>> projects() const;
    [[nodiscard]] Project *currentProject() const; ///< Null if there is none.
    /// The execution environments of all projects that have one, in the order of projects().
    [[nodiscard]] std::vector<Environment> environments() const;
    [[nodiscard]] Environment currentEnvironment() const; ///< That of the current project; null if there is none.

Q_SIGNALS:                                  // in the order in which a change emits them
    void stateEntering(ActivityState next); ///< state() is the old one; the change may still be dropped.
    void stateChanging(ActivityState next); ///< Only if @p next differs from state(), which is the old one.
    /// After stateChanging(), after currentProjectChanged(), and if a start can be cancelled.
    void availabilityChanged(const ActivityAvailability &available);
    void stateEntered(ActivityState state, ActivityState previous); ///< Both may be the same.

    void projectLoaded(Project *project);    ///< A project is about to be shown; it was read without an error.
    void projectReloading(Project *project); ///< Its folders and files are about to be deleted.
    void projectRemoving(Project *project);  ///< It is about to be deleted, and still among the projects.
    void projectUnbinding(Project *project); ///< Its plug-in objects are about to be released, and it stays or not.
    void workspaceOpened();                  ///< Its projects have been announced by projectLoaded().
    void projectsChanged();                  ///< Projects were opened, added or removed.
    void projectActivityChanged();           ///< A project became active or inactive.
    void currentProjectChanged();
    void workspaceReady();   ///< The state is idle, the windows show the workspace.
    void workspaceClosing(); ///< workspace() is still valid: release everything that refers to it.
    void
    workspaceReplaced();    ///< instead of workspaceClosed(): the projects are gone, another workspace is about to open
    void workspaceClosed(); ///< workspace() is null; the state is the one without a workspace.

private:
    [[nodiscard]] ActivityAvailability availability(ActivityState state) const;
    void reportCurrentProject();
    void deleteWorkspace();

    std::unique_ptr<ProjectWorkspace> m_workspace;
    ActivityState m_state = StateIdle;
    ActivityState m_behindBuild = StateIdle;
    bool m_startCancellable = false;
    int m_stateChanges = 0; ///< how often setState() was called
};
