#pragma once
#include "facet.h"
#include "iperipheralfields.h"
#include "iperipherals.h"
#include "svdfile.h"
#include <QHash>
#include <QObject>
class MemoryAccess;

/// The devices of a chip, from its description.
///
/// Names of registers are made unique, because the host does not always pass the peripheral. A register that changes
/// when read is read by readNow() only, unless an option allows it.
class PeripheralAccess : public QObject, public Facet<IPeripherals, IPeripheralFields>
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
    PeripheralRegisterDetails details(const QString &peripheral, const QString &registerName) override;
    uint readNow(const QString &peripheral, const QString &registerName) override;

Q_SIGNALS:
    void message(const QString &text, bool serious);

private:
    struct Row
    {
        SvdRegister device;
        uint last = 0; ///< value at the last read or write
    };

    void build(const QList<SvdPeripheral> &peripherals);
    Row *find(const QString &peripheral, const QString &registerName);
    void read(Row *row);
    [[nodiscard]] bool isSensitive(const SvdRegister &device) const;

    MemoryAccess *const m_memory;
    QString m_stamp; ///< path and time of the file that was read
    bool m_readSensitive = false;
    QList<PeripheralInfo> m_infos;
    QHash<QString, QString> m_descriptions; ///< of peripherals
    QHash<QString, Row> m_rows;             ///< by the unique name
};
