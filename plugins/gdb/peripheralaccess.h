#pragma once
#include "facet.h"
#include "iperipherals.h"
#include "svdfile.h"
#include <QHash>
#include <QObject>
class MemoryAccess;

/// The devices of a chip, from its description.
///
/// The host shows 16 bits of a register, so a wider register has two rows: one with its name for the lower half, and
/// one with "[31:16]" appended for the upper half, unless its fields show that this is unused. Names are made unique,
/// because the host does not always pass the peripheral. A register that changes when read is not read.
class PeripheralAccess : public QObject, public Facet<IPeripherals>
{
    Q_OBJECT
public:
    PeripheralAccess(MemoryAccess *memory, QUnknownInterface *whole) : Facet(whole), m_memory(memory) {}

    /// Reads a description, if it is another file or has changed. Without a name there are no devices.
    void load(const QString &svdFile, bool readSensitive);

    QList<PeripheralInfo> peripherals() override;
    uint value(const QString &peripheral, const QString &registerName) override;
    void setValue(const QString &peripheral, const QString &registerName, uint value) override;
    QString description(const QString &peripheral, const QString &registerName) override;

Q_SIGNALS:
    void message(const QString &text, bool serious);

private:
    /// 16 bits of a register, or all of a narrower one.
    struct Row
    {
        SvdRegister device;
        bool upper = false;
        uint last = 0; ///< value of the whole register at the last read or write
    };

    void build(const QList<SvdPeripheral> &peripherals);
    void appendRows(const SvdPeripheral &peripheral, const SvdRegister &device, bool unique, PeripheralInfo *info);
    Row *find(const QString &peripheral, const QString &registerName);
    bool refresh(Row *row);

    MemoryAccess *const m_memory;
    QString m_stamp; ///< path and time of the file that was read
    bool m_readSensitive = false;
    QList<PeripheralInfo> m_infos;
    QHash<QString, QString> m_descriptions; ///< of peripherals
    QHash<QString, Row> m_rows;             ///< by the unique name
};
