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

namespace {
MemoryBlock narrowBlock(const MemoryBlock64 &wide)
{
    MemoryBlock block;
    block.reserve(wide.size());
    for (const MemoryBlockCell64 &cell : wide)
        block.append({uint(cell.value), cell.status});
    return block;
}
} // namespace

void MemoryCalls::setMemory(IMemory *memory, IMemory64 *wide, IMemoryRequests *requests)
{
    m_queries.cancel();
    m_requests = shareInterface(requests);
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
    cache.block = narrowBlock(block);
}

/// What cannot be read is shown as unknown.
void MemoryCalls::request(const MemoryCache &cache, int count)
{
    const auto requests = shareInterface(m_requests.get());
    const auto use = [this, cache](const MemoryBlock64 &cells) {
        Q_EMIT answered({cache.region, cache.mode, cache.address, narrowBlock(cells)});
    };
    m_queries.cancel();
    const DebugRequest question = m_queries.ask({.memory = use, .failed = [use](const QString &) { use({}); }});
    runPlugin<&IMemoryRequests::requestMemory>(requests, question, cache.region, cache.mode, cache.address, count,
                                               m_queries.valueReplies());
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
