#include "runcontrol.h"
#include "activity.h"
#include "callplugin.h"
#include "debugdecisions.h"
#include "debugmarkers.h"
#include "debugoffers.h"
#include "document.h"
#include "processorreports.h"
#include "project.h"
#include "projectworkspace.h"
#include "sessionstart.h"
#include "varnelassert.h"
#include "viewmanager.h"
#include "windowservices.h"

using namespace Qt::StringLiterals;

namespace {
template <auto Function>
bool call(const Activity::Environment &environment)
{
    return runPlugin<Function>(environment);
}

template <auto Function>
bool callLeader(const InterfacePtr<IMultiProcessorSync> &leader)
{
    return runPlugin<Function>(leader);
}

template <auto Function>
bool callStep(const Activity::Environment &environment, const QString &file)
{
    return runPlugin<Function>(environment, file);
}
} // namespace

const RunControl::Command RunControl::Run{RunEvent, &call<&IExecutionEnvironment::run>,
                                          IMultiProcessorSync::RunOperation,
                                          &callLeader<&IMultiProcessorSync::syncRun>};
const RunControl::Command RunControl::Pause{PauseEvent, &call<&IExecutionEnvironment::pause>,
                                            IMultiProcessorSync::PauseOperation,
                                            &callLeader<&IMultiProcessorSync::syncPause>};
const RunControl::Command RunControl::Restart{RestartEvent, &call<&IExecutionEnvironment::restart>,
                                              IMultiProcessorSync::RestartOperation,
                                              &callLeader<&IMultiProcessorSync::syncRestart>};
const RunControl::Command RunControl::Wakeup{WakeupEvent, &call<&IExecutionEnvironment::wakeUp>,
                                             IMultiProcessorSync::WakeupOperation,
                                             &callLeader<&IMultiProcessorSync::syncWakeup>};

RunControl::RunControl(Activity &activity, WindowServices &window, SessionStart &session, ProcessorReports &reports,
                       QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window), m_session(session), m_reports(reports)
{
    connect(&activity, &Activity::projectRemoving, this, &RunControl::projectRemoving);
}

std::vector<RunControl::Environment> RunControl::environments() const
{
    std::vector<Environment> all = m_activity.environments();
    std::erase_if(all, [this](const Environment &each) { return !m_session.mayOperate(each.get()); });
    return all;
}

/// With one processor there is nothing to choose. The session may end while the question is open; then nothing is left
/// to do.
DebugAction RunControl::resolve(DebugEvent event)
{
    if (m_activity.projects().size() < 2)
        return CurrentProcessor;
    const QPointer<ProjectWorkspace> workspace(m_activity.workspace()); // another one may be open after the question
    const bool wasDebugging = m_activity.isDebugging();
    const DebugAction action = resolveAction(m_options, event, m_window.dialogParent());
    return workspace && (!wasDebugging || m_activity.isDebugging()) ? action : NoProcessor;
}

/// False if the user cancelled the question, or if the session has ended meanwhile.
bool RunControl::carryOut(const Command &command)
{
    const DebugAction action = resolve(command.event);
    if (action == NoProcessor)
        return false;
    carryOut(command, action);
    return true;
}

void RunControl::carryOut(const Command &command, DebugAction action) const
{
    if (action != AllProcessors) {
        const Environment environment = m_activity.currentEnvironment();
        if (environment && m_session.mayOperate(environment.get()))
            command.operation(environment);
    } else if (!carryOutTogether(command)) {
        for (const Environment &environment : environments())
            command.operation(environment);
    }
}

/// Uses the environment that can operate all processors at once. False if there is none.
bool RunControl::carryOutTogether(const Command &command) const
{
    std::vector<InterfacePtr<IMultiProcessorSync>> offers;
    QList<SyncMember> members;
    for (const Environment &environment : environments()) {
        auto sync = queryPlugin<IMultiProcessorSync>(environment.get());
        if (!sync)
            continue;
        members.append({askPlugin<&IMultiProcessorSync::groupId>(sync), [sync = sync.get()](const QString &group) {
                            return askPlugin<&IMultiProcessorSync::supportedOperations>(sync, group);
                        }});
        offers.push_back(std::move(sync));
    }
    const int leader = syncLeader(members, command.syncBit);
    if (leader < 0)
        return false;
    command.sync(offers[size_t(leader)]);
    return true;
}

void RunControl::run()
{
    VARNEL_ASSERT_TEXT(m_activity.currentProject(), "currentProject()");
    if (!m_activity.currentProject() || !m_session.start(false))
        return;
    const DebugAction action = resolve(RunEvent);
    if (action == NoProcessor) {
        m_session.adoptReportedState();
        return m_session.adoptQueriedState();
    }
    m_activity.setState(StateRunning);
    carryOut(Run, action);
}

void RunControl::attach()
{
    const Activity::Environment environment = m_activity.currentEnvironment();
    if (!environment || m_activity.state() != StateIdle || m_session.isStarting()
        || !askPlugin<&IExecutionEnvironment::canAttach>(environment))
        return;
    m_window.fireEvent(u"onPreAttach"_s);
    if (m_session.start(true))
        m_window.fireEvent(u"onAttach"_s);
}

void RunControl::runToCursor()
{
    VARNEL_ASSERT_TEXT(m_activity.currentProject(), "currentProject()");
    View *view = m_window.viewManager()->currentView();
    if (!m_activity.currentProject() || !hasProgramLines(m_activity, view))
        return;
    const QString path = view->document()->filename();
    const int line = m_window.currentLine();
    if (!m_session.start(false))
        return;
    m_activity.setState(StateRunning);
    if (const Activity::Environment environment = m_activity.currentEnvironment())
        runPlugin<&IExecutionEnvironment::runTo>(environment, path, line);
}

void RunControl::stepOver()
{
    step(&callStep<&IExecutionEnvironment::stepOver>);
}

void RunControl::stepInto()
{
    step(&callStep<&IExecutionEnvironment::stepInto>);
}

void RunControl::step(Step step)
{
    VARNEL_ASSERT_TEXT(m_activity.currentProject(), "currentProject()");
    if (!m_activity.currentProject() || !m_session.start(false))
        return;
    const QString file = currentDebugPath(m_activity, *m_window.viewManager());
    m_activity.setState(StateRunning);
    if (const Activity::Environment environment = m_activity.currentEnvironment())
        step(environment, file);
}

void RunControl::pause()
{
    carryOut(Pause);
}

void RunControl::wakeUp()
{
    carryOut(Wakeup);
}

// Chosen processors

/// The state is that of the current project, so it does not follow when another one runs.
void RunControl::runProcessor(Project *project)
{
    const QPointer<Project> alive(project);
    if (!project || !m_activity.currentProject() || !m_session.start(false) || !alive)
        return;
    const Activity::Environment environment = shareInterface(alive->executionInterface());
    if (!environment)
        return;
    if (alive == m_activity.currentProject())
        m_activity.setState(StateRunning);
    Run.operation(environment);
}

void RunControl::pauseProcessor(Project *project)
{
    const Activity::Environment environment = shareInterface(project ? project->executionInterface() : nullptr);
    if (environment && m_activity.isDebugging() && m_session.mayOperate(environment.get()))
        Pause.operation(environment);
}

void RunControl::runAll()
{
    if (!m_activity.currentProject() || !m_session.start(false))
        return;
    m_activity.setState(StateRunning);
    carryOut(Run, AllProcessors);
}

void RunControl::pauseAll()
{
    if (m_activity.isDebugging())
        carryOut(Pause, AllProcessors);
}

void RunControl::pauseOthers(const IExecutionEnvironment *environment)
{
    for (const Environment &other : environments()) {
        if (other.get() != environment)
            Pause.operation(other);
    }
}

void RunControl::restart()
{
    if (!m_activity.currentEnvironment() || !mayRestart(m_activity.state()) || !m_session.start(false))
        return;
    const auto before = m_reports.status(m_activity.currentEnvironment().get());
    if (!carryOut(Restart)) { // this command may have started the session
        m_session.adoptReportedState();
        m_session.adoptQueriedState();
    } else if (m_activity.isDebugging() && !isNotPaused(before ? before->count : 0)) {
        m_activity.setState(StatePaused);
    }
    m_window.fireEvent(u"onRestart"_s);
}

/// Whether the program of the current project has reported, since its first @p reportsBefore reports, that it ended,
/// that its target is lost, or that it runs: a restart in the background reports its end later.
bool RunControl::isNotPaused(int reportsBefore) const
{
    const auto report = m_reports.status(m_activity.currentEnvironment().get());
    return report && report->count > reportsBefore
           && (report->status == IExecutionEnvironment::ProgramUnknown
               || report->status == IExecutionEnvironment::ProgramRunning
               || report->status == IExecutionEnvironment::ProgramFinished);
}

bool RunControl::canStop() const
{
    return m_activity.currentEnvironment()
           && (mayStop(m_activity.state()) || mayStop(m_activity.stateBehindBuild()) || m_session.isInBackground());
}

/// Also between the starts of two processors, of which the second one is not started then.
void RunControl::stop()
{
    m_reports.clear();
    if (canStop())
        endSession();
}

void RunControl::endSession()
{
    const bool compiles = m_activity.state() == StateBuilding;
    m_session.end();
    for (const Activity::Environment &environment : m_activity.environments())
        runPlugin<&IExecutionEnvironment::stop>(environment);
    m_reports.clear(); // reports that arrived while the processors stopped
    const bool stillCompiles = compiles && m_activity.state() == StateBuilding;
    if (m_activity.workspace())
        m_activity.setState(StateIdle);
    if (stillCompiles && m_activity.state() == StateIdle)
        m_activity.setState(StateBuilding); // the file that was being compiled in the session
    m_window.fireEvent(u"onStopped"_s);
}

/// Otherwise its target would go on, and with the last one the session would never end.
void RunControl::projectRemoving(const Project *project)
{
    const Activity::Environment environment = shareInterface(project->executionInterface());
    if (!environment || !isDebugState(m_activity.stateOfWork()))
        return;
    if (!m_session.isStarting() && m_activity.environments().size() == 1)
        return endSession();
    if (m_session.mayOperate(environment.get()))
        runPlugin<&IExecutionEnvironment::stop>(environment);
}
