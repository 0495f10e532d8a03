#include "registerlist.h"

RegisterList::RegisterList(QWidget *parent) : PropertyList(tr("Register"), tr("Value"), parent)
{
    connect(this, &ListView::contextMenuRequested, this, [this](ListViewItem *item, const QPoint &point) {
        if (item)
            Q_EMIT rightButtonClicked(static_cast<PropertyItem *>(item), point);
    });
}
