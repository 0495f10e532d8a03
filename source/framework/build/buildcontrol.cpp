#include "buildcontrol.h"
#include "activity.h"
#include "batchbuilddialog.h"
#include "builddecisions.h"
#include "callplugin.h"
#include "document.h"
#include "editconfigurationsdialog.h"
#include "extensioncommands.h"
#include "focuswithin.h"
#include "ibuildenvironment.h"
#include "idebugbuild.h"
#include "messages.h"
#include "navigator.h"
#include "newconfigurationdialog.h"
#include "newerfile.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "population.h"
#include "project.h"
#include "projectsaving.h"
#include "projectworkspace.h"
#include "varnelassert.h"
#include "windowservices.h"
#include "workspace.h"
#include <QAction>
#include <QRegularExpression>
#include <utility>

using namespace Qt::StringLiterals;

BuildControl::BuildControl(Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window), m_compileAction(window.action(u"buildCompileFile"_s))
{
    if (m_compileAction)
        m_compileMenuText = m_compileAction->text();
    if (const QAction *buildAll = window.action(u"buildAllProjects"_s))
        connect(buildAll, &QAction::triggered, this, &BuildControl::buildAllProjects);
    refreshCompileAction();
    connect(&activity, &Activity::stateEntered, this, &BuildControl::refreshCompileAction);
    connect(&activity, &Activity::currentProjectChanged, this, &BuildControl::refreshCompileAction);
    connect(&activity, &Activity::projectRemoving, this, &BuildControl::projectRemoving);
    connect(&activity, &Activity::workspaceClosing, this, &BuildControl::forgetWork);
    connect(window.outputWindow()->page(OutputWindow::Build), &OutputPage::lineAdded, this,
            &BuildControl::showProgress);
}

BuildControl::~BuildControl() = default;

// Build, rebuild and clean

void BuildControl::buildBuild()
{
    runCurrent(Work::Build);
}

void BuildControl::buildRebuild()
{
    runCurrent(Work::Rebuild);
}

void BuildControl::buildClean()
{
    runCurrent(Work::Clean);
}

void BuildControl::buildBuildAlt()
{
    runSelected(Work::Build);
}

void BuildControl::buildRebuildAlt()
{
    runSelected(Work::Rebuild);
}

void BuildControl::buildCleanAlt()
{
    runSelected(Work::Clean);
}

void BuildControl::runCurrent(Work work)
{
    VARNEL_ASSERT_TEXT(m_activity.workspace(), "workspace");
    m_window.showOutputDock();
    run(work, m_activity.currentProject());
}

void BuildControl::runSelected(Work work)
{
    if (hasFocusWithin(m_window.navigator()))
        run(work, m_window.navigator()->selectedProject());
}

void BuildControl::run(Work work, Project *project)
{
    if (isBusy())
        return;
    const bool building = work != Work::Clean;
    if (building)
        m_buildStopped = false;
    if (!project || !project->buildInterface()) {
        if (building)
            showInformation(m_window.dialogParent(),
                            tr("The project cannot be built.\n\nNo build environment is available."));
        return;
    }
    const QPointer<Project> alive(project); // questions run the event loop
    if (!m_window.fileSaveAll() || !alive || isBusy())
        return;
    prepareOutput(project);
    const QStringList configurations{project->currentConfiguration()};
    if (building)
        start(project, [&](auto *environment) {
            return runPlugin<&IBuildEnvironment::build>(environment, configurations, work == Work::Rebuild);
        });
    else
        start(project,
              [&](auto *environment) { return runPlugin<&IBuildEnvironment::clean>(environment, configurations); });
}

void BuildControl::buildAllProjects()
{
    VARNEL_ASSERT_TEXT(m_activity.workspace(), "workspace");
    m_window.showOutputDock();
    if (isBusy())
        return;
    m_buildStopped = false;
    if (!m_window.fileSaveAll() || isBusy())
        return;
    m_waiting.clear();
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project && project->buildInterface())
            m_waiting.append(project);
    }
    m_othersSucceeded = true;
    if (m_waiting.isEmpty()) {
        showInformation(m_window.dialogParent(),
                        tr("The project cannot be built.\n\nNo build environment is available."));
        return;
    }
    displayBuildPage();
    buildOne(m_waiting.takeFirst());
}

void BuildControl::buildOne(const Project *project)
{
    setLookupPattern(project);
    const QStringList configurations{project->currentConfiguration()};
    start(project,
          [&](auto *environment) { return runPlugin<&IBuildEnvironment::build>(environment, configurations, false); });
}

/// Begins with the next one of all projects. False if there is none.
bool BuildControl::buildNext(bool success)
{
    m_waiting.removeIf([](const QPointer<Project> &project) { return !project || !project->buildInterface(); });
    m_othersSucceeded = m_othersSucceeded && success;
    if (m_waiting.isEmpty() || m_buildStopped || m_activity.state() != StateBuilding) {
        m_waiting.clear();
        return false;
    }
    const Project *next = m_waiting.takeFirst();
    // not inside the call in which the last one has reported its end
    QMetaObject::invokeMethod(
        this,
        [this, next = QPointer<const Project>(next)] {
            if (m_activity.state() != StateBuilding)
                return;
            if (next && !m_buildStopped)
                buildOne(next);
            else
                buildFinished(false);
        },
        Qt::QueuedConnection);
    return true;
}

/// One build at a time. Scripts and drivers can give the commands while the menu does not offer them.
bool BuildControl::isBusy() const
{
    if (m_activity.state() != StateBuilding)
        return false;
    m_window.outputWindow()->outputLine(OutputWindow::Build, tr("A build is running already.\n"));
    return true;
}

/// The environment is about to go and could not report the end of its work any more.
void BuildControl::projectRemoving(const Project *project)
{
    if (m_activity.state() != StateBuilding || m_built != project)
        return;
    buildStopBuild();
    if (m_activity.state() == StateBuilding && m_built == project)
        buildFinished(false);
}

/// The workspace closes: what is left of its builds must not reach those of the next one.
void BuildControl::forgetWork()
{
    m_waiting.clear();
    m_othersSucceeded = true;
    m_forDebug = false;
    m_stopRequested = false;
    m_time.invalidate();
}

/// If the call throws, the plug-in reports no end of the work, so the building state ends here.
void BuildControl::start(const Project *project, const std::function<bool(IBuildEnvironment *)> &work)
{
    const auto environment = shareInterface(project->buildInterface()); // it may close its project in the call
    m_built = project;
    if (!m_time.isValid()) // the first of several projects has started it
        startTime();
    m_activity.setState(StateBuilding);
    if (!work(environment.get()))
        buildFinished(false);
}

void BuildControl::prepareOutput(const Project *project) const
{
    displayBuildPage();
    setLookupPattern(project);
}

void BuildControl::displayBuildPage() const
{
    m_window.outputWindow()->clearPage(OutputWindow::Build);
    m_window.outputWindow()->displayPage(OutputWindow::Build);
}

void BuildControl::setLookupPattern(const Project *project) const
{
    m_window.outputWindow()->setLookupPattern(buildMatch(*project), false);
}

void BuildControl::buildStopBuild()
{
    m_buildStopped = true;
    m_stopRequested = true;
    const QPointer<const Project> current = m_activity.currentProject();
    const QPointer<const Project> built = m_activity.state() == StateBuilding ? m_built : nullptr;
    for (const QPointer<const Project> &project : {current, built == current ? nullptr : built}) {
        if (const auto environment = shareInterface(project ? project->buildInterface() : nullptr))
            runPlugin<&IBuildEnvironment::stop>(environment);
    }
}

void BuildControl::buildFinished(bool success)
{
    if (!m_waiting.isEmpty() && buildNext(success))
        return;
    const bool othersSucceeded = std::exchange(m_othersSucceeded, true);
    m_buildSucceeded = success && othersSucceeded;
    if (!m_activity.workspace())
        return; // reported by a plug-in that is deleted with its workspace
    showOutcome(m_buildSucceeded);
    leaveBuilding();
    m_window.checkFileChanges();
}

/// The line may report how many steps are done, as in "[3/17] Compiling main.c".
void BuildControl::showProgress(const QString &line)
{
    static const QRegularExpression progress(uR"(^\[(\d+)/(\d+)\] )"_s);
    if (m_activity.state() != StateBuilding)
        return;
    const auto match = progress.match(line);
    if (!match.hasMatch())
        return;
    m_hasSteps = true;
    m_window.showMessage(tr("Building: %1 of %2").arg(match.captured(1), match.captured(2)));
}

void BuildControl::startTime()
{
    m_stopRequested = false;
    m_hasSteps = false;
    m_time.start();
}

void BuildControl::showOutcome(bool success)
{
    if (!m_time.isValid())
        return;
    const QString seconds = QString::number(double(m_time.elapsed()) / 1000, 'f', 1);
    m_time.invalidate();
    OutputPage *page = m_window.outputWindow()->page(OutputWindow::Build);
    if (!success && !m_stopRequested)
        page->showFirstError();
    if (m_forDebug && success && !m_hasSteps)
        return; // nothing had to be built, or the user wants to debug the program as it is
    const QString counts = page->countsText();
    QString text = m_stopRequested ? tr("Build stopped after %1 s").arg(seconds)
                   : success       ? tr("Build finished in %1 s").arg(seconds)
                                   : tr("Build failed after %1 s").arg(seconds);
    if (!counts.isEmpty())
        text += u": "_s + counts;
    m_window.showMessage(text);
}

/// A file can be compiled during a debug session, which goes on.
void BuildControl::leaveBuilding()
{
    const bool starts = std::exchange(m_forDebug, false);
    if (m_activity.state() == StateBuilding)
        m_activity.setState(starts ? StateIdle : m_activity.stateBehindBuild());
}

void BuildControl::xmlFeedback(const QString &xml)
{
    replaceContents(xml, m_activity.currentProject());
}

void BuildControl::replaceContents(const QString &xml, Project *project)
{
    if (!project)
        return;
    if (const QString problem = Project::problemInXml(xml); !problem.isEmpty()) {
        m_window.outputWindow()->outputLine(
            OutputWindow::Build,
            tr("The contents that the build environment has sent for project '%1' cannot be read: %2\n")
                .arg(project->name(), problem));
        return;
    }
    project->loadFromXml(xml);
    m_window.navigator()->showWorkspace(); // a load emits no signal
}

// One file

void BuildControl::buildCompileFile()
{
    VARNEL_ASSERT_TEXT(m_activity.workspace(), "workspace");
    if (m_currentFile.isEmpty())
        return;
    Project *project = compilingProject(m_activity.workspace(), m_currentFile);
    if (!project || !project->buildInterface() || isBusy())
        return;
    const QPointer<Project> alive(project);
    const QString file = m_currentFile;
    if (!saveForCompile(project) || !alive || isBusy())
        return;
    prepareOutput(project);
    const QString configuration = project->currentConfiguration();
    start(project,
          [&](auto *environment) { return runPlugin<&IBuildEnvironment::compile>(environment, file, configuration); });
}

/// Saves the project and the current file, and nothing else. False if the user keeps a newer version of that file.
bool BuildControl::saveForCompile(Project *project) const
{
    const QString path = project->absolutePath(m_currentFile);
    if (project->isModified())
        saveProject(m_window.dialogParent(), project);
    const QPointer<Document> document = m_window.workspace()->findDocument(path);
    if (!document || !document->modified())
        return true;
    if (!maySave(m_window.dialogParent(), document))
        return false;
    if (document)
        document->save();
    return true;
}

void BuildControl::setCurrentFile(const QString &path)
{
    m_currentFile = path;
    refreshCompileAction();
}

void BuildControl::setViewedFile(const QString &path)
{
    m_viewedFile = path;
    setCurrentFile(path);
}

void BuildControl::renameViewedFile(const QString &path)
{
    const QString former = std::exchange(m_viewedFile, path);
    if (former != path && former == m_currentFile)
        setCurrentFile(path);
}

/// A plug-in may open files when it is asked whether it can compile one.
void BuildControl::refreshCompileAction()
{
    if (isInsidePluginCall())
        return afterPluginCall(this, "BuildControl::refreshCompileAction", [this] { refreshCompileAction(); });
    if (m_compileAction)
        m_compileAction->setText(compileText(m_compileMenuText, m_currentFile));
    Q_EMIT compileAvailable(canCompile());
}

bool BuildControl::canCompile() const
{
    const Project *project = compilingProject(m_activity.workspace(), m_currentFile);
    if (!mayCompile(m_activity.state(), m_currentFile, project))
        return false;
    const auto environment = shareInterface(project->buildInterface());
    return askPlugin<&IBuildEnvironment::canCompile>(environment, m_currentFile, project->currentConfiguration());
}

// Other commands of the menu

void BuildControl::buildBatchBuild()
{
    Project *project = expectProject();
    const QPointer<Project> alive(project);
    if (!project || isBusy() || !m_window.fileSaveAll() || !alive || isBusy())
        return;
    setLookupPattern(project);
    // the name of another dialog: scripts and test drivers find this one by it
    BatchBuildDialog dialog(project, project->buildInterface(), m_window.dialogParent(), u"newConfigurationDialog"_s);
    connect(&dialog, &BatchBuildDialog::starting, this, &BuildControl::startTime);
    m_window.showOutputDock();
    displayBuildPage();
    m_built = project;
    m_activity.setState(StateBuilding);
    if (dialog.exec() == QDialog::Accepted)
        return;
    m_time.invalidate();
    if (alive)
        leaveBuilding();
}

void BuildControl::buildConfigurationsNew()
{
    if (Project *project = expectProject())
        NewConfigurationDialog(project->properties(), m_window.dialogParent(), u"newConfigurationDialog"_s).exec();
}

void BuildControl::buildConfigurationsEdit()
{
    if (Project *project = expectProject())
        EditConfigurationsDialog(project, m_window.dialogParent(), u"editConfigurationsDialog"_s).exec();
}

void BuildControl::projectRepopulate()
{
    const Project *project = expectProject();
    if (!project)
        return;
    m_window.showOutputDock();
    m_window.outputWindow()->displayPage(OutputWindow::Build); // the environment reports there what it has found
    populate(project);
}

void BuildControl::executeExtensionCommand(int index)
{
    m_window.showOutputDock();
    m_window.outputWindow()->displayPage(OutputWindow::Build);
    executeBuildExtension(m_activity.currentProject(), index);
}

bool BuildControl::buildForDebug(const Project *project)
{
    const auto debugBuild = queryPlugin<IDebugBuild>(project ? project->buildInterface() : nullptr);
    if (!debugBuild)
        return false;
    m_window.outputWindow()->displayPage(OutputWindow::Build);
    m_buildStopped = false;
    m_forDebug = true;
    m_built = project;
    startTime();
    m_activity.setState(StateBuilding);
    const QString configuration = project->currentConfiguration();
    if (!runPlugin<&IDebugBuild::buildForDebug>(debugBuild, configuration))
        buildFinished(false);
    return true;
}

Project *BuildControl::expectProject() const
{
    VARNEL_ASSERT_TEXT(m_activity.workspace(), "workspace");
    Project *project = m_activity.currentProject();
    VARNEL_ASSERT_TEXT(project || !m_activity.workspace(), "project");
    return project;
}
