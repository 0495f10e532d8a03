#pragma once
#include "iperipherals.h"
#include "scripttarget.h"
#include "scripttypes.h"

/// The peripherals of a processor in scripts (`Peripherals`). Its functions raise Python exceptions.
class ScriptPeripherals
{
public:
    explicit ScriptPeripherals(const ScriptTarget &target);

    [[nodiscard]] const ScriptTarget &target() const { return m_target; }
    [[nodiscard]] QStringList keys() const;
    [[nodiscard]] int indexOf(const QString &name) const; ///< Raises KeyError if there is none.

private:
    const ScriptTarget m_target;
};

/// One peripheral, by its position, and its registers (`Peripheral`).
class ScriptPeripheral
{
public:
    ScriptPeripheral(const ScriptTarget &target, int index);

    [[nodiscard]] QStringList keys() const;
    [[nodiscard]] uint value(const QString &name) const;
    void setValue(const QString &name, uint value) const;

private:
    [[nodiscard]] PeripheralInfo info() const;

    const ScriptTarget m_target;
    const int m_index;
};

[[nodiscard]] py::object bindPeripherals();
[[nodiscard]] py::object bindPeripheral();
