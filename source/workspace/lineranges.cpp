#include "lineranges.h"
#include <algorithm>

int LineRanges::count() const
{
    int result = 0;
    for (const Range range : m_ranges)
        result += range.last - range.first + 1;
    return result;
}

bool LineRanges::contains(Range range) const
{
    return std::ranges::any_of(m_ranges,
                               [range](Range own) { return own.first <= range.first && range.last <= own.last; });
}

void LineRanges::add(Range added)
{
    const auto first = std::ranges::find_if(m_ranges, [added](Range range) { return range.last + 1 >= added.first; });
    const auto behind =
        std::find_if(first, m_ranges.end(), [added](Range range) { return range.first > added.last + 1; });
    if (first != behind) {
        added.first = std::min(added.first, first->first);
        added.last = std::max(added.last, std::prev(behind)->last);
    }
    m_ranges.insert(m_ranges.erase(first, behind), added);
}

void LineRanges::remove(Range removed)
{
    if (removed.first > removed.last)
        return;
    std::vector<Range> left;
    for (const Range range : m_ranges) {
        const Range above{range.first, std::min(range.last, removed.first - 1)};
        const Range below{std::max(range.first, removed.last + 1), range.last};
        for (const Range part : {above, below}) {
            if (part.first <= part.last)
                left.push_back(part);
        }
    }
    m_ranges = std::move(left);
}

int LineRanges::takeFirst()
{
    const Range first = m_ranges.front();
    if (first.first == first.last)
        m_ranges.erase(m_ranges.begin());
    else
        ++m_ranges.front().first;
    return first.first;
}

void LineRanges::replaceLines(int first, int oldLast, int inserted)
{
    bool hadSome = false;
    for (Range &range : m_ranges) {
        hadSome = hadSome || (range.first <= oldLast && range.last >= first);
        if (range.first > oldLast)
            range.first += inserted;
        else
            range.first = std::min(range.first, first);
        if (range.last > oldLast)
            range.last += inserted;
        else if (range.last >= first)
            range.last = oldLast + inserted;
    }
    if (hadSome)
        add({first, oldLast + inserted}); // several ranges may have become one
}
