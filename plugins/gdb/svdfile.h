#pragma once
#include <QList>
#include <QString>

/// A bit field of a register.
struct SvdField
{
    QString name;
    QString description;
    int lowBit = 0;
    int width = 1;
    bool readable = true;
    bool writable = true;
    QList<std::pair<quint64, QString>> names; ///< of enumerated values
};

/// A register of a device, at its final address.
struct SvdRegister
{
    QString name; ///< clusters and array indices included: "BLOCK1.CONTROL"
    QString description;
    quint64 address = 0;
    int width = 32; ///< in bits: 8, 16, 32
    bool readable = true;
    bool writable = true;
    bool readingChanges = false; ///< reading it has an effect
    bool onesClear = false;      ///< writing a one clears a bit; a zero does not change it
    QList<SvdField> fields;
};

struct SvdPeripheral
{
    QString name;
    QString description;
    quint64 address = 0;
    QList<SvdRegister> registers; ///< by address
};

/// Reads a description of a chip's devices (CMSIS-SVD) and resolves derivations, arrays and clusters. False with @p
/// error set if the contents are not such a description.
[[nodiscard]] bool readSvd(const QByteArray &contents, QList<SvdPeripheral> *peripherals, QString *error);
