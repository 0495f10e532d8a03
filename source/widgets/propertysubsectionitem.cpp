#include "propertysubsectionitem.h"
#include "propertylist.h"
#include <QPainter>

namespace {
constexpr int BoxX = 5;
constexpr int NameX = 20;
} // namespace

PropertySubsectionItem::PropertySubsectionItem(const QString &name, PropertyList *list, ListViewItem *after)
    : PropertyItem(name, {}, list, after)
{}

PropertySubsectionItem::PropertySubsectionItem(const QString &name, PropertyItem *parent, ListViewItem *after)
    : PropertyItem(name, {}, parent, after)
{}

void PropertySubsectionItem::setValue(const QVariant &value, bool notify)
{
    storeValue(value, {}, notify);
}

void PropertySubsectionItem::paintCell(QPainter *painter, const QStyleOptionViewItem &option, int column) const
{
    const bool isHighlighted = propertyList()->currentItem() == this && propertyList()->hasFocusInside();
    const QPalette &palette = option.palette;
    painter->fillRect(option.rect, isHighlighted ? palette.highlight() : palette.button());
    if (column == 0)
        paintOpenBox(painter, option.rect);
    const QRect row(propertyList()->columnViewportPosition(0), option.rect.y(), propertyList()->viewport()->width(),
                    option.rect.height());
    QFont font = option.font;
    font.setBold(isChanged()); // in the second column, too
    painter->setFont(font);
    painter->setPen(palette.color(isHighlighted ? QPalette::HighlightedText : QPalette::ButtonText));
    const QRect rect = row.adjusted(NameX, 0, 0, 0); // one text that each column shows its part of
    painter->save();
    painter->setClipRect(option.rect, Qt::IntersectClip);
    painter->drawText(rect, Qt::AlignVCenter | Qt::TextSingleLine,
                      QFontMetrics(font).elidedText(name(), Qt::ElideRight, rect.width()));
    painter->restore();
    painter->setPen(propertyList()->gridColor());
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
}

QRect PropertySubsectionItem::openBox(const QRect &row) const
{
    QRect box = PropertyItem::openBox(row);
    if (!box.isEmpty())
        box.moveLeft(row.x() + BoxX);
    return box;
}

int PropertySubsectionItem::textIndent() const
{
    return NameX;
}
