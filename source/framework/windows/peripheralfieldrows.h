#pragma once
#include "iperipheralfields.h"
class PropertyItem;

/// The bits of a field in the value of its register.
[[nodiscard]] quint32 maskOf(const PeripheralFieldInfo &field);
/// The value that a field has in the value of its register.
[[nodiscard]] quint32 valueIn(const PeripheralFieldInfo &field, quint32 value);
/// Whether a register cannot be read, or none of its fields can.
[[nodiscard]] bool isWriteOnly(const PeripheralRegisterDetails &details);
/// Those fields that lie in a register, with possible widths.
[[nodiscard]] QList<PeripheralFieldInfo> possibleFields(QList<PeripheralFieldInfo> fields);

/// Adds the row of a field below that of its register: with choices if its values have names.
PropertyItem *makeFieldRow(const PeripheralFieldInfo &field, PropertyItem *owner);
/// A value without a name becomes a choice of its own.
void showFieldValue(PropertyItem *row, const PeripheralFieldInfo &field, quint32 value);
