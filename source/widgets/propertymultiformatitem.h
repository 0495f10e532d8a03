#pragma once
#include "propertytextitem.h"

/// A row with a number of up to 32 bits, shown in one of several formats. The value is an unsigned integer; bits above
/// the width are kept but not shown.
class PropertyMultiFormatItem : public PropertyTextItem
{
    Q_OBJECT
public:
    PropertyMultiFormatItem(const QString &name, const QVariant &value, int bits, PropertyList *list,
                            ListViewItem *after);
    PropertyMultiFormatItem(const QString &name, const QVariant &value, int bits, PropertyItem *parent,
                            ListViewItem *after);

    [[nodiscard]] int bits() const { return m_bits; }
    [[nodiscard]] int format() const { return m_format; } ///< A NumberFormat, at first HexadecimalFormat.
    void setFormat(int format);
    void setValue(const QVariant &value, bool notify) override;
    /// The context menu of the editor is that of the list, since it has the formats of the row.
    [[nodiscard]] QWidget *createEditor() override;
    void transferEditor(bool toValue) override;

Q_SIGNALS:
    void unreadableInput(const QString &text); ///< The row has got the value 0.
    void wideInput(const QString &text);       ///< The row has got a value that is wider than the number.

private:
    const int m_bits;
    int m_format;
};
