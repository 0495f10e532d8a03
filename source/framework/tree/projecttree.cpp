#include "projecttree.h"
#include "activity.h"
#include "lastdirectories.h"
#include "messages.h"
#include "modelpointer.h"
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projectsaving.h"
#include "projecttreeitem.h"
#include "projectworkspace.h"
#include "questions.h"
#include "varnelassert.h"
#include "windowservices.h"
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace {
/// Null for no file.
QString absolutePath(const ProjectFile *file)
{
    return file ? file->project()->absolutePath(file->path()) : QString();
}

/// What the user has entered, separated by semicolons.
QStringList extensionsIn(const QString &text)
{
    QStringList extensions;
    for (const QString &part : text.split(u';')) {
        if (const QString extension = part.trimmed(); !extension.isEmpty())
            extensions.append(extension);
    }
    return extensions;
}

QString removeQuestion(const QList<ProjectItemDrag::Item> &items)
{
    const ProjectFolder *folder = items.first().folder;
    if (items.size() > 1)
        return ProjectTree::tr("Are you sure that you want to remove the selected items (%1) from the project?\n\nNo "
                               "file is deleted on disk.")
            .arg(items.size());
    if (!folder)
        return ProjectTree::tr("Are you sure that you want to remove the file '%1' from the project?\n\nIt is not "
                               "deleted on disk.")
            .arg(items.first().file->name());
    if (folder->folders().isEmpty() && folder->files().isEmpty())
        return ProjectTree::tr("Are you sure that you want to remove the empty folder '%1' from the project?")
            .arg(folder->name());
    return ProjectTree::tr("Are you sure that you want to remove the folder '%1' with its contents from the project?"
                           "\n\nNo file is deleted on disk.")
        .arg(folder->name());
}

/// False if the project is to stay.
bool offerToSave(QWidget *parent, Project *project, const QString &workspace)
{
    if (!project->isModified() || !project->openedOK())
        return true;
    const QPointer<Project> alive(project);
    const auto answer = askToSaveChanges(parent, workspace);
    return answer == QMessageBox::No || (answer == QMessageBox::Yes && saveProject(parent, alive));
}
} // namespace

ProjectTree::ProjectTree(const Activity &activity, WindowServices &window, QWidget *parent)
    : ProjectItemView(window, parent), m_activity(activity), m_window(window), m_menus(*this, window)
{
    connect(&activity, &Activity::projectReloading, this, &ProjectTree::releaseWorkspace);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &ProjectTree::slotSelectionChanged);
    connect(this, &QTreeWidget::itemDoubleClicked, this, [this] { openFile(); });
    connect(this, &ListView::returnPressed, this, &ProjectTree::activateItem);
    connect(this, &ListView::itemRenamed, this, &ProjectTree::folderRenamed);
    connect(this, &ListView::contextMenuRequested, this, &ProjectTree::slotContextMenuRequested);
    connect(&moves(), &ProjectMoves::finished, this, &ProjectTree::slotSelectionChanged);
}

ProjectTree::~ProjectTree()
{
    const QSignalBlocker blocker(this); // the model may be deleted already
    releaseWorkspace();
}

// The workspace -----------------------------------------------------------

void ProjectTree::showWorkspace()
{
    ProjectWorkspace *workspace = m_activity.workspace();
    VARNEL_ASSERT(workspace);
    if (!workspace)
        return;
    disconnectProjects();
    m_workspace = workspace;
    connect(workspace, &ProjectWorkspace::workspaceChanged, this, &ProjectTree::workspaceChanged);
    connect(workspace, &ProjectWorkspace::projectActivityChanged, this, &ProjectTree::activityChanged);
    connect(workspace, &ProjectWorkspace::currentProjectChanged, this, &ProjectTree::currentProjectChanged);
    connect(workspace, &QObject::destroyed, this, &ProjectTree::releaseWorkspace);
    rebuild();
}

void ProjectTree::releaseWorkspace()
{
    const bool selected = selectedItem();
    disconnectProjects();
    m_workspace = nullptr;
    rows().clear();
    if (selected)
        slotSelectionChanged();
}

void ProjectTree::rebuild()
{
    VARNEL_ASSERT(m_workspace);
    if (!m_workspace)
        return;
    const bool selected = selectedItem();
    rows().clear();
    m_projects = m_activity.projects();
    for (const QPointer<Project> &project : std::as_const(m_projects))
        connectProject(project);
    rows().addWorkspace(m_workspace, m_projects, m_activity.currentProject());
    refreshLater();
    if (selected)
        slotSelectionChanged();
}

void ProjectTree::connectProject(Project *project)
{
    project->disconnect(this);
    connect(project, &Project::folderAdded, this, &ProjectTree::slotFolderAdded);
    connect(project, &Project::folderRemoved, this, &ProjectTree::slotFolderRemoved);
    connect(project, &Project::fileAdded, this, &ProjectTree::slotFileAdded);
    connect(project, &Project::fileRemoved, this, &ProjectTree::slotFileRemoved);
    connect(project, &Project::folderRenamed, this,
            [this](ProjectFolder *folder, const QString &name) { rows().renameFolder(folder, name); });
    connect(project, &Project::projectModified, this, [this] { rows().updateMarks(); });
}

void ProjectTree::disconnectProjects()
{
    if (!m_workspace)
        return;
    m_workspace->disconnect(this);
    for (const QPointer<Project> &project : std::as_const(m_projects)) {
        if (project)
            project->disconnect(this);
    }
    m_projects.clear();
}

void ProjectTree::workspaceChanged()
{
    rebuild();
}

void ProjectTree::activityChanged()
{
    rows().updateActivity();
}

void ProjectTree::currentProjectChanged()
{
    rows().markCurrent(m_activity.currentProject());
}

void ProjectTree::slotFolderAdded(ProjectFolder *parent, ProjectFolder *folder)
{
    rows().addFolder(parent, folder);
}

void ProjectTree::slotFolderRemoved(ProjectFolder *parent, ProjectFolder *folder)
{
    rows().removeFolder(parent, folder);
}

void ProjectTree::slotFileAdded(ProjectFolder *parent, ProjectFile *file)
{
    rows().addFile(parent, file);
}

void ProjectTree::slotFileRemoved(ProjectFolder *parent, ProjectFile *file)
{
    rows().removeFile(parent, file);
}

// Selection ---------------------------------------------------------------

bool ProjectTree::selectFile(const QString &path)
{
    if (!m_workspace)
        return false;
    for (const Project *project : m_workspace->projectsContainingFile(path)) {
        for (ProjectFile *file : project->files({}, nullptr)) {
            if (project->absolutePath(file->path()) != path)
                continue;
            ProjectTreeItem *row = rows().itemOf(file);
            if (!row)
                continue;
            setCurrentItem(row, 0, QItemSelectionModel::ClearAndSelect);
            ensureItemVisible(row);
            return true;
        }
    }
    return false;
}

void ProjectTree::slotSelectionChanged()
{
    if (moves().isRunning())
        return;
    const ProjectTreeItem *item = selectedItem();
    const ProjectFile *file = rows().fileOf(item);
    const bool canCut = item && item->rtti() != ProjectRows::ProjectRTTI;
    const QString path = file ? file->path() : u""_s;
    Q_EMIT cutAvailable(canCut);
    Q_EMIT pasteAvailable(canPaste());
    Q_EMIT fileSelected(path);
    if (!hasFocus())
        return;
    Q_EMIT undoAvailable(moves().canUndo());
    Q_EMIT redoAvailable(false);
}

bool ProjectTree::canPaste() const
{
    const ProjectTreeItem *item = selectedItem();
    return item && item->rtti() != ProjectRows::FileRTTI && ProjectMoves::canPaste(rows().folderOf(item));
}

void ProjectTree::cut()
{
    moves().cut();
}

void ProjectTree::paste()
{
    moves().paste(selectedProject(), rows().folderOf(selectedItem()));
}

void ProjectTree::undo()
{
    if (moves().canUndo() && !moves().undo())
        m_window.showMessage(tr("What was changed in the project tree has been changed again meanwhile"), 5000);
}

void ProjectTree::remove()
{
    const QPointer<ProjectTree> self(this); // the workspace may be closed while the question is open
    if (mayRemove() && self)
        moves().remove();
}

/// What was removed cannot be brought back, and files may have properties of their own.
bool ProjectTree::mayRemove()
{
    QList<ProjectItemDrag::Item> items = ProjectItemDrag::items(ProjectItemDrag(*this));
    items.removeIf([this](const auto &item) { return !moves().isInTree(item); });
    return items.isEmpty()
           || showInformation(m_window.dialogParent(), removeQuestion(items), {QMessageBox::Ok, QMessageBox::Cancel})
                  == QMessageBox::Ok;
}

// Commands ----------------------------------------------------------------

void ProjectTree::slotContextMenuRequested(ListViewItem *item, const QPoint &point)
{
    if (const Project *project = rows().projectOf(item))
        m_menus.showForProject(project->isActive(), point);
    else if (rows().folderOf(item))
        m_menus.showForFolder(point);
    else if (const ProjectFile *file = rows().fileOf(item))
        m_menus.showForFile(file->name(), point);
}

void ProjectTree::activateItem(ListViewItem *item)
{
    if (rows().fileOf(item))
        openFile();
    else
        item->setOpen(!item->isOpen());
}

void ProjectTree::openFile()
{
    if (const QString path = absolutePath(selectedFile()); !path.isNull())
        Q_EMIT openFile(path);
}

void ProjectTree::runPyFile()
{
    if (const QString path = absolutePath(selectedFile()); !path.isNull())
        Q_EMIT runPyFile(path);
}

void ProjectTree::showFileProperties()
{
    if (ProjectFile *file = selectedFile())
        Q_EMIT displayFileProperties(file);
}

void ProjectTree::createNewFolder()
{
    const ProjectTreeItem *item = selectedItem();
    VARNEL_ASSERT_TEXT(item && (item->rtti() == ProjectRows::FolderRTTI || item->rtti() == ProjectRows::ProjectRTTI),
                       "selectedItem && (selectedItem->rtti() == FolderRTTI || "
                       "selectedItem->rtti() == ProjectRTTI)");
    Project *project = rows().projectOf(item);
    ProjectFolder *parent = rows().folderOf(item);
    if (!project && !parent)
        return;
    auto *folder = new ProjectFolder(tr("New Folder"));
    ProjectItemDrag::Item{folder, nullptr}.putInto(project, parent, true);
    ProjectTreeItem *folderItem = rows().contains(folder) ? rows().itemOf(folder) : nullptr;
    VARNEL_ASSERT(folderItem);
    if (!folderItem)
        return;
    clearSelection();
    folderItem->setSelected(true);
    folderItem->startRename(0);
}

void ProjectTree::renameFolder()
{
    ProjectTreeItem *item = selectedItem();
    VARNEL_ASSERT_TEXT(item && item->rtti() == ProjectRows::FolderRTTI,
                       "selectedItem && selectedItem->rtti() == FolderRTTI");
    if (rows().folderOf(item))
        item->startRename(0);
}

void ProjectTree::folderRenamed(ListViewItem *item)
{
    ProjectFolder *folder = rows().folderOf(item);
    if (!folder)
        return;
    const QString text = item->text(0);
    if (text.isEmpty())
        item->setText(0, folder->name());
    else
        rename(folder, text);
}

void ProjectTree::rename(ProjectFolder *folder, const QString &name)
{
    const QString before = folder->name();
    const ModelPointer<ProjectFolder> alive(folder); // a plug-in may delete it when it hears of the name
    folder->rename(name);
    if (alive)
        moves().noteRename(folder, before);
    slotSelectionChanged();
}

void ProjectTree::folderProperties()
{
    ProjectFolder *selected = rows().folderOf(selectedItem());
    if (!selected)
        return;
    const ModelPointer<ProjectFolder> folder(selected); // scripts and plug-ins may delete it while the dialog is open
    const QString label = tr("Enter file extensions for this folder:");
    const std::optional<QString> text = askForText(m_window.dialogParent(), label, selected->extensions().join(u';'));
    if (text && folder)
        folder->setExtensions(extensionsIn(*text));
}

void ProjectTree::addFilesToFolder()
{
    const ProjectTreeItem *item = selectedItem();
    VARNEL_ASSERT_TEXT(item && item->rtti() == ProjectRows::FolderRTTI,
                       "selectedItem && (selectedItem->rtti() == FolderRTTI)");
    if (!rows().folderOf(item))
        return;
    const ModelPointer<ProjectFolder> folder(rows().folderOf(item));
    auto &window = m_window; // this tree is deleted if the workspace closes while the dialog is open
    const QStringList paths =
        askForOpenFiles(window.dialogParent(), {u"addFilesDialog"_s, tr("Add Files to Folder"),
                                                window.directories().directory(u"Files"_s), window.sourceFilter()});
    if (paths.isEmpty())
        return;
    window.directories().remember(u"Files"_s, paths.first());
    if (folder)
        folder->project()->addFiles(paths, folder.get());
}

void ProjectTree::setActiveProject()
{
    if (const Project *project = rows().projectOf(selectedItem()))
        m_workspace->setCurrentProject(project);
}

void ProjectTree::removeProject()
{
    const QPointer<Project> project = selectedProject();
    VARNEL_ASSERT(project);
    if (!project)
        return;
    const QPointer<ProjectWorkspace> workspace(m_workspace); // with it, this tree may be deleted
    QWidget *parent = m_window.dialogParent();
    const auto answer = showInformation(parent, tr("Are you sure that you want to remove the project?"),
                                        {QMessageBox::Ok, QMessageBox::Cancel});
    if (answer == QMessageBox::Ok && project && workspace && offerToSave(parent, project, workspace->name()) && project
        && workspace)
        workspace->removeProject(project);
}

// Events ------------------------------------------------------------------

void ProjectTree::keyPressEvent(QKeyEvent *event)
{
    // Delete belongs to the shared action, and copying a name would replace the cut items on the clipboard.
    if (event->key() == Qt::Key_Delete || event->matches(QKeySequence::Copy))
        event->ignore();
    else
        ProjectItemView::keyPressEvent(event);
}

void ProjectTree::focusInEvent(QFocusEvent *event)
{
    ProjectItemView::focusInEvent(event);
    slotSelectionChanged();
}
