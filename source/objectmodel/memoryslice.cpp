#include "memoryslice.h"
#include <array>

using namespace Qt::StringLiterals;

namespace {
struct NamedMode
{
    IMemory::Mode mode;
    const char *name;
};

constexpr std::array<NamedMode, 4> NamedModes{
    {{IMemory::Byte, "Byte"}, {IMemory::Word16, "Word16"}, {IMemory::Word24, "Word24"}, {IMemory::Word32, "Word32"}}};
} // namespace

int firstMemoryMode(const MemoryRegion &region)
{
    for (const IMemory::Mode mode : {IMemory::Byte, IMemory::Word16, IMemory::Word32, IMemory::Word24}) {
        if (region.modes & mode)
            return mode;
    }
    return 0;
}

QString memoryModeName(int mode)
{
    for (const NamedMode &named : NamedModes) {
        if (named.mode == mode)
            return QString::fromLatin1(named.name);
    }
    return u"Unknown"_s;
}

int memoryModeOfName(const QString &name)
{
    for (const NamedMode &named : NamedModes) {
        if (name.compare(QLatin1StringView(named.name), Qt::CaseInsensitive) == 0)
            return named.mode;
    }
    return 0;
}

QStringList memoryModeNames(const MemoryRegion &region)
{
    QStringList names;
    for (const NamedMode &named : NamedModes) {
        if (region.modes & named.mode)
            names.append(QString::fromLatin1(named.name));
    }
    return names;
}

uint memoryCellSize(const MemoryRegion &region, int mode)
{
    if (region.modes & IMemory::Byte)
        return mode == IMemory::Word16 ? 2 : mode == IMemory::Word24 ? 3 : mode == IMemory::Word32 ? 4 : 1;
    return region.modes & IMemory::Word16 && mode == IMemory::Word32 ? 2 : 1;
}

std::optional<MemorySlice> memorySlice(const MemoryRegion &region, int mode, qint64 first, qint64 end)
{
    first = std::max<qint64>(first, 0);
    end = std::max<qint64>(end, 0);
    if (end < first)
        return {};
    first = std::max<qint64>(std::min<qint64>(first, region.highAddress), region.lowAddress);
    end = std::min<qint64>(end, region.highAddress);
    const uint units = end < first ? 0 : uint(end - first); // both bounds may lie below the region
    return MemorySlice{uint(first), units, units / memoryCellSize(region, mode)};
}

QString memoryErrorText(int status)
{
    switch (status) {
    case IMemory::BadPointer:
        return u"Bad pointer"_s;
    case IMemory::NoMemory:
        return u"No memory at address"_s;
    case IMemory::Uninitialised:
        return u"Uninitialised memory at address"_s;
    case IMemory::WriteToRom:
        return u"Attempt to write to ROM"_s;
    default:
        return u"Unknown memory error"_s;
    }
}

QString memoryBlockErrorText(int status, uint address)
{
    const auto place = u" 0x"_s + QString::number(address, 16).toUpper();
    switch (status) {
    case IMemory::BadPointer:
        return u"Bad pointer returned for address"_s + place;
    case IMemory::NoMemory:
        return u"No memory at address"_s + place;
    case IMemory::Uninitialised:
        return u"Uninitialised memory at address"_s + place;
    default:
        return u"Unknown memory error at address"_s + place;
    }
}

QString plainInstruction(QString richText)
{
    const QString text = richText.replace("&nbsp;"_L1, " "_L1).trimmed();
    QString plain;
    qsizetype from = 0;
    for (;;) {
        const qsizetype tag = text.indexOf(u'<', from);
        const qsizetype end = tag < 0 ? -1 : text.indexOf(u'>', tag);
        if (end < 0)
            return plain + text.sliced(from);
        plain += QStringView(text).sliced(from, tag - from);
        from = end + 1;
    }
}
