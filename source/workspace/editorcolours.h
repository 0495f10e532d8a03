#pragma once
#include <QColor>

/// What the editor paints behind text, for paper of one lightness. Text of the product's formats keeps a contrast of at
/// least 4.5 to 1 on each.
struct EditorColours
{
    QColor currentLine; ///< the paper, a little darker
    QColor bracket;     ///< behind matched brackets
    QColor match;       ///< behind what a search finds
    QColor matchFrame;  ///< around it
    QColor statement;   ///< the line of the next statement
    QColor caller;      ///< the line of a calling function

    /// Behind a line with these marks, which are bits of MarkTable; an invalid colour for none.
    [[nodiscard]] QColor band(int marks) const;
};

[[nodiscard]] EditorColours editorColours(const QColor &paper);
