#include "memoryaccess.h"
#include "gdbsession.h"
#include <algorithm>

namespace {
constexpr quint64 UpperHalf = ~quint64(0xffffffff);
constexpr int LongestRead = 65536;

quint64 wholeAddress(const TargetRegion &region, uint address)
{
    return (region.start & UpperHalf) | address;
}
} // namespace

/// Cuts regions at the end of the 32-bit range that they start in: the host has no addresses for the rest.
void MemoryAccess::setTable(const RegionTable &table)
{
    QList<TargetRegion> regions = table.regions();
    for (TargetRegion &region : regions)
        region.length = std::min(region.length, (region.start & UpperHalf) + 0x100000000 - region.start);
    m_table = RegionTable(regions);
    m_codeRegion = 0;
}

void MemoryAccess::setCodeAddress(quint64 address)
{
    if (codeRegion() && codeRegion()->contains(address))
        return;
    if (const TargetRegion *region = m_table.at(address))
        m_codeRegion = int(region - m_table.regions().constData());
}

QList<MemoryRegion> MemoryAccess::regions()
{
    QList<MemoryRegion> list;
    for (const TargetRegion &region : m_table.regions()) {
        const bool device = region.kind == TargetRegion::Kind::Io;
        list.append({region.name, int(list.size()), 0, 0, uint(region.start), uint(region.end() - 1),
                     region.kind == TargetRegion::Kind::Rom,
                     uint(device ? Byte | Word16 | Word32 : Byte | Word16 | Word24 | Word32)});
    }
    if (codeRegion())
        list.move(m_codeRegion, 0);
    return list;
}

const TargetRegion *MemoryAccess::regionOf(int id) const
{
    return id >= 0 && id < m_table.regions().size() ? &m_table.regions().at(id) : nullptr;
}

bool MemoryAccess::gdbReaches() const
{
    if (m_session->isStopped())
        return true;
    return m_session->isAlive() && m_session->target()->readsWhileRunning();
}

bool MemoryAccess::isBigEndian() const
{
    return m_session->program().elf.bigEndian;
}

int MemoryAccess::read(int region, int mode, uint address, uint *value)
{
    if (!value)
        return BadPointer;
    MemoryBlock block;
    readBlock(region, mode, address, 1, block);
    *value = block.first().value;
    return block.first().status;
}

int MemoryAccess::write(int region, int mode, uint address, uint value, bool flush)
{
    MemoryBlock cells{{value, Success}};
    writeBlock(region, mode, address, 1, cells, flush);
    return cells.first().status;
}

void MemoryAccess::readBlock(int region, int mode, uint address, int count, MemoryBlock &result)
{
    result.fill({0, NoMemory}, std::max(count, 0));
    const TargetRegion *memory = regionOf(region);
    const int width = memoryCellWidth(mode);
    if (!memory || width == 0 || count <= 0)
        return;
    const quint64 start = wholeAddress(*memory, address);
    if (!memory->contains(start))
        return;
    const int inside = int(std::min<quint64>(quint64(count), (memory->end() - start) / quint64(width)));
    const QByteArray bytes = readCells(*memory, start, width, inside);
    QByteArrayView rest(bytes);
    for (int i = 0; rest.size() >= width; ++i, rest = rest.sliced(width))
        result[i] = {memoryCellValue(rest.first(width), isBigEndian()), Success};
}

QByteArray MemoryAccess::readCells(const TargetRegion &region, quint64 address, int width, int count)
{
    if (region.kind != TargetRegion::Kind::Io)
        return readBytes(address, width * count);
    QByteArray bytes; // one access for each device register
    for (int i = 0; i < count; ++i) {
        uint value = 0;
        if (!readWord(address + quint64(i) * quint64(width), width, &value))
            break;
        bytes += memoryCellBytes(value, width, isBigEndian());
    }
    return bytes;
}

QByteArray MemoryAccess::readBytes(quint64 address, int length)
{
    QByteArray bytes;
    const TargetRegion *region = m_table.at(address);
    if (!m_session->isAlive() || !region)
        return bytes;
    length = int(std::min<quint64>(quint64(std::clamp(length, 0, LongestRead)), region->end() - address));
    if (!gdbReaches())
        return m_session->target()->readDirectly(address, length, &bytes) ? bytes : QByteArray();
    return readByGdb(address, length);
}

QByteArray MemoryAccess::readByGdb(quint64 address, int length)
{
    const MiRecord answer = m_session->gdb()->ask("-data-read-memory-bytes 0x" + QByteArray::number(address, 16) + ' '
                                                  + QByteArray::number(length));
    const QList<MiValue> ranges = answer.results[u"memory"].items();
    if (ranges.isEmpty() || ranges.first().address(u"begin") != address)
        return {};
    return QByteArray::fromHex(ranges.first().text(u"contents").toLatin1()).left(length);
}

bool MemoryAccess::readWord(quint64 address, int width, uint *value)
{
    QByteArray bytes;
    if (!m_session->isAlive())
        return false;
    if (!m_session->target()->readDirectly(address, width, &bytes) && gdbReaches())
        bytes = readByGdb(address, width);
    *value = memoryCellValue(bytes, isBigEndian());
    return bytes.size() == width;
}

void MemoryAccess::writeBlock(int region, int mode, uint address, int count, MemoryBlock &cells, bool)
{
    const TargetRegion *memory = regionOf(region);
    const int width = memoryCellWidth(mode);
    for (int i = 0; i < std::min<qsizetype>(count, cells.size()); ++i) {
        const quint64 at = memory ? wholeAddress(*memory, address) + quint64(i) * quint64(std::max(width, 1)) : 0;
        cells[i].status = writeCell(width ? memory : nullptr, at, width, cells[i].value);
    }
}

int MemoryAccess::writeCell(const TargetRegion *region, quint64 address, int width, uint value)
{
    if (!region || !region->contains(address) || !region->contains(address + quint64(width) - 1)
        || !m_session->isAlive())
        return NoMemory;
    if (region->kind == TargetRegion::Kind::Rom)
        return WriteToRom;
    if (region->kind == TargetRegion::Kind::Io)
        return writeWord(address, width, value) ? Success : NoMemory;
    const QByteArray bytes = memoryCellBytes(value, width, isBigEndian());
    if (!writeBytes(address, bytes))
        return NoMemory;
    return m_verify && readBytes(address, width) != bytes ? NoMemory : Success;
}

bool MemoryAccess::writeBytes(quint64 address, const QByteArray &bytes)
{
    m_session->targetChanged();
    if (!gdbReaches())
        return m_session->target()->writeDirectly(address, bytes);
    return writeByGdb(address, bytes);
}

bool MemoryAccess::writeByGdb(quint64 address, const QByteArray &bytes)
{
    return m_session->gdb()
        ->ask("-data-write-memory-bytes 0x" + QByteArray::number(address, 16) + ' ' + bytes.toHex())
        .isDone();
}

bool MemoryAccess::writeWord(quint64 address, int width, uint value)
{
    if (!m_session->isAlive())
        return false;
    m_session->targetChanged();
    const QByteArray bytes = memoryCellBytes(value, width, isBigEndian());
    return m_session->target()->writeDirectly(address, bytes) || (gdbReaches() && writeByGdb(address, bytes));
}
