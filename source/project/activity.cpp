#include "activity.h"
#include "callplugin.h"
#include "project.h"
#include "projectworkspace.h"
#include "varnelassert.h"

Activity::Activity(QObject *parent) : QObject(parent) {}

Activity::~Activity()
{
    VARNEL_ASSERT(!m_workspace);
    deleteWorkspace();
}

// State

void Activity::setState(ActivityState next)
{
    const int change = ++m_stateChanges;
    Q_EMIT stateEntering(next);
    if (change != m_stateChanges)
        return;
    if (next != m_state) {
        Q_EMIT stateChanging(next);
        const ActivityAvailability available = availability(next); // calls a plug-in, which may report a state
        if (change != m_stateChanges)
            return;
        Q_EMIT availabilityChanged(available);
        if (change != m_stateChanges)
            return;
    }
    const ActivityState previous = std::exchange(m_state, next);
    if (next != StateBuilding)
        m_behindBuild = StateIdle;
    else if (isDebugState(previous))
        m_behindBuild = previous;
    Q_EMIT stateEntered(next, previous);
}

bool Activity::isDebugging() const
{
    return currentProject() && isDebugState(m_state);
}

ActivityAvailability Activity::availability(ActivityState state) const
{
    const Project *project = currentProject();
    const Environment environment = currentEnvironment();
    return activityAvailability(state, {.workspace = m_workspace != nullptr,
                                        .project = project != nullptr,
                                        .buildEnvironment = project && project->buildInterface(),
                                        .executionEnvironment = environment != nullptr,
                                        .canAttach = askPlugin<&IExecutionEnvironment::canAttach>(environment),
                                        .startCancellable = m_startCancellable});
}

void Activity::setStartCancellable(bool cancellable)
{
    if (std::exchange(m_startCancellable, cancellable) != cancellable && m_workspace)
        Q_EMIT availabilityChanged(availability(m_state));
}

// Workspace

void Activity::openWorkspace(std::unique_ptr<ProjectWorkspace> workspace)
{
    if (m_workspace) {
        deleteWorkspace();
        Q_EMIT workspaceReplaced();
    }
    m_workspace = std::move(workspace);
    const QPointer<ProjectWorkspace> opened(m_workspace.get()); // plug-ins may close it
    connect(opened, &ProjectWorkspace::currentProjectChanged, this, &Activity::reportCurrentProject);
    connect(opened, &ProjectWorkspace::projectRemoving, this, &Activity::projectRemoving);
    connect(opened, &ProjectWorkspace::projectRemoving, this, &Activity::projectUnbinding);
    connect(opened, &ProjectWorkspace::workspaceChanged, this, &Activity::projectsChanged);
    connect(opened, &ProjectWorkspace::projectActivityChanged, this, &Activity::projectActivityChanged);
    for (const QPointer<Project> &project : projects()) {
        if (project && project->openedOK())
            Q_EMIT projectLoaded(project);
    }
    if (opened)
        Q_EMIT workspaceOpened();
    if (opened)
        Q_EMIT projectsChanged();
    if (opened)
        setState(StateIdle);
    if (opened)
        Q_EMIT workspaceReady();
}

void Activity::closeWorkspace()
{
    VARNEL_ASSERT(m_workspace);
    if (!m_workspace)
        return;
    deleteWorkspace();
    setState(StateNoWorkspace);
    Q_EMIT workspaceClosed();
}

/// workspace() is null before its projects and their plug-ins are deleted: they may call back.
void Activity::deleteWorkspace()
{
    if (m_workspace)
        Q_EMIT workspaceClosing();
    const std::unique_ptr<ProjectWorkspace> closed = std::move(m_workspace);
    if (closed)
        closed->disconnect(this);
}

void Activity::addProject(std::unique_ptr<Project> project)
{
    VARNEL_ASSERT(m_workspace);
    if (!m_workspace)
        return;
    const QPointer<ProjectWorkspace> workspace(m_workspace.get());
    if (project->openedOK())
        Q_EMIT projectLoaded(project.get());
    if (workspace)
        workspace->addProject(project.release());
    else
        Q_EMIT projectUnbinding(project.get());
}

void Activity::reloadProject(Project *project)
{
    const auto environments = [project] {
        return QStringList{project->buildEnvironment(), project->buildEnvironmentOption(),
                           project->executionEnvironment(), project->executionEnvironmentOption()};
    };
    const QPointer<Project> alive(project);
    const QStringList before = environments();
    Q_EMIT projectReloading(project);
    if (!alive)
        return;
    const bool loaded = project->load(project->fileName());
    if (loaded && environments() != before) {
        Q_EMIT projectUnbinding(project);
        if (alive)
            project->setExecutionEnvironment(nullptr);
        if (alive)
            project->setBuildEnvironment(nullptr);
        if (alive)
            Q_EMIT projectLoaded(project);
    }
    if (m_workspace)
        Q_EMIT projectsChanged();
    if (alive && alive == currentProject())
        reportCurrentProject();
}

void Activity::reportCurrentProject()
{
    Q_EMIT currentProjectChanged();
    Q_EMIT availabilityChanged(availability(m_state));
}

// Projects and environments

QList<QPointer<Project>> Activity::projects() const
{
    QList<QPointer<Project>> all;
    for (int i = 0; m_workspace && i < m_workspace->count(); ++i)
        all.append(m_workspace->project(i));
    return all;
}

Project *Activity::currentProject() const
{
    return m_workspace ? m_workspace->currentProject() : nullptr;
}

std::vector<Activity::Environment> Activity::environments() const
{
    std::vector<Environment> all;
    for (const QPointer<Project> &project : projects()) {
        if (project->executionInterface())
            all.push_back(shareInterface(project->executionInterface()));
    }
    return all;
}

Activity::Environment Activity::currentEnvironment() const
{
    const Project *project = currentProject();
    return shareInterface(project ? project->executionInterface() : nullptr);
}
