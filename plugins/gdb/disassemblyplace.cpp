#include "disassemblyplace.h"

namespace {
constexpr QLatin1StringView Prefix("disassembler:");
}

bool isDisassembly(const QString &file)
{
    return file.contains(Prefix);
}

QString anyDisassembly()
{
    return Prefix;
}

int lineOfAddress(quint64 address)
{
    return int(uint(address) + 1);
}

uint addressOfLine(int line)
{
    return uint(line) - 1;
}

BreakpointLocation placeOfAddress(quint64 address)
{
    return {anyDisassembly(), lineOfAddress(address)};
}
