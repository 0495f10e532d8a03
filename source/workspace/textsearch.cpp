#include "textsearch.h"

namespace {
constexpr qsizetype Stretch = 64; ///< positions of a text that are excluded together, by a few wide comparisons

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

/// A character of a pattern that can be compared by its bits only.
struct Anchor
{
    qsizetype offset = -1; ///< in the pattern
    char16_t caseBit = 0;  ///< to be set in a character of the text before the comparison
    char16_t character = 0;

    /// Not 0 if the pattern does not match at @p place.
    [[nodiscard]] char16_t difference(const char16_t *place) const { return (place[offset] | caseBit) ^ character; }
};

/// The next such character of @p pattern from @p from on, in steps of 1 or -1. If case is ignored, these are the ASCII
/// characters except K and S, which have a third form outside ASCII.
Anchor findAnchor(QStringView pattern, SearchOptions options, qsizetype from, int step)
{
    for (qsizetype offset = from; offset >= 0 && offset < pattern.size(); offset += step) {
        const char16_t c = pattern[offset].unicode();
        if (options.caseSensitive)
            return {offset, 0, c};
        const char16_t caseBit = QChar(c).isLetter() ? 0x20 : 0;
        if (c < 0x80 && (c | 0x20) != u'k' && (c | 0x20) != u's')
            return {offset, caseBit, char16_t(c | caseBit)};
    }
    return {};
}

/// Whether both anchors match at any of the Stretch positions from @p text on.
bool mayMatch(const char16_t *text, Anchor first, Anchor last)
{
    char16_t found = 0; // of the same width as the compared characters
    for (qsizetype i = 0; i < Stretch; ++i)
        found |= char16_t(char16_t(first.difference(text + i) | last.difference(text + i)) == 0);
    return found != 0;
}

/// Like QStringView::indexOf(), optimised for long texts.
qsizetype indexOf(QStringView text, QStringView pattern, SearchOptions options, qsizetype from)
{
    const Anchor first = findAnchor(pattern, options, 0, 1);
    const Anchor last = findAnchor(pattern, options, pattern.size() - 1, -1);
    for (; first.offset >= 0 && from + Stretch + pattern.size() <= text.size(); from += Stretch) {
        const char16_t *const stretch = text.utf16() + from;
        __builtin_prefetch(stretch + 16 * Stretch); // processors do not prefetch beyond the end of a page
        if (!mayMatch(stretch, first, last))
            continue;
        for (const char16_t *place = stretch; place != stretch + Stretch; ++place) {
            if (!first.difference(place) && !last.difference(place)
                && QStringView(place, pattern.size()).compare(pattern, sensitivity(options)) == 0)
                return place - text.utf16();
        }
    }
    return text.indexOf(pattern, from, sensitivity(options));
}

/// A null @p before means the start of a paragraph.
bool isWholeWord(QStringView text, qsizetype match, qsizetype length, QChar before)
{
    const qsizetype behind = match + length;
    return !isWordCharacter(before) && (behind >= text.size() || !isWordCharacter(text[behind]));
}

QChar characterBefore(QStringView text, qsizetype position)
{
    return position > 0 ? text[position - 1] : QChar();
}

/// Like findForward; @p before is used as the character in front of @p from.
qsizetype findForward(QStringView text, QStringView pattern, SearchOptions options, qsizetype from, qsizetype end,
                      QChar before)
{
    const qsizetype start = from;
    while (from < end) {
        const qsizetype match = indexOf(text, pattern, options, from);
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
