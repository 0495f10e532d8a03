#include "memoryaccess.h"
#include "callplugin.h"
#include <QPointer>

template <typename Call>
bool MemoryAccess::ask(const char *operation, const Call &call)
{
    const InterfacePtr<IMemory> memory = shareInterface(m_memory.get());
    const QPointer<MemoryAccess> self(this);
    m_busy = true;
    runPlugin(operation, [&] { call(*memory); });
    if (!self)
        return false;
    m_busy = false;
    return m_memory.get() == memory.get();
}

bool MemoryAccess::readRegions(QList<MemoryRegion> &regions)
{
    return ask("IMemory::regions", [&](IMemory &memory) { regions = memory.regions(); });
}

bool MemoryAccess::read(MemoryCache &cache, int count)
{
    return ask("IMemory::readBlock",
               [&](IMemory &memory) { memory.readBlock(cache.region, cache.mode, cache.address, count, cache.block); });
}

bool MemoryAccess::readLive(ILiveMemory &live, MemoryCache &cache, int count)
{
    bool read = false;
    const bool same = ask("ILiveMemory::readLive", [&](IMemory &) {
        read = live.readLive(cache.region, cache.mode, cache.address, count, cache.block);
    });
    return same && read;
}

bool MemoryAccess::write(int region, int mode, uint address, uint value)
{
    return ask("IMemory::write", [&](IMemory &memory) { memory.write(region, mode, address, value, false); });
}
