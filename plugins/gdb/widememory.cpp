#include "widememory.h"
#include "memoryaccess.h"
#include <algorithm>

namespace {
const TargetRegion *regionOf(const MemoryAccess &memory, int id)
{
    const QList<TargetRegion> &regions = memory.wholeTable().regions();
    return id >= 0 && id < regions.size() ? &regions.at(id) : nullptr;
}
} // namespace

QList<MemoryRegion64> WideMemory::regions()
{
    const QList<TargetRegion> &whole = m_memory->wholeTable().regions();
    QList<MemoryRegion64> list;
    for (const MemoryRegion &region : m_memory->regions()) {
        const TargetRegion &place = whole.at(region.id);
        list.append({region.name, region.id, place.start, place.end() - 1, region.readOnly, region.modes});
    }
    return list;
}

int WideMemory::read(int region, int mode, quint64 address, quint64 *value)
{
    if (!value)
        return IMemory::BadPointer;
    MemoryBlock64 block;
    readBlock(region, mode, address, 1, block);
    *value = block.first().value;
    return block.first().status;
}

int WideMemory::write(int region, int mode, quint64 address, quint64 value, bool)
{
    return m_memory->writeCell(regionOf(*m_memory, region), address, mode, uint(value));
}

void WideMemory::readBlock(int region, int mode, quint64 address, int count, MemoryBlock64 &result)
{
    result.clear();
    for (const MemoryBlockCell &cell :
         m_memory->readCells(regionOf(*m_memory, region), address, mode, count, MemoryAccess::redrawLimit()))
        result.append({cell.value, cell.status});
}

void WideMemory::writeBlock(int region, int mode, quint64 address, int count, MemoryBlock64 &cells, bool flush)
{
    for (int i = 0; i < std::min<qsizetype>(count, cells.size()); ++i) {
        const quint64 at = address + quint64(i) * quint64(memoryCellWidth(mode));
        cells[i].status = write(region, mode, at, cells[i].value, flush);
    }
}
