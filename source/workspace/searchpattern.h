#pragma once
#include "textpieces.h"
#include <functional>
#include <memory>

/// The text or regular expression of a search.
///
/// In an expression "." does not match a line end, which is "\n"; "^" and "$" match at the ends of each line; "\b",
/// "\w" and similar ones cover the letters of all languages. An object is used by one thread at a time.
class SearchPattern
{
public:
    struct Match
    {
        qsizetype position = -1; ///< -1: there is none
        qsizetype length = 0;
    };
    /// Called often during a long search, which ends without a match soon after it has returned false.
    using GoOn = std::function<bool()>;

    SearchPattern(const QString &text, bool caseSensitive, bool regExp);
    ~SearchPattern();
    Q_DISABLE_COPY_MOVE(SearchPattern)

    /// False for an invalid expression, which matches nowhere.
    [[nodiscard]] bool isValid() const;
    /// What is wrong with an invalid expression, in English; empty for a valid one.
    [[nodiscard]] QString error() const;

    /// The start of the first match at or after @p from, or -1. An expression that needs too many steps at one
    /// position, as nested repetitions do, has no match from there on. The search ends soon after @p running becomes
    /// false.
    [[nodiscard]] qsizetype find(const TextPiece &piece, qsizetype from, const std::atomic<bool> &running) const;
    /// The first match that starts at or after @p from and before @p end, which may be beyond the text.
    [[nodiscard]] Match find(const TextPiece &piece, qsizetype from, qsizetype end, const GoOn &goOn) const;
    /// The expression in the form that the library accepts: "{,3}" means "{0,3}".
    [[nodiscard]] static QString accepted(const QString &expression);
    /// Whether an expression needed too many steps in the last find().
    [[nodiscard]] bool hitStepLimit() const;
    /// The text that replaces the match of @p text at @p position: in @p replacement "\0" to "\9" stand for what the
    /// groups of the expression matched, "\n" and "\t" for line end and tab, and "\\" for a backslash.
    [[nodiscard]] QString expanded(const QString &text, qsizetype position, const QString &replacement) const;

private:
    struct Engine;
    std::unique_ptr<Engine> m_engine;
    const bool m_isExpression;
};
