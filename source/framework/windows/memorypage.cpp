#include "memorypage.h"
#include <algorithm>
#include <limits>

void MemoryPage::setRegion(const MemoryRegion64 &region, int width)
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

/// Addresses end at 32 bits, or at 64 bits for a region that has such ones.
int MemoryPage::cellsToRead() const
{
    if (m_address > m_region.highAddress)
        return 0;
    const quint64 last = isNarrow(m_region) ? std::numeric_limits<uint>::max() : std::numeric_limits<quint64>::max();
    const quint64 cells = quint64(m_columns) * quint64(m_rows);
    return cells == 0 ? 0 : int(std::min(cells - 1, (last - m_address) / m_step) + 1);
}

/// From the first word on the screen.
quint64 MemoryPage::offsetOf(int row, int column) const
{
    return quint64(m_step) * (quint64(m_columns) * quint64(row) + quint64(column));
}

void MemoryPage::buildLines()
{
    m_lines.clear();
    if (m_address > m_region.highAddress)
        return;
    const int mode = memoryMode(m_width);
    const quint64 rest = m_region.highAddress - m_address;
    for (int row = 0; row < m_rows && offsetOf(row, 0) <= rest; ++row) {
        MemoryLine line{m_address + offsetOf(row, 0), {}};
        line.cells.reserve(m_columns);
        for (int column = 0; column < m_columns; ++column) {
            MemoryCell cell = m_cache.cell(m_region.id, mode, m_address + offsetOf(row, column), m_step);
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
        quint64 address = line.address;
        for (const MemoryCell &cell : line.cells) {
            if (cell.changed)
                found.append({address, cell.value});
            address += m_step;
        }
    }
    return found;
}

// Scrolling -------------------------------------------------------------------

/// Less the last one.
quint64 MemoryPage::lineCount() const
{
    return (m_region.highAddress - m_region.lowAddress) / m_step / uint(m_columns);
}

quint64 MemoryPage::linesPerUnit() const
{
    return lineCount() / quint64(std::numeric_limits<int>::max()) + 1;
}

int MemoryPage::unitAt(quint64 address) const
{
    if (m_region.highAddress < m_region.lowAddress || address < m_region.lowAddress)
        return 0;
    return int((address - m_region.lowAddress) / m_step / uint(m_columns) / linesPerUnit());
}

int MemoryPage::unitsPerPage() const
{
    return int(std::max<quint64>(1, uint(m_rows) / linesPerUnit()));
}

quint64 MemoryPage::addressOfUnit(int unit) const
{
    if (m_region.highAddress < m_region.lowAddress || unit > lastUnit())
        return m_region.highAddress;
    const quint64 line = quint64(std::max(0, unit)) * linesPerUnit();
    return m_region.lowAddress + line * m_step * uint(m_columns);
}
