#include "peripheralfieldrows.h"
#include "hextext.h"
#include "propertyhexitem.h"
#include "propertylistitem.h"
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr int WidestRegister = 32;

PropertyItem *lastChild(const PropertyItem *row)
{
    return static_cast<PropertyItem *>(row->child(row->childCount() - 1));
}

/// "MODE [5:4]"
QString titleOf(const PeripheralFieldInfo &field)
{
    const QString low = QString::number(field.lowBit);
    const QString high = QString::number(field.lowBit + field.width - 1);
    return field.name + (field.width == 1 ? u" [%1]"_s.arg(low) : u" [%1:%2]"_s.arg(high, low));
}
} // namespace

quint32 maskOf(const PeripheralFieldInfo &field)
{
    return maskedToWidth(~0u, field.width) << field.lowBit;
}

quint32 valueIn(const PeripheralFieldInfo &field, quint32 value)
{
    return maskedToWidth(value >> field.lowBit, field.width);
}

bool isWriteOnly(const PeripheralRegisterDetails &details)
{
    const auto &fields = details.fields;
    return !details.readable || (!fields.isEmpty() && std::ranges::none_of(fields, &PeripheralFieldInfo::readable));
}

QList<PeripheralFieldInfo> possibleFields(QList<PeripheralFieldInfo> fields)
{
    fields.removeIf([](const auto &field) { return field.lowBit < 0 || field.lowBit >= WidestRegister; });
    for (PeripheralFieldInfo &field : fields)
        field.width = std::clamp(field.width, 1, WidestRegister - field.lowBit);
    return fields;
}

PropertyItem *makeFieldRow(const PeripheralFieldInfo &field, PropertyItem *owner)
{
    PropertyItem *after = lastChild(owner);
    if (field.values.isEmpty())
        return new PropertyHexItem(titleOf(field), 0u, field.width, owner, after);
    auto *row = new PropertyListItem(titleOf(field), QString(), owner, after);
    for (const PeripheralValueName &value : field.values)
        row->addOption(u"%1 (%2)"_s.arg(value.name, QString::number(value.value)), QString::number(value.value));
    return row;
}

void showFieldValue(PropertyItem *row, const PeripheralFieldInfo &field, quint32 value)
{
    auto *choice = qobject_cast<PropertyListItem *>(row);
    if (!choice)
        return row->setValue(value, false);
    const QString key = QString::number(value);
    if (!choice->hasKey(key))
        choice->addOption(hexText(value, field.width), key);
    choice->setValue(key, false);
}
