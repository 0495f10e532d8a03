#pragma once
#include "unknown.h"
#include <QString>

/// A value of a field that has a name.
struct PeripheralValueName
{
    uint value = 0;
    QString name;
};

/// A group of bits of a register.
struct PeripheralFieldInfo
{
    QString name;
    int lowBit = 0; ///< 0 to 31
    int width = 1;  ///< in bits
    bool readable = true;
    bool writable = true;
    QList<PeripheralValueName> values; ///< empty if its values have no names
    QString description;               ///< rich text; may be empty
};

/// What is known about a register besides its name.
struct PeripheralRegisterDetails
{
    QList<PeripheralFieldInfo> fields; ///< in the order of display; empty if they are not known
    bool readingChanges = false;       ///< reading it has an effect, so it is only read when the user asks for it
    bool onesClear = false;            ///< a one that is written clears its bit, and a zero leaves it
    bool readable = true;              ///< if not, it is never read
};

/// Optional interface of the IPeripherals object: the fields of its registers.
///
/// The peripheral window shows the fields as rows below their register. It writes a field by reading, changing and
/// writing the whole register. A register that changes when it is read is not read for that: the other bits are written
/// as they were shown last, and while they are unknown the field cannot be written. The other bits are written as zeros
/// if a one clears a bit of the register, or if their field cannot be read. A register that cannot be read, or none of
/// whose fields can, is never read; its other bits are written as they were written last.
class IPeripheralFields : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x6d9ecac3, 0x2513, 0x4291, 0x9e, 0xc2, 0xb8, 0x96, 0x1b, 0xff, 0xaf, 0xa1};

    /// The arguments are names of peripherals(), except that @p peripheral is empty if there is a single peripheral.
    virtual PeripheralRegisterDetails details(const QString &peripheral, const QString &registerName) = 0;
    /// Reads a register even if that has an effect.
    virtual uint readNow(const QString &peripheral, const QString &registerName) = 0;

protected:
    ~IPeripheralFields() = default;
};
