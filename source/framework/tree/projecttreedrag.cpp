#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projecttree.h"
#include "projecttreeitem.h"
#include <QDrag>
#include <QDragMoveEvent>
#include <QScrollBar>

// The part of ProjectTree for dragging folders and files and dropping them on folders and projects.

namespace {
constexpr int ScrollZone = 30; ///< pixels from the upper and the lower edge
constexpr int ScrollStep = 30;
constexpr int ScrollInterval = 100; ///< milliseconds
} // namespace

void ProjectTree::startDrag(Qt::DropActions)
{
    auto *drag = new QDrag(this);
    drag->setMimeData(dragObject());
    drag->exec(Qt::MoveAction);
}

ProjectItemDrag *ProjectTree::dragObject() const
{
    return new ProjectItemDrag(*this);
}

void ProjectTree::dragEnterEvent(QDragEnterEvent *event)
{
    event->setAccepted(isOwnDrag(event));
    m_dragScrollTime.start();
}

void ProjectTree::dragMoveEvent(QDragMoveEvent *event)
{
    event->ignore();
    if (!isOwnDrag(event))
        return;
    const QPoint position = event->position().toPoint();
    scrollWhileDragging(position.y());
    setDropItem(dropItemAt(position));
    if (!m_dropItem.isValid())
        return;
    event->setDropAction(Qt::MoveAction);
    event->accept(QRect()); // an empty rectangle, so that every further move sends an event
}

void ProjectTree::dragLeaveEvent(QDragLeaveEvent *)
{
    setDropItem(nullptr);
}

void ProjectTree::dropEvent(QDropEvent *event)
{
    const auto *dropItem = static_cast<ProjectTreeItem *>(item(m_dropItem));
    m_dropItem = QModelIndex();
    event->ignore();
    ProjectFolder *target = folderOf(dropItem);
    Project *project = target ? target->project() : projectOf(dropItem);
    if (!project || !isOwnDrag(event))
        return;
    const QList<ProjectItemDrag::Item> items = itemsInTree(*event->mimeData());
    editModel([&] {
        for (const ProjectItemDrag::Item &item : items)
            drop(item, project, target);
        selectItems(items);
    });
    event->setDropAction(Qt::MoveAction);
    event->accept();
}

void ProjectTree::drop(const ProjectItemDrag::Item &item, Project *project, ProjectFolder *target)
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

void ProjectTree::selectItems(const QList<ProjectItemDrag::Item> &items)
{
    clearSelection();
    for (const ProjectItemDrag::Item &item : items) {
        if (ProjectTreeItem *row = item.folder ? itemOf(item.folder) : itemOf(item.file))
            row->setSelected(true);
    }
}

bool ProjectTree::isOwnDrag(const QDropEvent *event) const
{
    return event->source() == this && event->mimeData()->hasFormat(ProjectItemDrag::format());
}

/// The target of a drop: the folder or project at @p position, or that of the file there.
ProjectTreeItem *ProjectTree::dropItemAt(const QPoint &position) const
{
    ListViewItem *item = itemAt(position);
    while (item && item->rtti() == FileRTTI)
        item = item->parent();
    return item && item->rtti() != WorkspaceRTTI ? static_cast<ProjectTreeItem *>(item) : nullptr;
}

void ProjectTree::setDropItem(ProjectTreeItem *item)
{
    ListViewItem *old = this->item(m_dropItem);
    if (item == old)
        return;
    if (old)
        old->setSelected(m_dropItemWasSelected);
    m_dropItem = item ? indexFromItem(item) : QModelIndex();
    if (!item)
        return;
    m_dropItemWasSelected = item->isSelected();
    item->setSelected(true);
}

void ProjectTree::scrollWhileDragging(int y)
{
    const bool atTop = y < ScrollZone;
    const bool atBottom = y > viewport()->height() - ScrollZone;
    if (!atTop && !atBottom) {
        m_dragScrollTime.restart();
        return;
    }
    if (m_dragScrollTime.elapsed() <= ScrollInterval)
        return;
    QScrollBar *bar = verticalScrollBar();
    bar->setValue(bar->value() + (atTop ? -ScrollStep : ScrollStep));
    m_dragScrollTime.restart();
}
