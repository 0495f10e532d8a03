#pragma once
#include "iregisters.h"
#include <QList>
#include <QString>

/// One register of gdb.
struct TargetRegister
{
    RegisterInfo info;
    int number = -1;     ///< of the register in gdb
    bool vector = false; ///< gdb shows and writes it as a union of several types

    bool operator==(const TargetRegister &other) const
    {
        return info.name == other.info.name && info.width == other.info.width && info.group == other.info.group
               && number == other.number;
    }
};

/// Reads the output of "maint print register-groups": the registers to show, by number. Parts and aliases of others,
/// and those wider than 128 bits, are omitted.
[[nodiscard]] QList<TargetRegister> parseRegisterGroups(const QString &text);

/// The registers of a processor for the time before the first session; without numbers. @p elfMachine is an
/// ElfImage::Machine; @p board decides whether the processor has a floating-point unit.
[[nodiscard]] QList<TargetRegister> expectedRegisters(int elfMachine, bool wide, const QString &board);

/// A register's value in gdb's raw format as 32-bit words, the lowest first.
[[nodiscard]] QList<uint> registerWords(const QString &rawValue);
