#pragma once
#include "memorylayout.h"

/// The part of a memory region that fits into a window: lines of words from an address on, and where they stand in the
/// region.
class MemoryPage
{
public:
    struct Change
    {
        quint64 address = 0;
        uint value = 0;
    };

    void setRegion(const MemoryRegion64 &region, int width);
    void setWidth(int width);
    void setAddress(quint64 address) { m_address = aligned(address); } ///< Of the first word.
    void setSize(int rows, int characters);                            ///< How much fits; characters per line.
    void clear();                                                      ///< No region, no lines.

    [[nodiscard]] const MemoryRegion64 &region() const { return m_region; }
    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] quint64 address() const { return m_address; }
    [[nodiscard]] int columns() const { return m_columns; }
    [[nodiscard]] const QList<MemoryLine> &lines() const { return m_lines; }
    /// Exact for steps that are powers of two.
    [[nodiscard]] quint64 aligned(quint64 address) const { return address & ~quint64(m_step - 1); }

    // Reading: an empty cache with region, mode and address to read; the number of words; and the cache with the result
    [[nodiscard]] MemoryCache request() const { return {m_region.id, memoryMode(m_width), m_address, {}}; }
    [[nodiscard]] int cellsToRead() const;
    void setCache(const MemoryCache &cache) { m_cache = cache; }
    void buildLines(); ///< From the cache; words that are not in it have no memory.

    /// Replaces a digit in the text of a line. Returns where its word begins in the text; -1 if there is no digit.
    int setDigit(int line, int index, int value);
    [[nodiscard]] QList<Change> changes() const;

    // Scrolling: a unit is more than one line if the region has more lines than a scroll bar has values
    [[nodiscard]] int lastUnit() const { return unitAt(m_region.highAddress); }
    [[nodiscard]] int unit() const { return unitAt(m_address); }
    [[nodiscard]] int unitsPerPage() const;
    [[nodiscard]] quint64 addressOfUnit(int unit) const;

private:
    [[nodiscard]] quint64 offsetOf(int row, int column) const;
    [[nodiscard]] quint64 lineCount() const;
    [[nodiscard]] quint64 linesPerUnit() const;
    [[nodiscard]] int unitAt(quint64 address) const;

    MemoryRegion64 m_region;
    quint64 m_address = 0;
    int m_width = 2;
    uint m_step = 1;
    int m_columns = 16;
    int m_rows = 0;
    MemoryCache m_cache; ///< what was read last
    QList<MemoryLine> m_lines;
};
