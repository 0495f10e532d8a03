#include "variablelist.h"
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>

namespace {
constexpr int NameCharacters = 14;
constexpr int TypeCharacters = 10;
constexpr int MostOfName = 45; ///< per cent of the width
constexpr int MostOfType = 25;
} // namespace

VariableList::VariableList(QWidget *parent) : ListView(parent)
{
    setHeaderLabels({tr("Name"), tr("Value"), tr("Type")});
    const int digit = fontMetrics().horizontalAdvance(u'0');
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::Interactive);
    header()->setSectionResizeMode(ValueColumn, QHeaderView::Stretch);
    header()->resizeSection(NameColumn, digit * NameCharacters);
    header()->resizeSection(TypeColumn, digit * TypeCharacters);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // a tool tip shows what is cut off
    setDefaultRenameAction(Accept);
    setExpandsOnDoubleClick(false);
    connect(header(), &QHeaderView::sectionResized, this, &VariableList::keepValuesReadable);
}

void VariableList::keepValuesReadable()
{
    if (m_resizing)
        return;
    const QScopedValueRollback resizing(m_resizing, true);
    const int width = viewport()->width();
    const auto limit = [&](int column, int percentage) {
        if (header()->sectionSize(column) > width * percentage / 100)
            header()->resizeSection(column, width * percentage / 100);
    };
    limit(NameColumn, MostOfName);
    limit(TypeColumn, MostOfType);
}

void VariableList::resizeEvent(QResizeEvent *event)
{
    ListView::resizeEvent(event);
    keepValuesReadable();
}

void VariableList::editValue(ListViewItem *row)
{
    row->startRename(ValueColumn);
    if (QLineEdit *edit = renameEdit())
        edit->selectAll();
}

void VariableList::keyPressEvent(QKeyEvent *event)
{
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isPlain || !currentItem() || (!isReturn && event->key() != Qt::Key_F2))
        ListView::keyPressEvent(event);
    else if (currentItem()->isRenameEnabled(ValueColumn))
        editValue(currentItem());
    else if (isReturn)
        Q_EMIT activated(currentItem());
}

/// On a value it edits, elsewhere it opens and closes the row.
void VariableList::mouseDoubleClickEvent(QMouseEvent *event)
{
    ListView::mouseDoubleClickEvent(event);
    ListViewItem *row = itemAt(event->pos());
    if (!row || event->button() != Qt::LeftButton)
        return;
    if (columnAt(event->pos().x()) == ValueColumn && row->isRenameEnabled(ValueColumn))
        editValue(row);
    else if (row->childIndicatorPolicy() == QTreeWidgetItem::ShowIndicator)
        row->setExpanded(!row->isExpanded());
    else
        Q_EMIT activated(row);
}
