#pragma once
#include "textparaview.h"

/// Looks for a text in paragraphs, one paragraph at a time. The caller fetches the lines: that may take long, and may
/// close the view.
class ParaScan
{
public:
    struct Pattern
    {
        QString text;
        Qt::CaseSensitivity sensitivity = Qt::CaseSensitive;
        bool forward = true;
    };

    /// Starts at the column of @p start.
    ParaScan(const Pattern &pattern, const TextParaView::Place &start);

    [[nodiscard]] int para() const { return m_place.para; } ///< whose lines are searched next
    /// Searches @p lines of para(), as the source gave them. Sets place() and returns true on a match; otherwise goes
    /// on to the next paragraph.
    [[nodiscard]] bool find(const QStringList &lines);
    /// The end of the match going forward, its start going backward.
    [[nodiscard]] const TextParaView::Place &place() const { return m_place; }

private:
    [[nodiscard]] qsizetype findInLine(const QString &line) const;

    const Pattern m_pattern;
    TextParaView::Place m_place;
    bool m_isFirst = true; ///< in the line where the search began
};
