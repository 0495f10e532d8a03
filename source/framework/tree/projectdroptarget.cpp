#include "projectdroptarget.h"
#include "listview.h"
#include "projectitemdrag.h"
#include "projectrows.h"
#include <QDragMoveEvent>
#include <QScrollBar>

namespace {
constexpr int ScrollZone = 30; ///< pixels from the upper and the lower edge
constexpr int ScrollStep = 30;
constexpr int ScrollInterval = 100; ///< milliseconds
} // namespace

void ProjectDropTarget::dragEnter(QDragEnterEvent &event)
{
    event.setAccepted(isOwnDrag(event));
    m_scrollTime.start();
}

void ProjectDropTarget::dragMove(QDragMoveEvent &event)
{
    event.ignore();
    if (!isOwnDrag(event))
        return;
    const QPoint position = event.position().toPoint();
    scroll(position.y());
    setItem(itemAt(position));
    if (!m_item.isValid())
        return;
    event.setDropAction(Qt::MoveAction);
    event.accept(QRect()); // an empty rectangle, so that every further move sends an event
}

bool ProjectDropTarget::isOwnDrag(const QDropEvent &event) const
{
    return event.source() == &m_view && event.mimeData()->hasFormat(ProjectItemDrag::format());
}

ListViewItem *ProjectDropTarget::take()
{
    ListViewItem *item = m_view.item(m_item);
    m_item = QModelIndex();
    return item;
}

/// The folder or project at @p position, or that of the file there.
ListViewItem *ProjectDropTarget::itemAt(const QPoint &position) const
{
    ListViewItem *item = m_view.itemAt(position);
    while (item && item->rtti() == ProjectRows::FileRTTI)
        item = item->parent();
    return item && item->rtti() != ProjectRows::WorkspaceRTTI ? item : nullptr;
}

void ProjectDropTarget::setItem(ListViewItem *item)
{
    ListViewItem *old = m_view.item(m_item);
    if (item == old)
        return;
    if (old)
        old->setSelected(m_wasSelected);
    m_item = m_view.indexFromItem(item);
    if (!item)
        return;
    m_wasSelected = item->isSelected();
    item->setSelected(true);
}

void ProjectDropTarget::scroll(int y)
{
    const bool atTop = y < ScrollZone;
    const bool atBottom = y > m_view.viewport()->height() - ScrollZone;
    if (!atTop && !atBottom) {
        m_scrollTime.restart();
        return;
    }
    if (m_scrollTime.elapsed() <= ScrollInterval)
        return;
    QScrollBar *bar = m_view.verticalScrollBar();
    bar->setValue(bar->value() + (atTop ? -ScrollStep : ScrollStep));
    m_scrollTime.restart();
}
