#include "peripheralaccess.h"
#include "memoryaccess.h"
#include <QDateTime>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
uint maskedTo(uint value, int width)
{
    return width < 32 ? value & ((1u << width) - 1) : value;
}

QString fieldText(const SvdField &field, uint value)
{
    const quint64 mask = field.width >= 64 ? ~quint64(0) : (quint64(1) << field.width) - 1;
    const quint64 bits = quint64(value) >> field.lowBit & mask;
    const QString range = field.width == 1 ? u"[%1]"_s.arg(field.lowBit)
                                           : u"[%1:%2]"_s.arg(field.lowBit + field.width - 1).arg(field.lowBit);
    QString text = u"%1 %2 = %3"_s.arg(range, field.name, QString::number(bits));
    for (const auto &[number, name] : field.names) {
        if (number == bits)
            text += u" "_s + name;
    }
    return (text + (field.description.isEmpty() ? QString() : u": "_s + field.description)).toHtmlEscaped();
}
PeripheralFieldInfo fieldInfo(const SvdField &field)
{
    PeripheralFieldInfo info{
        field.name, field.lowBit, field.width, field.readable, field.writable, {}, field.description.toHtmlEscaped()};
    for (const auto &[number, name] : field.names)
        info.values.append({uint(number), name});
    return info;
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
    if (!svdFile.isEmpty() && QFileInfo::exists(svdFile) && !QFileInfo(svdFile).isFile())
        error = tr("It is not a file.");
    else if (!svdFile.isEmpty() && !file.open(QIODevice::ReadOnly))
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
        for (const SvdRegister &device : peripheral.registers) {
            const QString name = uses.value(device.name) == 1 ? device.name : peripheral.name + u'.' + device.name;
            info.registers.append({name, device.width, !device.writable});
            m_rows.insert(name, {device, 0});
        }
        m_infos.append(info);
        m_descriptions.insert(peripheral.name, peripheral.description);
    }
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

bool PeripheralAccess::isSensitive(const SvdRegister &device) const
{
    return device.readingChanges && !m_readSensitive;
}

void PeripheralAccess::read(Row *row)
{
    uint value = 0;
    if (row->device.readable && m_memory->readWord(row->device.address, row->device.width / 8, &value))
        row->last = value;
}

uint PeripheralAccess::value(const QString &peripheral, const QString &registerName)
{
    Row *row = find(peripheral, registerName);
    if (!row)
        return 0;
    if (!isSensitive(row->device))
        read(row);
    return row->last;
}

uint PeripheralAccess::readNow(const QString &peripheral, const QString &registerName)
{
    Row *row = find(peripheral, registerName);
    if (!row)
        return 0;
    read(row);
    return row->last;
}

void PeripheralAccess::setValue(const QString &peripheral, const QString &registerName, uint value)
{
    Row *row = find(peripheral, registerName);
    if (!row || !row->device.writable)
        return;
    row->last = maskedTo(value, row->device.width);
    m_memory->writeWord(row->device.address, row->device.width / 8, row->last);
}

PeripheralRegisterDetails PeripheralAccess::details(const QString &peripheral, const QString &registerName)
{
    const Row *row = find(peripheral, registerName);
    if (!row)
        return {};
    const SvdRegister &device = row->device;
    PeripheralRegisterDetails details{{}, isSensitive(device), device.onesClear, device.readable};
    for (const SvdField &field : device.fields) {
        if (field.lowBit < device.width)
            details.fields.append(fieldInfo(field));
    }
    return details;
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
    if (isSensitive(device))
        lines.append(tr("The register changes when read, so it is read only on request."));
    for (const SvdField &field : device.fields)
        lines.append(fieldText(field, row->last));
    return lines.join("<br>"_L1);
}
