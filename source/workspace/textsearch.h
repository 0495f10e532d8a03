#pragma once
#include <QList>
#include <QString>

// Search in the raw text of a document: its paragraphs one behind the other, parted by ParagraphSeparator. Positions
// are characters from the start of the text, as QTextCursor counts them. A match never spans two paragraphs.

struct SearchOptions
{
    bool caseSensitive = true;
    bool wholeWord = false; ///< no letter, digit or "_" right before or behind; the first match of a paragraph that
                            ///< fails this ends the search of that paragraph
};

/// The first match that starts at @p from or behind it and before @p end, or -1. An empty @p pattern matches nowhere.
[[nodiscard]] qsizetype findForward(QStringView text, QStringView pattern, SearchOptions options, qsizetype from,
                                    qsizetype end);
/// The last match that starts at @p from or before it, or -1.
[[nodiscard]] qsizetype findBackward(QStringView text, QStringView pattern, SearchOptions options, qsizetype from);

/// What replaces a part of a text.
struct Replacement
{
    qsizetype position; ///< in the text before any replacement
    qsizetype length;
};

/// The matches that fall when @p pattern is replaced by @p replacement from @p from up to @p end, each search starting
/// behind the last replacement: whether a match is a whole word is seen in the text as replaced so far.
[[nodiscard]] QList<Replacement> findReplacements(QStringView text, QStringView pattern, QStringView replacement,
                                                  SearchOptions options, qsizetype from, qsizetype end);
