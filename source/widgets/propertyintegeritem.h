#pragma once
#include "propertyitem.h"

/// A row with a decimal number.
class PropertyIntegerItem : public PropertyItem
{
    Q_OBJECT
public:
    using PropertyItem::PropertyItem;
    /// What can be entered: 0 to 32767 unless set. Other values are shown as they are.
    void setRange(int minimum, int maximum);

    [[nodiscard]] QWidget *createEditor() override;
    void transferEditor(bool toValue) override;

private:
    int m_minimum = 0;
    int m_maximum = 32767;
};
