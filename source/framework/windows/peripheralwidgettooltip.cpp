#include "peripheralwidgettooltip.h"
#include "callplugin.h"
#include "propertylist.h"
#include "varnelassert.h"
#include <QHelpEvent>
#include <QPointer>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {
const auto FieldKey = u"/field"_s; ///< no name of a register
} // namespace

PeripheralWidgetToolTip::PeripheralWidgetToolTip(PropertyList *list, IPeripherals *peripherals)
    : m_list(list), m_peripherals(shareInterface(peripherals))
{
    VARNEL_ASSERT_TEXT(list && peripherals, "list && peripherals");
    list->viewport()->installEventFilter(this);
}

void PeripheralWidgetToolTip::setField(PropertyItem *row)
{
    row->setKey(FieldKey);
}

bool PeripheralWidgetToolTip::maybeTip(const QPoint &point, const QPoint &globalPoint)
{
    const PropertyItem *row = m_list->itemAt(point);
    if (!row)
        return false;
    const QRect rect = m_list->itemRect(row);
    if (row->key() == FieldKey) {
        if (!row->description().isEmpty())
            QToolTip::showText(globalPoint, propertyHelp(row->name(), row->description()), m_list->viewport(), rect);
        return !row->description().isEmpty();
    }
    const auto *above = static_cast<const PropertyItem *>(row->parent());
    const QString peripheral = above ? above->name() : row->name();
    const QString name = above ? row->name() : QString();
    const QPointer<PropertyList> list(m_list);
    const auto peripherals = shareInterface(m_peripherals.get());
    const QString text = askPlugin<&IPeripherals::description>(peripherals, peripheral, name);
    if (text.isEmpty() || !list)
        return false;
    QToolTip::showText(globalPoint, text, list->viewport(), rect);
    return true;
}

bool PeripheralWidgetToolTip::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return false;
    const auto *help = static_cast<QHelpEvent *>(event);
    return maybeTip(help->pos(), help->globalPos());
}
