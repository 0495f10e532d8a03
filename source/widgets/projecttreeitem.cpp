#include "projecttreeitem.h"
#include <QPainter>
#include <QStyleOptionViewItem>

ProjectTreeItem::ProjectTreeItem(ListView *list, ListViewItem *after, const QString &text, void *data, Deleter deleter,
                                 int rtti, bool sortByText, const QIcon &closedPixmap, const QIcon &openPixmap)
    : ListViewItem(list, after, text, rtti)
    , m_closedPixmap(closedPixmap)
    , m_openPixmap(openPixmap)
    , m_data(data)
    , m_deleter(deleter)
    , m_sortByText(sortByText)
{
    setIcon(0, closedPixmap);
}

ProjectTreeItem::ProjectTreeItem(ListViewItem *parent, ListViewItem *after, const QString &text, void *data,
                                 Deleter deleter, int rtti, bool sortByText, const QIcon &closedPixmap,
                                 const QIcon &openPixmap)
    : ListViewItem(parent, after, text, rtti)
    , m_closedPixmap(closedPixmap)
    , m_openPixmap(openPixmap)
    , m_data(data)
    , m_deleter(deleter)
    , m_sortByText(sortByText)
{
    setIcon(0, closedPixmap);
}

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
    // Neither goes before the other if not by text, and the toolkit's sorting is stable.
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
