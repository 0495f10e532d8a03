#include "sessionstart.h"
#include "activity.h"
#include "buildcontrol.h"
#include "callplugin.h"
#include "debugdecisions.h"
#include "ibuildenvironment.h"
#include "messages.h"
#include "outputwindow.h"
#include "processorreports.h"
#include "project.h"
#include "projectworkspace.h"
#include "startprogress.h"
#include "windowservices.h"
#include "workspace.h"
#include <algorithm>
#include <QCoreApplication>
#include <QScopedValueRollback>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {
constexpr int PendingEventsTime = 1000; // milliseconds
}

SessionStart::SessionStart(Activity &activity, WindowServices &window, BuildControl &build,
                           const ProcessorReports &reports, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window), m_build(build), m_reports(reports)
{
    connect(&activity, &Activity::workspaceClosing, this, &SessionStart::endWithWorkspace);
}

/// A command that comes when one processor has stopped and the next one has not started yet does nothing: it would
/// reach both.
bool SessionStart::start(bool attachOnly)
{
    if (m_isStarting)
        return false;
    if (m_activity.state() != StateIdle) // the user may have stopped a compilation in the session
        return m_activity.isDebugging();
    const QScopedValueRollback starting(m_isStarting, true);
    m_ended = false;
    const bool result = prepare() && startProjects(attachOnly);
    const bool builds = m_activity.state() == StateBuilding; // by a command during the preparation
    if ((!result || m_build.buildStopped()) && m_activity.workspace() && !m_ended && !builds)
        m_activity.setState(StateIdle);
    return m_activity.isDebugging(); // a report may have ended the session
}

bool SessionStart::prepare()
{
    const QPointer<ProjectWorkspace> workspace(m_activity.workspace()); // another one may be open after a question
    m_build.clearBuildStopped();                                        // from an earlier build
    m_window.showOutputDock();
    if (!m_window.fileSaveAll() || !workspace || !m_activity.currentProject())
        return false;
    const bool upToDate = isUpToDate();
    if (!workspace || !m_activity.currentProject() || (!upToDate && !offerRebuild()))
        return false;
    // Questions and the check of the build environment run the event loop, in which a build may have begun.
    if (!workspace || !m_activity.currentProject() || m_activity.state() != StateIdle)
        return false;
    OutputWindow *output = m_window.outputWindow();
    output->removePagesAfter(OutputWindow::FindInFiles);
    output->clearPage(OutputWindow::Build);
    output->clearPage(OutputWindow::Debug);
    return true;
}

bool SessionStart::isUpToDate() const
{
    if (m_window.workspace()->anyModified())
        return false;
    const QPointer<Project> project = m_activity.currentProject();
    const auto environment = shareInterface(project ? project->buildInterface() : nullptr);
    if (!environment)
        return true;
    const QString configuration = project->currentConfiguration();
    return askPlugin<&IBuildEnvironment::isUpToDate>(environment, configuration);
}

/// False if the session is not to be started.
bool SessionStart::offerRebuild()
{
    const QPointer<Project> project = m_activity.currentProject();
    const auto answer = showInformation(m_window.dialogParent(),
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
    return m_activity.currentProject() && isUpToDate();
}

/// Closing the workspace, and so the end of the program, ends the building state as well.
void SessionStart::waitForBuild() const
{
    while (m_activity.state() == StateBuilding) {
        deliverPluginReports(); // of a plug-in whose function has started this session
        if (m_activity.state() == StateBuilding)
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

bool SessionStart::startProjects(bool attachOnly)
{
    m_started.clear();
    m_cancelled = false;
    const auto forget = qScopeGuard([this] { m_started.clear(); });
    for (const QPointer<Project> &project : m_activity.projects()) {
        const bool started = project && startProject(project, attachOnly);
        if (!started && !m_ended && !m_build.buildStopped() && !m_cancelled)
            showInformation(m_window.dialogParent(),
                            tr("Cannot start debugger.\n\nPlease see Debug Output window for details."));
        if (!m_ended)
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, PendingEventsTime);
        if (m_ended)
            return false;
        if (!started || m_build.buildStopped()) {
            stopStarted();
            return false;
        }
    }
    if (!m_activity.currentProject())
        return false;
    adoptReportedState();
    if (attachOnly)
        adoptQueriedState();
    return true;
}

/// Otherwise the targets would go on without a session.
void SessionStart::stopStarted()
{
    const auto started = std::exchange(m_started, {});
    for (const Activity::Environment &environment : started) {
        if (isOpen(environment.get()))
            runPlugin<&IExecutionEnvironment::stop>(environment);
    }
}

/// False for that of a project that was removed.
bool SessionStart::isOpen(const IExecutionEnvironment *environment) const
{
    const auto present = m_activity.environments();
    return std::ranges::find(present, environment, &Activity::Environment::get) != present.end();
}

bool SessionStart::mayOperate(const IExecutionEnvironment *environment) const
{
    return !m_isStarting || std::ranges::find(m_started, environment, &Activity::Environment::get) != m_started.end();
}

void SessionStart::end()
{
    if (!m_isStarting)
        return;
    m_ended = true;
    m_started.clear();
    if (m_activity.state() == StateBuilding)
        m_build.buildStopBuild();
    if (const auto background = std::exchange(m_background, {}))
        runPlugin<&IProgressiveStart::cancelStart>(background);
}

/// While the projects still exist.
void SessionStart::endWithWorkspace()
{
    if (!m_isStarting || m_ended)
        return;
    auto environments = std::exchange(m_started, {});
    if (m_startingOne)
        environments.push_back(shareInterface(m_startingOne.get()));
    end();
    for (const Activity::Environment &environment : environments) {
        if (isOpen(environment.get()))
            runPlugin<&IExecutionEnvironment::stop>(environment);
    }
}

/// A project that starts after the current one has reported sets the state back to initialising.
void SessionStart::adoptReportedState()
{
    if (m_activity.state() != StateInitialising)
        return;
    const auto report = m_reports.status(m_activity.currentEnvironment().get());
    if (const std::optional<ActivityState> state = report ? stateForStatus(report->status) : std::nullopt)
        m_activity.setState(*state);
}

void SessionStart::adoptQueriedState()
{
    const Activity::Environment environment = m_activity.currentEnvironment();
    if (m_activity.state() != StateInitialising || !environment)
        return;
    const auto status = tryPlugin<&IExecutionEnvironment::programStatus>(environment);
    if (m_activity.state() == StateInitialising) // no report during the call
        m_activity.setState((status ? stateForStatus(*status) : std::nullopt).value_or(StateUnknown));
}

bool SessionStart::startProject(Project *project, bool attachOnly)
{
    OutputWindow *output = m_window.outputWindow();
    const QPointer<Project> alive(project);
    output->outputLine(OutputWindow::Debug,
                       tr("Initialising execution environment for project '%1'\n").arg(project->name()));
    const Activity::Environment environment = shareInterface(project->executionInterface());
    if (!environment)
        output->outputLine(OutputWindow::Debug,
                           tr("No execution environment available for project '%1'\n").arg(project->name()));
    const bool built = environment && (attachOnly || buildForDebug(project));
    if (!alive || m_ended)
        return false;
    m_activity.setState(StateInitialising);
    if (!built || m_build.buildStopped())
        return false;
    output->displayPage(OutputWindow::Debug);
    m_startingOne = shareInterface(environment.get());
    const bool started = startEnvironment(environment, attachOnly);
    m_startingOne.reset();
    if (started && !m_ended)
        m_started.push_back(shareInterface(environment.get()));
    else if (started && isOpen(environment.get())) // it has started after the stop
        runPlugin<&IExecutionEnvironment::stop>(environment);
    return started && !m_ended;
}

bool SessionStart::startEnvironment(const Activity::Environment &environment, bool attachOnly)
{
    m_background = queryPlugin<IProgressiveStart>(environment);
    if (!m_background)
        return askPlugin<&IExecutionEnvironment::start>(environment, attachOnly);
    m_activity.setStartCancellable(true);
    const bool started = startInBackground(environment, attachOnly);
    m_background.reset();
    m_activity.setStartCancellable(false);
    return started;
}

/// A project that is removed meanwhile cancels the start.
bool SessionStart::startInBackground(const Activity::Environment &environment, bool attachOnly)
{
    const auto progress = shareInterface(new StartProgress(m_window.dialogParent()));
    connect(progress.get(), &StartProgress::shown, this, &SessionStart::showProgress);
    const auto background = shareInterface(m_background.get());
    if (!runPlugin<&IProgressiveStart::startInBackground>(background, attachOnly, progress.get())) {
        progress->close();
        return false;
    }
    const auto isStarting = [&] {
        return !m_ended && !progress->isFinished() && !progress->isCancelled() && isOpen(environment.get());
    };
    while (isStarting()) {
        deliverPluginReports();
        if (isStarting())
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    const bool finished = progress->isFinished();
    progress->close();
    if (finished && !progress->succeeded() && !progress->reason().isEmpty() && !m_ended)
        m_window.outputWindow()->outputLine(OutputWindow::Debug, progress->reason() + u'\n');
    if (finished || m_ended)
        return finished && progress->succeeded();
    m_cancelled = true;
    runPlugin<&IProgressiveStart::cancelStart>(background);
    runPlugin<&IExecutionEnvironment::stop>(environment);
    return false;
}

void SessionStart::showProgress(const QString &step, int percent)
{
    m_window.showMessage(percent < 0 ? step : step + u" %1 %"_s.arg(percent));
}

/// True as well if the build environment has nothing to do before a session.
bool SessionStart::buildForDebug(const Project *project)
{
    if (!m_build.buildForDebug(project))
        return true;
    waitForBuild();
    return m_build.buildSucceeded();
}
