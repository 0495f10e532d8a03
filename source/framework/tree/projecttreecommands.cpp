#include "lastdirectories.h"
#include "messages.h"
#include "modelpointer.h"
#include "popupmenu.h"
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projectsaving.h"
#include "projecttree.h"
#include "projecttreeitem.h"
#include "projectworkspace.h"
#include "questions.h"
#include "varnelassert.h"
#include "windowservices.h"
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>

// The part of ProjectTree for context menus, clipboard and keyboard.

using namespace Qt::StringLiterals;

namespace {
constexpr int SetActiveId = 1;

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

PopupMenu *ProjectTree::newMenu(const QString &name)
{
    auto *menu = new PopupMenu(this);
    menu->setObjectName(name);
    return menu;
}

void ProjectTree::addSharedActions(PopupMenu *menu, const QStringList &names)
{
    for (const QString &name : names) {
        if (QAction *action = m_window.action(name))
            menu->addAction(action);
    }
}

void ProjectTree::fillProjectMenu()
{
    addSharedActions(m_projectMenu, {u"projectInsertFilesAlt"_s});
    m_projectMenu->addAction(tr("New Folder"), this, &ProjectTree::createNewFolder);
    m_projectMenu->addSeparator();
    addSharedActions(m_projectMenu, {u"editPaste"_s});
    m_projectMenu->addSeparator();
    addSharedActions(m_projectMenu, {u"buildBuildAlt"_s, u"buildRebuildAlt"_s, u"buildCleanAlt"_s});
    m_projectMenu->addSeparator();
    m_projectMenu->insertItem(tr("Set as Acti&ve Project"), SetActiveId, [this](int) { setActiveProject(); });
    m_projectMenu->addAction(tr("&Remove Project from Workspace"), this, &ProjectTree::removeProject);
    m_projectMenu->addSeparator();
    addSharedActions(m_projectMenu, {u"projectPropertiesAlt"_s});
    m_projectMenu->addSeparator();
    m_projectMenu->addAction(tr("Save as &Template..."), this, [this] {
        if (Project *project = selectedProject())
            Q_EMIT saveAsTemplate(project);
    });
}

void ProjectTree::fillFolderMenu()
{
    m_folderMenu->addAction(tr("Add &Files to Folder..."), this, &ProjectTree::addFilesToFolder);
    m_folderMenu->addAction(tr("&New Folder"), this, &ProjectTree::createNewFolder);
    m_folderMenu->addSeparator();
    addSharedActions(m_folderMenu, {u"editCut"_s, u"editPaste"_s, u"editRemove"_s});
    m_folderMenu->addAction(tr("Rena&me"), this, &ProjectTree::renameFolder);
    m_folderMenu->addSeparator();
    m_folderMenu->addAction(tr("&Properties..."), this, &ProjectTree::folderProperties);
}

void ProjectTree::fillFileMenu(PopupMenu *menu)
{
    menu->addAction(tr("&Open"), this, [this] { openFile(); });
    menu->addSeparator();
    addSharedActions(menu, {u"buildCompileFile"_s});
    menu->addSeparator();
    addSharedActions(menu, {u"editCut"_s, u"editRemove"_s});
    menu->addSeparator();
    addSharedActions(menu, {u"fileProperties"_s});
}

void ProjectTree::slotContextMenuRequested(ListViewItem *item, const QPoint &point)
{
    if (!item)
        return;
    const auto *treeItem = static_cast<ProjectTreeItem *>(item);
    if (const Project *project = projectOf(treeItem)) {
        m_projectMenu->item(SetActiveId)->setEnabled(project->isActive());
        m_projectMenu->popup(point);
    } else if (folderOf(treeItem)) {
        m_folderMenu->popup(point);
    } else if (const ProjectFile *file = fileOf(treeItem)) {
        const bool isPython = QFileInfo(file->name()).completeSuffix() == "py"_L1;
        (isPython ? m_pyFileMenu : m_fileMenu)->popup(point);
    }
}

void ProjectTree::openFile()
{
    if (const QString path = selectedPath(); !path.isNull())
        Q_EMIT openFile(path);
}

void ProjectTree::runPyFile()
{
    if (const QString path = selectedPath(); !path.isNull())
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
    VARNEL_ASSERT_TEXT(item && (item->rtti() == FolderRTTI || item->rtti() == ProjectRTTI),
                       "selectedItem && (selectedItem->rtti() == FolderRTTI || "
                       "selectedItem->rtti() == ProjectRTTI)");
    Project *project = projectOf(item);
    ProjectFolder *parent = folderOf(item);
    if (!project && !parent)
        return;
    auto *folder = new ProjectFolder(tr("New Folder"));
    ProjectItemDrag::Item{folder, nullptr}.putInto(project, parent, true);
    ProjectTreeItem *folderItem = m_folderItems.value(folder);
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
    VARNEL_ASSERT_TEXT(item && item->rtti() == FolderRTTI, "selectedItem && selectedItem->rtti() == FolderRTTI");
    if (folderOf(item))
        item->startRename(0);
}

void ProjectTree::folderRenamed(ListViewItem *item)
{
    ProjectFolder *folder = folderOf(static_cast<ProjectTreeItem *>(item));
    if (!folder)
        return;
    const QString text = item->text(0);
    if (text.isEmpty())
        item->setText(0, folder->name());
    else
        folder->rename(text);
}

void ProjectTree::folderProperties()
{
    ProjectFolder *selected = folderOf(selectedItem());
    if (!selected)
        return;
    const ModelPointer<ProjectFolder> folder(selected); // scripts and plug-ins may delete it while the dialog is open
    const QString label = tr("Enter file extensions for this folder:");
    const std::optional<QString> text = askForText(m_window.dialogParent(), label, selected->extensions().join(u';'));
    if (text && folder)
        folder->setExtensions(text->split(u';', Qt::SkipEmptyParts));
}

void ProjectTree::addFilesToFolder()
{
    const ProjectTreeItem *item = selectedItem();
    VARNEL_ASSERT_TEXT(item && item->rtti() == FolderRTTI, "selectedItem && (selectedItem->rtti() == FolderRTTI)");
    if (!folderOf(item))
        return;
    const ModelPointer<ProjectFolder> folder(folderOf(item));
    const QStringList paths = askForOpenFiles(m_window.dialogParent(),
                                              {u"addFilesDialog"_s, tr("Add Files to Folder"),
                                               m_window.directories().directory(u"Files"_s), m_window.sourceFilter()});
    if (paths.isEmpty())
        return;
    m_window.directories().remember(u"Files"_s, paths.first());
    if (folder)
        folder->project()->addFiles(paths, folder.get());
}

void ProjectTree::setActiveProject()
{
    if (const Project *project = projectOf(selectedItem()))
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

void ProjectTree::cut()
{
    auto *drag = new ProjectItemDrag(*this);
    QGuiApplication::clipboard()->setMimeData(drag);
    const QList<ProjectItemDrag::Item> items = itemsInTree(*drag);
    drag->keep(items);
    editModel([&] {
        for (const ProjectItemDrag::Item &item : items)
            item.takeOut();
    });
}

void ProjectTree::paste()
{
    const ProjectItemDrag *drag = ProjectItemDrag::fromClipboard();
    if (!drag)
        return;
    ProjectFolder *target = folderOf(selectedItem());
    Project *project = selectedProject();
    VARNEL_ASSERT(project);
    if (!project)
        return;
    const QList<ProjectItemDrag::Item> items = drag->keptItems();
    if (!allFitInto(items, target))
        return; // they stay on the clipboard, which is the only place where they are
    editModel([&] {
        for (const ProjectItemDrag::Item &item : items)
            item.putInto(project, target, true);
        QGuiApplication::clipboard()->clear();
    });
}

void ProjectTree::remove()
{
    const QList<ProjectItemDrag::Item> items = ProjectItemDrag::items(ProjectItemDrag(*this));
    editModel([&] {
        for (const ProjectItemDrag::Item &item : items) {
            if (!isInTree(item))
                continue; // it was deleted with its folder
            item.takeOut();
            delete item.folder;
            delete item.file;
        }
    });
}

bool ProjectTree::allFitInto(const QList<ProjectItemDrag::Item> &items, const ProjectFolder *target)
{
    return std::ranges::all_of(items, [target](const auto &item) { return item.fitsInto(target); });
}

bool ProjectTree::isInTree(const ProjectItemDrag::Item &item) const
{
    return item.folder ? m_folderItems.value(item.folder) : m_fileItems.value(item.file);
}

/// Without those that scripts have deleted during the drag, and those whose row has lost its object.
QList<ProjectItemDrag::Item> ProjectTree::itemsInTree(const QMimeData &data) const
{
    QList<ProjectItemDrag::Item> items = ProjectItemDrag::items(data);
    items.removeIf([this](const auto &item) { return !isInTree(item); });
    for (ProjectItemDrag::Item &item : items)
        item.base = item.project()->basePath();
    return items;
}

/// Runs a function that changes the model; emits the signals about available commands once, at the end. If the current
/// row is removed, the row in its place becomes current; the view would search for it after each removed row.
void ProjectTree::editModel(const std::function<void()> &work)
{
    const QPersistentModelIndex current = currentIndex();
    const QPersistentModelIndex parent = current.parent();
    const int place = current.row();
    selectionModel()->clearCurrentIndex();
    m_editing = true;
    work();
    m_editing = false;
    QModelIndex next = current;
    if (!next.isValid())
        next = model()->index(std::min(place, model()->rowCount(parent) - 1), 0, parent);
    if (!next.isValid())
        next = parent;
    selectionModel()->setCurrentIndex(next, QItemSelectionModel::NoUpdate);
    slotSelectionChanged();
}

void ProjectTree::keyPressEvent(QKeyEvent *event)
{
    // Delete belongs to the shared action, and copying a name would replace the cut items on the clipboard.
    if (event->key() == Qt::Key_Delete || event->matches(QKeySequence::Copy))
        event->ignore();
    else
        ListView::keyPressEvent(event);
}

void ProjectTree::focusInEvent(QFocusEvent *event)
{
    ListView::focusInEvent(event);
    slotSelectionChanged();
}
