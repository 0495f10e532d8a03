#pragma once
#include "rowpainter.h"
class ParaRows;

/// A place in a source of paragraphs. All count from 0.
struct ParaPlace
{
    int para = 0;
    int line = 0;
    int column = 0;

    auto operator<=>(const ParaPlace &other) const = default; // NOLINT(modernize-use-nullptr): a false finding
};

/// What is selected in a view of paragraphs.
class ParaSelection
{
public:
    /// Selects what is between two places, in any order. The first one becomes the anchor. Returns whether the
    /// selection is another one now.
    bool set(const ParaPlace &a, const ParaPlace &b);
    [[nodiscard]] bool isEmpty() const { return m_start == m_end; }

    /// Where a selection by mouse or keys has begun.
    [[nodiscard]] const ParaPlace &anchor() const { return m_anchor; }
    void setAnchor(const ParaPlace &anchor) { m_anchor = anchor; }
    /// Whether it is the match of a search, until the next set().
    [[nodiscard]] bool isMatch() const { return m_isMatch; }
    void setMatch() { m_isMatch = true; }

    [[nodiscard]] SelectedColumns columnsOf(int para, int line) const;
    /// The selected text without markup, not more than @p limit characters. Lines that are not on screen are fetched.
    [[nodiscard]] QString text(ParaRows &rows, qsizetype limit) const;

private:
    ParaPlace m_start;
    ParaPlace m_end;
    ParaPlace m_anchor;
    bool m_isMatch = false;
};
