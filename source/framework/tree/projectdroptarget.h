#pragma once
#include <QElapsedTimer>
#include <QPersistentModelIndex>
class ListView;
class ListViewItem;
class QDragEnterEvent;
class QDragMoveEvent;
class QDropEvent;

/// The row of a project tree over which its folders and files are dragged. It is highlighted, and the tree scrolls
/// while the mouse is near the upper or the lower edge.
class ProjectDropTarget
{
public:
    explicit ProjectDropTarget(ListView &view) : m_view(view) {}

    /// Accepts only drags that began in this tree.
    void dragEnter(QDragEnterEvent &event);
    void dragMove(QDragMoveEvent &event);
    void dragLeave() { setItem(nullptr); }
    [[nodiscard]] bool isOwnDrag(const QDropEvent &event) const;
    /// Ends the drag and returns the row, a folder or a project, which stays highlighted; null if there is none.
    [[nodiscard]] ListViewItem *take();

private:
    [[nodiscard]] ListViewItem *itemAt(const QPoint &position) const;
    void setItem(ListViewItem *item);
    void scroll(int y);

    ListView &m_view;
    QPersistentModelIndex m_item;
    bool m_wasSelected = false; ///< whether the user had selected the highlighted row
    QElapsedTimer m_scrollTime; ///< since the last step
};
