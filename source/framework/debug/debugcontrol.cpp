#include "debugcontrol.h"
#include "breakpointdialog.h"
#include "buildcontrol.h"
#include "callplugin.h"
#include "debugcontrolhost.h"
#include "debugdecisions.h"
#include "debugmarkers.h"
#include "document.h"
#include "environmentkey.h"
#include "ibuildenvironment.h"
#include "idisassembly.h"
#include "messages.h"
#include "outputwindow.h"
#include "project.h"
#include "projectworkspace.h"
#include "textview.h"
#include "varnelassert.h"
#include "viewmanager.h"
#include "workspace.h"
#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
constexpr int PendingEventsTime = 1000; // milliseconds

template <typename Call>
bool askLocation(IExecutionEnvironment *environment, const Call &call)
{
    return askPlugin("IExecutionEnvironment::currentLocation", [&] { return call(environment); });
}
} // namespace

const DebugControl::RunControl DebugControl::Run{RunEvent, "IExecutionEnvironment::run", &IExecutionEnvironment::run,
                                                 IMultiProcessorSync::RunOperation, &IMultiProcessorSync::syncRun};
const DebugControl::RunControl DebugControl::Pause{PauseEvent, "IExecutionEnvironment::pause",
                                                   &IExecutionEnvironment::pause, IMultiProcessorSync::PauseOperation,
                                                   &IMultiProcessorSync::syncPause};
const DebugControl::RunControl DebugControl::Restart{
    RestartEvent, "IExecutionEnvironment::restart", &IExecutionEnvironment::restart,
    IMultiProcessorSync::RestartOperation, &IMultiProcessorSync::syncRestart};
const DebugControl::RunControl DebugControl::Wakeup{
    WakeupEvent, "IExecutionEnvironment::wakeUp", &IExecutionEnvironment::wakeUp, IMultiProcessorSync::WakeupOperation,
    &IMultiProcessorSync::syncWakeup};

DebugControl::DebugControl(DebugControlHost &host, BuildControl &build, QObject *parent)
    : QObject(parent), m_host(host), m_build(build)
{}

DebugControl::~DebugControl() = default;

// The start of a session

bool DebugControl::startDebugSession(bool attachOnly)
{
    const bool result = m_host.state() != StateIdle || (prepareSession() && startProjects(attachOnly));
    if ((!result || m_build.buildStopped()) && m_host.projectWorkspace())
        m_host.setState(StateIdle);
    return isDebugging(); // what came in meanwhile may have ended the session
}

bool DebugControl::prepareSession()
{
    m_build.clearBuildStopped(); // of a build that has nothing to do with this session
    m_host.showOutputDock();
    if (!m_host.fileSaveAll() || !currentProject())
        return false;
    if (!isUpToDate() && !offerRebuild())
        return false;
    if (!currentProject())
        return false;
    m_host.outputWindow()->removePagesAfter(OutputWindow::FindInFiles);
    m_host.outputWindow()->clearPage(OutputWindow::Build);
    m_host.outputWindow()->clearPage(OutputWindow::Debug);
    return true;
}

bool DebugControl::isUpToDate() const
{
    if (m_host.workspace()->anyModified())
        return false;
    const QPointer<Project> project = currentProject();
    const auto environment = shareInterface(project ? project->buildInterface() : nullptr);
    if (!environment)
        return true;
    const QString configuration = project->currentConfiguration();
    return askPlugin("IBuildEnvironment::isUpToDate", [&] { return environment->isUpToDate(configuration); });
}

/// False if the session is not to be started.
bool DebugControl::offerRebuild()
{
    const QPointer<Project> project = currentProject();
    const auto answer = showInformation(m_host.dialogParent(),
                                        tr("The project '%1' needs rebuilding.\n\nDo you want rebuild the "
                                           "project before continuing?")
                                            .arg(project->name()),
                                        {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel});
    if (!project || answer == QMessageBox::Cancel)
        return false;
    if (answer == QMessageBox::No)
        return true;
    m_build.buildBuild();
    waitForBuild();
    return currentProject() && isUpToDate();
}

/// The end of the workspace, and so that of the program, ends the building state as well.
void DebugControl::waitForBuild() const
{
    while (m_host.state() == StateBuilding)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

bool DebugControl::startProjects(bool attachOnly)
{
    const QPointer<ProjectWorkspace> workspace(m_host.projectWorkspace());
    for (const QPointer<Project> &project : projects()) {
        const bool started = project && startProject(project, attachOnly);
        if (!workspace)
            return false;
        if (!started && !m_build.buildStopped())
            inform(tr("Cannot start debugger.\n\nPlease see Debug Output window for details."));
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, PendingEventsTime);
        if (!started)
            return false;
    }
    return workspace && currentProject();
}

bool DebugControl::startProject(Project *project, bool attachOnly)
{
    OutputWindow *output = m_host.outputWindow();
    const QPointer<Project> alive(project);
    output->outputLine(OutputWindow::Debug,
                       tr("Initialising execution environment for project '%1'\n").arg(project->name()));
    const Environment environment = shareInterface(project->executionInterface());
    if (!environment)
        output->outputLine(OutputWindow::Debug,
                           tr("No execution environment available for project '%1'\n").arg(project->name()));
    const bool built = environment && (attachOnly || buildForDebug(project));
    if (!alive)
        return false;
    m_host.setState(StateInitialising);
    if (!built || m_build.buildStopped())
        return false;
    output->displayPage(OutputWindow::Debug);
    return askPlugin("IExecutionEnvironment::start", [&] { return environment->start(attachOnly); });
}

/// True as well if the build environment has nothing to do before a session.
bool DebugControl::buildForDebug(const Project *project)
{
    if (!m_build.buildForDebug(project))
        return true;
    waitForBuild();
    return m_build.buildSucceeded();
}

// Run control

/// With one processor there is nothing to choose. A question leaves time to end the session, and so the command.
DebugAction DebugControl::resolve(DebugEvent event)
{
    const ProjectWorkspace *workspace = m_host.projectWorkspace();
    if (!workspace || workspace->count() < 2)
        return CurrentProcessor;
    const bool wasDebugging = isDebugging();
    const DebugAction action = resolveAction(m_options, event, m_host.dialogParent());
    return wasDebugging && !isDebugging() ? NoProcessor : action;
}

bool DebugControl::control(const RunControl &what)
{
    const DebugAction action = resolve(what.event);
    if (action == NoProcessor)
        return false;
    carryOut(what, action);
    return true;
}

void DebugControl::carryOut(const RunControl &what, DebugAction action) const
{
    const auto callOne = [&](IExecutionEnvironment *environment) {
        runPlugin(what.name, [&] { (environment->*what.operation)(); });
    };
    if (action != AllProcessors) {
        if (const Environment environment = currentEnvironment())
            callOne(environment.get());
    } else if (!carryOutTogether(what)) {
        for (const Environment &environment : environments())
            callOne(environment.get());
    }
}

/// In hardware, by the environment that leads the others. False if there is none that can.
bool DebugControl::carryOutTogether(const RunControl &what) const
{
    std::vector<InterfacePtr<IMultiProcessorSync>> offers;
    QList<SyncMember> members;
    for (const Environment &environment : environments()) {
        auto sync = queryInterface<IMultiProcessorSync>(environment.get());
        if (!sync)
            continue;
        members.append({askPlugin("IMultiProcessorSync::groupId", [&] { return sync->groupId(); }),
                        [sync = sync.get()](const QString &group) {
                            return askPlugin("IMultiProcessorSync::supportedOperations",
                                             [&] { return sync->supportedOperations(group); });
                        }});
        offers.push_back(std::move(sync));
    }
    const int leader = syncLeader(members, what.syncBit);
    if (leader < 0)
        return false;
    runPlugin(what.name, [&] { (offers[size_t(leader)].get()->*what.sync)(); });
    return true;
}

void DebugControl::debugRun()
{
    VARNEL_ASSERT(currentProject());
    if (!currentProject() || !startDebugSession(false))
        return;
    const DebugAction action = resolve(RunEvent);
    if (action == NoProcessor)
        return;
    m_host.setState(StateRunning);
    carryOut(Run, action);
}

void DebugControl::debugAttach()
{
    const Environment environment = currentEnvironment();
    if (!environment || m_host.state() != StateIdle
        || !askPlugin("IExecutionEnvironment::canAttach", [&] { return environment->canAttach(); }))
        return;
    m_host.fireEvent(u"onPreAttach"_s);
    if (startDebugSession(true))
        m_host.fireEvent(u"onAttach"_s);
}

void DebugControl::debugRunToCursor()
{
    VARNEL_ASSERT(currentProject());
    View *view = m_host.viewManager()->currentView();
    if (!currentProject() || !qobject_cast<TextView *>(view))
        return;
    const QString path = view->document()->filename();
    const int line = m_host.currentLine();
    if (!startDebugSession(false))
        return;
    m_host.setState(StateRunning);
    if (const Environment environment = currentEnvironment())
        runPlugin("IExecutionEnvironment::runTo", [&] { environment->runTo(path, line); });
}

void DebugControl::debugStepOver()
{
    step("IExecutionEnvironment::stepOver", &IExecutionEnvironment::stepOver);
}

void DebugControl::debugStepInto()
{
    step("IExecutionEnvironment::stepInto", &IExecutionEnvironment::stepInto);
}

void DebugControl::step(const char *name, Step step)
{
    VARNEL_ASSERT(currentProject());
    if (!currentProject() || !startDebugSession(false))
        return;
    const QString file = currentFile();
    m_host.setState(StateRunning);
    if (const Environment environment = currentEnvironment())
        runPlugin(name, [&] { (environment.get()->*step)(file); });
}

void DebugControl::debugPause()
{
    control(Pause);
}

void DebugControl::debugWakeup()
{
    control(Wakeup);
}

void DebugControl::debugRestart()
{
    if (!currentEnvironment() || !mayRestart(m_host.state()) || !startDebugSession(false))
        return;
    if (control(Restart) && isDebugging())
        m_host.setState(StatePaused);
    m_host.fireEvent(u"onRestart"_s);
}

void DebugControl::debugStop()
{
    m_statusByEnvironment.clear();
    m_programStatusByEnvironment.clear();
    if (!currentEnvironment() || !mayStop(m_host.state()))
        return;
    for (const Environment &environment : environments())
        runPlugin("IExecutionEnvironment::stop", [&] { environment->stop(); });
    m_statusByEnvironment.clear(); // of what they have said at their ends
    m_programStatusByEnvironment.clear();
    if (m_host.projectWorkspace())
        m_host.setState(StateIdle);
    m_host.fireEvent(u"onStopped"_s);
}

// Reports

void DebugControl::programStatusChanged(IExecutionEnvironment::ProgramStatus status, IExecutionEnvironment *environment)
{
    VARNEL_ASSERT(currentProject() && environment);
    if (!currentProject() || !environment)
        return;
    const Environment kept = shareInterface(environment);
    m_programStatusByEnvironment[environmentKey(environment)] = status;
    reactToBreakpoint(status, environment);
    if (environment != currentEnvironment().get())
        return;
    if (const std::optional<ActivityState> next = stateAfterReport(m_host.state(), status))
        m_host.setState(*next);
    if (status == IExecutionEnvironment::ProgramBreakpointHit)
        m_host.fireEvent(u"onBreakpointHit"_s);
}

void DebugControl::reactToBreakpoint(IExecutionEnvironment::ProgramStatus status, IExecutionEnvironment *environment)
{
    const bool current = environment == currentEnvironment().get();
    const BreakpointReaction reaction = breakpointReaction(status, m_host.projectWorkspace()->count(), current,
                                                           m_options.action(BreakpointEvent) == AllProcessors);
    if (reaction.pauseOthers) {
        for (const Environment &other : environments()) {
            if (other.get() != environment)
                runPlugin(Pause.name, [&] { other->pause(); });
        }
    }
    if (reaction.switchProject)
        switchProject(environment);
}

void DebugControl::switchProject(IExecutionEnvironment *environment)
{
    for (const QPointer<Project> &project : projects()) {
        if (project->executionInterface() != environment)
            continue;
        inform(tr("A breakpoint has been hit in project '%1'.\n\nThe current project will be switched.")
                   .arg(project->name()));
        if (project)
            m_host.projectWorkspace()->setCurrentProject(project);
        return;
    }
}

void DebugControl::statusInfo(const QString &text, int position, IExecutionEnvironment *environment)
{
    VARNEL_ASSERT(currentProject() && environment);
    if (!currentProject() || !environment)
        return;
    m_statusByEnvironment[environmentKey(environment)] = {text, position};
    if (environment == currentEnvironment().get())
        m_host.showStatusInfo(text, position);
}

void DebugControl::breakpointsChanged()
{
    refreshBreakpointMarkers();
}

void DebugControl::currentProjectChanged()
{
    if (const Environment environment = currentEnvironment()) {
        // Some environments become ready for what follows by this question.
        runPlugin("IExecutionEnvironment::programStatus", [&] { (void)environment->programStatus(); });
        const uint key = environmentKey(environment.get());
        if (const auto info = m_statusByEnvironment.constFind(key); info != m_statusByEnvironment.cend())
            m_host.showStatusInfo(info->text, info->position);
        if (const auto status = m_programStatusByEnvironment.constFind(key);
            status != m_programStatusByEnvironment.cend()) {
            if (const std::optional<ActivityState> state = stateForStatus(*status))
                m_host.setState(*state);
        }
    }
    if (m_host.state() == StatePaused)
        updateDebugWindows(AllParts);
    refreshBreakpointMarkers();
    m_host.fireEvent(u"onCurrentProjectChanged"_s);
}

void DebugControl::forgetEnvironments()
{
    QList<IExecutionEnvironment *> alive;
    for (const Environment &environment : environments())
        alive.append(environment.get());
    keepEnvironments(alive);
    const auto isGone = [](const auto &entry) { return !environmentOfKey(entry.key()); };
    m_statusByEnvironment.removeIf(isGone);
    m_programStatusByEnvironment.removeIf(isGone);
    closeOrphanedDisassemblies();
}

void DebugControl::closeOrphanedDisassemblies()
{
    for (const QPointer<View> &view : m_host.viewManager()->views().guarded()) {
        const uint key = view ? keyOfDisassembly(view->document()->filename()) : 0;
        if (key && !environmentOfKey(key))
            view->close();
    }
}

// What is shown

void DebugControl::enterState(ActivityState next)
{
    if (next == StateIdle && isDebugState(m_host.state())) // also after a start that failed at a later processor
        clearExecutionMarker(*m_host.viewManager());
    Q_EMIT pausedChanged(next == StatePaused);
    if (next == StatePaused)
        updateDebugWindows(AllParts);
}

void DebugControl::updateDebugWindows(int parts)
{
    if (parts & RegisterWindow)
        Q_EMIT updateRegisterWindow();
    if (parts & DataWindows)
        Q_EMIT updateDataWindows();
    if (parts & NextStatement)
        showNextStatement();
}

void DebugControl::showNextStatement()
{
    if (currentEnvironment() && !goToLocation())
        inform(tr("Cannot display next statment.\n\nNo corresponding source file found."));
    refreshExecutionMarker();
}

/// A place without source is shown in the disassembly.
bool DebugControl::goToLocation()
{
    const Environment environment = currentEnvironment();
    QString file = currentFile();
    if (isForeignDisassembly(file, environment.get()))
        file.clear();
    int line = 0;
    const auto ask = [&](IExecutionEnvironment *target) { return target->currentLocation(file, line); };
    if (!askLocation(environment.get(), ask) || !openSource(file)) {
        debugViewDisassembly();
        file = currentFile();
        if (!isDisassemblyName(file) || isForeignDisassembly(file, environment.get())
            || !askLocation(environment.get(), ask))
            return false;
    }
    if (auto *navigation = viewInterface<ITextNavigation>(m_host.viewManager()->currentView()))
        navigation->gotoLine(line);
    return true;
}

bool DebugControl::openSource(const QString &file)
{
    const QPointer<Project> project = currentProject();
    if (!project || isDisassemblyName(file))
        return false;
    const QString path = project->absolutePath(file);
    if (!QFileInfo(path).isFile())
        return false;
    const bool wasOpen = m_host.workspace()->findDocument(path);
    if (!m_host.openFile(path, false))
        return false;
    if (!wasOpen)
        refreshBreakpointMarkers();
    return true;
}

void DebugControl::fileOpened()
{
    if (m_host.state() == StatePaused)
        refreshExecutionMarker();
    refreshBreakpointMarkers();
}

void DebugControl::refreshExecutionMarker()
{
    ::refreshExecutionMarker(currentProject(), *m_host.viewManager());
}

void DebugControl::refreshBreakpointMarkers()
{
    if (const ProjectWorkspace *workspace = m_host.projectWorkspace())
        ::refreshBreakpointMarkers(*workspace, *m_host.viewManager());
}

void DebugControl::debugViewDisassembly()
{
    const Environment environment = currentEnvironment();
    if (!queryInterface<IDisassembly>(environment.get()))
        return;
    m_host.workspace()->openDocument(disassemblyName(environment.get(), currentProject()->name()), true);
    refreshExecutionMarker();
    refreshBreakpointMarkers();
}

void DebugControl::debugShowNext()
{
    const Environment environment = currentEnvironment();
    QString file = currentFile();
    int line = 0;
    const auto ask = [&](IExecutionEnvironment *target) { return target->currentLocation(file, line); };
    const bool known = environment && askLocation(environment.get(), ask);
    auto *markers = viewInterface<IViewWithMarkers>(m_host.viewManager()->currentView());
    if (known && markers && markers->hasMarker(line, IViewWithMarkers::CurrentLineMarker)) {
        file.clear(); // from the disassembly one comes to the source
        if (askLocation(environment.get(), ask))
            (void)openSource(file);
    }
    refreshBreakpointMarkers();
    updateDebugWindows(AllParts);
}

// Breakpoints

void DebugControl::debugBreakpoints()
{
    ProjectWorkspace *workspace = m_host.projectWorkspace();
    if (!workspace) {
        inform(tr("Cannot edit breakpoints.\n\nOpen a project that supports breakpoints first."));
        return;
    }
    BreakpointDialog(workspace, m_host.dialogParent(), u"breakpointDialog"_s).exec();
    refreshBreakpointMarkers();
}

void DebugControl::debugToggleBreakpoint()
{
    View *view = m_host.viewManager()->currentView();
    auto *navigation = viewInterface<ITextNavigation>(view);
    if (!navigation || !viewInterface<IViewWithMarkers>(view))
        return;
    int line = 0;
    int column = 0;
    navigation->getCursorPosition(&line, &column);
    toggleBreakpoint(line + 1);
}

void DebugControl::toggleBreakpoint(int line)
{
    Document *document = m_host.viewManager()->currentDocument();
    if (!m_host.projectWorkspace() || !document)
        return;
    if (m_host.state() == StateRunning) {
        inform(tr("Breakpoints cannot be modified while the processor is running.\n\nPlease pause the processor and "
                  "try again."));
        return;
    }
    QString file = document->filename();
    Environment environment;
    if (isDisassemblyName(file)) {
        environment = shareInterface(environmentOfKey(keyOfDisassembly(file)));
        file = u"disassembler:"_s;
    } else if (const Project *project = projectOfDocument(file)) {
        environment = shareInterface(project->executionInterface());
    }
    const auto breakpoints = queryInterface<IBreakpoints>(environment.get());
    if (!breakpoints) {
        inform(tr("The breakpoint cannot be set.\n\nBreakpoints are not supported in this file."));
        return;
    }
    const auto records = askPlugin("IBreakpoints::breakpoints", [&] { return breakpoints->breakpoints(); });
    const int state = toggledBreakpoint(breakpointStateAt(records, {file, line}));
    int result = -1;
    runPlugin("IBreakpoints::setBreakpoint", [&] { result = breakpoints->setBreakpoint(file, line, state); });
    if (result != 0)
        inform(tr("The breakpoint could not be modified."));
}

QString DebugControl::breakpointToolTip(const QString &file, int line) const
{
    const ProjectWorkspace *workspace = m_host.projectWorkspace();
    return workspace ? ::breakpointToolTip(*workspace, file, line) : QString();
}

Project *DebugControl::projectOfDocument(const QString &file) const
{
    const QList<Project *> containing = m_host.projectWorkspace()->projectsContainingFile(file);
    return containing.isEmpty() ? m_host.projectWorkspace()->currentProject() : containing.first();
}

// Who is there

bool DebugControl::isDebugging() const
{
    return currentProject() && isDebugState(m_host.state());
}

QPointer<Project> DebugControl::currentProject() const
{
    const ProjectWorkspace *workspace = m_host.projectWorkspace();
    return workspace ? workspace->currentProject() : nullptr;
}

DebugControl::Environment DebugControl::currentEnvironment() const
{
    const QPointer<Project> project = currentProject();
    return shareInterface(project ? project->executionInterface() : nullptr);
}

QList<QPointer<Project>> DebugControl::projects() const
{
    QList<QPointer<Project>> all;
    const ProjectWorkspace *workspace = m_host.projectWorkspace();
    for (int i = 0; workspace && i < workspace->count(); ++i)
        all.append(workspace->project(i));
    return all;
}

std::vector<DebugControl::Environment> DebugControl::environments() const
{
    std::vector<Environment> all;
    for (const QPointer<Project> &project : projects()) {
        if (project->executionInterface())
            all.push_back(shareInterface(project->executionInterface()));
    }
    return all;
}

QString DebugControl::currentFile() const
{
    Document *document = m_host.viewManager()->currentDocument();
    const QPointer<Project> project = currentProject();
    return document && project ? debugPath(*project, document->filename()) : QString();
}

void DebugControl::inform(const QString &text) const
{
    showInformation(m_host.dialogParent(), text);
}
