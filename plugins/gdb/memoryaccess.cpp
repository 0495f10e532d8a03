#include "memoryaccess.h"
#include "gdbsession.h"
#include <algorithm>
#include <QBitArray>

namespace {
constexpr quint64 UpperHalf = ~quint64(0xffffffff);
constexpr int LongestRead = 65536;
constexpr int RedrawTime = 50; ///< in ms
} // namespace

quint64 MemoryAccess::wholeAddress(const TargetRegion &region, uint address)
{
    return (region.start & UpperHalf) | address;
}

QDeadlineTimer MemoryAccess::redrawLimit()
{
    return QDeadlineTimer(RedrawTime);
}

/// Cuts regions at the end of the 32-bit range that they start in: IMemory has no addresses for the rest.
void MemoryAccess::setTable(const RegionTable &table)
{
    QList<TargetRegion> regions = table.regions();
    for (TargetRegion &region : regions)
        region.length = std::min(region.length, (region.start & UpperHalf) + 0x100000000 - region.start);
    m_table = RegionTable(regions);
    m_wholeTable = table;
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
    const TargetRegion *memory = regionOf(region);
    result = readCells(memory, memory ? wholeAddress(*memory, address) : 0, mode, count);
}

MemoryBlock MemoryAccess::readCells(const TargetRegion *region, quint64 address, int mode, int count,
                                    const QDeadlineTimer &limit)
{
    MemoryBlock none(std::max(count, 0), {0, NoMemory});
    const int width = memoryCellWidth(mode);
    if (!region || width == 0 || !region->contains(address))
        return none;
    const quint64 inside = (region->end() - address) / quint64(width);
    MemoryBlock cells = none.first(qsizetype(std::min(quint64(none.size()), inside)));
    if (region->kind == TargetRegion::Kind::Io)
        readDevices(address, width, limit, &cells);
    else
        readMemory(address, width, &cells);
    return cells + none.sliced(cells.size());
}

void MemoryAccess::requestCells(const TargetRegion *region, quint64 address, int mode, int count,
                                const QDeadlineTimer &limit, const std::function<void(const MemoryBlock &cells)> &use)
{
    const int width = memoryCellWidth(mode);
    const bool byGdb = region && width > 0 && count > 0 && region->contains(address)
                       && region->kind != TargetRegion::Kind::Io && m_session->isAlive() && gdbReaches();
    if (!byGdb)
        return use(readCells(region, address, mode, count, limit));
    const quint64 inside = (region->end() - address) / quint64(width);
    const MemoryBlock none(count, {0, NoMemory});
    const MemoryBlock unread = none.first(qsizetype(std::min(quint64(count), inside)));
    const int length = int(std::min<qint64>(qint64(width) * unread.size(), LongestRead));
    m_session->gdb()->send(readCommand(address, length), [=, this](const MiRecord &answer) {
        MemoryBlock cells = unread;
        setCells(rangesIn(answer), address, width, &cells);
        use(cells + none.sliced(cells.size()));
    });
}

/// One access for each device register. After one that fails, the next ones are still read.
void MemoryAccess::readDevices(quint64 address, int width, const QDeadlineTimer &limit, MemoryBlock *cells)
{
    for (MemoryBlockCell &cell : *cells) {
        if (limit.hasExpired() || !m_session->isAlive())
            return;
        uint value = 0;
        if (readWord(address, width, &value))
            cell = {value, Success};
        address += quint64(width);
    }
}

/// In one access, of which parts may fail.
void MemoryAccess::readMemory(quint64 address, int width, MemoryBlock *cells)
{
    const int length = int(std::min<qint64>(qint64(width) * cells->size(), LongestRead));
    setCells(readRanges(address, length), address, width, cells);
}

void MemoryAccess::setCells(const QList<Range> &ranges, quint64 address, int width, MemoryBlock *cells) const
{
    const int length = int(std::min<qint64>(qint64(width) * cells->size(), LongestRead));
    QByteArray bytes(length, '\0');
    QBitArray known(length);
    for (const Range &range : ranges) {
        if (range.address < address || range.address - address >= quint64(length))
            continue;
        const auto offset = qsizetype(range.address - address);
        const qsizetype size = std::min<qsizetype>(range.bytes.size(), length - offset);
        bytes.replace(offset, size, range.bytes.first(size));
        known.fill(true, int(offset), int(offset + size));
    }
    for (qsizetype i = 0; (i + 1) * width <= length; ++i) {
        bool isKnown = true;
        for (int byte = 0; byte < width; ++byte)
            isKnown = isKnown && known.testBit(int(i) * width + byte);
        if (isKnown)
            (*cells)[i] = {memoryCellValue(QByteArrayView(bytes).sliced(i * width, width), isBigEndian()), Success};
    }
}

QByteArray MemoryAccess::readBytes(quint64 address, int length)
{
    const TargetRegion *region = m_table.at(address);
    if (!region)
        return {};
    length = int(std::min<quint64>(quint64(std::clamp(length, 0, LongestRead)), region->end() - address));
    return bytesFrom(readRanges(address, length), address, length);
}

/// Those that begin at an address.
QByteArray MemoryAccess::bytesFrom(const QList<Range> &ranges, quint64 address, int length)
{
    return ranges.isEmpty() || ranges.first().address != address ? QByteArray() : ranges.first().bytes.left(length);
}

QList<MemoryAccess::Range> MemoryAccess::readRanges(quint64 address, int length)
{
    if (!m_session->isAlive())
        return {};
    if (gdbReaches())
        return readByGdb(address, length);
    QByteArray bytes;
    return m_session->target()->readDirectly(address, length, &bytes) ? QList<Range>{{address, bytes}} : QList<Range>();
}

QList<MemoryAccess::Range> MemoryAccess::readByGdb(quint64 address, int length)
{
    return rangesIn(m_session->gdb()->ask(readCommand(address, length)));
}

QByteArray MemoryAccess::readCommand(quint64 address, int length)
{
    return "-data-read-memory-bytes 0x" + QByteArray::number(address, 16) + ' ' + QByteArray::number(length);
}

QList<MemoryAccess::Range> MemoryAccess::rangesIn(const MiRecord &answer)
{
    QList<Range> ranges;
    for (const MiValue &range : answer.results[u"memory"].items())
        ranges.append({range.address(u"begin"), QByteArray::fromHex(range.text(u"contents").toLatin1())});
    return ranges;
}

bool MemoryAccess::readWord(quint64 address, int width, uint *value)
{
    QByteArray bytes;
    if (!m_session->isAlive())
        return false;
    if (!m_session->target()->readDirectly(address, width, &bytes) && gdbReaches())
        bytes = bytesFrom(readByGdb(address, width), address, width);
    *value = memoryCellValue(bytes, isBigEndian());
    return bytes.size() == width;
}

void MemoryAccess::writeBlock(int region, int mode, uint address, int count, MemoryBlock &cells, bool)
{
    const TargetRegion *memory = regionOf(region);
    const int width = memoryCellWidth(mode);
    for (int i = 0; i < std::min<qsizetype>(count, cells.size()); ++i) {
        const quint64 at = memory ? wholeAddress(*memory, address) + quint64(i) * quint64(width) : 0;
        cells[i].status = writeCell(memory, at, mode, cells[i].value);
    }
}

int MemoryAccess::writeCell(const TargetRegion *region, quint64 address, int mode, uint value)
{
    const int width = memoryCellWidth(mode);
    if (!region || width == 0 || !region->contains(address) || !region->contains(address + quint64(width) - 1)
        || !m_session->isAlive())
        return NoMemory;
    if (region->kind == TargetRegion::Kind::Rom)
        return WriteToRom;
    if (region->kind == TargetRegion::Kind::Io)
        return writeWord(address, width, value) ? Success : NoMemory;
    const QByteArray bytes = memoryCellBytes(value, width, isBigEndian());
    if (!writeBytes(address, bytes))
        return NoMemory;
    return m_verify && bytesFrom(readRanges(address, width), address, width) != bytes ? NoMemory : Success;
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
