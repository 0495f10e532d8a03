#include "projectrows.h"
#include "document.h"
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projecttreeitem.h"
#include "projectworkspace.h"
#include "varnelassert.h"
#include "windowservices.h"
#include "workspace.h"
#include <algorithm>
#include <QFileInfo>

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
    return item->type() == ProjectRows::FolderRTTI;
}

constexpr int FileNameRole = Qt::UserRole + 100; ///< its object may be deleted before its row

QString fileNameOf(const QTreeWidgetItem *project)
{
    return project->data(0, FileNameRole).toString();
}

/// Calls @p visit with each row of a folder below @p item, and with a name for it that stays when the objects of the
/// model are loaded again. @p path is the name of @p item.
template <typename Visit>
void forEachFolder(QTreeWidgetItem *item, const QString &path, const Visit &visit)
{
    QHash<QString, int> counts; // of folders with one name
    for (int i = 0; i < item->childCount(); ++i) {
        QTreeWidgetItem *child = item->child(i);
        if (!isFolder(child))
            continue;
        const QString name = u"%1\n%2\n%3"_s.arg(path, child->text(0), QString::number(counts[child->text(0)]++));
        visit(static_cast<ListViewItem *>(child), name);
        forEachFolder(child, name, visit);
    }
}

template <typename Object>
Object *objectOf(const ListViewItem *item)
{
    return static_cast<const ProjectTreeItem *>(item)->object<Object>();
}
} // namespace

ProjectRows::ProjectRows(ListView &view, const WindowServices &window)
    : m_view(view)
    , m_window(window)
    , m_folderPicture(window.icon(u"treefolder.png"_s))
    , m_openFolderPicture(window.icon(u"treefolderopen.png"_s))
    , m_filePicture(window.icon(u"treesourcefile.png"_s))
{
    m_showTimer.setSingleShot(true);
    m_showTimer.setInterval(0);
    QObject::connect(&m_showTimer, &QTimer::timeout, &m_showTimer, [this] { m_view.scrollTo(m_itemToShow); });
}

// The whole tree ----------------------------------------------------------

void ProjectRows::addWorkspace(ProjectWorkspace *workspace, const QList<QPointer<Project>> &projects,
                               const Project *current)
{
    const QString text = tr("Workspace '%1': %2 project(s)").arg(workspace->name(), QString::number(projects.size()));
    auto *root = new ProjectTreeItem(&m_view, nullptr, text, workspace, nullptr, WorkspaceRTTI, false,
                                     m_window.icon(u"treeworkspace.png"_s));
    setUndraggable(root);
    ListViewItem *last = nullptr;
    for (const QPointer<Project> &project : projects)
        last = addProject(root, last, project);
    root->setOpen(true);
    updateActivity();
    updateMarks();
    markCurrent(current);
    restore(m_openRows);
}

ProjectRows::OpenRows ProjectRows::openRows() const
{
    OpenRows rows;
    for (ProjectTreeItem *project : m_projectItems) {
        if (!project->isOpen())
            rows.closedProjects.insert(fileNameOf(project));
        forEachFolder(project, fileNameOf(project), [&rows](const ListViewItem *folder, const QString &name) {
            if (folder->isOpen())
                rows.openFolders.insert(name);
        });
    }
    return rows;
}

void ProjectRows::restore(const OpenRows &rows)
{
    for (ProjectTreeItem *item : std::as_const(m_projectItems)) {
        forEachFolder(item, fileNameOf(item), [&](ListViewItem *folder, const QString &name) {
            const bool open = rows.openFolders.contains(name);
            if (open)
                makeChildren(folder);
            folder->setOpen(open);
        });
        item->setOpen(!rows.closedProjects.contains(fileNameOf(item)));
    }
}

ListViewItem *ProjectRows::addProject(ListViewItem *root, ListViewItem *after, Project *project)
{
    auto *item = new ProjectTreeItem(root, after, project->displayName(), project, nullptr, ProjectRTTI, false);
    setUndraggable(item);
    item->setData(0, FileNameRole, QString(project->basePath() + u'/' + project->name()));
    m_projectItems.insert(project, item);
    setUnmade(item, true);
    item->setOpen(true);
    return item;
}

void ProjectRows::clear()
{
    m_view.endRename(ListView::Reject);
    if (!m_projectItems.isEmpty())
        m_openRows = m_unfiltered ? *m_unfiltered : openRows();
    const QSignalBlocker blocker(m_view); // the objects of the items may be deleted already
    m_view.clear();
    m_projectItems.clear();
    m_folderItems.clear();
    m_fileItems.clear();
}

void ProjectRows::updateActivity()
{
    const QIcon active = m_window.icon(u"treeproject.png"_s);
    const QIcon inactive = m_window.icon(u"treeprojectinactive.png"_s);
    for (ProjectTreeItem *item : std::as_const(m_projectItems))
        item->setPixmap(projectOf(item)->isActive() ? active : inactive);
}

void ProjectRows::updateMarks()
{
    for (ProjectTreeItem *item : std::as_const(m_projectItems)) {
        const Project *project = projectOf(item);
        item->setMark(!project->openedOK() ? tr(" (not loaded)") : project->isModified() ? u" *"_s : QString());
        item->setFaded(!project->openedOK());
    }
}

void ProjectRows::updateFile(ListViewItem *item)
{
    const ProjectFile *file = fileOf(item);
    if (!file)
        return;
    auto *row = static_cast<ProjectTreeItem *>(item); // a file that lies in two projects has two
    const QString path = file->project()->absolutePath(file->path());
    const bool exists = QFileInfo::exists(path);
    const Workspace *documents = m_window.workspace();
    const Document *document = documents ? documents->findDocument(path) : nullptr;
    row->setFaded(!exists);
    row->setMark(document && document->modified() ? u" *"_s : exists ? QString() : tr(" (missing)"));
}

// The filter --------------------------------------------------------------

bool ProjectRows::filter(const QString &text)
{
    bool any = false;
    if (!text.isEmpty() && !m_unfiltered)
        m_unfiltered = openRows();
    if (!text.isEmpty())
        makeAll();
    for (ProjectTreeItem *item : std::as_const(m_projectItems)) {
        const Project *project = projectOf(item); // the row also names its environments
        any = filterRow(item, project ? project->name() : item->text(0), text) || any;
        item->setHidden(false);
    }
    if (text.isEmpty() && m_unfiltered)
        restore(*std::exchange(m_unfiltered, std::nullopt));
    return any;
}

/// Whether @p name, that of @p item, or a row below it matches. One that matches is opened, and all rows below it are
/// shown.
bool ProjectRows::filterRow(QTreeWidgetItem *item, const QString &name, const QString &text)
{
    const bool matches = name.contains(text, Qt::CaseInsensitive);
    const bool matchesBelow = filterBelow(item, matches ? QString() : text);
    if (matches && !text.isEmpty())
        item->setExpanded(true);
    return matches || matchesBelow;
}

/// Whether a row below @p item is shown.
bool ProjectRows::filterBelow(QTreeWidgetItem *item, const QString &text)
{
    bool any = false;
    for (int i = 0; i < item->childCount(); ++i) {
        QTreeWidgetItem *child = item->child(i);
        const bool isShown = filterRow(child, child->text(0), text);
        child->setHidden(!isShown);
        any = any || isShown;
    }
    if (any && !text.isEmpty())
        item->setExpanded(true);
    return any;
}

void ProjectRows::markCurrent(const Project *project)
{
    for (ProjectTreeItem *item : std::as_const(m_projectItems))
        item->setBold(projectOf(item) == project);
    m_view.viewport()->update();
}

// Creation ----------------------------------------------------------------

ProjectTreeItem *ProjectRows::makeItem(ProjectFolder *folder)
{
    auto *item = new ProjectTreeItem(noParent(), nullptr, folder->name(), folder, nullptr, FolderRTTI, false,
                                     m_folderPicture, m_openFolderPicture);
    item->setRenameEnabled(0, true);
    setUnmade(item, !folder->folders().isEmpty() || !folder->files().isEmpty());
    m_folderItems.insert(folder, item);
    return item;
}

ProjectTreeItem *ProjectRows::makeItem(ProjectFile *file)
{
    auto *item = new ProjectTreeItem(noParent(), nullptr, file->name(), file, nullptr, FileRTTI, true, m_filePicture);
    m_fileItems.insert(file, item);
    return item;
}

void ProjectRows::makeChildren(QTreeWidgetItem *item)
{
    if (!item || !isUnmade(item))
        return;
    setUnmade(item, false);
    const auto *parent = static_cast<ListViewItem *>(item);
    const Project *project = projectOf(parent);
    const ProjectFolder *folder = folderOf(parent);
    QList<QTreeWidgetItem *> children;
    for (ProjectFolder *child : project ? project->folders() : folder->folders())
        children += makeItem(child);
    for (ProjectFile *child : sortedByName(project ? project->rootFiles() : folder->files()))
        children += makeItem(child);
    item->addChildren(children);
}

void ProjectRows::makeAll()
{
    makeAllBelow(m_view.invisibleRootItem());
}

void ProjectRows::makeAllBelow(QTreeWidgetItem *item)
{
    makeChildren(item);
    for (int i = 0; i < item->childCount(); ++i)
        makeAllBelow(item->child(i));
}

QList<ProjectFile *> ProjectRows::sortedByName(const QList<ProjectFile *> &files) const
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

// Changes of the model ----------------------------------------------------

int ProjectRows::placeFor(const ListViewItem *parent, const ProjectFolder *folder) const
{
    const Project *project = projectOf(parent);
    const QList<ProjectFolder *> siblings = project ? project->folders() : folderOf(parent)->folders();
    return std::min(int(siblings.indexOf(folder)), firstPlace(parent, isFolder));
}

int ProjectRows::placeFor(const ListViewItem *parent, const ProjectFile *file) const
{
    return firstPlace(parent, [&](const QTreeWidgetItem *item) {
        return isFolder(item) || m_collator.compare(item->text(0), file->name()) <= 0;
    });
}

template <typename Child>
void ProjectRows::add(ProjectFolder *parent, Child *child)
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
void ProjectRows::remove(ProjectFolder *parent, Child *child, QHash<const Child *, ProjectTreeItem *> &items,
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

void ProjectRows::addFolder(ProjectFolder *parent, ProjectFolder *folder)
{
    add(parent, folder);
}

void ProjectRows::addFile(ProjectFolder *parent, ProjectFile *file)
{
    add(parent, file);
}

void ProjectRows::removeFolder(ProjectFolder *parent, ProjectFolder *folder)
{
    remove(parent, folder, m_folderItems, "m_folderItems[folder]");
}

void ProjectRows::removeFile(ProjectFolder *parent, ProjectFile *file)
{
    remove(parent, file, m_fileItems, "m_fileItems[file]");
}

void ProjectRows::renameFolder(const ProjectFolder *folder, const QString &name)
{
    if (ProjectTreeItem *item = m_folderItems.value(folder))
        item->setText(0, name);
}

/// Whether the removed child of @p parent never had a row, because its parent was not opened or is not shown itself.
/// The indicator for rows to be created is removed with the last child.
bool ProjectRows::stayedUnmade(ProjectFolder *parent, Project *project)
{
    ProjectTreeItem *parentItem = parent ? m_folderItems.value(parent) : m_projectItems.value(project);
    if (!parentItem)
        return true;
    if (!parent || !isUnmade(parentItem))
        return false; // the rows of a project are created at once
    setUnmade(parentItem, !parent->folders().isEmpty() || !parent->files().isEmpty());
    return true;
}

void ProjectRows::deleteItem(ProjectTreeItem *item)
{
    forgetChildren(item);
    item->parent()->takeItem(item);
    delete item;
}

void ProjectRows::forgetChildren(const QTreeWidgetItem *item)
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

void ProjectRows::makeVisible(ProjectTreeItem *item)
{
    for (ListViewItem *above = item->parent(); above; above = above->parent())
        above->setOpen(true);
    m_itemToShow = m_view.indexFromItem(item);
    m_showTimer.start();
}

// Objects and their rows --------------------------------------------------

ProjectTreeItem *ProjectRows::itemOf(ProjectFolder *parent, Project *project)
{
    return parent ? itemOf(parent) : m_projectItems.value(project);
}

ProjectTreeItem *ProjectRows::itemOf(ProjectFolder *folder)
{
    if (!m_folderItems.contains(folder))
        makeChildren(itemOf(folder->parent(), folder->project()));
    return m_folderItems.value(folder);
}

ProjectTreeItem *ProjectRows::itemOf(ProjectFile *file)
{
    if (!m_fileItems.contains(file))
        makeChildren(itemOf(file->folder(), file->project()));
    return m_fileItems.value(file);
}

Project *ProjectRows::projectOf(const ListViewItem *item) const
{
    return item && item->rtti() == ProjectRTTI ? objectOf<Project>(item) : nullptr;
}

ProjectFolder *ProjectRows::folderOf(const ListViewItem *item) const
{
    if (!item || item->rtti() != FolderRTTI)
        return nullptr;
    auto *folder = objectOf<ProjectFolder>(item);
    return contains(folder) ? folder : nullptr;
}

ProjectFile *ProjectRows::fileOf(const ListViewItem *item) const
{
    if (!item || item->rtti() != FileRTTI)
        return nullptr;
    auto *file = objectOf<ProjectFile>(item);
    return contains(file) ? file : nullptr;
}
