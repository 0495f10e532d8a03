#pragma once
#include "iperipherals.h"
#include <QObject>
class PropertyItem;
class PropertyList;

/// Shows the environment's description of the peripheral or register under the mouse.
class PeripheralWidgetToolTip : public QObject
{
    Q_OBJECT
public:
    /// Both must be given. @p list outlives this object.
    PeripheralWidgetToolTip(PropertyList *list, IPeripherals *peripherals);

    /// Marks a row as a field, whose tool tip is its own description.
    static void setField(PropertyItem *row);
    /// Shows the tool tip for a place of the list's viewport. False if there is nothing to show.
    bool maybeTip(const QPoint &point, const QPoint &globalPoint);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    PropertyList *const m_list;
    const InterfacePtr<IPeripherals> m_peripherals;
};
