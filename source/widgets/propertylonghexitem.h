#pragma once
#include "propertytextitem.h"

/// A row with a number of any width, shown in hexadecimal digits. The value is a QByteArray, the lowest byte first.
class PropertyLongHexItem : public PropertyTextItem
{
    Q_OBJECT
public:
    PropertyLongHexItem(const QString &name, const QVariant &value, int bits, PropertyList *list, ListViewItem *after);
    PropertyLongHexItem(const QString &name, const QVariant &value, int bits, PropertyItem *parent,
                        ListViewItem *after);

    [[nodiscard]] int bits() const { return m_bits; }
    void setValue(const QVariant &value, bool notify) override;
    [[nodiscard]] QWidget *createEditor() override;
    void transferEditor(bool toValue) override;

private:
    const int m_bits;
};
