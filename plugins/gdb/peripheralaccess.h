#pragma once
#include "facet.h"
#include "iperipherals.h"
#include "svdfile.h"
#include <QHash>
#include <QObject>
class MemoryAccess;

/// The devices around the processor, as a chip description tells them.
///
/// The host shows 16 bits of a register, so that a wider one stands there twice: by its name for its lower half, and
/// with "[31:16]" behind it for its upper half, unless its fields show that this is unused. Names are made unique, as
/// the host does not always say whose register it means. A register that reading changes is not read.
class PeripheralAccess : public QObject, public Facet<IPeripherals>
{
    Q_OBJECT
public:
    PeripheralAccess(MemoryAccess *memory, QUnknownInterface *whole) : Facet(whole), m_memory(memory) {}

    /// Reads a description, if it is another one or was changed. An empty name stands for no devices.
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
        uint last = 0; ///< the whole register, as it was last read or written
    };

    void build(const QList<SvdPeripheral> &peripherals);
    void appendRows(const SvdPeripheral &peripheral, const SvdRegister &device, bool unique, PeripheralInfo *info);
    Row *find(const QString &peripheral, const QString &registerName);
    bool refresh(Row *row);

    MemoryAccess *const m_memory;
    QString m_stamp; ///< of the file that was read
    bool m_readSensitive = false;
    QList<PeripheralInfo> m_infos;
    QHash<QString, QString> m_descriptions; ///< of peripherals
    QHash<QString, Row> m_rows;             ///< by the unique name
};
