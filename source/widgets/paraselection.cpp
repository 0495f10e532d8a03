#include "paraselection.h"
#include "pararows.h"
#include <algorithm>
#include <QPointer>

namespace {
constexpr int Patience = 5000; ///< milliseconds for a source that has to fetch the selected lines

QString selectedPart(const QString &text, const SelectedColumns &columns)
{
    return columns.to == SelectedColumns::ToEnd ? text.mid(columns.from)
                                                : text.mid(columns.from, columns.to - columns.from);
}
} // namespace

bool ParaSelection::set(const ParaPlace &a, const ParaPlace &b)
{
    const ParaPlace start = std::min(a, b);
    const ParaPlace end = std::max(a, b);
    const bool isOther = start != m_start || end != m_end;
    m_isMatch = false;
    m_anchor = a;
    m_start = start;
    m_end = end;
    return isOther;
}

SelectedColumns ParaSelection::columnsOf(int para, int line) const
{
    const std::pair place(para, line);
    const std::pair first(m_start.para, m_start.line);
    const std::pair last(m_end.para, m_end.line);
    if (isEmpty() || place < first || place > last)
        return {};
    return {place == first ? m_start.column : 0, place == last ? m_end.column : SelectedColumns::ToEnd};
}

QString ParaSelection::text(ParaRows &rows, qsizetype limit) const
{
    QString text;
    const QPointer<ParaRows> alive(&rows); // this object is deleted together with the rows
    rows.setPatience(Patience);
    ParaRows::Row row = rows.rowAt(m_start.para, m_start.line);
    bool more = alive && !isEmpty();
    while (alive && more && text.size() < limit && std::pair(row.para, row.line) <= std::pair(m_end.para, m_end.line)) {
        const QString part = selectedPart(plainText(row.text), columnsOf(row.para, row.line));
        text += part;
        const bool isLast = row.para == m_end.para && row.line == m_end.line;
        if (!isLast && !part.endsWith(u'\n'))
            text += u'\n';
        more = !isLast && rows.step(row, true);
    }
    text.truncate(std::min(text.size(), limit));
    return text;
}
