#pragma once
#include "propertyitem.h"

/// A heading across both columns, for the rows below it.
class PropertySubsectionItem : public PropertyItem
{
    Q_OBJECT
public:
    PropertySubsectionItem(const QString &name, PropertyList *list, ListViewItem *after);
    PropertySubsectionItem(const QString &name, PropertyItem *parent, ListViewItem *after);

    void setValue(const QVariant &value, bool notify) override; ///< It is not shown.
    void paintCell(QPainter *painter, const QStyleOptionViewItem &option, int column) const override;
    [[nodiscard]] QRect openBox(const QRect &row) const override;
    [[nodiscard]] int textIndent() const override;
};
