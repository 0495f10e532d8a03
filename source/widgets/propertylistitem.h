#pragma once
#include "propertyitem.h"

/// A row with a choice: the value is a key, what users see is its label.
class PropertyListItem : public PropertyItem
{
    Q_OBJECT
public:
    using PropertyItem::PropertyItem;
    /// Shows the label whose index is the value. Set the value again after the last option has been added.
    void addOption(const QString &label, const QString &key);

    [[nodiscard]] bool hasKey(const QString &key) const { return m_keys.contains(key); }

    /// Shows the first label for an unknown key, and nothing for an invalid value.
    void setValue(const QVariant &value, bool notify) override;
    [[nodiscard]] QWidget *createEditor() override;
    void transferEditor(bool toValue) override;

private:
    [[nodiscard]] int indexOf(const QVariant &value) const;

    QStringList m_labels;
    QStringList m_keys;
};
