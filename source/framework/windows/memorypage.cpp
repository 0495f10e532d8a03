#include "memorypage.h"
#include <algorithm>
#include <limits>

namespace {
constexpr quint64 EndOfAddresses = quint64(std::numeric_limits<uint>::max()) + 1;
} // namespace

void MemoryPage::setRegion(const MemoryRegion &region, int width)
{
    m_region = region;
    setWidth(width);
}

void MemoryPage::setWidth(int width)
{
    m_width = width;
    m_step = memoryStep(m_region, width);
}

void MemoryPage::setSize(int rows, int characters)
{
    m_rows = rows;
    m_columns = memoryColumns(characters, addressDigits(m_region), m_width);
}

void MemoryPage::clear()
{
    m_region = {};
    m_address = 0;
    m_lines.clear();
}

// Words -----------------------------------------------------------------------

/// Addresses end at 32 bits.
int MemoryPage::cellsToRead() const
{
    if (m_address > m_region.highAddress)
        return 0;
    return int(std::min(quint64(m_columns) * quint64(m_rows), (EndOfAddresses - m_address + m_step - 1) / m_step));
}

quint64 MemoryPage::cellAddress(int row, int column) const
{
    return m_address + quint64(m_step) * (quint64(m_columns) * quint64(row) + quint64(column));
}

void MemoryPage::buildLines()
{
    m_lines.clear();
    const int mode = memoryMode(m_width);
    for (int row = 0; row < m_rows && cellAddress(row, 0) <= m_region.highAddress; ++row) {
        MemoryLine line{uint(cellAddress(row, 0)), {}};
        line.cells.reserve(m_columns);
        for (int column = 0; column < m_columns; ++column) {
            MemoryCell cell = m_cache.cell(m_region.id, mode, cellAddress(row, column), m_step);
            cell.value = maskedWord(cell.value, m_width);
            line.cells.append(cell);
        }
        m_lines.append(line);
    }
}

int MemoryPage::setDigit(int line, int index, int value)
{
    const int digits = 2 * m_width;
    const int position = index - memoryEditRange(addressDigits(m_region), m_columns, m_width).first;
    const int column = position / (digits + 1);
    const int nibble = digits - position % (digits + 1) - 1;
    if (line < 0 || line >= m_lines.size() || position < 0 || column >= m_lines[line].cells.size() || nibble < 0)
        return -1;
    MemoryCell &cell = m_lines[line].cells[column];
    cell.value = (cell.value & ~(0xFU << (4 * nibble))) | (uint(value) & 0xF) << (4 * nibble);
    cell.changed = true;
    return index - position % (digits + 1);
}

QList<MemoryPage::Change> MemoryPage::changes() const
{
    QList<Change> found;
    for (const MemoryLine &line : m_lines) {
        uint address = line.address;
        for (const MemoryCell &cell : line.cells) {
            if (cell.changed)
                found.append({address, cell.value});
            address += m_step;
        }
    }
    return found;
}

// Scrolling -------------------------------------------------------------------

quint64 MemoryPage::linesPerUnit() const
{
    const quint64 lines = (m_region.highAddress - m_region.lowAddress) / m_step / uint(m_columns);
    return lines / quint64(std::numeric_limits<int>::max()) + 1;
}

int MemoryPage::unitAt(uint address) const
{
    if (m_region.highAddress < m_region.lowAddress || address < m_region.lowAddress)
        return 0;
    return int((address - m_region.lowAddress) / m_step / uint(m_columns) / linesPerUnit());
}

int MemoryPage::unitsPerPage() const
{
    return std::max(1, int(uint(m_rows) / linesPerUnit()));
}

uint MemoryPage::addressOfUnit(int unit) const
{
    const quint64 line = quint64(std::max(0, unit)) * linesPerUnit();
    const quint64 address = m_region.lowAddress + line * m_step * uint(m_columns);
    return uint(std::min<quint64>(address, m_region.highAddress));
}
