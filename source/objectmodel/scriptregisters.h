#pragma once
#include "scripttarget.h"
#include "scripttypes.h"

/// The registers of a processor in scripts (`Registers`): their lowest 32 bits by name. Its functions raise Python
/// exceptions.
class ScriptRegisters
{
public:
    explicit ScriptRegisters(const ScriptTarget &target);

    [[nodiscard]] QStringList keys() const;
    [[nodiscard]] uint value(const QString &name) const;
    void setValue(const QString &name, uint value) const;

private:
    const ScriptTarget m_target;
};

[[nodiscard]] py::object bindRegisters();
