#pragma once
#include "textpieces.h"
#include <memory>

/// What is looked for in a text: another text, or a regular expression.
///
/// In an expression "." stands for line ends too, "^" and "$" for the ends of the whole text, and "\b", "\w" and their
/// sisters know the letters of all languages. An object is used by one thread at a time.
class SearchPattern
{
public:
    SearchPattern(const QString &text, bool caseSensitive, bool regExp);
    ~SearchPattern();
    Q_DISABLE_COPY_MOVE(SearchPattern)

    /// False for an expression with a fault in it, which matches nowhere.
    [[nodiscard]] bool isValid() const;

    /// Where the first match begins that lies at @p from or behind it, or -1. An expression that tries too much at one
    /// place, as nested repetitions do, has no match from there on. However long the search would take, it ends soon
    /// after @p running becomes false.
    [[nodiscard]] qsizetype find(const TextPiece &piece, qsizetype from, const std::atomic<bool> &running) const;

private:
    struct Engine;
    const std::unique_ptr<Engine> m_engine;
};
