#pragma once
#include "textsearch.h"
#include <memory>
#include <optional>
class SearchPattern;

/// What a search in a document looks for: a text or a regular expression. Positions are those of the raw text, as in
/// textsearch.h. A search for an expression is given up after two seconds as if there were no match.
class TextPattern
{
public:
    struct Options : SearchOptions
    {
        bool regExp = false;
    };
    struct Match
    {
        qsizetype position = 0;
        qsizetype length = 0;
    };
    struct Replaced : Match
    {
        QString text; ///< what replaces it
    };

    TextPattern() = default; ///< matches nowhere
    TextPattern(const QString &text, const Options &options);

    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] const Options &options() const { return m_options; }
    /// What is wrong with the expression; empty if nothing is.
    [[nodiscard]] QString error() const;
    /// False for an empty text and for an expression with an error.
    [[nodiscard]] bool canMatch() const;
    void setTimeLimit(int milliseconds) { m_timeLimit = milliseconds; } ///< Of each search for an expression.
    /// Whether a search was given up, so that there may be matches that were not found.
    [[nodiscard]] bool hasGivenUp() const { return m_hasGivenUp; }

    /// The first match that starts at or after @p from and before @p end. An expression matches one character at least.
    [[nodiscard]] std::optional<Match> forward(const QString &raw, qsizetype from, qsizetype end) const;
    /// The last match that starts at or before @p from.
    [[nodiscard]] std::optional<Match> backward(const QString &raw, qsizetype from) const;
    /// The matches between @p from and @p end, and what replaces them; see SearchPattern::expanded().
    [[nodiscard]] QList<Replaced> replacements(const QString &raw, const QString &replacement, qsizetype from,
                                               qsizetype end) const;

private:
    [[nodiscard]] const QString &withLineEnds(const QString &raw) const;
    [[nodiscard]] std::optional<Match> firstMatch(const QString &text, qsizetype from, qsizetype end) const;

    QString m_text;
    Options m_options;
    int m_timeLimit = 2000; ///< milliseconds
    mutable bool m_hasGivenUp = false;
    std::shared_ptr<const SearchPattern> m_expression; ///< null for a plain text
    mutable QString m_raw; ///< the text that was searched last, and the same with line ends for expressions
    mutable QString m_lines;
};
