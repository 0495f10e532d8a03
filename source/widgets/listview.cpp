#include "listview.h"
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>

using namespace Qt::StringLiterals;

/// Calls the paint functions of the rows and watches the line edit of the cell that is being renamed.
class ListViewDelegate : public QStyledItemDelegate
{
public:
    explicit ListViewDelegate(ListView *list) : QStyledItemDelegate(list), m_list(list) {}

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem complete = option;
        initStyleOption(&complete, index);
        m_list->item(index)->paintCell(painter, complete, index.column());
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, 2 * m_list->itemMargin());
    }

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override
    {
        if (event->type() != QEvent::ToolTip || index.data(Qt::ToolTipRole).isValid() || !index.isValid())
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        const QRect cell = view->visualRect(index);
        const bool cutOff = sizeHint(option, index).width() > cell.width();
        QToolTip::showText(event->globalPos(), cutOff ? index.data().toString() : QString(), view->viewport(), cell);
        return true;
    }

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QWidget *editor = QStyledItemDelegate::createEditor(parent, option, index);
        const QString column = m_list->headerItem()->text(index.column());
        if (editor)
            editor->setAccessibleName(m_list->isHeaderHidden() ? m_list->accessibleName() : column);
        m_list->m_renameEdit = editor;
        return editor;
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        m_list->item(index)->initStyleOption(option, index.column());
    }

    /// The toolkit commits on Return only after the event; here all is done when the event was handled.
    bool eventFilter(QObject *, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::ShortcutOverride:
            event->setAccepted(static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape);
            return event->isAccepted();
        case QEvent::KeyPress:
            return endRenameByKey(static_cast<QKeyEvent *>(event)->key());
        case QEvent::FocusOut:
            if (static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason)
                m_list->endRename(m_list->defaultRenameAction());
            return false;
        default:
            return false;
        }
    }

private:
    bool endRenameByKey(int key)
    {
        switch (key) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            m_list->endRename(ListView::Accept);
            return true;
        case Qt::Key_Escape:
            m_list->endRename(ListView::Reject);
            return true;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            m_list->endRename(m_list->defaultRenameAction());
            return true;
        default:
            return false;
        }
    }

    ListView *m_list;
};

namespace {
/// The path of rows from the root to @p index, which sorts a deeper row after the rows above it.
QVarLengthArray<int, 8> pathTo(QModelIndex index)
{
    QVarLengthArray<int, 8> path;
    for (; index.isValid(); index = index.parent())
        path.append(index.row());
    std::reverse(path.begin(), path.end());
    return path;
}
} // namespace

ListViewItem::ListViewItem(ListView *list, ListViewItem *after, const QString &text, int rtti)
    : QTreeWidgetItem(static_cast<QTreeWidget *>(list), after, rtti)
{
    setText(0, text);
}

ListViewItem::ListViewItem(ListViewItem *parent, ListViewItem *after, const QString &text, int rtti)
    : QTreeWidgetItem(static_cast<QTreeWidgetItem *>(parent), after, rtti)
{
    setText(0, text);
}

ListView *ListViewItem::listView() const
{
    return static_cast<ListView *>(treeWidget());
}

ListViewItem *ListViewItem::parent() const
{
    return static_cast<ListViewItem *>(QTreeWidgetItem::parent());
}

ListViewItem *ListViewItem::firstChild() const
{
    return static_cast<ListViewItem *>(child(0));
}

ListViewItem *ListViewItem::nextSibling() const
{
    auto *self = const_cast<ListViewItem *>(this);
    if (const QTreeWidgetItem *above = QTreeWidgetItem::parent())
        return static_cast<ListViewItem *>(above->child(above->indexOfChild(self) + 1));
    const QTreeWidget *list = treeWidget();
    return list ? static_cast<ListViewItem *>(list->topLevelItem(list->indexOfTopLevelItem(self) + 1)) : nullptr;
}

ListViewItem *ListViewItem::itemAbove() const
{
    return treeWidget() ? static_cast<ListViewItem *>(treeWidget()->itemAbove(this)) : nullptr;
}

ListViewItem *ListViewItem::itemBelow() const
{
    return treeWidget() ? static_cast<ListViewItem *>(treeWidget()->itemBelow(this)) : nullptr;
}

void ListViewItem::insertItem(ListViewItem *item, ListViewItem *after)
{
    insertChild(indexOfChild(after) + 1, item);
}

void ListViewItem::takeItem(ListViewItem *item)
{
    removeChild(item);
}

void ListViewItem::setRenameEnabled(int column, bool enabled)
{
    m_renameColumns = enabled ? m_renameColumns | 1u << column : m_renameColumns & ~(1u << column);
}

void ListViewItem::startRename(int column)
{
    if (ListView *list = listView())
        list->startRename(this, column);
}

void ListViewItem::openChanged(bool) {}

void ListViewItem::initStyleOption(QStyleOptionViewItem *, int) const {}

void ListViewItem::paintCell(QPainter *painter, const QStyleOptionViewItem &option, int) const
{
    option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
}

ListView::ListView(QWidget *parent) : QTreeWidget(parent)
{
    setEditTriggers(NoEditTriggers);
    setUniformRowHeights(true);
    setItemDelegate(new ListViewDelegate(this));
    header()->setTextElideMode(Qt::ElideRight); // as the cells
    connect(this, &QTreeWidget::itemExpanded, this,
            [](QTreeWidgetItem *item) { static_cast<ListViewItem *>(item)->openChanged(true); });
    connect(this, &QTreeWidget::itemCollapsed, this,
            [](QTreeWidgetItem *item) { static_cast<ListViewItem *>(item)->openChanged(false); });
}

ListView::~ListView()
{
    endRename(Reject); // a later end would run with a partly destroyed list when the base class deletes the editor
}

ListViewItem *ListView::firstChild() const
{
    return static_cast<ListViewItem *>(topLevelItem(0));
}

ListViewItem *ListView::currentItem() const
{
    return static_cast<ListViewItem *>(QTreeWidget::currentItem());
}

ListViewItem *ListView::itemAt(const QPoint &position) const
{
    return static_cast<ListViewItem *>(QTreeWidget::itemAt(position));
}

ListViewItem *ListView::item(const QModelIndex &index) const
{
    return static_cast<ListViewItem *>(itemFromIndex(index));
}

QRect ListView::itemRect(const ListViewItem *item) const
{
    return visualItemRect(item) & viewport()->rect();
}

void ListView::insertItem(ListViewItem *item, ListViewItem *after)
{
    insertTopLevelItem(indexOfTopLevelItem(after) + 1, item);
}

void ListView::takeItem(ListViewItem *item)
{
    takeTopLevelItem(indexOfTopLevelItem(item));
}

void ListView::ensureItemVisible(ListViewItem *item)
{
    for (ListViewItem *above = item->parent(); above; above = above->parent())
        above->setOpen(true);
    scrollToItem(item);
}

ListViewItem *ListView::firstSelectedItem() const
{
    const QItemSelection selection = selectionModel()->selection();
    const auto first = std::min_element(selection.begin(), selection.end(), [](const auto &left, const auto &right) {
        return std::ranges::lexicographical_compare(pathTo(left.topLeft()), pathTo(right.topLeft()));
    });
    return first == selection.end() ? nullptr : item(first->topLeft());
}

QList<ListViewItem *> ListView::selectedItemsInOrder() const
{
    QList<ListViewItem *> items;
    for (QTreeWidgetItemIterator it(const_cast<ListView *>(this), QTreeWidgetItemIterator::Selected); *it; ++it)
        items += static_cast<ListViewItem *>(*it);
    return items;
}

void ListView::setItemMargin(int margin)
{
    m_itemMargin = margin;
    scheduleDelayedItemsLayout();
}

QLineEdit *ListView::renameEdit() const
{
    return m_renamed.isValid() ? qobject_cast<QLineEdit *>(m_renameEdit) : nullptr;
}

void ListView::startRename(ListViewItem *item, int column)
{
    if (!item->isRenameEnabled(column))
        return;
    endRename(m_defaultRenameAction);
    m_renamed = indexFromItem(item, column);
    selectionModel()->setCurrentIndex(m_renamed, QItemSelectionModel::NoUpdate);
    ensureItemVisible(item);
    setEditable(item, true);
    editItem(item, column);
    if (QLineEdit *edit = renameEdit())
        edit->setObjectName(u"renameEdit"_s);
}

void ListView::endRename(RenameAction action)
{
    QLineEdit *edit = renameEdit();
    if (!edit)
        return;
    const QString text = edit->text();
    const int column = m_renamed.column();
    ListViewItem *item = this->item(m_renamed);
    m_renamed = QModelIndex(); // closing the editor moves the focus, which calls this function again
    closeEditor(edit, QAbstractItemDelegate::NoHint);
    setEditable(item, false);
    if (action == Reject)
        return;
    item->setText(column, text);
    Q_EMIT itemRenamed(item, column, text);
}

void ListView::keyboardSearch(const QString &text)
{
    if (text != " "_L1) // a blank selects and must not start a search for a row that begins with a blank
        QTreeWidget::keyboardSearch(text);
}

void ListView::keyPressEvent(QKeyEvent *event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isMenu =
        event->key() == Qt::Key_F10 ? event->modifiers() == Qt::ShiftModifier : event->key() == Qt::Key_Menu && plain;
    if (isMenu)
        return requestContextMenuOfCurrentItem();
    if (currentItem() && plain && event->key() == Qt::Key_F2)
        return startRename(currentItem(), currentColumn());
    if (!isReturn)
        return QTreeWidget::keyPressEvent(event);
    if (currentItem() && plain)
        Q_EMIT returnPressed(currentItem());
    event->ignore(); // the default button of the dialog must not get the key
}

void ListView::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() == QContextMenuEvent::Keyboard)
        return requestContextMenuOfCurrentItem();
    const QPoint position = viewport()->mapFromGlobal(event->globalPos());
    Q_EMIT contextMenuRequested(itemAt(position), event->globalPos(), columnAt(position.x()));
}

void ListView::drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const
{
    const ListViewItem *row = item(index);
    const ListViewItem *above = row->parent();
    if (above && !above->paintsBranches() && row->childCount() == 0)
        painter->fillRect(rect, palette().base());
    else
        QTreeWidget::drawBranches(painter, rect, index);
}

void ListView::requestContextMenuOfCurrentItem()
{
    ListViewItem *current = currentItem();
    if (!current)
        return;
    if (!current->isSelected())
        setCurrentItem(current, currentColumn()); // as a mouse press does
    ensureItemVisible(current);
    const QRect rect = itemRect(current);
    Q_EMIT contextMenuRequested(current, viewport()->mapToGlobal(QPoint(rect.center().x(), rect.bottom())),
                                currentColumn());
}

void ListView::setEditable(ListViewItem *item, bool editable)
{
    const QSignalBlocker blocker(this); // signals about changed items report the user's changes only
    item->setFlags(item->flags().setFlag(Qt::ItemIsEditable, editable));
}
