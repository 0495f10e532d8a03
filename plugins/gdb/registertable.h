#pragma once
#include "iregisters.h"
#include <QList>
#include <QString>

/// One register as gdb knows it.
struct TargetRegister
{
    RegisterInfo info;
    int number = -1;     ///< gdb's
    bool vector = false; ///< shown and written as a union of several types

    bool operator==(const TargetRegister &other) const
    {
        return info.name == other.info.name && info.width == other.info.width && info.group == other.info.group
               && number == other.number;
    }
};

/// Reads what gdb prints for "maint print register-groups": the registers worth showing, by number. Parts and twins of
/// others, and those wider than 128 bits, are left out.
[[nodiscard]] QList<TargetRegister> parseRegisterGroups(const QString &text);

/// The registers of a kind of processor before there is a session that could be asked; without numbers. @p elfMachine
/// is an ElfImage::Machine; boards whose processor has a floating-point unit are told by @p board.
[[nodiscard]] QList<TargetRegister> expectedRegisters(int elfMachine, bool wide, const QString &board);

/// The bits of a register's value as gdb prints it in raw format, as 32-bit words, the lowest first.
[[nodiscard]] QList<uint> registerWords(const QString &rawValue);
