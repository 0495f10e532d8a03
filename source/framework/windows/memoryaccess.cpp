#include "memoryaccess.h"
#include "callplugin.h"
#include <QPointer>

template <typename Call>
bool MemoryAccess::ask(const Call &call)
{
    const InterfacePtr<IMemory> memory = shareInterface(m_memory.get());
    const QPointer<MemoryAccess> self(this);
    m_busy = true;
    call(memory);
    if (!self)
        return false;
    m_busy = false;
    return m_memory.get() == memory.get();
}

bool MemoryAccess::readRegions(QList<MemoryRegion> &regions)
{
    return ask([&](const auto &memory) { regions = askPlugin<&IMemory::regions>(memory); });
}

bool MemoryAccess::read(MemoryCache &cache, int count)
{
    return ask([&](const auto &memory) {
        runPlugin<&IMemory::readBlock>(memory, cache.region, cache.mode, cache.address, count, cache.block);
    });
}

bool MemoryAccess::readLive(ILiveMemory &live, MemoryCache &cache, int count)
{
    bool read = false;
    const bool same = ask([&](const auto &) {
        read = askPlugin<&ILiveMemory::readLive>(&live, cache.region, cache.mode, cache.address, count, cache.block);
    });
    return same && read;
}

bool MemoryAccess::write(int region, int mode, uint address, uint value)
{
    return ask([&](const auto &memory) { runPlugin<&IMemory::write>(memory, region, mode, address, value, false); });
}
