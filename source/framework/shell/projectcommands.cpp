#include "projectcommands.h"
#include "lastdirectories.h"
#include "messages.h"
#include "population.h"
#include "project.h"
#include "projectfile.h"
#include "projectworkspace.h"
#include "questions.h"
#include "recentfilelist.h"
#include "varnelassert.h"
#include <QCoreApplication>
#include <QFileInfo>
#include <QMainWindow>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace {
constexpr int PendingEventsTime = 1000; // milliseconds

/// Lets a dialog's area be painted anew before a long piece of work, without letting the user do anything.
void processPendingEvents()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, PendingEventsTime);
}

QString workspacePathOf(const QString &projectPath)
{
    return projectPath.left(projectPath.lastIndexOf(u'.')) + u".vnw"_s;
}

} // namespace

ProjectCommands::ProjectCommands(QMainWindow *window, ProjectCommandsHost *host, RecentFileList *recentWorkspaces,
                                 LastDirectories *directories, QObject *parent)
    : QObject(parent), m_window(window), m_host(host), m_recentWorkspaces(recentWorkspaces), m_directories(directories)
{}

ProjectCommands::~ProjectCommands()
{
    VARNEL_ASSERT(!m_projectWorkspace);
}

Project *ProjectCommands::currentProject() const
{
    return m_projectWorkspace ? m_projectWorkspace->currentProject() : nullptr;
}

QList<QPointer<Project>> ProjectCommands::projects() const
{
    QList<QPointer<Project>> all;
    for (int i = 0; m_projectWorkspace && i < m_projectWorkspace->count(); ++i)
        all.append(m_projectWorkspace->project(i));
    return all;
}

void ProjectCommands::open()
{
    if (!closeWorkspace())
        return;
    const QString path = askForOpenFile(m_window, {u"openWorkspaceDialog"_s, tr("Open Workspace"),
                                                   m_directories->directory(u"Workspaces"_s),
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
    const QString path = m_recentWorkspaces->paths().value(index);
    if (!closeWorkspace() || openWorkspace(path, true))
        return;
    showWarning(m_window,
                tr("The workspace could not be opened.\n\nIt will be removed from the Recent Workspaces list."));
    m_recentWorkspaces->remove(path);
}

bool ProjectCommands::openProject(const QString &path, bool addToRecent)
{
    VARNEL_ASSERT(!path.isEmpty());
    if (path.isEmpty())
        return false;
    processPendingEvents();
    const QString workspacePath = workspacePathOf(path);
    if (QFileInfo::exists(workspacePath)) {
        showInformation(m_window, tr("A corresponding workspace has been found.\n\n"
                                     "It will be opened instead of the specified project."));
    } else {
        ProjectWorkspace workspace(workspacePath);
        auto *project = new Project(QString(), QString());
        project->load(path);
        workspace.addProject(project);
        workspace.save();
    }
    return openWorkspace(workspacePath, addToRecent);
}

bool ProjectCommands::openWorkspace(const QString &path, bool addToRecent)
{
    VARNEL_ASSERT(!path.isEmpty());
    if (path.isEmpty())
        return false;
    processPendingEvents();
    auto workspace = std::make_unique<ProjectWorkspace>();
    connect(workspace.get(), &ProjectWorkspace::currentProjectChanged, this, &ProjectCommands::currentProjectChanged);
    connect(workspace.get(), &ProjectWorkspace::workspaceChanged, this, [this] { m_host->workspaceChanged(); });
    connect(workspace.get(), &ProjectWorkspace::projectActivityChanged, this, [this] { m_host->updateProjectUI(); });
    tell(tr("Opening %1...").arg(QDir::toNativeSeparators(path)));
    if (!workspace->load(path)) {
        tell(tr("The workspace %1 could not be opened.").arg(QDir::toNativeSeparators(path)));
        m_host->setState(StateNoWorkspace);
        return false;
    }
    if (m_projectWorkspace)
        m_host->showWorkspace(nullptr); // before what is on screen dies
    m_projectWorkspace = std::move(workspace);
    m_host->setProjectWorkspace(m_projectWorkspace.get());
    const QPointer<ProjectWorkspace> opened(m_projectWorkspace.get()); // scripts and plug-ins may open another one
    const bool allLoaded = bindProjects();
    if (addToRecent)
        m_recentWorkspaces->add(path);
    rememberDirectories(path);
    m_host->showWorkspace(m_projectWorkspace.get());
    m_host->workspaceChanged();
    m_host->setState(StateIdle);
    m_host->restoreFiles();
    tellOutcome();
    if (allLoaded) {
        m_host->setRepopulateVisible(populateWorkspace(opened));
        runProjectScripts(opened, [this](const QString &path) { m_host->runPyFile(path); });
    }
    if (!allLoaded || !opened)
        return false;
    m_host->updateProjectUI();
    Q_EMIT workspaceLoaded();
    return true;
}

void ProjectCommands::tell(const QString &text)
{
    m_window->statusBar()->showMessage(text);
    m_window->statusBar()->repaint();
}

void ProjectCommands::tellOutcome()
{
    QStringList missing;
    for (const Project *project : projects()) {
        if (!project->openedOK())
            missing.append(QDir::toNativeSeparators(project->fileName()));
    }
    if (missing.isEmpty())
        m_window->statusBar()->clearMessage();
    else
        tell(tr("These projects could not be loaded: %1").arg(missing.join(u", "_s)));
}

bool ProjectCommands::bindProjects()
{
    bool allLoaded = true;
    for (const QPointer<Project> &project : projects()) {
        if (project && project->openedOK()) {
            tell(tr("Opening the project %1...").arg(project->name()));
            m_host->bindProjectPlugins(project);
        } else {
            allLoaded = false;
        }
    }
    return allLoaded;
}

bool ProjectCommands::closeWorkspace()
{
    if (!m_projectWorkspace)
        return true;
    if (m_host->state() >= StateRunning)
        m_host->stopDebugging();
    const QPointer<ProjectWorkspace> asked(m_projectWorkspace.get());
    if (!offerToSave())
        return false;
    if (!asked)
        return !m_projectWorkspace; // closed behind the question's back
    m_host->showWorkspace(nullptr);
    m_projectWorkspace.reset();
    m_host->setState(StateNoWorkspace);
    const bool closed = m_host->closeAllViews();
    m_host->workspaceClosed();
    return closed;
}

bool ProjectCommands::offerToSave()
{
    QMessageBox::StandardButton answer = QMessageBox::NoButton;
    const auto wantsToSave = [&] {
        if (answer == QMessageBox::NoButton)
            answer = showInformation(m_window,
                                     tr("You have made changes to the '%1' workspace and/or one of the projects it "
                                        "contains.\n\nDo you want to save the changes?")
                                         .arg(m_projectWorkspace->name()),
                                     {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel});
        return answer == QMessageBox::Yes;
    };
    bool result = true;
    for (const QPointer<Project> &project : projects()) {
        if (!result)
            return false;
        if (project && project->isModified())
            result = wantsToSave() ? saveProject(project) : answer != QMessageBox::Cancel;
    }
    if (result && m_projectWorkspace && m_projectWorkspace->isModified())
        result = wantsToSave() ? saveWorkspace() : answer != QMessageBox::Cancel;
    return result;
}

/// A project that could not be loaded is empty: saved, it would take the place of the one in the file. One that is gone
/// by now needs no saving.
bool ProjectCommands::saveProject(Project *project)
{
    if (!project || (project->openedOK() && project->save()))
        return true;
    showWarning(m_window, tr("The project '%1' could not be saved.\n\n"
                             "Please make sure that the project file is not read-only.")
                              .arg(project->displayName()));
    return false;
}

bool ProjectCommands::saveWorkspace()
{
    if (!m_projectWorkspace || m_projectWorkspace->save())
        return true;
    showWarning(m_window, tr("The workspace could not be saved.\n\n"
                             "Please make sure that the workspace file is not read-only."));
    return false;
}

void ProjectCommands::save()
{
    VARNEL_ASSERT(m_projectWorkspace);
    if (!m_projectWorkspace)
        return;
    for (const QPointer<Project> &project : projects())
        (void)saveProject(project);
    (void)saveWorkspace();
}

bool ProjectCommands::saveModified()
{
    bool result = true;
    for (const QPointer<Project> &project : projects())
        result &= !project || !project->isModified() || saveProject(project);
    if (m_projectWorkspace && m_projectWorkspace->isModified())
        result &= saveWorkspace();
    return result;
}

void ProjectCommands::insertFiles(Project *project)
{
    VARNEL_ASSERT(project);
    if (!project)
        return;
    const QStringList paths = askForOpenFiles(m_window, {u"addFilesDialog"_s, tr("Add Files to Project"),
                                                         m_directories->directory(u"Files"_s), m_host->sourceFilter()});
    if (paths.isEmpty())
        return;
    m_directories->remember(u"Files"_s, paths.first());
    project->addFiles(paths, nullptr);
}

void ProjectCommands::insertProject()
{
    VARNEL_ASSERT(m_projectWorkspace);
    if (!m_projectWorkspace)
        return;
    const QString path =
        askForOpenFile(m_window, {u"insertProjectDialog"_s, tr("Insert Project into Workspace"),
                                  m_directories->directory(u"Projects"_s), u"Project Files (*.vnp)"_s});
    if (path.isEmpty())
        return;
    m_directories->remember(u"Projects"_s, path);
    auto *project = new Project(QString(), QString());
    if (project->load(path))
        m_host->bindProjectPlugins(project);
    m_projectWorkspace->addProject(project);
    tellOutcome();
}

void ProjectCommands::rememberDirectories(const QString &path)
{
    for (const QString &kind : {u"Workspaces"_s, u"Projects"_s, u"Files"_s})
        m_directories->remember(kind, path);
}
