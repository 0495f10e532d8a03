#pragma once
#include "propertylist.h"

/// The grid of a register window. Its rows have a context menu.
class RegisterList : public PropertyList
{
    Q_OBJECT
public:
    explicit RegisterList(QWidget *parent = nullptr);

Q_SIGNALS:
    void rightButtonClicked(PropertyItem *item, const QPoint &point); ///< @p point is on the screen.
};
