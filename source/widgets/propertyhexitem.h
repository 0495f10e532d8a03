#pragma once
#include "propertytextitem.h"

/// A row with a number of up to 32 bits, shown in hexadecimal digits. The value is an unsigned integer.
class PropertyHexItem : public PropertyTextItem
{
    Q_OBJECT
public:
    PropertyHexItem(const QString &name, const QVariant &value, int bits, PropertyList *list, ListViewItem *after);
    PropertyHexItem(const QString &name, const QVariant &value, int bits, PropertyItem *parent, ListViewItem *after);

    [[nodiscard]] int bits() const { return m_bits; }
    void setValue(const QVariant &value, bool notify) override;
    [[nodiscard]] QWidget *createEditor() override;
    void transferEditor(bool toValue) override;

private:
    const int m_bits;
};

/// Accepts only characters that can occur in a number such as "0x1F".
void allowHexDigits(QLineEdit *edit);
