#pragma once
#include "textpieces.h"
#include <memory>

/// The text or regular expression of a search.
///
/// In an expression "." also matches line ends, "^" and "$" match the ends of the whole text, and "\b", "\w" and
/// similar ones cover the letters of all languages. An object is used by one thread at a time.
class SearchPattern
{
public:
    SearchPattern(const QString &text, bool caseSensitive, bool regExp);
    ~SearchPattern();
    Q_DISABLE_COPY_MOVE(SearchPattern)

    /// False for an invalid expression, which matches nowhere.
    [[nodiscard]] bool isValid() const;

    /// The start of the first match at or after @p from, or -1. An expression that needs too many steps at one
    /// position, as nested repetitions do, has no match from there on. The search ends soon after @p running becomes
    /// false.
    [[nodiscard]] qsizetype find(const TextPiece &piece, qsizetype from, const std::atomic<bool> &running) const;

private:
    struct Engine;
    const std::unique_ptr<Engine> m_engine;
};
