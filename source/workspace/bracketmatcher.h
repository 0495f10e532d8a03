#pragma once
#include <functional>
#include <QTextBlock>
class QTextCursor;

/// A search for the partner of a bracket, which can be made in pieces. It ends unsuccessfully when the text changes:
/// whoever drives it must drop it then.
class BracketSearch
{
public:
    /// Brings the bracket list of a line up to date.
    using Prepare = std::function<void(const QTextBlock &)>;
    enum State { Failed, Searching, Found };

    BracketSearch() = default; ///< failed already
    BracketSearch(const QTextBlock &block, int position, bool forward, Prepare prepare);

    /// Goes through up to @p paragraphs lines.
    State advance(int paragraphs);
    [[nodiscard]] State state() const { return m_state; }
    /// Position of the opening bracket of a pair that was found.
    [[nodiscard]] int open() const { return std::min(m_from, m_to); }
    /// Position just behind its closing bracket.
    [[nodiscard]] int close() const { return std::max(m_from, m_to) + 1; }

private:
    void searchParagraph();

    Prepare m_prepare;
    State m_state = Failed;
    QTextBlock m_block;
    bool m_forward = true;
    QChar m_character;
    qsizetype m_entry = -1; ///< of the line's bracket list, to be looked at next; -1 for the first or last
    int m_depth = 0;
    int m_from = -1;
    int m_to = -1;
};

/// Decides which bracket at a cursor has its partner searched for.
class BracketMatcher
{
public:
    void setEnabled(bool enabled) { m_enabled = enabled; }
    [[nodiscard]] bool isEnabled() const { return m_enabled; }

    /// Begins the search from an opening bracket at the cursor, or else from a closing one before it.
    [[nodiscard]] BracketSearch begin(const QTextCursor &cursor, BracketSearch::Prepare prepare) const;

private:
    bool m_enabled = true;
};
