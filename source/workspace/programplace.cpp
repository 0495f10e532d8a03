#include "programplace.h"

using namespace Qt::StringLiterals;

namespace {
constexpr QLatin1StringView Prefix = "disassembler:"_L1;
constexpr QLatin1StringView KeyPrefix = "disassembler:0x"_L1;
constexpr int KeyDigits = 8;
} // namespace

QString disassemblyName(uint environmentKey, const QString &processor)
{
    return KeyPrefix + u"%1:"_s.arg(environmentKey, KeyDigits, 16, QChar(u'0')) + processor;
}

QString anyDisassembly()
{
    return Prefix;
}

bool isDisassemblyName(const QString &file)
{
    return file.startsWith(Prefix);
}

uint keyOfDisassembly(const QString &file)
{
    if (!file.startsWith(KeyPrefix))
        return 0;
    return file.mid(KeyPrefix.size(), KeyDigits).toUInt(nullptr, 16);
}

QString processorOfDisassembly(const QString &file)
{
    return isDisassemblyName(file) ? file.section(u':', 2, 2) : QString();
}

int lineOfAddress(uint address)
{
    return int(address + 1);
}

uint addressOfLine(int line)
{
    return uint(line) - 1;
}

ProgramPlace ProgramPlace::inSource(const QString &file, int line)
{
    ProgramPlace place;
    place.m_file = file;
    place.m_line = line;
    return place;
}

ProgramPlace ProgramPlace::inDisassembly(uint address, uint environmentKey)
{
    ProgramPlace place;
    place.m_line = lineOfAddress(address);
    place.m_environmentKey = environmentKey;
    place.m_isDisassembly = true;
    return place;
}

ProgramPlace ProgramPlace::fromDocument(const QString &fileName, int line)
{
    if (!isDisassemblyName(fileName))
        return inSource(fileName, line);
    return inDisassembly(addressOfLine(line), keyOfDisassembly(fileName));
}

ProgramPlace ProgramPlace::fromBreakpoint(const QString &file, int line)
{
    const qsizetype name = file.indexOf(Prefix);
    return fromDocument(name < 0 ? file : file.mid(name), line);
}

QString ProgramPlace::fileName() const
{
    if (!m_isDisassembly)
        return m_file;
    return m_environmentKey == 0 ? QString(Prefix) : disassemblyName(m_environmentKey, {});
}

uint ProgramPlace::address() const
{
    return m_isDisassembly ? addressOfLine(m_line) : 0;
}

ProgramPlace ProgramPlace::withoutEnvironment() const
{
    return m_isDisassembly ? inDisassembly(address()) : *this;
}
