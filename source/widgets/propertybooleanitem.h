#pragma once
#include "propertylistitem.h"

/// A row with "Yes" or "No". The value is 1 or 0, or invalid, which shows an empty cell.
class PropertyBooleanItem : public PropertyListItem
{
    Q_OBJECT
public:
    PropertyBooleanItem(const QString &name, const QVariant &value, PropertyList *list, ListViewItem *after);
    PropertyBooleanItem(const QString &name, const QVariant &value, PropertyItem *parent, ListViewItem *after);

    void setValue(const QVariant &value, bool notify) override;
    void transferEditor(bool toValue) override;
};

/// Whether a value means Yes: a number other than 0, or the text "true".
[[nodiscard]] bool isYes(const QVariant &value);
