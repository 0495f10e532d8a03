#include "watchlistview.h"
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>

using namespace Qt::StringLiterals;

namespace {
constexpr int WatchCharacters = 16; ///< width of the first column

/// A copy: an editor must not delete the text that was dragged from it.
void acceptText(QDropEvent *event)
{
    event->setAccepted(event->mimeData()->hasText());
    if (event->isAccepted())
        event->setDropAction(Qt::CopyAction);
}
} // namespace

WatchListView::WatchListView(QWidget *parent) : ListView(parent)
{
    setObjectName(u"watchListView"_s);
    setHeaderLabels({tr("Watch"), tr("Value")});
    header()->setStretchLastSection(true);
    header()->resizeSection(0, fontMetrics().horizontalAdvance(u'0') * WatchCharacters);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // a tool tip shows what is cut off
    setSortingEnabled(false);
    setRootIsDecorated(false);
    setItemMargin(2);
    setDefaultRenameAction(Accept);
    setSelectionBehavior(SelectItems); // Left and Right move between expression and value
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);
}

void WatchListView::dragEnterEvent(QDragEnterEvent *event)
{
    acceptText(event);
}

void WatchListView::dragMoveEvent(QDragMoveEvent *event)
{
    acceptText(event);
}

void WatchListView::dropEvent(QDropEvent *event)
{
    acceptText(event);
    if (event->isAccepted())
        Q_EMIT drop(event->mimeData()->text());
}

void WatchListView::keyPressEvent(QKeyEvent *event)
{
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const QList<int> editKeys{Qt::Key_F2, Qt::Key_Return, Qt::Key_Enter};
    if (isPlain && currentItem() && editKeys.contains(event->key()))
        Q_EMIT editRequested(currentItem(), currentColumn());
    else if (isPlain && event->key() == Qt::Key_Delete)
        Q_EMIT removeRequested();
    else
        ListView::keyPressEvent(event);
}
