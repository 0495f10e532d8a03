#pragma once
#include "imemory.h"
#include "interfaceobject.h"
#include <functional>
#include <QMap>
#include <QStringList>

/// Memory of a target that is a table of bytes, and the calls that were made. Words begin with the lowest byte.
class FakeMemory : public InterfaceObject<IMemory>
{
public:
    QList<MemoryRegion> regions() override
    {
        record(QStringLiteral("regions()"));
        return list;
    }
    int read(int, int, uint, uint *) override { return BadPointer; } // not for a window
    int write(int region, int mode, uint address, uint value, bool flush) override
    {
        record(QStringLiteral("write(%1, %2, 0x%3, 0x%4, %5)")
                   .arg(region)
                   .arg(mode)
                   .arg(address, 0, 16)
                   .arg(value, 0, 16)
                   .arg(flush));
        if (ignoresWrites)
            return WriteToRom;
        for (int i = 0; i < width(mode); ++i)
            bytes[address + uint(i)] = value >> (8 * i) & 0xFF;
        return Success;
    }
    void readBlock(int region, int mode, uint address, int count, MemoryBlock &result) override
    {
        record(QStringLiteral("readBlock(%1, %2, 0x%3, %4)").arg(region).arg(mode).arg(address, 0, 16).arg(count));
        result.clear();
        for (int i = 0; i < std::min(count, mostCells); ++i)
            result.append(word(address + uint(i * width(mode)), width(mode)));
    }
    void writeBlock(int, int, uint, int, MemoryBlock &, bool) override {}

    /// Puts bytes there that count up from @p first.
    void fill(uint address, int count, uint first = 0)
    {
        for (int i = 0; i < count; ++i)
            bytes[address + uint(i)] = (first + uint(i)) & 0xFF;
    }
    QStringList takeCalls() { return std::exchange(calls, {}); }

    QList<MemoryRegion> list;
    QMap<uint, uint> bytes;   ///< other addresses have no memory
    QMap<uint, int> statuses; ///< of words at addresses, where they are not Success
    bool ignoresWrites = false;
    int mostCells = 1 << 20; ///< a block never has more
    QStringList calls;
    std::function<void(const QString &call)> onCall; ///< may throw

private:
    void record(const QString &call)
    {
        calls.append(call);
        if (onCall)
            onCall(call);
    }
    static int width(int mode) { return mode == Word24 ? 3 : mode; }
    MemoryBlockCell word(uint address, int width) const
    {
        if (!bytes.contains(address))
            return {0, NoMemory};
        uint value = 0;
        for (int i = width - 1; i >= 0; --i)
            value = value << 8 | bytes.value(address + uint(i));
        return {value, statuses.value(address, Success)};
    }
};
