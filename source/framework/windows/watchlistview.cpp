#include "watchlistview.h"
#include <algorithm>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace {
constexpr int WatchCharacters = 16; ///< least width of the first column
constexpr int CellMargin = 8;       ///< in pixels, around the text of a cell

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
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // a tool tip shows what is cut off
    setSortingEnabled(false);
    setRootIsDecorated(false);
    setItemMargin(2);
    setDefaultRenameAction(Accept);
    setSelectionBehavior(SelectItems); // Left and Right move between expression and value
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);
    connectChanges();
}

void WatchListView::connectChanges()
{
    m_fitTimer.setSingleShot(true);
    connect(&m_fitTimer, &QTimer::timeout, this, &WatchListView::fitExpressions);
    const auto fitLater = [this] { m_fitTimer.start(0); };
    connect(model(), &QAbstractItemModel::rowsInserted, this, fitLater);
    connect(model(), &QAbstractItemModel::rowsRemoved, this, fitLater);
    connect(model(), &QAbstractItemModel::dataChanged, this, [fitLater](const QModelIndex &first) {
        if (first.column() == 0) // values change often
            fitLater();
    });
    connect(this, &QTreeWidget::itemExpanded, this, fitLater);
    connect(this, &QTreeWidget::itemCollapsed, this, fitLater);
    connect(header(), &QHeaderView::sectionResized, this, [this](int section) {
        if (section == 0 && !m_isFitting)
            m_isMovedByUser = true;
    });
}

void WatchListView::resizeEvent(QResizeEvent *event)
{
    ListView::resizeEvent(event);
    fitExpressions();
}

void WatchListView::fitExpressions()
{
    if (m_isMovedByUser)
        return;
    const int least = fontMetrics().horizontalAdvance(u'0') * WatchCharacters;
    int width = least;
    for (QTreeWidgetItemIterator it(this, QTreeWidgetItemIterator::NotHidden); *it; ++it)
        width = std::max(width, widthOf(static_cast<const ListViewItem *>(*it)));
    const QScopedValueRollback fitting(m_isFitting, true);
    header()->resizeSection(0, std::min(width, std::max(least, viewport()->width() / 2)));
}

/// As if it were bold, so that the border stays where it is when values change; 0 below a closed row.
int WatchListView::widthOf(const ListViewItem *row) const
{
    int depth = rootIsDecorated() ? 1 : 0;
    for (const QTreeWidgetItem *above = row->parent(); above; above = above->parent(), ++depth) {
        if (!above->isExpanded())
            return 0;
    }
    QFont bold = font();
    bold.setBold(true);
    return depth * indentation() + QFontMetrics(bold).horizontalAdvance(row->text(0)) + CellMargin;
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
