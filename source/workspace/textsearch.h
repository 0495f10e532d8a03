#pragma once
#include <QList>
#include <QString>

// Search in the raw text of a document: its paragraphs in order, separated by ParagraphSeparator. Positions are
// characters from the start of the text, as in QTextCursor. A match never spans two paragraphs.

struct SearchOptions
{
    bool caseSensitive = true;
    /// No letter, digit or "_" directly before or after a match. The first match in a paragraph that does not fulfil
    /// this ends the search of that paragraph.
    bool wholeWord = false;
};

/// The first match that starts at or after @p from and before @p end, or -1. An empty @p pattern never matches.
[[nodiscard]] qsizetype findForward(QStringView text, QStringView pattern, SearchOptions options, qsizetype from,
                                    qsizetype end);
/// The last match that starts at or before @p from, or -1.
[[nodiscard]] qsizetype findBackward(QStringView text, QStringView pattern, SearchOptions options, qsizetype from);

/// A part of a text that is replaced.
struct Replacement
{
    qsizetype position; ///< in the text before all replacements
    qsizetype length;
};

/// The matches that are replaced when @p replacement replaces @p pattern between @p from and @p end. Each search starts
/// after the last replacement: whether a match is a whole word is decided in the text with the replacements made so
/// far.
[[nodiscard]] QList<Replacement> findReplacements(QStringView text, QStringView pattern, QStringView replacement,
                                                  SearchOptions options, qsizetype from, qsizetype end);
