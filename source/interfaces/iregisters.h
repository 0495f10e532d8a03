#pragma once
#include "unknown.h"
#include <QString>

/// One register as the register window shows it.
struct RegisterInfo
{
    QString name;   ///< unique in the processor
    uint width = 0; ///< in bits
    /// Empty for a number. Otherwise the names of the bits, bit 0 last: separated by commas or, without a comma, one
    /// character for each bit.
    QString choices;
    uint defaultFormat = 0; ///< one IRegisters::Format
    uint formats = 0;       ///< the IRegisters::Format bits that the user can select
    QString group;          ///< the heading above it; empty for none
    bool readOnly = false;
};

/// Optional interface of an execution environment: the registers of the processor.
class IRegisters : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x0f879c81, 0x00c4, 0x47a6, 0x92, 0x43, 0xab, 0xdc, 0x54, 0xdf, 0x58, 0xd1};

    /// The display format of a number of up to 32 bits; wider ones are always hexadecimal.
    enum Format { SignedDecimal = 1, UnsignedDecimal = 2, Hexadecimal = 4, Binary = 8, Fractional = 16 };

    /// In display order.
    virtual QList<RegisterInfo> registers() = 0;
    /// 32 bits of a register; word 0 is the lowest. It is also called for words beyond the register's width: return 0.
    virtual uint value(const QString &name, int word) = 0;
    virtual void setValue(const QString &name, uint value, int word) = 0;

protected:
    ~IRegisters() = default;
};
