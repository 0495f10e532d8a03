#include "projecttree.h"
#include "activity.h"
#include "popupmenu.h"
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projecttreeitem.h"
#include "projectworkspace.h"
#include "varnelassert.h"
#include "windowservices.h"

using namespace Qt::StringLiterals;

namespace {
/// Whether the rows below @p item are not created yet. All other items have the default indicator policy.
bool isUnmade(const QTreeWidgetItem *item)
{
    return item->childIndicatorPolicy() == QTreeWidgetItem::ShowIndicator;
}

void setUnmade(QTreeWidgetItem *item, bool unmade)
{
    item->setChildIndicatorPolicy(unmade ? QTreeWidgetItem::ShowIndicator
                                         : QTreeWidgetItem::DontShowIndicatorWhenChildless);
}

void setUndraggable(QTreeWidgetItem *item)
{
    item->setFlags(item->flags() & ~Qt::ItemIsDragEnabled);
}

ListViewItem *noParent()
{
    return nullptr;
}

/// The index of the first row below @p item that is not sorted before the wanted one.
template <typename StandsBefore>
int firstPlace(const QTreeWidgetItem *item, StandsBefore standsBefore)
{
    int low = 0;
    int high = item->childCount();
    while (low < high) {
        const int middle = (low + high) / 2;
        if (standsBefore(item->child(middle)))
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

bool isFolder(const QTreeWidgetItem *item)
{
    return item->type() == ProjectTree::FolderRTTI;
}
} // namespace

ProjectTree::ProjectTree(const Activity &activity, WindowServices &window, QWidget *parent)
    : ListView(parent)
    , m_activity(activity)
    , m_window(window)
    , m_workspaceMenu(newMenu(u"workspaceContextMenu"_s))
    , m_projectMenu(newMenu(u"projectContextMenu"_s))
    , m_folderMenu(newMenu(u"folderContextMenu"_s))
    , m_fileMenu(newMenu(u"fileContextMenu"_s))
    , m_pyFileMenu(newMenu(u"pyFileContextMenu"_s))
    , m_folderPicture(window.icon(u"treefolder.png"_s))
    , m_openFolderPicture(window.icon(u"treefolderopen.png"_s))
    , m_filePicture(window.icon(u"treesourcefile.png"_s))
{
    setHeaderLabel(u"Column1"_s);
    setHeaderHidden(true);
    setItemMargin(1);
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setDragEnabled(true);
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);

    fillProjectMenu();
    fillFolderMenu();
    fillFileMenu(m_fileMenu);
    fillFileMenu(m_pyFileMenu);
    m_pyFileMenu->addSeparator();
    m_pyFileMenu->addAction(tr("&Run"), this, [this] { runPyFile(); });

    connect(&activity, &Activity::projectReloading, this, &ProjectTree::releaseWorkspace);
    m_showTimer.setSingleShot(true);
    m_showTimer.setInterval(0);
    connect(&m_showTimer, &QTimer::timeout, this, [this] { scrollTo(m_itemToShow); });
    connect(this, &QTreeWidget::itemExpanded, this, &ProjectTree::makeChildren);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &ProjectTree::slotSelectionChanged);
    connect(this, &QTreeWidget::itemDoubleClicked, this, [this] { openFile(); });
    connect(this, &ListView::returnPressed, this, [this] { openFile(); });
    connect(this, &ListView::itemRenamed, this, &ProjectTree::folderRenamed);
    connect(this, &ListView::contextMenuRequested, this, &ProjectTree::slotContextMenuRequested);
}

ProjectTree::~ProjectTree()
{
    const QSignalBlocker blocker(this); // the model may be deleted already
    releaseWorkspace();
}

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
    clearItems();
    if (selected)
        slotSelectionChanged();
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

void ProjectTree::rebuild()
{
    VARNEL_ASSERT(m_workspace);
    if (!m_workspace)
        return;
    const bool selected = selectedItem();
    clearItems();
    m_projects = m_activity.projects();
    const QString text =
        tr("Workspace '%1': %2 project(s)").arg(m_workspace->name(), QString::number(m_projects.size()));
    auto *root = new ProjectTreeItem(this, nullptr, text, m_workspace, nullptr, WorkspaceRTTI, false,
                                     m_window.icon(u"treeworkspace.png"_s));
    setUndraggable(root);
    ListViewItem *last = nullptr;
    for (const QPointer<Project> &project : std::as_const(m_projects))
        last = addProject(root, last, project);
    root->setOpen(true);
    activityChanged();
    currentProjectChanged();
    if (selected)
        slotSelectionChanged();
}

void ProjectTree::clearItems()
{
    endRename(Reject);
    const QSignalBlocker blocker(this); // the objects of the items may be deleted already
    clear();
    m_projectItems.clear();
    m_folderItems.clear();
    m_fileItems.clear();
}

ProjectTreeItem *ProjectTree::addProject(ListViewItem *root, ListViewItem *after, Project *project)
{
    project->disconnect(this);
    connect(project, &Project::folderAdded, this, &ProjectTree::slotFolderAdded);
    connect(project, &Project::folderRemoved, this, &ProjectTree::slotFolderRemoved);
    connect(project, &Project::fileAdded, this, &ProjectTree::slotFileAdded);
    connect(project, &Project::fileRemoved, this, &ProjectTree::slotFileRemoved);
    connect(project, &Project::folderRenamed, this, [this](ProjectFolder *folder, const QString &name) {
        if (ProjectTreeItem *item = m_folderItems.value(folder))
            item->setText(0, name);
    });
    auto *item = new ProjectTreeItem(root, after, project->displayName(), project, nullptr, ProjectRTTI, false);
    setUndraggable(item);
    m_projectItems.insert(project, item);
    setUnmade(item, true);
    item->setOpen(true);
    return item;
}

ProjectTreeItem *ProjectTree::makeItem(ProjectFolder *folder)
{
    auto *item = new ProjectTreeItem(noParent(), nullptr, folder->name(), folder, nullptr, FolderRTTI, false,
                                     m_folderPicture, m_openFolderPicture);
    item->setRenameEnabled(0, true);
    setUnmade(item, !folder->folders().isEmpty() || !folder->files().isEmpty());
    m_folderItems.insert(folder, item);
    return item;
}

ProjectTreeItem *ProjectTree::makeItem(ProjectFile *file)
{
    auto *item = new ProjectTreeItem(noParent(), nullptr, file->name(), file, nullptr, FileRTTI, true, m_filePicture);
    m_fileItems.insert(file, item);
    return item;
}

void ProjectTree::makeChildren(QTreeWidgetItem *item)
{
    if (!item || !isUnmade(item))
        return;
    setUnmade(item, false);
    const auto *parent = static_cast<ProjectTreeItem *>(item);
    const Project *project = projectOf(parent);
    const ProjectFolder *folder = folderOf(parent);
    QList<QTreeWidgetItem *> children;
    for (ProjectFolder *child : project ? project->folders() : folder->folders())
        children += makeItem(child);
    for (ProjectFile *child : sortedByName(project ? project->rootFiles() : folder->files()))
        children += makeItem(child);
    item->addChildren(children);
}

void ProjectTree::makeAll(QTreeWidgetItem *item)
{
    makeChildren(item);
    for (int i = 0; i < item->childCount(); ++i)
        makeAll(item->child(i));
}

void ProjectTree::expandAll()
{
    makeAll(invisibleRootItem());
    ListView::expandAll();
}

void ProjectTree::expandToDepth(int depth)
{
    makeAll(invisibleRootItem());
    ListView::expandToDepth(depth);
}

QList<ProjectFile *> ProjectTree::sortedByName(const QList<ProjectFile *> &files) const
{
    std::vector<std::pair<QCollatorSortKey, ProjectFile *>> byName;
    byName.reserve(files.size());
    for (ProjectFile *file : files)
        byName.emplace_back(m_collator.sortKey(file->name()), file);
    std::ranges::stable_sort(byName, [](const auto &left, const auto &right) { return left.first < right.first; });
    QList<ProjectFile *> sorted;
    sorted.reserve(files.size());
    for (const auto &[key, file] : byName)
        sorted += file;
    return sorted;
}

int ProjectTree::placeFor(const ProjectTreeItem *parent, const ProjectFolder *folder) const
{
    const Project *project = projectOf(parent);
    const QList<ProjectFolder *> siblings = project ? project->folders() : folderOf(parent)->folders();
    return std::min(int(siblings.indexOf(folder)), firstPlace(parent, isFolder));
}

int ProjectTree::placeFor(const ProjectTreeItem *parent, const ProjectFile *file) const
{
    return firstPlace(parent, [&](const QTreeWidgetItem *item) {
        return isFolder(item) || m_collator.compare(item->text(0), file->name()) <= 0;
    });
}

ProjectTreeItem *ProjectTree::itemOf(ProjectFolder *parent, Project *project)
{
    return parent ? itemOf(parent) : m_projectItems.value(project);
}

ProjectTreeItem *ProjectTree::itemOf(ProjectFolder *folder)
{
    if (!m_folderItems.contains(folder))
        makeChildren(itemOf(folder->parent(), folder->project()));
    return m_folderItems.value(folder);
}

ProjectTreeItem *ProjectTree::itemOf(ProjectFile *file)
{
    if (!m_fileItems.contains(file))
        makeChildren(itemOf(file->folder(), file->project()));
    return m_fileItems.value(file);
}

template <typename Child>
void ProjectTree::childAdded(ProjectFolder *parent, Child *child)
{
    ProjectTreeItem *parentItem = itemOf(parent, child->project());
    VARNEL_ASSERT(parentItem);
    if (!parentItem)
        return;
    if (isUnmade(parentItem))
        makeChildren(parentItem);
    else
        parentItem->insertChild(placeFor(parentItem, child), makeItem(child));
    makeVisible(itemOf(child));
}

template <typename Child>
void ProjectTree::childRemoved(ProjectFolder *parent, Child *child, QHash<const Child *, ProjectTreeItem *> &items,
                               const char *assertion)
{
    if (stayedUnmade(parent, child->project()))
        return;
    ProjectTreeItem *item = itemOf(child);
    VARNEL_ASSERT_TEXT(item, assertion);
    if (!item)
        return;
    items[child] = nullptr;
    deleteItem(item);
}

void ProjectTree::slotFolderAdded(ProjectFolder *parent, ProjectFolder *folder)
{
    childAdded(parent, folder);
}

void ProjectTree::slotFileAdded(ProjectFolder *parent, ProjectFile *file)
{
    childAdded(parent, file);
}

void ProjectTree::slotFolderRemoved(ProjectFolder *parent, ProjectFolder *folder)
{
    childRemoved(parent, folder, m_folderItems, "m_folderItems[folder]");
}

void ProjectTree::slotFileRemoved(ProjectFolder *parent, ProjectFile *file)
{
    childRemoved(parent, file, m_fileItems, "m_fileItems[file]");
}

/// Whether the removed child of @p parent never had a row, because its parent was not opened or is not shown itself.
/// The indicator for rows to be created is removed with the last child.
bool ProjectTree::stayedUnmade(ProjectFolder *parent, Project *project)
{
    ProjectTreeItem *parentItem = parent ? m_folderItems.value(parent) : m_projectItems.value(project);
    if (!parentItem)
        return true;
    if (!parent || !isUnmade(parentItem))
        return false; // the rows of a project are created at once
    setUnmade(parentItem, !parent->folders().isEmpty() || !parent->files().isEmpty());
    return true;
}

void ProjectTree::deleteItem(ProjectTreeItem *item)
{
    forgetChildren(item);
    item->parent()->takeItem(item);
    delete item;
}

void ProjectTree::forgetChildren(const QTreeWidgetItem *item)
{
    for (int i = 0; i < item->childCount(); ++i) {
        const auto *child = static_cast<const ProjectTreeItem *>(item->child(i));
        forgetChildren(child);
        // An object that lies in two projects has another row, which stays.
        if (isFolder(child) && m_folderItems.value(child->object<ProjectFolder>()) == child)
            m_folderItems.remove(child->object<ProjectFolder>());
        else if (!isFolder(child) && m_fileItems.value(child->object<ProjectFile>()) == child)
            m_fileItems.remove(child->object<ProjectFile>());
    }
}

void ProjectTree::makeVisible(ProjectTreeItem *item)
{
    for (ListViewItem *above = item->parent(); above; above = above->parent())
        above->setOpen(true);
    m_itemToShow = indexFromItem(item);
    m_showTimer.start();
}

Project *ProjectTree::projectOf(const ProjectTreeItem *item) const
{
    if (!item || item->rtti() != ProjectRTTI)
        return nullptr;
    return item->object<Project>();
}

ProjectFolder *ProjectTree::folderOf(const ProjectTreeItem *item) const
{
    if (!item || item->rtti() != FolderRTTI)
        return nullptr;
    auto *folder = item->object<ProjectFolder>();
    return m_folderItems.value(folder) ? folder : nullptr;
}

ProjectFile *ProjectTree::fileOf(const ProjectTreeItem *item) const
{
    if (!item || item->rtti() != FileRTTI)
        return nullptr;
    auto *file = item->object<ProjectFile>();
    return m_fileItems.value(file) ? file : nullptr;
}

ProjectTreeItem *ProjectTree::selectedItem() const
{
    return static_cast<ProjectTreeItem *>(firstSelectedItem());
}

ProjectFile *ProjectTree::selectedFile() const
{
    return fileOf(selectedItem());
}

Project *ProjectTree::selectedProject() const
{
    const ProjectTreeItem *item = selectedItem();
    if (const ProjectFolder *folder = folderOf(item))
        return folder->project();
    if (const ProjectFile *file = fileOf(item))
        return file->project();
    return projectOf(item);
}

QString ProjectTree::selectedPath() const
{
    const ProjectFile *file = selectedFile();
    return file ? file->project()->absolutePath(file->path()) : QString();
}

void ProjectTree::workspaceChanged()
{
    rebuild();
}

void ProjectTree::activityChanged()
{
    const QIcon active = m_window.icon(u"treeproject.png"_s);
    const QIcon inactive = m_window.icon(u"treeprojectinactive.png"_s);
    for (ProjectTreeItem *item : std::as_const(m_projectItems))
        item->setPixmap(projectOf(item)->isActive() ? active : inactive);
}

void ProjectTree::currentProjectChanged()
{
    const Project *current = m_workspace ? m_workspace->currentProject() : nullptr;
    for (ProjectTreeItem *item : std::as_const(m_projectItems))
        item->setBold(projectOf(item) == current);
    viewport()->update();
}

void ProjectTree::slotSelectionChanged()
{
    if (m_editing)
        return;
    const ProjectTreeItem *item = selectedItem();
    const ProjectFile *file = fileOf(item);
    const bool canCut = item && item->rtti() != ProjectRTTI;
    const QString path = file ? file->path() : u""_s;
    Q_EMIT cutAvailable(canCut);
    Q_EMIT pasteAvailable(canPaste());
    Q_EMIT fileSelected(path);
}

/// A folder that lies in two projects may be selected in one of them while its parent in the other is on the clipboard.
bool ProjectTree::canPaste() const
{
    const ProjectTreeItem *item = selectedItem();
    const ProjectItemDrag *drag = ProjectItemDrag::fromClipboard();
    return item && item->rtti() != FileRTTI && drag && allFitInto(drag->keptItems(), folderOf(item));
}
