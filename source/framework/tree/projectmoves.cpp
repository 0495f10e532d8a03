#include "projectmoves.h"
#include "project.h"
#include "projectrows.h"
#include "projecttreeitem.h"
#include "varnelassert.h"
#include <algorithm>
#include <QClipboard>
#include <QGuiApplication>

namespace {
bool allFitInto(const QList<ProjectItemDrag::Item> &items, const ProjectFolder *target)
{
    return std::ranges::all_of(items, [target](const auto &item) { return item.fitsInto(target); });
}

void dropItem(const ProjectItemDrag::Item &item, Project *project, ProjectFolder *target)
{
    const bool inSameProject = item.project() == project;
    if (!item.fitsInto(target))
        return;
    if (item.file && inSameProject && item.file->folder() == target)
        return;
    if (item.folder && inSameProject)
        return project->moveFolder(item.folder, target);
    if (item.file && inSameProject)
        return project->moveFile(item.file, target);
    if (item.folder)
        item.project()->removeFolder(item.folder);
    else
        item.project()->removeFile(item.file);
    item.putInto(project, target, false);
}
} // namespace

void ProjectMoves::cut()
{
    auto *drag = new ProjectItemDrag(m_view);
    QGuiApplication::clipboard()->setMimeData(drag);
    const QList<ProjectItemDrag::Item> items = itemsInTree(*drag);
    drag->keep(items);
    editModel([&] {
        ProjectUndo::Places before(items);
        for (const ProjectItemDrag::Item &item : items)
            item.takeOut();
        m_undo.noteCut(std::move(before));
    });
}

void ProjectMoves::paste(Project *project, ProjectFolder *target)
{
    const ProjectItemDrag *drag = ProjectItemDrag::fromClipboard();
    if (!drag)
        return;
    VARNEL_ASSERT(project);
    if (!project)
        return;
    const QList<ProjectItemDrag::Item> items = drag->keptItems();
    if (!allFitInto(items, target))
        return; // they stay on the clipboard, which is the only place where they are
    editModel([&] {
        for (const ProjectItemDrag::Item &item : items)
            item.putInto(project, target, true);
        m_undo.notePaste(items);
        QGuiApplication::clipboard()->clear();
    });
}

/// A folder that lies in two projects may be selected in one of them while its parent in the other is on the clipboard.
bool ProjectMoves::canPaste(const ProjectFolder *target)
{
    const ProjectItemDrag *drag = ProjectItemDrag::fromClipboard();
    return drag && allFitInto(drag->keptItems(), target);
}

void ProjectMoves::remove()
{
    const QList<ProjectItemDrag::Item> items = ProjectItemDrag::items(ProjectItemDrag(m_view));
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

void ProjectMoves::drop(const QMimeData &data, Project *project, ProjectFolder *target)
{
    const QList<ProjectItemDrag::Item> items = itemsInTree(data);
    editModel([&] {
        ProjectUndo::Places before(items);
        for (const ProjectItemDrag::Item &item : items)
            dropItem(item, project, target);
        m_undo.noteMove(std::move(before));
        select(items);
    });
}

void ProjectMoves::noteRename(ProjectFolder *folder, const QString &before)
{
    m_undo.noteRename(folder, before);
}

bool ProjectMoves::undo()
{
    QList<ProjectItemDrag::Item> items;
    editModel([&] {
        items = m_undo.undo();
        if (items.isEmpty())
            return;
        if (const ProjectItemDrag *drag = ProjectItemDrag::fromClipboard(); drag && drag->keeps(items.first()))
            QGuiApplication::clipboard()->clear(); // they could be pasted a second time
        select(items);
    });
    return !items.isEmpty();
}

void ProjectMoves::select(const QList<ProjectItemDrag::Item> &items)
{
    m_view.clearSelection();
    for (const ProjectItemDrag::Item &item : items) {
        if (ProjectTreeItem *row = item.folder ? m_rows.itemOf(item.folder) : m_rows.itemOf(item.file))
            row->setSelected(true);
    }
}

bool ProjectMoves::isInTree(const ProjectItemDrag::Item &item) const
{
    return item.folder ? m_rows.contains(item.folder) : m_rows.contains(item.file);
}

/// Without those that scripts have deleted during the drag, and those whose row has lost its object.
QList<ProjectItemDrag::Item> ProjectMoves::itemsInTree(const QMimeData &data) const
{
    QList<ProjectItemDrag::Item> items = ProjectItemDrag::items(data);
    items.removeIf([this](const auto &item) { return !isInTree(item); });
    for (ProjectItemDrag::Item &item : items)
        item.base = item.project()->basePath();
    return items;
}

/// Runs a function that changes the model; emits finished() once, at the end. If the current row is removed, the row in
/// its place becomes current; the view would search for it after each removed row.
void ProjectMoves::editModel(const std::function<void()> &work)
{
    const QPersistentModelIndex current = m_view.currentIndex();
    const QPersistentModelIndex parent = current.parent();
    const int place = current.row();
    m_view.selectionModel()->clearCurrentIndex();
    m_running = true;
    work();
    m_running = false;
    QModelIndex next = current;
    if (!next.isValid())
        next = m_view.model()->index(std::min(place, m_view.model()->rowCount(parent) - 1), 0, parent);
    if (!next.isValid())
        next = parent;
    m_view.selectionModel()->setCurrentIndex(next, QItemSelectionModel::NoUpdate);
    Q_EMIT finished();
}
