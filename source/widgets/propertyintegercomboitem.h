#pragma once
#include "propertycomboitem.h"

/// A row with a whole number for which there are proposals. The value is its text.
class PropertyIntegerComboItem : public PropertyComboItem
{
    Q_OBJECT
public:
    using PropertyComboItem::PropertyComboItem;
    [[nodiscard]] QWidget *createEditor() override;
};
