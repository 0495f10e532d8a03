#include "projecttreeitem.h"
#include "rowpainter.h"
#include <QPainter>
#include <QStyleOptionViewItem>

ProjectTreeItem::~ProjectTreeItem()
{
    if (m_deleter)
        m_deleter(m_data);
}

void ProjectTreeItem::setPixmap(const QIcon &closedPixmap)
{
    m_closedPixmap = closedPixmap;
    openChanged(isOpen());
}

bool ProjectTreeItem::operator<(const QTreeWidgetItem &other) const
{
    if (type() != other.type())
        return type() < other.type();
    // Rows that are not sorted by text keep their order, because the toolkit's sorting is stable.
    return m_sortByText && text(0).localeAwareCompare(other.text(0)) < 0;
}

void ProjectTreeItem::openChanged(bool open)
{
    setIcon(0, open && !m_openPixmap.isNull() ? m_openPixmap : m_closedPixmap);
}

void ProjectTreeItem::initStyleOption(QStyleOptionViewItem *option, int column) const
{
    if (m_background)
        option->backgroundBrush = backgroundColor();
    if (column > 0)
        return;
    option->font.setBold(m_bold);
    option->font.setItalic(m_italic);
    option->text += m_mark;
    if (m_faded)
        option->palette.setColor(QPalette::Text, fadedText(option->palette));
}

void ProjectTreeItem::setMark(const QString &mark)
{
    if (m_mark == mark)
        return;
    m_mark = mark;
    setData(0, Qt::AccessibleTextRole, mark.isEmpty() ? QVariant() : text(0) + mark); // repaints the row too
}

void ProjectTreeItem::paintCell(QPainter *painter, const QStyleOptionViewItem &option, int column) const
{
    ListViewItem::paintCell(painter, option, column);
    if (!m_grid)
        return;
    painter->setPen(option.palette.color(QPalette::Dark));
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    painter->drawLine(option.rect.topRight(), option.rect.bottomRight());
}

QColor ProjectTreeItem::backgroundColor() const
{
    return treeWidget()->palette().color(QPalette::Base);
}
