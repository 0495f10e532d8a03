#include "pararows.h"
#include "linesource.h"
#include "rowtext.h"
#include <algorithm>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
constexpr int CachedParas = 20'000;
} // namespace

ParaRows::ParaRows(IParaSource *source) : m_source(source), m_paras(CachedParas) {}

int ParaRows::lastPara() const
{
    return std::max(0, m_source->paraCount() - 1);
}

QStringList ParaRows::linesOf(int para)
{
    if (para < 0 || para >= m_source->paraCount())
        return {};
    if (const QStringList *known = m_paras[para])
        return *known;
    const QPointer<ParaRows> self(this);
    QStringList lines = m_source->para(para);
    if (self)
        m_paras.insert(para, new QStringList(lines));
    return lines;
}

void ParaRows::setPatience(int milliseconds)
{
    m_deadline.setRemainingTime(milliseconds);
    m_isWaiting = false;
}

std::optional<QStringList> ParaRows::linesInTime(int para)
{
    const QPointer<ParaRows> self(this);
    const bool isKnown = para < 0 || para >= m_source->paraCount() || m_paras.contains(para);
    const bool isReady = isKnown || m_source->fetch(para, int(m_deadline.remainingTime()));
    if (!self)
        return {};
    if (!isReady) {
        m_isWaiting = true;
        return {};
    }
    QStringList lines = linesOf(para);
    return self ? std::optional(lines) : std::nullopt;
}

ParaRows::Row ParaRows::makeRow(int para, int line, const QStringList &lines)
{
    if (lines.isEmpty())
        return {para, 0, u"<font color=\"#808080\">...</font>"_s, true, true};
    return {para, line, lines.value(line), line >= lines.size() - 1, false};
}

ParaRows::Row ParaRows::rowAt(int para, int line)
{
    return makeRow(para, line, linesOf(para));
}

bool ParaRows::step(Row &row, bool forward)
{
    const std::optional<QStringList> present = linesInTime(row.para);
    if (!present)
        return false;
    if (forward ? row.line + 1 < present->size() : row.line > 0) {
        row = makeRow(row.para, row.line + (forward ? 1 : -1), *present);
        return true;
    }
    int para = row.para;
    for (int i = 0; i <= LongestGap; ++i) {
        para += forward ? 1 : -1;
        if (para < 0 || para >= m_source->paraCount())
            return false;
        const std::optional<QStringList> lines = linesInTime(para);
        if (!lines)
            return false;
        if (!lines->isEmpty() || i == LongestGap) {
            row = makeRow(para, forward ? 0 : int(std::max<qsizetype>(0, lines->size() - 1)), *lines);
            return true;
        }
    }
    return false;
}

bool ParaRows::load(int count)
{
    const QPointer<ParaRows> self(this);
    QList<Row> rows;
    if (count > 0 && m_source->paraCount() > 0) {
        const bool fromGap = m_top.isGap; // one that was scrolled to; others are passed over
        const std::optional<QStringList> lines = linesInTime(m_top.para);
        if (!self)
            return false;
        Row row = makeRow(m_top.para, m_top.line, lines.value_or(QStringList()));
        if (!lines)
            rows.append(row);
        bool more = lines && (fromGap || !row.isGap || step(row, true));
        for (; self && more && rows.size() < count; more = step(row, true))
            rows.append(row);
    }
    if (!self)
        return false;
    if (!m_isWaiting || m_shown.isEmpty() || count == 0)
        m_shown = rows;
    return true;
}

void ParaRows::shift(qint64 distance)
{
    const qint64 top = m_top.para + distance;
    const bool isInside = top >= 0 && top <= lastPara();
    m_top = {int(std::clamp<qint64>(top, 0, lastPara())), isInside ? m_top.line : 0, {}, true, m_top.isGap && isInside};
    m_shown.clear();
    clearCache();
}

int ParaRows::indexOf(int para, int line) const
{
    const auto it = std::ranges::find_if(m_shown, [&](const Row &row) { return row.para == para && row.line == line; });
    return it == m_shown.end() ? -1 : int(it - m_shown.begin());
}

int ParaRows::indexOfLast(int para) const
{
    const auto it = std::ranges::find_if(m_shown, [&](const Row &row) { return row.para == para && row.isLast; });
    return it == m_shown.end() ? -1 : int(it - m_shown.begin());
}

QString ParaRows::plainTexts() const
{
    QString text;
    for (const Row &row : m_shown)
        text += plainText(row.text) + u'\n';
    return text;
}
