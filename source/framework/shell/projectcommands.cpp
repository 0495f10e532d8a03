#include "projectcommands.h"
#include "activity.h"
#include "document.h"
#include "editproperties.h"
#include "lastdirectories.h"
#include "messages.h"
#include "navigator.h"
#include "population.h"
#include "project.h"
#include "projectfile.h"
#include "projectworkspace.h"
#include "questions.h"
#include "varnelassert.h"
#include "view.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <algorithm>
#include <QAction>
#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
bool allLoaded(const Activity &activity)
{
    const QList<QPointer<Project>> projects = activity.projects();
    return std::ranges::all_of(projects, [](const Project *project) { return project && project->openedOK(); });
}

/// The open project of the file @p path, also if it was opened by another path; null if there is none.
const Project *projectOfFile(const Activity &activity, const QString &path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    for (const QPointer<Project> &project : activity.projects()) {
        if (project && !canonical.isEmpty() && QFileInfo(project->fileName()).canonicalFilePath() == canonical)
            return project;
    }
    return nullptr;
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

/// Repaints the area of a closed dialog before a long piece of work, without letting the user do anything.
void processPendingEvents()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, PendingEventsTime);
}

QString workspacePathOf(const QString &projectPath)
{
    return projectPath.left(projectPath.lastIndexOf(u'.')) + u".vnw"_s;
}

/// Writes a workspace file with one project, which is in the list even if it cannot be loaded.
bool writeWorkspace(const QString &workspacePath, const QString &projectPath)
{
    ProjectWorkspace workspace(workspacePath);
    auto *project = new Project(QString(), QString());
    project->load(projectPath);
    workspace.addProject(project);
    return workspace.save();
}

QString workspaceNotSaved()
{
    return ProjectCommands::tr("The workspace could not be saved.\n\n"
                               "Please make sure that the workspace file is not read-only.");
}

} // namespace

ProjectCommands::ProjectCommands(Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent)
    , m_activity(activity)
    , m_window(window)
    , m_recentWorkspaces(u"RecentFiles/Workspace"_s, &window.settings())
{
    m_recentWorkspaces.load();
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
                                                 u"Workspaces (*.vnw);;Projects (*.vnp);;All Files (*.*)"_s});
    if (path.isEmpty())
        return;
    rememberDirectories(path);
    if (QFileInfo(path).suffix() == "vnp"_L1)
        openProject(path, true);
    else
        openWorkspace(path, true);
}

void ProjectCommands::openRecent(int index)
{
    const QString path = m_recentWorkspaces.paths().value(index);
    if (!closeWorkspace() || openWorkspace(path, true))
        return;
    showWarning(m_window.dialogParent(),
                tr("The workspace could not be opened.\n\nIt will be removed from the Recent Workspaces list."));
    m_recentWorkspaces.remove(path);
}

bool ProjectCommands::openProject(const QString &path, bool addToRecent)
{
    VARNEL_ASSERT(!path.isEmpty());
    if (path.isEmpty())
        return false;
    processPendingEvents();
    const QString workspacePath = workspacePathOf(path);
    if (QFileInfo::exists(workspacePath)) {
        showInformation(m_window.dialogParent(), tr("A corresponding workspace has been found.\n\n"
                                                    "It will be opened instead of the specified project."));
    } else {
        (void)writeWorkspace(workspacePath, path);
    }
    return openWorkspace(workspacePath, addToRecent);
}

bool ProjectCommands::createWorkspace(const QString &workspacePath, const QString &projectPath)
{
    if (writeWorkspace(workspacePath, projectPath))
        return openWorkspace(workspacePath, true);
    showWarning(m_window.dialogParent(), workspaceNotSaved());
    return false;
}

bool ProjectCommands::openWorkspace(const QString &path, bool addToRecent)
{
    VARNEL_ASSERT(!path.isEmpty());
    if (path.isEmpty())
        return false;
    processPendingEvents();
    auto workspace = std::make_unique<ProjectWorkspace>();
    m_window.showMessage(tr("Opening %1...").arg(QDir::toNativeSeparators(path)));
    if (!workspace->load(path)) {
        m_window.showMessage(tr("The workspace %1 could not be opened.").arg(QDir::toNativeSeparators(path)));
        m_activity.setState(StateNoWorkspace);
        return false;
    }
    if (addToRecent)
        m_recentWorkspaces.add(path);
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
    runProjectScripts(m_activity, [this](const QString &script) { m_window.runPyFile(script); });
    if (!opened)
        return false;
    m_window.fireEvent(u"onWorkspaceLoaded"_s);
    return true;
}

void ProjectCommands::showProjectBeingOpened(const Project *project)
{
    m_window.showMessage(tr("Opening the project %1...").arg(project->name()));
}

void ProjectCommands::showOutcome()
{
    QStringList missing;
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project && !project->openedOK())
            missing.append(QDir::toNativeSeparators(project->fileName()));
    }
    m_window.showMessage(missing.isEmpty() ? QString()
                                           : tr("These projects could not be loaded: %1").arg(missing.join(u", "_s)));
}

bool ProjectCommands::closeWorkspace()
{
    if (!m_activity.workspace())
        return true;
    if (m_activity.state() >= StateRunning)
        Q_EMIT sessionEndRequested();
    const QPointer<ProjectWorkspace> asked(m_activity.workspace());
    if (!offerToSave())
        return false;
    if (!asked)
        return !m_activity.workspace(); // closed while the question was shown
    m_activity.closeWorkspace();
    return m_window.viewManager()->views().isEmpty();
}

bool ProjectCommands::offerToSave()
{
    QMessageBox::StandardButton answer = QMessageBox::NoButton;
    const auto wantsToSave = [&] {
        if (answer == QMessageBox::NoButton)
            answer = showInformation(m_window.dialogParent(),
                                     tr("You have made changes to the '%1' workspace and/or one of the projects it "
                                        "contains.\n\nDo you want to save the changes?")
                                         .arg(m_activity.workspace()->name()),
                                     {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel});
        return answer == QMessageBox::Yes;
    };
    bool result = true;
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (!result)
            return false;
        if (project && project->isModified())
            result = wantsToSave() ? saveProject(project) : answer != QMessageBox::Cancel;
    }
    if (result && m_activity.workspace() && m_activity.workspace()->isModified())
        result = wantsToSave() ? saveWorkspace() : answer != QMessageBox::Cancel;
    return result;
}

/// A project that could not be loaded is not saved: it is empty and would overwrite the file. Returns true for null, a
/// project that was closed meanwhile.
bool ProjectCommands::saveProject(Project *project)
{
    if (!project || (project->openedOK() && project->save()))
        return true;
    showWarning(m_window.dialogParent(), tr("The project '%1' could not be saved.\n\n"
                                            "Please make sure that the project file is not read-only.")
                                             .arg(project->displayName()));
    return false;
}

bool ProjectCommands::saveWorkspace()
{
    if (!m_activity.workspace() || m_activity.workspace()->save())
        return true;
    showWarning(m_window.dialogParent(), workspaceNotSaved());
    return false;
}

void ProjectCommands::save()
{
    VARNEL_ASSERT_TEXT(m_activity.workspace(), "m_projectWorkspace");
    if (!m_activity.workspace())
        return;
    for (const QPointer<Project> &project : m_activity.projects())
        (void)saveProject(project);
    (void)saveWorkspace();
}

bool ProjectCommands::saveModified()
{
    bool result = true;
    for (const QPointer<Project> &project : m_activity.projects())
        result &= !project || !project->isModified() || saveProject(project);
    if (m_activity.workspace() && m_activity.workspace()->isModified())
        result &= saveWorkspace();
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
                                         m_window.directories().directory(u"Projects"_s), u"Project Files (*.vnp)"_s});
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
