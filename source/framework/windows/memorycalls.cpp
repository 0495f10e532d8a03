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

bool MemoryCalls::readRegions(QList<MemoryRegion> &regions)
{
    return ask([&](const auto &memory) { regions = askPlugin<&IMemory::regions>(memory); });
}

bool MemoryCalls::read(MemoryCache &cache, int count)
{
    return ask([&](const auto &memory) {
        runPlugin<&IMemory::readBlock>(memory, cache.region, cache.mode, cache.address, count, cache.block);
    });
}

bool MemoryCalls::readLive(ILiveMemory &live, MemoryCache &cache, int count)
{
    bool read = false;
    const bool same = ask([&](const auto &) {
        read = askPlugin<&ILiveMemory::readLive>(&live, cache.region, cache.mode, cache.address, count, cache.block);
    });
    return same && read;
}

bool MemoryCalls::write(int region, int mode, uint address, uint value)
{
    return ask([&](const auto &memory) { runPlugin<&IMemory::write>(memory, region, mode, address, value, false); });
}
