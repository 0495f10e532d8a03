#pragma once
#include "unknown.h"
#include <QString>

/// One register of a peripheral.
struct PeripheralRegisterInfo
{
    QString name;
    int bits = 0; ///< the width, up to 32; 0 for 16
    bool readOnly = false;
};

/// One peripheral and its registers, in the order of display.
struct PeripheralInfo
{
    QString name;
    QList<PeripheralRegisterInfo> registers;
};

/// Optional interface of an execution environment: registers of the devices around the processor.
///
/// The window does not always know both names. It reads the registers of a single peripheral with an empty peripheral
/// name, reads the value of the peripheral itself with its name as the register name and an empty peripheral name, and
/// writes with the register name in both arguments. Find such a register by its own name; if there is none, return 0.
/// The optional interface IPeripheralFields offers the fields of the registers.
class IPeripherals : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x3e864d1e, 0xa61b, 0x11d7, 0xbd, 0xed, 0x00, 0x50, 0xda, 0xdf, 0xe8, 0x7d};

    virtual QList<PeripheralInfo> peripherals() = 0;
    virtual uint value(const QString &peripheral, const QString &registerName) = 0;
    virtual void setValue(const QString &peripheral, const QString &registerName, uint value) = 0;
    /// The tool tip of a register or, if @p registerName is empty, of a peripheral; empty for no tool tip.
    virtual QString description(const QString &peripheral, const QString &registerName) = 0;

protected:
    ~IPeripherals() = default;
};
