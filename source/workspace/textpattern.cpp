#include "textpattern.h"
#include "searchpattern.h"
#include <QDeadlineTimer>

using namespace Qt::StringLiterals;

TextPattern::TextPattern(const QString &text, const Options &options) : m_text(text), m_options(options)
{
    if (!options.regExp || text.isEmpty())
        return;
    const QString expression = options.wholeWord ? u"\\b(?:"_s + text + u")\\b"_s : text;
    m_expression = std::make_shared<SearchPattern>(expression, options.caseSensitive, true);
}

QString TextPattern::error() const
{
    return m_expression ? m_expression->error() : QString();
}

bool TextPattern::canMatch() const
{
    return !m_text.isEmpty() && (!m_expression || m_expression->isValid());
}

/// Expressions know "\n" as the only line end. The converted text is kept for the next search.
const QString &TextPattern::withLineEnds(const QString &raw) const
{
    if (!m_raw.isSharedWith(raw)) {
        m_raw = raw;
        m_lines = raw;
        m_lines.replace(QChar(QChar::ParagraphSeparator), u'\n');
    }
    return m_lines;
}

std::optional<TextPattern::Match> TextPattern::firstMatch(const QString &text, qsizetype from, qsizetype end) const
{
    const QDeadlineTimer deadline(m_timeLimit);
    const TextPiece piece{text};
    while (from < end) {
        const SearchPattern::Match match = m_expression->find(piece, from, end, [&] { return !deadline.hasExpired(); });
        m_hasGivenUp = m_hasGivenUp || deadline.hasExpired() || m_expression->hitStepLimit();
        if (match.position < 0)
            return std::nullopt;
        if (match.length > 0)
            return Match{match.position, match.length};
        from = match.position + 1;
    }
    return std::nullopt;
}

std::optional<TextPattern::Match> TextPattern::forward(const QString &raw, qsizetype from, qsizetype end) const
{
    if (m_expression)
        return firstMatch(withLineEnds(raw), from, end);
    const qsizetype position = findForward(raw, m_text, m_options, from, end);
    return position < 0 ? std::nullopt : std::optional(Match{position, m_text.size()});
}

std::optional<TextPattern::Match> TextPattern::backward(const QString &raw, qsizetype from) const
{
    if (!m_expression) {
        const qsizetype position = findBackward(raw, m_text, m_options, from);
        return position < 0 ? std::nullopt : std::optional(Match{position, m_text.size()});
    }
    const QDeadlineTimer deadline(m_timeLimit);
    const QString &text = withLineEnds(raw);
    for (qsizetype end = std::min(from + 1, text.size()); end > 0;) {
        m_hasGivenUp = m_hasGivenUp || deadline.hasExpired();
        if (deadline.hasExpired())
            return std::nullopt;
        const qsizetype start = end < 2 ? 0 : text.lastIndexOf(u'\n', end - 2) + 1; // of the line before end
        std::optional<Match> last;
        for (auto match = firstMatch(text, start, end); match; match = firstMatch(text, match->position + 1, end))
            last = match;
        if (last)
            return last;
        end = start;
    }
    return std::nullopt;
}

QList<TextPattern::Replaced> TextPattern::replacements(const QString &raw, const QString &replacement, qsizetype from,
                                                       qsizetype end) const
{
    QList<Replaced> found;
    if (!m_expression) {
        const auto fits = [end](const Replacement &match) { return match.position + match.length <= end; };
        for (const Replacement &match : findReplacements(raw, m_text, replacement, m_options, from, end)) {
            if (fits(match))
                found.append(Replaced{{match.position, match.length}, replacement});
        }
        return found;
    }
    const QString text = withLineEnds(raw);
    for (auto match = firstMatch(text, from, end); match && match->position + match->length <= end;
         match = firstMatch(text, match->position + match->length, end))
        found.append(Replaced{*match, m_expression->expanded(text, match->position, replacement)});
    return found;
}
