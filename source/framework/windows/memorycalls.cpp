#include "memorycalls.h"
#include "callplugin.h"
#include <QPointer>

template <typename Call>
bool MemoryCalls::ask(const Call &call)
{
    const InterfacePtr<IMemory> memory = shareInterface(m_memory.get());
    const QPointer<MemoryCalls> self(this);
    m_busy = true;
    call(memory);
    if (!self)
        return false;
    m_busy = false;
    return m_memory.get() == memory.get();
}

void MemoryCalls::setMemory(IMemory *memory, IMemory64 *wide)
{
    m_memory = shareInterface(memory);
    m_wide = shareInterface(wide);
}

bool MemoryCalls::readRegions(QList<MemoryRegion64> &regions)
{
    const auto wide = shareInterface(m_wide.get());
    return ask([&](const auto &memory) {
        if (wide) {
            regions = askPlugin<&IMemory64::regions>(wide);
            return;
        }
        for (const MemoryRegion &region : askPlugin<&IMemory::regions>(memory))
            regions.append(wideRegion(region));
    });
}

bool MemoryCalls::read(MemoryCache &cache, int count)
{
    return ask([&](const auto &memory) {
        if (m_wide)
            readWide(cache, count);
        else
            runPlugin<&IMemory::readBlock>(memory, cache.region, cache.mode, uint(cache.address), count, cache.block);
    });
}

/// This object may have been deleted afterwards.
void MemoryCalls::readWide(MemoryCache &cache, int count) const
{
    const auto wide = shareInterface(m_wide.get());
    MemoryBlock64 block;
    runPlugin<&IMemory64::readBlock>(wide, cache.region, cache.mode, cache.address, count, block);
    cache.block.clear();
    cache.block.reserve(block.size());
    for (const MemoryBlockCell64 &cell : std::as_const(block))
        cache.block.append({uint(cell.value), cell.status});
}

/// A live memory has addresses of 32 bits; beyond them the wide one is asked, which can be read as well then.
bool MemoryCalls::readLive(ILiveMemory &live, MemoryCache &cache, int count)
{
    constexpr quint64 EndOfNarrow = quint64(1) << 32;
    bool read = false;
    const bool same = ask([&](const auto &) {
        if (!m_wide || cache.address < EndOfNarrow) {
            read = askPlugin<&ILiveMemory::readLive>(&live, cache.region, cache.mode, uint(cache.address), count,
                                                     cache.block);
            return;
        }
        const QPointer<MemoryCalls> self(this);
        read = askPlugin<&ILiveMemory::canReadLive>(&live);
        if (self && read)
            readWide(cache, count);
    });
    return same && read;
}

bool MemoryCalls::write(int region, int mode, quint64 address, uint value)
{
    const auto wide = shareInterface(m_wide.get());
    return ask([&](const auto &memory) {
        if (wide)
            runPlugin<&IMemory64::write>(wide, region, mode, address, value, false);
        else
            runPlugin<&IMemory::write>(memory, region, mode, uint(address), value, false);
    });
}
