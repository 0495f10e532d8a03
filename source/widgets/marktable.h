#pragma once
#include <QMap>

/// The marks of lines, by the numbers of the lines.
class MarkTable
{
public:
    enum Bit {
        EnabledBreakpoint = 0x01,
        DisabledBreakpoint = 0x02,
        MultipleBreakpoint = 0x04,
        CurrentLine = 0x08,
        Lookup = 0x10,
        Caller = 0x20,
        Alternate = 0x8000
    };

    /// Setting a breakpoint's bits sets or clears the alternate bit as well.
    void set(int line, int mask, bool on, bool alternate);
    void clear(int mask);
    [[nodiscard]] bool has(int line, int mask) const { return m_bits.value(line) & mask; }
    [[nodiscard]] const QMap<int, int> &bits() const { return m_bits; } ///< of all lines that have marks
    void setBits(const QMap<int, int> &bits) { m_bits = bits; }

private:
    QMap<int, int> m_bits;
};
