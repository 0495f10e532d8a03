#pragma once
#include "editorcolours.h"
#include "textpattern.h"
#include <QRect>
#include <QTextBlock>
class TextDocument;
class TextViewEdit;

/// What a pane of an editor paints below its text: the paper, bands on the lines of the next statement and of the
/// cursor, and marks on matches. Formats with a background of their own and the selection stay visible above them.
class PaneBackground
{
public:
    /// Both arguments outlive this object.
    PaneBackground(TextViewEdit &pane, const TextDocument &document) : m_pane(pane), m_document(document) {}

    /// Marks every match in the visible lines, also after the text was changed. A null pattern ends that, and so does
    /// an expression that takes too long.
    void markMatches(const std::shared_ptr<const TextPattern> &pattern);
    /// @p left is where the text begins in the viewport, which depends on the horizontal scroll bar.
    void paint(const QRect &rect, qreal left);
    void refreshCurrentLine(); ///< The cursor has moved.

private:
    void paintBands(const QRect &rect);
    [[nodiscard]] std::optional<QBrush> bandOf(const QTextBlock &line, const EditorColours &colours) const;
    void paintMatches(const QRect &rect, qreal left);
    [[nodiscard]] const EditorColours &colours();

    TextViewEdit &m_pane;
    const TextDocument &m_document;
    TextPattern m_marked;   ///< matches nowhere if no matches are marked
    QTextBlock m_shownLine; ///< painted as the line of the cursor
    QColor m_paper;
    EditorColours m_colours; ///< for this paper
};
