#include "buildcontrol.h"
#include "batchbuilddialog.h"
#include "buildcontrolhost.h"
#include "builddecisions.h"
#include "callplugin.h"
#include "document.h"
#include "editconfigurationsdialog.h"
#include "ibuildenvironment.h"
#include "idebugbuild.h"
#include "messages.h"
#include "navigator.h"
#include "newconfigurationdialog.h"
#include "outputwindow.h"
#include "population.h"
#include "project.h"
#include "projectworkspace.h"
#include "varnelassert.h"
#include "workspace.h"
#include <QAction>
#include <QApplication>

using namespace Qt::StringLiterals;

BuildControl::BuildControl(BuildControlHost &host, QObject *parent) : QObject(parent), m_host(host) {}

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
    const ProjectWorkspace *workspace = m_host.projectWorkspace();
    VARNEL_ASSERT(workspace);
    m_host.showOutputDock();
    run(work, currentProject());
}

void BuildControl::runSelected(Work work)
{
    if (navigatorHasFocus())
        run(work, m_host.navigator()->selectedProject());
}

void BuildControl::run(Work work, Project *project)
{
    const bool building = work != Work::Clean;
    if (building)
        m_buildStopped = false;
    if (!project || !project->buildInterface()) {
        if (building)
            showInformation(m_host.dialogParent(),
                            tr("The project cannot be built.\n\nNo build environment is available."));
        return;
    }
    const QPointer<Project> alive(project); // questions run the event loop
    if (!m_host.fileSaveAll() || !alive)
        return;
    prepareOutput(project);
    const QStringList configurations{project->currentConfiguration()};
    if (building)
        start("IBuildEnvironment::build", project,
              [&](auto *environment) { environment->build(configurations, work == Work::Rebuild); });
    else
        start("IBuildEnvironment::clean", project, [&](auto *environment) { environment->clean(configurations); });
}

/// Whatever ends the work without a word of the plug-in ends the building state, too.
void BuildControl::start(const char *operation, const Project *project,
                         const std::function<void(IBuildEnvironment *)> &work)
{
    const auto environment = shareInterface(project->buildInterface()); // it may close its project in the call
    m_host.setState(StateBuilding);
    if (!runPlugin(operation, [&] { work(environment.get()); }))
        buildFinished(false);
}

void BuildControl::prepareOutput(const Project *project) const
{
    displayBuildPage();
    setLookupPattern(project);
}

void BuildControl::displayBuildPage() const
{
    m_host.outputWindow()->clearPage(OutputWindow::Build);
    m_host.outputWindow()->displayPage(OutputWindow::Build);
}

void BuildControl::setLookupPattern(const Project *project) const
{
    m_host.outputWindow()->setLookupPattern(buildMatch(*project), false);
}

void BuildControl::buildStopBuild()
{
    m_buildStopped = true;
    const Project *project = currentProject();
    if (const auto environment = shareInterface(project ? project->buildInterface() : nullptr))
        runPlugin("IBuildEnvironment::stop", [&] { environment->stop(); });
}

void BuildControl::buildFinished(bool success)
{
    m_buildSucceeded = success;
    if (!m_host.projectWorkspace())
        return; // said by a plug-in that goes with its workspace
    leaveBuilding();
    m_host.checkFileChanges();
}

void BuildControl::leaveBuilding()
{
    if (m_host.state() == StateBuilding)
        m_host.setState(StateIdle);
}

void BuildControl::xmlFeedback(const QString &xml)
{
    Project *project = currentProject();
    if (!project)
        return;
    project->loadFromXml(xml);
    m_host.navigator()->setWorkspace(m_host.projectWorkspace()); // a load tells nobody
}

// One file

void BuildControl::buildCompileFile()
{
    const ProjectWorkspace *workspace = m_host.projectWorkspace();
    VARNEL_ASSERT(workspace);
    if (m_currentFile.isEmpty())
        return;
    Project *project = compilingProject(workspace, m_currentFile);
    if (!project || !project->buildInterface())
        return;
    const QPointer<Project> alive(project);
    const QString file = m_currentFile;
    saveForCompile(project);
    if (!alive)
        return;
    prepareOutput(project);
    const QString configuration = project->currentConfiguration();
    start("IBuildEnvironment::compile", project, [&](auto *environment) { environment->compile(file, configuration); });
}

/// Saves the project and the current file, and nothing else.
void BuildControl::saveForCompile(Project *project) const
{
    const QString path = project->absolutePath(m_currentFile);
    if (project->isModified() && !project->save())
        showWarning(m_host.dialogParent(), tr("The project '%1' could not be saved.\n\nPlease make sure that the "
                                              "project file is not read-only.")
                                               .arg(project->displayName()));
    Document *document = m_host.workspace()->findDocument(path);
    if (document && document->modified())
        document->save();
}

void BuildControl::setCompileAction(QAction *action)
{
    m_compileAction = action;
    if (action)
        m_compileMenuText = action->text();
    refreshCompileAction();
}

void BuildControl::setCurrentFile(const QString &path)
{
    m_currentFile = path;
    refreshCompileAction();
}

void BuildControl::refreshCompileAction()
{
    if (m_compileAction)
        m_compileAction->setText(compileText(m_compileMenuText, m_currentFile));
    Q_EMIT compileAvailable(canCompile());
}

bool BuildControl::canCompile() const
{
    const Project *project = compilingProject(m_host.projectWorkspace(), m_currentFile);
    if (!mayCompile(m_host.state(), m_currentFile, project))
        return false;
    return askPlugin("IBuildEnvironment::canCompile", [&] {
        return project->buildInterface()->canCompile(m_currentFile, project->currentConfiguration());
    });
}

// What else the menu has

void BuildControl::buildBatchBuild()
{
    Project *project = expectProject();
    const QPointer<Project> alive(project);
    if (!project || !m_host.fileSaveAll() || !alive)
        return;
    setLookupPattern(project);
    // the name of another dialog: scripts and test drivers know this one by it
    BatchBuildDialog dialog(project, project->buildInterface(), m_host.dialogParent(), u"newConfigurationDialog"_s);
    m_host.showOutputDock();
    displayBuildPage();
    m_host.setState(StateBuilding);
    if (dialog.exec() == QDialog::Rejected)
        leaveBuilding();
}

void BuildControl::buildConfigurationsNew()
{
    if (Project *project = expectProject())
        NewConfigurationDialog(project->properties(), m_host.dialogParent(), u"newConfigurationDialog"_s).exec();
}

void BuildControl::buildConfigurationsEdit()
{
    if (Project *project = expectProject())
        EditConfigurationsDialog(project, m_host.dialogParent(), u"editConfigurationsDialog"_s).exec();
}

void BuildControl::projectRepopulate()
{
    if (const Project *project = expectProject())
        populate(project);
}

bool BuildControl::buildForDebug(const Project *project)
{
    const auto debugBuild = queryInterface<IDebugBuild>(project ? project->buildInterface() : nullptr);
    if (!debugBuild)
        return false;
    m_host.outputWindow()->displayPage(OutputWindow::Build);
    m_buildStopped = false;
    m_host.setState(StateBuilding);
    const QString configuration = project->currentConfiguration();
    if (!runPlugin("IDebugBuild::buildForDebug", [&] { debugBuild->buildForDebug(configuration); }))
        buildFinished(false);
    return true;
}

bool BuildControl::navigatorHasFocus() const
{
    const QWidget *focus = QApplication::focusWidget();
    const QWidget *navigator = m_host.navigator();
    return focus && (navigator == focus || navigator->isAncestorOf(focus));
}

Project *BuildControl::currentProject() const
{
    const ProjectWorkspace *workspace = m_host.projectWorkspace();
    return workspace ? workspace->currentProject() : nullptr;
}

Project *BuildControl::expectProject() const
{
    const ProjectWorkspace *workspace = m_host.projectWorkspace();
    VARNEL_ASSERT(workspace);
    if (!workspace)
        return nullptr;
    Project *project = workspace->currentProject();
    VARNEL_ASSERT(project);
    return project;
}
