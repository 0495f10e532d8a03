#include "projectcommands.h"
#include "activity.h"
#include "callplugin.h"
#include "document.h"
#include "editproperties.h"
#include "folderproject.h"
#include "lastdirectories.h"
#include "messages.h"
#include "navigator.h"
#include "population.h"
#include "project.h"
#include "projectfile.h"
#include "projectsaving.h"
#include "projectworkspace.h"
#include "questions.h"
#include "varnelassert.h"
#include "view.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <algorithm>
#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QFileInfo>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
bool allLoaded(const Activity &activity)
{
    const QList<QPointer<Project>> projects = activity.projects();
    return std::ranges::all_of(projects, &Project::openedOK);
}

/// The open project of the file @p path, also if it was opened by another path; null if there is none.
const Project *projectOfFile(const Activity &activity, const QString &path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    for (const QPointer<Project> &project : activity.projects()) {
        if (!canonical.isEmpty() && QFileInfo(project->fileName()).canonicalFilePath() == canonical)
            return project;
    }
    return nullptr;
}

/// Removes all but the first of the objects with one file: they would overwrite each other's changes.
void removeTwins(ProjectWorkspace *workspace)
{
    QStringList files;
    for (int i = 0; i < workspace->count();) {
        const QFileInfo info(workspace->project(i)->fileName());
        const QString file = info.exists() ? info.canonicalFilePath() : info.filePath();
        if (files.contains(file)) {
            workspace->removeProject(workspace->project(i));
            workspace->setModified(false); // a file is not written because it was opened
        } else {
            files.append(file);
            ++i;
        }
    }
}

/// The file that @p view shows, in the current project or else in another one; null if it is in no project.
ProjectFile *fileInView(const Activity &activity, View *view)
{
    if (!view)
        return nullptr;
    QList<QPointer<Project>> projects = activity.projects();
    projects.prepend(activity.currentProject());
    for (const QPointer<Project> &project : std::as_const(projects)) {
        const QList<ProjectFile *> files = project ? project->files({}, nullptr) : QList<ProjectFile *>();
        const auto found = std::ranges::find_if(files, [&](const ProjectFile *file) {
            return project->absolutePath(file->path()) == view->document()->filename();
        });
        if (found != files.end())
            return *found;
    }
    return nullptr;
}

constexpr int PendingEventsTime = 1000; // milliseconds
constexpr int NoticeTime = 5000;        // milliseconds

/// Repaints the area of a closed dialog before a long piece of work, without letting the user do anything. A pending
/// event may delete the window.
void processPendingEvents()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, PendingEventsTime);
}

QString workspacePathOf(const QString &projectPath)
{
    const QFileInfo info(projectPath);
    return projectPath.chopped(info.fileName().size()) + info.completeBaseName() + u".vnw"_s;
}
} // namespace

ProjectCommands::ProjectCommands(Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent)
    , m_activity(activity)
    , m_window(window)
    , m_recentWorkspaces(u"RecentFiles/Workspace"_s, &window.settings())
    , m_trust(window)
    , m_fileCheck(activity, window)
{
    m_recentWorkspaces.load();
    if (const QAction *forgetTrust = window.action(u"projectForgetTrust"_s))
        connect(forgetTrust, &QAction::triggered, this, &ProjectCommands::forgetTrust);
    connect(&activity, &Activity::projectLoaded, this, &ProjectCommands::showProjectBeingOpened);
    connect(&activity, &Activity::workspaceClosed, this, [this] { m_window.viewManager()->closeAll(); });
}

void ProjectCommands::open()
{
    if (!closeWorkspace())
        return;
    const QString path =
        askForOpenFile(m_window.dialogParent(), {u"openWorkspaceDialog"_s, tr("Open Workspace"),
                                                 m_window.directories().directory(u"Workspaces"_s),
                                                 tr("Workspaces (*.vnw);;Projects (*.vnp);;All Files (*.*)")});
    if (path.isEmpty() || !closeWorkspace()) // a script may have opened one meanwhile
        return;
    rememberDirectories(path);
    if (isProjectFile(path))
        openProject(path, true);
    else
        openWorkspace(path, true);
}

void ProjectCommands::openRecent(int index)
{
    const QPointer<ProjectCommands> self(this);
    const QString path = m_recentWorkspaces.paths().value(index);
    if (!closeWorkspace() || openWorkspace(path, true) || !self || m_activity.workspace())
        return; // one that is open although a project of it could not be loaded stays in the list
    showWarning(m_window.dialogParent(),
                tr("The workspace could not be opened.\n\nIt will be removed from the Recent Workspaces list."));
    m_recentWorkspaces.remove(path);
    Q_EMIT recentWorkspacesChanged();
}

bool ProjectCommands::openProject(const QString &path, bool addToRecent)
{
    VARNEL_ASSERT(!path.isEmpty());
    if (path.isEmpty())
        return false;
    const QPointer<ProjectCommands> self(this);
    processPendingEvents();
    if (!self)
        return false;
    const QString workspacePath = workspacePathOf(path);
    if (QFileInfo::exists(workspacePath)) {
        const QPointer<ProjectWorkspace> before(m_activity.workspace());
        showInformation(m_window.dialogParent(), tr("A corresponding workspace has been found.\n\n"
                                                    "It will be opened instead of the specified project."));
        const bool mayOpen = self && (!m_activity.workspace() || m_activity.workspace() == before);
        return mayOpen && openWorkspace(workspacePath, addToRecent); // one that a script has opened stays
    }
    auto project = std::make_unique<Project>(QString(), QString());
    if (!isProjectFile(path) || !project->load(path)) // a workspace lists only files with that suffix
        return refuse(tr("The project %1 could not be opened.").arg(QDir::toNativeSeparators(path)));
    auto workspace = std::make_unique<ProjectWorkspace>(workspacePath);
    workspace->addProject(project.release());
    if (workspace->save())
        return openWorkspace(workspacePath, addToRecent);
    workspace->setModified(false); // or every build would try to write it again
    return show(std::move(workspace), path, false);
}

bool ProjectCommands::createWorkspace(const QString &workspacePath, const QString &projectPath)
{
    ProjectWorkspace workspace(workspacePath);
    auto *project = new Project(QString(), QString());
    project->load(projectPath); // it is in the list even if it cannot be loaded
    workspace.addProject(project);
    return saveWorkspace(m_window.dialogParent(), &workspace, IfNewer::Overwrite) && openWorkspace(workspacePath, true);
}

bool ProjectCommands::openWorkspace(const QString &path, bool addToRecent)
{
    VARNEL_ASSERT(!path.isEmpty());
    if (path.isEmpty())
        return false;
    const QPointer<ProjectCommands> self(this);
    processPendingEvents();
    if (!self)
        return false;
    auto workspace = std::make_unique<ProjectWorkspace>();
    m_window.showMessage(tr("Opening %1...").arg(QDir::toNativeSeparators(path)));
    if (!workspace->load(path))
        return refuse(tr("The workspace %1 could not be opened.").arg(QDir::toNativeSeparators(path)));
    removeTwins(workspace.get());
    return show(std::move(workspace), path, addToRecent);
}

bool ProjectCommands::refuse(const QString &message)
{
    m_window.showMessage(message);
    m_activity.setState(StateNoWorkspace);
    return false;
}

bool ProjectCommands::show(std::unique_ptr<ProjectWorkspace> workspace, const QString &path, bool addToRecent)
{
    if (addToRecent) {
        m_recentWorkspaces.add(path);
        Q_EMIT recentWorkspacesChanged();
    }
    rememberDirectories(path);
    const QPointer<ProjectWorkspace> opened(workspace.get()); // scripts and plug-ins may open another one
    m_activity.openWorkspace(std::move(workspace));
    if (!opened)
        return false;
    showOutcome();
    if (!allLoaded(m_activity))
        return false;
    const bool mayPopulate = populateWorkspace(m_activity);
    if (QAction *repopulate = m_window.action(u"projectRepopulate"_s))
        repopulate->setVisible(mayPopulate);
    runScripts();
    if (!opened)
        return false;
    m_window.fireEvent(u"onWorkspaceLoaded"_s);
    return true;
}

void ProjectCommands::runScripts()
{
    const QPointer<ProjectWorkspace> workspace(m_activity.workspace()); // it may close during the question
    if (hasProjectScripts(m_activity) && m_trust.mayRun(workspace->fileName()) && workspace)
        runProjectScripts(m_activity, [this](const QString &script) { m_window.runPyFile(script); });
}

void ProjectCommands::forgetTrust()
{
    if (!m_activity.workspace())
        return;
    m_window.showMessage(m_trust.forget(m_activity.workspace()->fileName())
                             ? tr("You will be asked again when a workspace in this folder names scripts to be run.")
                             : tr("There is no answer for this folder that could be forgotten."));
}

void ProjectCommands::checkFileChanges()
{
    if (!m_fileCheck.run())
        return;
    const QString path = m_activity.workspace()->fileName();
    if (closeWorkspace() || !m_activity.workspace())
        openWorkspace(path, false);
}

void ProjectCommands::showProjectBeingOpened(const Project *project)
{
    m_window.showMessage(tr("Opening the project %1...").arg(project->name()));
}

void ProjectCommands::showOutcome()
{
    QStringList missing;
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (!project->openedOK())
            missing.append(QDir::toNativeSeparators(project->fileName()));
    }
    m_window.showMessage(missing.isEmpty() ? QString()
                                           : tr("These projects could not be loaded: %1").arg(missing.join(u", "_s)));
}

bool isUnderPluginCall()
{
    return isInsidePluginCall() || (isPluginCallRunning() && !QApplication::activeModalWidget());
}

bool ProjectCommands::closeWorkspace()
{
    if (!m_activity.workspace())
        return true;
    if (isUnderPluginCall()) { // its callers still use projects and views
        QTimer::singleShot(AfterCallDelay, this, &ProjectCommands::closeWorkspace);
        return false;
    }
    if (std::max(m_activity.state(), m_activity.stateBehindBuild()) >= StateRunning)
        Q_EMIT sessionEndRequested();
    const QPointer<ProjectWorkspace> asked(m_activity.workspace());
    if (!offerToSave())
        return false;
    if (!asked)
        return !m_activity.workspace(); // closed while the question was shown
    m_activity.closeWorkspace();
    return m_window.viewManager()->views().isEmpty();
}

/// A workspace that closes while a question is shown needs no saving, and the answer does not apply to another one that
/// was opened by then.
bool ProjectCommands::offerToSave()
{
    const QPointer<ProjectWorkspace> workspace(m_activity.workspace());
    QWidget *parent = m_window.dialogParent();
    QMessageBox::StandardButton answer = QMessageBox::NoButton;
    const auto wantsToSave = [&] {
        if (answer == QMessageBox::NoButton)
            answer = askToSaveChanges(parent, workspace->name());
        return answer == QMessageBox::Yes;
    };
    bool result = true;
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (!result)
            return false;
        if (project && project->isModified())
            result = wantsToSave() ? saveProject(parent, project) : answer != QMessageBox::Cancel;
    }
    if (result && workspace && workspace->isModified())
        result = wantsToSave() ? saveWorkspace(parent, workspace) : answer != QMessageBox::Cancel;
    return result;
}

void ProjectCommands::save()
{
    VARNEL_ASSERT_TEXT(m_activity.workspace(), "m_projectWorkspace");
    const QPointer<ProjectWorkspace> workspace(m_activity.workspace());
    for (const QPointer<Project> &project : m_activity.projects())
        saveProject(m_window.dialogParent(), project);
    saveWorkspace(m_window.dialogParent(), workspace);
}

bool ProjectCommands::saveModified()
{
    const QPointer<ProjectWorkspace> workspace(m_activity.workspace());
    bool result = true;
    for (const QPointer<Project> &project : m_activity.projects())
        result &=
            !project || !project->isModified() || saveProject(m_window.dialogParent(), project, IfNewer::Overwrite);
    if (workspace && workspace->isModified())
        result &= saveWorkspace(m_window.dialogParent(), workspace, IfNewer::Overwrite);
    return result;
}

void ProjectCommands::insertFiles(Project *project)
{
    VARNEL_ASSERT(project);
    if (!project)
        return;
    const QPointer<Project> alive(project);
    const QStringList paths = askForOpenFiles(m_window.dialogParent(),
                                              {u"addFilesDialog"_s, tr("Add Files to Project"),
                                               m_window.directories().directory(u"Files"_s), m_window.sourceFilter()});
    if (paths.isEmpty())
        return;
    m_window.directories().remember(u"Files"_s, paths.first());
    if (alive)
        project->addFiles(paths, nullptr);
}

void ProjectCommands::showFileProperties()
{
    if (m_window.navigator()->isFileSelected())
        m_window.navigator()->showFileProperties();
    else if (ProjectFile *file = fileInView(m_activity, m_window.viewManager()->currentView()))
        editFileProperties(file, m_window.dialogParent());
    else
        m_window.showMessage(tr("No file of a project is selected"), NoticeTime);
}

void ProjectCommands::insertProject()
{
    VARNEL_ASSERT_TEXT(m_activity.workspace(), "m_projectWorkspace");
    const QPointer<ProjectWorkspace> workspace(m_activity.workspace());
    if (!workspace)
        return;
    const QString path = askForOpenFile(m_window.dialogParent(),
                                        {u"insertProjectDialog"_s, tr("Insert Project into Workspace"),
                                         m_window.directories().directory(u"Projects"_s), tr("Project Files (*.vnp)")});
    if (path.isEmpty() || !workspace)
        return;
    m_window.directories().remember(u"Projects"_s, path);
    addProject(path);
}

void ProjectCommands::addProject(const QString &path)
{
    if (const Project *present = projectOfFile(m_activity, path)) {
        m_activity.workspace()->setCurrentProject(present);
        return m_window.showMessage(tr("The project '%1' is in the workspace already.").arg(present->name()));
    }
    auto project = std::make_unique<Project>(QString(), QString());
    project->load(path);
    m_activity.addProject(std::move(project));
    showOutcome();
}

void ProjectCommands::rememberDirectories(const QString &path)
{
    for (const QString &kind : {u"Workspaces"_s, u"Projects"_s, u"Files"_s})
        m_window.directories().remember(kind, path);
}
