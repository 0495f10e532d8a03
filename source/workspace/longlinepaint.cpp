#include "linelayout.h"
#include "longline.h"
#include "longlineedit.h"
#include <algorithm>
#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QScrollBar>
#include <QTextLayout>

// What a LongLineEdit paints itself: the long lines.

void LongLineEdit::paintEvent(QPaintEvent *event)
{
    QPlainTextEdit::paintEvent(event);
    if (m_pageStep > 0) // the base class sets it behind the range
        verticalScrollBar()->setPageStep(m_pageStep);
    if (!hasLongLines())
        return;
    const QRect rect = event->rect();
    for (const Line &line : linesAt(rect.top(), rect.bottom())) {
        if (!isLong(line.block))
            continue;
        QPainter painter(viewport());
        painter.setClipRect(rect);
        painter.setPen(palette().color(QPalette::Text));
        drawLongLine(painter, line, rect);
    }
}

void LongLineEdit::drawLongLine(QPainter &painter, const Line &line, const QRectF &clip) const
{
    const QTextBlock &block = line.block;
    const QAbstractTextDocumentLayout::PaintContext context = getPaintContext();
    const QTextLayout &layout = *block.layout();
    const int composed = int(layout.preeditAreaText().size());
    const int composedAt = composed ? layout.preeditAreaPosition() : block.length();
    const auto indexIn = [&](int position) {
        const int index = std::clamp(position - block.position(), 0, block.length());
        return index > composedAt ? index + composed : index;
    };
    LongLine::Paint what{{contentOffset().x() + document()->documentMargin(), line.rect.top()}, clip, {}};
    for (const QAbstractTextDocumentLayout::Selection &selection : context.selections) {
        const int start = indexIn(selection.cursor.selectionStart());
        const int end = indexIn(selection.cursor.selectionEnd());
        what.selections.append({start, end - start, selection.format}); // empty in other lines
    }
    const Qt::TextInteractionFlags flags = textInteractionFlags();
    const bool showsCursor = hasFocus() && (flags & (Qt::TextEditable | Qt::TextSelectableByKeyboard));
    if (showsCursor && m_cursorOn && textCursor().block() == block)
        what.cursor = composed ? composedAt + composed : textCursor().position() - block.position();
    what.cursorWidth = cursorWidth();
    lineLayout()->longLine(block).draw(painter, what);
}
