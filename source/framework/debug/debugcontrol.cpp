#include "debugcontrol.h"
#include "activity.h"
#include "callplugin.h"
#include "currentlocation.h"
#include "debugdecisions.h"
#include "environmentkey.h"
#include "messages.h"
#include "project.h"
#include "projectworkspace.h"
#include "varnelassert.h"
#include "windowservices.h"

using namespace Qt::StringLiterals;

DebugControl::DebugControl(Activity &activity, WindowServices &window, BuildControl &build, QObject *parent)
    : QObject(parent)
    , m_activity(activity)
    , m_window(window)
    , m_breakpoints(activity, window)
    , m_nextStatement(activity, window, m_breakpoints, this)
    , m_session(activity, window, build, m_reports)
    , m_run(activity, window, m_session, m_reports)
{
    if (const QAction *setNext = window.action(u"debugSetNext"_s))
        connect(setNext, &QAction::triggered, this, &DebugControl::debugSetNext);
    const auto forgetGone = [this] { forgetEnvironments(m_activity.environments()); };
    connect(&activity, &Activity::stateEntering, this, &DebugControl::enterState);
    connect(&activity, &Activity::stateEntered, this, &DebugControl::keepReportsOfBuild);
    connect(&activity, &Activity::workspaceOpened, this, forgetGone);
    connect(&activity, &Activity::projectsChanged, this, forgetGone);
    connect(&activity, &Activity::workspaceClosing, this, [this] { forgetEnvironments({}); });
    connect(&activity, &Activity::currentProjectChanged, this, &DebugControl::currentProjectChanged);
}

DebugControl::~DebugControl() = default;

// Changes of state and workspace

/// After a file was compiled in a session, the user goes on with the text, so the next statement is not shown again.
void DebugControl::enterState(ActivityState next)
{
    const bool debugs = isDebugState(m_activity.stateOfWork());
    const bool goesOn = m_activity.state() == StateBuilding && debugs;
    if (next == StateIdle && debugs) { // also if the start failed at a later processor
        m_nextStatement.clearMarker();
        m_nextStatement.refreshDisassemblies();
    }
    if (next == StateRunning || next == StateFinished || next == StateUnknown)
        m_nextStatement.clearMarkerSoon();
    if (next != StatePaused)
        return;
    m_nextStatement.keepMarker();
    updateDebugWindows(goesOn ? AllParts & ~NextStatementPart : AllParts);
}

/// Reports that arrived during a build in a session have not changed the state.
void DebugControl::keepReportsOfBuild(ActivityState state, ActivityState previous)
{
    const Activity::Environment environment = m_activity.currentEnvironment();
    const auto report = m_reports.status(environment.get());
    const std::pair<const IExecutionEnvironment *, int> reports(environment.get(), report ? report->count : 0);
    if (state == StateBuilding)
        m_reportsBeforeBuild = reports;
    else if (previous == StateBuilding && isDebugState(state) && report && reports != m_reportsBeforeBuild)
        m_activity.setState(stateForStatus(report->status).value_or(state));
}

void DebugControl::updateDebugWindows(int parts)
{
    forgetCurrentLocations();
    if (parts & RegisterWindow)
        Q_EMIT updateRegisterWindow();
    if (parts & DataWindows) {
        m_nextStatement.refreshDisassemblies();
        Q_EMIT updateDataWindows();
    }
    if (parts & NextStatementPart)
        m_nextStatement.show();
}

/// In another project it makes that one current, whose next statement is shown then.
void DebugControl::showPlace(IExecutionEnvironment *environment)
{
    if (m_activity.state() != StatePaused || !environment)
        return;
    if (environment == m_activity.currentEnvironment().get())
        return updateDebugWindows(AllParts);
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project && project->executionInterface() == environment)
            return m_activity.workspace()->setCurrentProject(project);
    }
}

void DebugControl::currentProjectChanged()
{
    if (const Activity::Environment environment = m_activity.currentEnvironment()) {
        // Some environments need this call before the following ones.
        runPlugin<&IExecutionEnvironment::programStatus>(environment);
        if (const auto info = m_reports.info(environment.get()))
            m_window.showStatusInfo(info->text, info->position);
        const auto report = m_reports.status(environment.get());
        const auto state = report ? stateForStatus(report->status) : std::nullopt;
        if (state && m_activity.state() != StateBuilding) // a build goes on; its end adopts the report
            m_activity.setState(*state);
    }
    if (m_activity.state() == StatePaused)
        updateDebugWindows(AllParts);
    m_breakpoints.refreshMarkers();
    m_window.fireEvent(u"onCurrentProjectChanged"_s);
}

void DebugControl::forgetEnvironments(const std::vector<InterfacePtr<IExecutionEnvironment>> &alive)
{
    QList<IExecutionEnvironment *> environments;
    for (const Activity::Environment &environment : alive)
        environments.append(environment.get());
    keepEnvironments(environments);
    forgetCurrentLocations();
    m_reports.removeGone();
    m_nextStatement.closeOrphanedDisassemblies();
}

void DebugControl::debugShowNext()
{
    m_nextStatement.showSource();
    m_breakpoints.refreshMarkers();
    updateDebugWindows(AllParts);
}

/// A plug-in may open files when it is asked for its breakpoints or its location.
void DebugControl::fileOpened()
{
    if (isInsidePluginCall())
        return afterPluginCall(this, "DebugControl::fileOpened", [this] { fileOpened(); });
    if (m_activity.state() == StatePaused)
        m_nextStatement.refreshMarker();
    m_breakpoints.refreshMarkers();
}

// Reports of the environments

void DebugControl::programStatusChanged(IExecutionEnvironment::ProgramStatus status, IExecutionEnvironment *environment)
{
    VARNEL_ASSERT_TEXT(m_activity.currentProject() && environment, "currentProject() && environment");
    if (!m_activity.currentProject() || !environment)
        return;
    const Activity::Environment kept = shareInterface(environment);
    forgetCurrentLocations();
    m_reports.addStatus(environment, status);
    Q_EMIT processorReported();
    reactToBreakpoint(status, environment);
    if (environment != m_activity.currentEnvironment().get())
        return;
    if (const std::optional<ActivityState> next = stateAfterReport(m_activity.state(), status))
        m_activity.setState(*next);
    if (status == IExecutionEnvironment::ProgramBreakpointHit)
        m_window.fireEvent(u"onBreakpointHit"_s);
}

void DebugControl::reactToBreakpoint(IExecutionEnvironment::ProgramStatus status, IExecutionEnvironment *environment)
{
    const bool current = environment == m_activity.currentEnvironment().get();
    const bool pauseAll = options().action(BreakpointEvent) == AllProcessors;
    const BreakpointReaction reaction =
        breakpointReaction(status, int(m_activity.projects().size()), current, pauseAll);
    if (reaction.pauseOthers)
        m_run.pauseOthers(environment);
    if (reaction.switchProject)
        switchProject(environment);
}

void DebugControl::switchProject(IExecutionEnvironment *environment)
{
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project->executionInterface() != environment)
            continue;
        showInformation(m_window.dialogParent(), tr("A breakpoint has been hit in project '%1'.\n\nThe current project "
                                                    "will be switched.")
                                                     .arg(project->name()));
        if (project)
            m_activity.workspace()->setCurrentProject(project);
        return;
    }
}

void DebugControl::statusInfo(const QString &text, int position, IExecutionEnvironment *environment)
{
    VARNEL_ASSERT_TEXT(m_activity.currentProject() && environment, "currentProject() && environment");
    if (!m_activity.currentProject() || !environment)
        return;
    m_reports.setInfo(environment, {text, position});
    Q_EMIT processorReported();
    if (environment == m_activity.currentEnvironment().get())
        m_window.showStatusInfo(text, position);
}

void DebugControl::breakpointsChanged()
{
    m_breakpoints.refreshMarkers();
    Q_EMIT breakpointsReported();
}
