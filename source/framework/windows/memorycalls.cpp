#include "memorycalls.h"
#include "callplugin.h"
#include <QPointer>

template <typename Call>
bool MemoryCalls::ask(const char *operation, const Call &call)
{
    const InterfacePtr<IMemory> memory = shareInterface(m_memory.get());
    const QPointer<MemoryCalls> self(this);
    m_busy = true;
    runPlugin(operation, [&] { call(*memory); });
    if (!self)
        return false;
    m_busy = false;
    return m_memory.get() == memory.get();
}

bool MemoryCalls::readRegions(QList<MemoryRegion> &regions)
{
    return ask("IMemory::regions", [&](IMemory &memory) { regions = memory.regions(); });
}

bool MemoryCalls::read(MemoryCache &cache, int count)
{
    return ask("IMemory::readBlock",
               [&](IMemory &memory) { memory.readBlock(cache.region, cache.mode, cache.address, count, cache.block); });
}

bool MemoryCalls::readLive(ILiveMemory &live, MemoryCache &cache, int count)
{
    bool read = false;
    const bool same = ask("ILiveMemory::readLive", [&](IMemory &) {
        read = live.readLive(cache.region, cache.mode, cache.address, count, cache.block);
    });
    return same && read;
}

bool MemoryCalls::write(int region, int mode, uint address, uint value)
{
    return ask("IMemory::write", [&](IMemory &memory) { memory.write(region, mode, address, value, false); });
}
