#include "parascan.h"
#include "rowtext.h"
#include <limits>

ParaScan::ParaScan(const Pattern &pattern, const TextParaView::Place &start) : m_pattern(pattern), m_place(start) {}

/// At column 0 a search backward finds nothing.
qsizetype ParaScan::findInLine(const QString &line) const
{
    if (m_pattern.forward)
        return line.indexOf(m_pattern.text, m_isFirst ? m_place.column : 0, m_pattern.sensitivity);
    const qsizetype from = m_isFirst ? std::min(qsizetype(m_place.column), line.size()) : line.size();
    return from < 0 ? -1 : line.lastIndexOf(m_pattern.text, from, m_pattern.sensitivity);
}

bool ParaScan::find(const QStringList &lines)
{
    const int step = m_pattern.forward ? 1 : -1;
    for (int line = std::min(m_place.line, int(lines.size()) - (m_pattern.forward ? 0 : 1));
         line >= 0 && line < lines.size(); line += step) {
        const qsizetype at = findInLine(plainText(lines[line]));
        m_isFirst = false;
        if (at >= 0) {
            m_place.line = line;
            m_place.column = int(at + (m_pattern.forward ? m_pattern.text.size() : 0));
            return true;
        }
    }
    m_isFirst = false;
    m_place.para += step;
    m_place.line = m_pattern.forward ? 0 : std::numeric_limits<int>::max();
    return false;
}
