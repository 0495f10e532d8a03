#include "textsearch.h"

namespace {
bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

Qt::CaseSensitivity sensitivity(SearchOptions options)
{
    return options.caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

bool canMatch(QStringView pattern)
{
    return !pattern.isEmpty() && !pattern.contains(QChar::ParagraphSeparator);
}

/// A null @p before stands for the start of a paragraph.
bool isWholeWord(QStringView text, qsizetype match, qsizetype length, QChar before)
{
    const qsizetype behind = match + length;
    return !isWordCharacter(before) && (behind >= text.size() || !isWordCharacter(text[behind]));
}

QChar characterBefore(QStringView text, qsizetype position)
{
    return position > 0 ? text[position - 1] : QChar();
}

/// As findForward; @p before stands in front of @p from in place of the text's own character.
qsizetype findForward(QStringView text, QStringView pattern, SearchOptions options, qsizetype from, qsizetype end,
                      QChar before)
{
    const qsizetype start = from;
    while (from < end) {
        const qsizetype match = text.indexOf(pattern, from, sensitivity(options));
        if (match < 0 || match >= end)
            return -1;
        const QChar previous = match == start ? before : characterBefore(text, match);
        if (!options.wholeWord || isWholeWord(text, match, pattern.size(), previous))
            return match;
        const qsizetype paragraphEnd = text.indexOf(QChar(QChar::ParagraphSeparator), match);
        if (paragraphEnd < 0)
            return -1;
        from = paragraphEnd + 1;
    }
    return -1;
}
} // namespace

qsizetype findForward(QStringView text, QStringView pattern, SearchOptions options, qsizetype from, qsizetype end)
{
    if (!canMatch(pattern))
        return -1;
    return findForward(text, pattern, options, from, end, characterBefore(text, from));
}

qsizetype findBackward(QStringView text, QStringView pattern, SearchOptions options, qsizetype from)
{
    if (!canMatch(pattern))
        return -1;
    while (from >= 0) {
        const qsizetype match = text.lastIndexOf(pattern, from, sensitivity(options));
        if (match < 0)
            return -1;
        if (!options.wholeWord || isWholeWord(text, match, pattern.size(), characterBefore(text, match)))
            return match;
        from = match == 0 ? -1 : text.lastIndexOf(QChar(QChar::ParagraphSeparator), match - 1);
    }
    return -1;
}

QList<Replacement> findReplacements(QStringView text, QStringView pattern, QStringView replacement,
                                    SearchOptions options, qsizetype from, qsizetype end)
{
    QList<Replacement> found;
    if (!canMatch(pattern))
        return found;
    QChar before = characterBefore(text, from);
    for (;;) {
        const qsizetype match = findForward(text, pattern, options, from, end, before);
        if (match < 0)
            return found;
        found.append({match, pattern.size()});
        if (!replacement.isEmpty())
            before = replacement.back();
        else if (match != from)
            before = characterBefore(text, match);
        from = match + pattern.size();
    }
}
