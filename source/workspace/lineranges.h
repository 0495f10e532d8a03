#pragma once
#include <vector>

/// Numbers of lines of a text, kept as ranges. The numbers follow the lines when the text changes.
class LineRanges
{
public:
    struct Range ///< both inclusive
    {
        int first;
        int last;
    };

    [[nodiscard]] bool isEmpty() const { return m_ranges.empty(); }
    [[nodiscard]] int first() const { return m_ranges.front().first; } ///< only if there is one
    [[nodiscard]] int count() const;                                   ///< of all lines
    [[nodiscard]] bool contains(Range range) const;
    [[nodiscard]] const std::vector<Range> &ranges() const { return m_ranges; }

    void add(Range added);
    void remove(Range removed); ///< nothing if its end is before its start
    int takeFirst();
    /// The lines @p first to @p oldLast were replaced by the lines @p first to @p oldLast + @p inserted. If some of the
    /// old lines were in the ranges, all of the new ones are.
    void replaceLines(int first, int oldLast, int inserted);

private:
    std::vector<Range> m_ranges; ///< ascending and disjoint
};
