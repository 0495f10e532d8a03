#pragma once
#include <functional>
#include <QTextBlock>
class QTextCursor;

/// A search for the partner of a bracket, which can run in steps. The caller must drop it when the text changes.
class BracketSearch
{
public:
    /// Updates the bracket list of a line.
    using Prepare = std::function<void(const QTextBlock &)>;
    enum State { Failed, Searching, Found };

    BracketSearch() = default; ///< finished without a result
    BracketSearch(const QTextBlock &block, int position, bool forward, Prepare prepare);

    /// Searches up to @p paragraphs lines.
    State advance(int paragraphs);
    [[nodiscard]] State state() const { return m_state; }
    /// Position of the opening bracket of the pair found.
    [[nodiscard]] int open() const { return std::min(m_from, m_to); }
    /// Position after its closing bracket.
    [[nodiscard]] int close() const { return std::max(m_from, m_to) + 1; }

private:
    void searchParagraph();

    Prepare m_prepare;
    State m_state = Failed;
    QTextBlock m_block;
    bool m_forward = true;
    QChar m_character;
    qsizetype m_entry = -1; ///< index of the next entry in the line's bracket list; -1 for the first or last
    int m_depth = 0;
    int m_from = -1;
    int m_to = -1;
};

/// Selects the bracket at a cursor whose partner is searched for.
class BracketMatcher
{
public:
    void setEnabled(bool enabled) { m_enabled = enabled; }
    [[nodiscard]] bool isEnabled() const { return m_enabled; }

    /// Starts the search at an opening bracket after the cursor, or else at a closing one before it.
    [[nodiscard]] BracketSearch begin(const QTextCursor &cursor, BracketSearch::Prepare prepare) const;

private:
    bool m_enabled = true;
};
