#include "peripheralaccess.h"
#include "memoryaccess.h"
#include <algorithm>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
bool usesUpperHalf(const SvdRegister &device)
{
    return device.width > 16
           && (device.fields.isEmpty()
               || std::any_of(device.fields.begin(), device.fields.end(),
                              [](const SvdField &field) { return field.lowBit + field.width > 16; }));
}

QString fieldText(const SvdField &field, uint value)
{
    const quint64 mask = field.width >= 64 ? ~quint64(0) : (quint64(1) << field.width) - 1;
    const quint64 bits = quint64(value) >> field.lowBit & mask;
    const QString range = field.width == 1 ? u"[%1]"_s.arg(field.lowBit)
                                           : u"[%1:%2]"_s.arg(field.lowBit + field.width - 1).arg(field.lowBit);
    QString text = u"%1 %2 = %3"_s.arg(range, field.name).arg(bits);
    for (const auto &[number, name] : field.names) {
        if (number == bits)
            text += u" "_s + name;
    }
    return (text + (field.description.isEmpty() ? QString() : u": "_s + field.description)).toHtmlEscaped();
}
} // namespace

void PeripheralAccess::load(const QString &svdFile, bool readSensitive)
{
    m_readSensitive = readSensitive;
    const QString stamp = svdFile + QFileInfo(svdFile).lastModified().toString(Qt::ISODateWithMs);
    if (stamp == m_stamp)
        return;
    m_stamp = stamp;
    QList<SvdPeripheral> peripherals;
    QFile file(svdFile);
    QString error;
    if (!svdFile.isEmpty() && !file.open(QIODevice::ReadOnly))
        error = file.errorString();
    else if (!svdFile.isEmpty())
        (void)readSvd(file.readAll(), &peripherals, &error);
    if (!error.isEmpty())
        Q_EMIT message(tr("The device description '%1' cannot be read: %2\n").arg(svdFile, error), false);
    build(peripherals);
}

void PeripheralAccess::build(const QList<SvdPeripheral> &peripherals)
{
    m_infos.clear();
    m_rows.clear();
    m_descriptions.clear();
    QHash<QString, int> uses;
    for (const SvdPeripheral &peripheral : peripherals) {
        for (const SvdRegister &device : peripheral.registers)
            ++uses[device.name];
    }
    for (const SvdPeripheral &peripheral : peripherals) {
        PeripheralInfo info{peripheral.name, {}};
        for (const SvdRegister &device : peripheral.registers)
            appendRows(peripheral, device, uses.value(device.name) == 1, &info);
        m_infos.append(info);
        m_descriptions.insert(peripheral.name, peripheral.description);
    }
}

void PeripheralAccess::appendRows(const SvdPeripheral &peripheral, const SvdRegister &device, bool unique,
                                  PeripheralInfo *info)
{
    const QString name = unique ? device.name : peripheral.name + u'.' + device.name;
    info->registers.append({name, 0, !device.writable});
    m_rows.insert(name, {device, false, 0});
    if (!usesUpperHalf(device))
        return;
    info->registers.append({name + u"[31:16]"_s, 0, !device.writable});
    m_rows.insert(name + u"[31:16]"_s, {device, true, 0});
}

PeripheralAccess::Row *PeripheralAccess::find(const QString &peripheral, const QString &registerName)
{
    auto row = m_rows.find(registerName);
    if (row == m_rows.end())
        row = m_rows.find(peripheral + u'.' + registerName); // a script may use the name without the peripheral
    return row == m_rows.end() ? nullptr : &*row;
}

QList<PeripheralInfo> PeripheralAccess::peripherals()
{
    return m_infos;
}

bool PeripheralAccess::refresh(Row *row)
{
    if (!row->device.readable || (row->device.readingChanges && !m_readSensitive))
        return false;
    return m_memory->readWord(row->device.address, row->device.width / 8, &row->last);
}

uint PeripheralAccess::value(const QString &peripheral, const QString &registerName)
{
    Row *row = find(peripheral, registerName);
    if (!row)
        return 0;
    refresh(row);
    return row->upper ? row->last >> 16 : row->last & 0xffff;
}

/// The other half keeps its value; in a register whose bits are cleared by writing ones, zeros are written to it.
void PeripheralAccess::setValue(const QString &peripheral, const QString &registerName, uint value)
{
    Row *row = find(peripheral, registerName);
    if (!row || !row->device.writable)
        return;
    uint other = 0;
    if (row->device.width > 16 && !row->device.onesClear) {
        refresh(row);
        other = row->last & (row->upper ? 0xffffu : 0xffff0000u);
    }
    const uint half = value & 0xffff;
    row->last = row->device.width > 16 ? (row->upper ? half << 16 | other : half | other) : half;
    m_memory->writeWord(row->device.address, row->device.width / 8, row->last);
}

QString PeripheralAccess::description(const QString &peripheral, const QString &registerName)
{
    if (registerName.isEmpty() && m_descriptions.contains(peripheral))
        return m_descriptions.value(peripheral).toHtmlEscaped();
    const Row *row = find({}, registerName.isEmpty() ? peripheral : registerName);
    if (!row)
        row = find(peripheral, registerName);
    if (!row)
        return {};
    const SvdRegister &device = row->device;
    QStringList lines{
        u"<b>%1</b> 0x%2"_s.arg(device.name.toHtmlEscaped(), QString::number(device.address, 16).toUpper())};
    if (!device.description.isEmpty())
        lines.append(device.description.toHtmlEscaped());
    if (device.readingChanges && !m_readSensitive)
        lines.append(tr("The register changes when read, so it is not read."));
    for (const SvdField &field : device.fields)
        lines.append(fieldText(field, row->last));
    return lines.join("<br>"_L1);
}
