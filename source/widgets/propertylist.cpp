#include "propertylist.h"
#include "propertysubsectionitem.h"
#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {
constexpr int DefaultTreeStep = 20;
constexpr int NameMargin = 8;          ///< in pixels, around a name in its cell
constexpr int MaximumEmptyRows = 1000; ///< on a screen of any size

PropertyItem *row(ListViewItem *item)
{
    return static_cast<PropertyItem *>(item);
}

/// Also over the border of windows: a dialog or a popup belongs to the widget that opened it.
bool belongsTo(const QWidget *widget, const QWidget *ancestor)
{
    while (widget && widget != ancestor)
        widget = widget->parentWidget();
    return widget;
}

bool isPlain(const QKeyEvent *event)
{
    return (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

/// The place of the last row in its list; empty without rows.
QRect lastRowRect(const ListView &list)
{
    const QTreeWidgetItem *last = list.topLevelItem(list.topLevelItemCount() - 1);
    while (last && last->isExpanded() && last->childCount() > 0)
        last = last->child(last->childCount() - 1);
    return last ? list.visualItemRect(last) : QRect();
}
} // namespace

PropertyList::PropertyList(const QString &nameTitle, const QString &valueTitle, QWidget *parent) : ListView(parent)
{
    setHeaderLabels({nameTitle, valueTitle});
    header()->setStretchLastSection(true);
    header()->setSectionsMovable(false);
    header()->setMinimumSectionSize(0);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setSelectionMode(NoSelection);
    setSortingEnabled(false);
    setItemMargin(2);
    setFocusPolicy(Qt::WheelFocus);
    setRootIsDecorated(false);
    setTreeStepSize(DefaultTreeStep);
    setAllColumnsShowFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    updateColors();
    connect(header(), &QHeaderView::sectionResized, this, &PropertyList::columnResized);
    connect(this, &QTreeWidget::itemExpanded, this, &PropertyList::expandedOrCollapsed);
    connect(this, &QTreeWidget::itemCollapsed, this, &PropertyList::expandedOrCollapsed);
}

PropertyList::~PropertyList()
{
    clear(); // rows delete their editors, for which they need the list
}

PropertyItem *PropertyList::currentItem() const
{
    return row(ListView::currentItem());
}

PropertyItem *PropertyList::itemAt(const QPoint &position) const
{
    return row(ListView::itemAt(position));
}

PropertyItem *PropertyList::firstChild() const
{
    return row(ListView::firstChild());
}

void PropertyList::clear()
{
    if (m_current)
        m_current->dropEditor();
    m_current = nullptr;
    ListView::clear();
}

void PropertyList::setReadOnly(bool readOnly)
{
    if (readOnly && m_current)
        m_current->acceptEditor();
    m_readOnly = readOnly;
}

void PropertyList::endEdit()
{
    if (m_current)
        m_current->acceptEditor();
}

void PropertyList::fitNames()
{
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    m_namesWidth = header()->sectionSizeHint(0) + NameMargin;
    for (QTreeWidgetItemIterator it(this); *it; ++it) {
        const PropertyItem *item = row(static_cast<ListViewItem *>(*it));
        if (!qobject_cast<const PropertySubsectionItem *>(item)) // its name extends over both columns
            m_namesWidth =
                std::max(m_namesWidth, item->textIndent() + metrics.horizontalAdvance(item->name()) + NameMargin);
    }
    applyNamesWidth();
}

void PropertyList::applyNamesWidth()
{
    if (m_namesWidth == 0 || m_columnsMovedByUser)
        return;
    const QScopedValueRollback applying(m_applyingWidth, true);
    header()->resizeSection(0, std::min(m_namesWidth, viewport()->width() * 3 / 5));
}

void PropertyList::columnResized(int column)
{
    if (column == 0 && !m_applyingWidth && m_namesWidth > 0)
        m_columnsMovedByUser = true;
    updateEditorSize();
}

void PropertyList::resizeEvent(QResizeEvent *event)
{
    ListView::resizeEvent(event);
    applyNamesWidth();
}

bool PropertyList::hasFocusInside() const
{
    return isFocusIn(this);
}

QColor PropertyList::warningColor() const
{
    return palette().color(QPalette::Base).lightness() < 128 ? QColor(255, 120, 110) : QColor(176, 0, 0);
}

QRect PropertyList::valueRect(const PropertyItem *item) const
{
    return visualRect(indexFromItem(item, 1)).adjusted(0, 0, -1, -1);
}

bool PropertyList::isFocusIn(const QWidget *widget)
{
    return belongsTo(QApplication::focusWidget(), widget);
}

void PropertyList::watchEditor(QWidget *editor)
{
    editor->installEventFilter(this);
    for (QWidget *child : editor->findChildren<QWidget *>()) {
        if (!child->isWindow())
            child->installEventFilter(this);
    }
}

void PropertyList::takeFocus()
{
    const QScopedValueRollback taking(m_takingFocus, true);
    setFocus();
}

void PropertyList::forget(const PropertyItem *item)
{
    if (m_current == item)
        m_current = nullptr;
}

void PropertyList::repaintItem(const PropertyItem *item)
{
    if (!item)
        return;
    const QRect rect = itemRect(item);
    viewport()->update(0, rect.y(), viewport()->width(), rect.height());
}

void PropertyList::itemPressed(ListViewItem *item, const QPoint &globalPosition, int column)
{
    if (!item) {
        if (m_current && m_current->acceptsOnFocusOut())
            m_current->acceptEditor();
        return;
    }
    if (m_readOnly || !m_current)
        return;
    m_current->showEditor();
    if (column == 1 && m_current && m_current->isEditing())
        m_current->editorClicked(m_current->editor()->mapFromGlobal(globalPosition));
}

void PropertyList::currentChanged(ListViewItem *item)
{
    if (!item)
        return;
    const QPointer<PropertyItem> selected(row(item));
    itemDescriptionChanged(selected);
    if (selected)
        Q_EMIT propertySelected(selected);
}

void PropertyList::itemDescriptionChanged(PropertyItem *item)
{
    if (item == m_current)
        Q_EMIT helpText(propertyHelp(item->name(), item->description()));
}

void PropertyList::updateEditorSize()
{
    updateEditorGeometries();
}

void PropertyList::updateEditorGeometries()
{
    ListView::updateEditorGeometries();
    if (m_current && m_current->isEditing() && !m_inserting)
        m_current->editor()->setGeometry(valueRect(m_current));
}

void PropertyList::rowsInserted(const QModelIndex &parent, int start, int end)
{
    const QScopedValueRollback inserting(m_inserting, true);
    ListView::rowsInserted(parent, start, end);
    scheduleDelayedItemsLayout(); // which places the editor
}

void PropertyList::scrollContentsBy(int dx, int dy)
{
    ListView::scrollContentsBy(dx, dy);
    updateEditorGeometries();
}

void PropertyList::leaveRow()
{
    const QPointer<PropertyItem> left(m_current);
    if (left && !m_readOnly)
        left->acceptEditor();
    if (left)
        left->dropEditor();
}

void PropertyList::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    ListView::currentChanged(current, previous);
    const QPointer<PropertyItem> next(current.isValid() ? row(item(current)) : nullptr);
    if (next == m_current)
        return;
    leaveRow();
    repaintItem(m_current);
    if (next != currentItem())
        return; // a receiver of the value chose another row
    m_current = next;
    if (next && !m_readOnly)
        next->showEditor();
    currentChanged(next);
}

/// The editor moves with its row and is closed when the row is hidden.
void PropertyList::expandedOrCollapsed()
{
    doItemsLayout();
    ListViewItem *hidden = m_current;
    for (ListViewItem *above = hidden ? hidden->parent() : nullptr; above; above = above->parent()) {
        if (!above->isOpen())
            setCurrentItem(above);
    }
}

void PropertyList::mousePressEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    const QPointer<PropertyItem> pressed = itemAt(position);
    if (pressed && event->button() == Qt::LeftButton && pressed->openBox(itemRect(pressed)).contains(position)) {
        pressed->setOpen(!pressed->isOpen());
        return;
    }
    ListView::mousePressEvent(event);
    itemPressed(pressed, event->globalPosition().toPoint(), columnAt(position.x()));
}

void PropertyList::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (m_current && m_current->acceptsOnFocusOut())
            m_current->acceptEditor();
        takeFocus();
        return;
    }
    if (event->key() == Qt::Key_F2 && isPlain(event)) {
        if (m_current && !m_readOnly)
            m_current->showEditor();
        return;
    }
    ListView::keyPressEvent(event);
}

/// Keys that an editor does not get.
bool PropertyList::editorKey(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        keyPressEvent(event);
        return true;
    case Qt::Key_Escape:
        if (m_current)
            m_current->rejectEditor();
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return leaveByTab(event->key() == Qt::Key_Tab);
    default:
        return false;
    }
}

/// The editor is not in the tab order, in which the list takes its place: after the last widget of the editor comes the
/// widget after the list.
bool PropertyList::leaveByTab(bool forward)
{
    const QWidget *focus = QApplication::focusWidget();
    QWidget *editor = m_current ? m_current->editor() : nullptr;
    if (!editor || !belongsTo(focus, editor))
        return false;
    for (QWidget *other : editor->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        const bool isStop = other->focusPolicy() & Qt::TabFocus && !other->focusProxy();
        if (isStop && focus->parentWidget() == editor
            && (forward ? other->x() > focus->x() : other->x() < focus->x())) {
            other->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    m_current->acceptEditor();
    takeFocus();
    return focusNextPrevChild(forward);
}

void PropertyList::focusInEvent(QFocusEvent *event)
{
    ListView::focusInEvent(event);
    repaintItem(m_current);
    const QList<Qt::FocusReason> entered = {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason,
                                            Qt::OtherFocusReason};
    if (m_takingFocus || m_readOnly || !m_current || !entered.contains(event->reason()))
        return;
    m_current->showEditor();
    if (m_current && m_current->isEditing())
        m_current->editorClicked(QPoint());
}

void PropertyList::focusOutEvent(QFocusEvent *event)
{
    ListView::focusOutEvent(event);
    focusLeft();
}

/// If no widget has the focus, the user works in another program; the edit goes on when this window is active again.
void PropertyList::focusLeft()
{
    repaintItem(m_current);
    if (!QApplication::focusWidget() || hasFocusInside())
        return;
    if (m_current && m_current->acceptsOnFocusOut())
        m_current->acceptEditor();
}

bool PropertyList::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape)
            event->accept();
        break;
    case QEvent::KeyPress:
        if (editorKey(static_cast<QKeyEvent *>(event)))
            return true;
        break;
    case QEvent::ContextMenu:
        if (m_current && m_current->showEditorMenu(static_cast<QContextMenuEvent *>(event)->globalPos()))
            return true;
        break;
    case QEvent::FocusIn:
        repaintItem(m_current);
        break;
    case QEvent::FocusOut:
        focusLeft();
        break;
    default:
        break;
    }
    return ListView::eventFilter(watched, event);
}

void PropertyList::changeEvent(QEvent *event)
{
    ListView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        updateColors();
    if (event->type() == QEvent::FontChange && m_namesWidth > 0)
        fitNames();
}

/// On a dark base the shades are lighter, or they could not be seen.
void PropertyList::updateColors()
{
    const QColor base = palette().color(QPalette::Base);
    const bool isDark = base.lightness() < 128;
    m_firstColor = isDark ? base.lighter(125) : base.darker(104);
    m_alternateColor = base;
    m_gridColor = isDark ? base.lighter(180) : base.darker(110);
}

void PropertyList::drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const int height = std::max(1, option.rect.height());
    const int scrolled = verticalScrollBar()->value() * (verticalScrollMode() == ScrollPerItem ? height : 1);
    const bool isOdd = (scrolled + option.rect.y()) / height & 1;
    const PropertyItem *item = row(this->item(index));
    for (const int column : {0, 1}) {
        QStyleOptionViewItem cell = option;
        cell.rect.setX(columnViewportPosition(column));
        cell.rect.setWidth(columnWidth(column));
        cell.backgroundBrush = isOdd ? m_alternateColor : m_firstColor;
        item->initStyleOption(&cell, column);
        item->paintCell(painter, cell, column);
    }
    if (!m_showFocusRect || item != m_current || !hasFocusInside())
        return;
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    focus.rect = option.rect.adjusted(0, 0, 0, -1);
    focus.state |= QStyle::State_KeyboardFocusChange;
    focus.backgroundColor = palette().color(QPalette::Highlight);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, this);
}

void PropertyList::paintEvent(QPaintEvent *event)
{
    ListView::paintEvent(event);
    if (indexAt(QPoint(0, viewport()->height() - 1)).isValid())
        return; // the rows fill the list; a search for the last row could take long
    const QRect last = lastRowRect(*this);
    const int height = last.isEmpty() ? fontMetrics().height() + 2 * itemMargin() : last.height();
    int y = last.isEmpty() ? 0 : last.bottom() + 1;
    QPainter painter(viewport());
    painter.fillRect(0, y, viewport()->width(), viewport()->height() - y, m_alternateColor);
    painter.setPen(m_gridColor);
    const int x = columnViewportPosition(0) + columnWidth(0) - 1;
    for (int i = 0; i < MaximumEmptyRows && y < viewport()->height(); ++i, y += height) {
        painter.drawLine(0, y + height - 1, viewport()->width(), y + height - 1);
        painter.drawLine(x, y, x, y + height - 1);
    }
}

bool PropertyList::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        if (showCutText(help->pos(), help->globalPos()))
            return true;
    }
    return ListView::viewportEvent(event);
}

/// Shows as a tool tip what is wrong with a value, or else the text that its cell cuts off.
bool PropertyList::showCutText(const QPoint &position, const QPoint &globalPosition)
{
    const PropertyItem *item = itemAt(position);
    if (!item)
        return false;
    const int column = columnAt(position.x());
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    item->initStyleOption(&option, column);
    const int room = columnWidth(column) - (column == 0 ? item->textIndent() : 0);
    const bool isCut = QFontMetrics(option.font).horizontalAdvance(item->text(column)) + 4 > room;
    const bool isWarned = column == 1 && !item->warning().isEmpty();
    const QString text = isWarned ? item->warning() : isCut ? item->text(column) : QString();
    const QString tip = text.isEmpty() ? QString() : u"<p>"_s + text.toHtmlEscaped() + u"</p>"_s;
    QToolTip::showText(globalPosition, tip, viewport(), visualRect(indexFromItem(item, column)));
    return true;
}
