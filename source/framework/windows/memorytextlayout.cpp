#include "memorytextlayout.h"
#include <algorithm>
#include <cmath>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr qreal WidestLine = 1e6;

QTextOption lineOption()
{
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(Qt::LeftToRight);
    return option;
}

bool hasUnderline(const QTextBlock &block)
{
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        if (it.fragment().charFormat().fontUnderline())
            return true;
    }
    return false;
}

/// What of a selection lies in a line.
QList<QTextLayout::FormatRange> selectionsIn(const QTextBlock &block,
                                             const QAbstractTextDocumentLayout::PaintContext &context)
{
    QList<QTextLayout::FormatRange> ranges;
    for (const QAbstractTextDocumentLayout::Selection &selection : context.selections) {
        const int start = selection.cursor.selectionStart() - block.position();
        const int end = selection.cursor.selectionEnd() - block.position();
        if (start < block.length() && end > 0 && end > start)
            ranges.append({start, end - start, selection.format});
    }
    return ranges;
}
} // namespace

MemoryTextLayout::MemoryTextLayout(QTextDocument *document) : QAbstractTextDocumentLayout(document)
{
    measure();
}

/// As the usual layout does it.
void MemoryTextLayout::measure()
{
    m_font = document()->defaultFont();
    QTextLayout line(u"0"_s, m_font, paintDevice());
    line.setTextOption(lineOption());
    line.beginLayout();
    line.createLine().setLineWidth(WidestLine);
    line.endLayout();
    m_rowHeight = std::max(1, int(std::ceil(line.lineAt(0).height())));
    m_baseline = line.lineAt(0).ascent();
    m_charWidth = std::max(1, qRound(line.lineAt(0).naturalTextWidth()));
}

void MemoryTextLayout::documentChanged(int from, int, int charsAdded)
{
    if (m_font != document()->defaultFont())
        measure();
    for (QTextBlock block = document()->findBlock(from); block.isValid() && block.position() <= from + charsAdded;
         block = block.next())
        block.clearLayout();
    Q_EMIT documentSizeChanged(documentSize());
    Q_EMIT update();
}

/// The cursor finds its places in laid out lines.
void MemoryTextLayout::layOut(const QTextBlock &block)
{
    QTextLayout *layout = block.layout();
    if (layout->lineCount() > 0)
        return;
    layout->setTextOption(lineOption());
    layout->beginLayout();
    layout->createLine().setLineWidth(WidestLine);
    layout->endLayout();
}

// Places ------------------------------------------------------------------------

QPointF MemoryTextLayout::placeOf(const QTextBlock &block) const
{
    return {LeftMargin, double(block.blockNumber()) * m_rowHeight};
}

QSizeF MemoryTextLayout::documentSize() const
{
    int longest = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        longest = std::max(longest, block.length() - 1);
    return {double(LeftMargin + longest * m_charWidth), double(document()->blockCount()) * m_rowHeight};
}

QRectF MemoryTextLayout::frameBoundingRect(QTextFrame *frame) const
{
    return frame == document()->rootFrame() ? QRectF(QPointF(), documentSize()) : QRectF();
}

QRectF MemoryTextLayout::blockBoundingRect(const QTextBlock &block) const
{
    if (!block.isValid())
        return {};
    layOut(block);
    return {placeOf(block), QSizeF(block.layout()->lineAt(0).naturalTextWidth(), m_rowHeight)};
}

int MemoryTextLayout::hitTest(const QPointF &point, Qt::HitTestAccuracy accuracy) const
{
    const int row = std::clamp(int(std::floor(point.y() / m_rowHeight)), 0, document()->blockCount() - 1);
    const QTextBlock block = document()->findBlockByNumber(row);
    const QRectF area = blockBoundingRect(block);
    if (accuracy == Qt::ExactHit && !area.contains(point))
        return -1;
    return block.position() + block.layout()->lineAt(0).xToCursor(point.x() - area.left());
}

// Painting ----------------------------------------------------------------------

void MemoryTextLayout::draw(QPainter *painter, const PaintContext &context)
{
    const bool isAll = !context.clip.isValid();
    const int first = isAll ? 0 : std::max(0, int(context.clip.top() / m_rowHeight));
    const int last = isAll ? document()->blockCount() - 1 : int(context.clip.bottom() / m_rowHeight);
    QTextBlock block = document()->findBlockByNumber(first);
    for (int row = first; row <= last && block.isValid(); ++row, block = block.next())
        drawBlock(*painter, context, block);
}

void MemoryTextLayout::drawBlock(QPainter &painter, const PaintContext &context, const QTextBlock &block)
{
    const QList<QTextLayout::FormatRange> selections = selectionsIn(block, context);
    if (!selections.isEmpty() || !drawPictures(painter, context.palette, block)) {
        layOut(block);
        painter.setPen(context.palette.color(QPalette::Text));
        block.layout()->draw(&painter, placeOf(block), selections, context.clip);
    }
    const int cursor = context.cursorPosition - block.position();
    if (context.cursorPosition < 0 || cursor < 0 || cursor >= block.length())
        return;
    layOut(block);
    const QVariant width = property("cursorWidth"); // the edit sets it
    block.layout()->drawCursor(&painter, placeOf(block), cursor, width.isValid() ? width.toInt() : 1);
}

/// False for a line with changes, and where pictures cannot be used.
bool MemoryTextLayout::drawPictures(QPainter &painter, const QPalette &palette, const QTextBlock &block)
{
    const QString text = block.text();
    const QPoint place = placeOf(block).toPoint();
    if (!CharacterPictures::canShow(text) || hasUnderline(block))
        return false;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment part = it.fragment();
        const QBrush brush = part.charFormat().foreground();
        const CharacterPictures::Style style{m_font,
                                             {m_charWidth, m_rowHeight},
                                             m_baseline,
                                             brush.style() == Qt::NoBrush ? palette.color(QPalette::Text)
                                                                          : brush.color(),
                                             palette.color(QPalette::Base)};
        const int column = part.position() - block.position();
        const QStringView shown = QStringView(text).sliced(column, part.length());
        if (!m_pictures.draw(painter, place + QPoint(column * m_charWidth, 0), shown, style)) {
            painter.fillRect(QRect(place, QSize(column * m_charWidth, m_rowHeight)), style.paper);
            return false;
        }
    }
    return true;
}
