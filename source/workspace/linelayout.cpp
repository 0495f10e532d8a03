#include "linelayout.h"
#include "longline.h"
#include "paragdata.h"
#include <cmath>
#include <QTextDocument>

namespace {
constexpr qreal WidthStep = 256; ///< pixels; not every key in the widest line changes the scroll bar
constexpr int KeptLines = 3;     ///< whose glyphs are kept: the changed one and its neighbours
} // namespace

LineLayout::LineLayout(QTextDocument *document) : QPlainTextDocumentLayout(document)
{
    connect(document, &QTextDocument::contentsChange, this, &LineLayout::textChanged);
}

LineLayout::~LineLayout() = default;

const std::shared_ptr<const LongLineStyle> &LineLayout::style() const
{
    const QFont font = document()->defaultFont();
    const qreal tab = document()->defaultTextOption().tabStopDistance();
    if (!m_style || m_style->font() != font || m_style->givenTabDistance() != tab)
        m_style = std::make_shared<LongLineStyle>(font, tab);
    return m_style;
}

const LongLine &LineLayout::longLine(const QTextBlock &block) const
{
    std::shared_ptr<LongLine> &line = ensureParagData(block)->longLine;
    if (!line || &line->style() != style().get() || !line->fits()) {
        line = std::make_shared<LongLine>(block, style());
        noteWidth(block);
    }
    return *line;
}

// Sizes -------------------------------------------------------------------------

qreal LineLayout::widthOf(const QTextBlock &block) const
{
    const qreal width = longLine(block).width() + 2 * document()->documentMargin();
    return std::ceil(width / WidthStep) * WidthStep;
}

void LineLayout::noteWidth(const QTextBlock &block) const
{
    const qreal width = widthOf(block);
    if (width <= m_longWidth)
        return;
    m_longWidth = width;
    m_widest = block.blockNumber();
    Q_EMIT const_cast<LineLayout *>(this)->documentSizeChanged(documentSize()); // as the base class does
}

/// After a change that may have shortened the widest line.
void LineLayout::findWidest()
{
    m_longWidth = 0;
    m_widest = -1;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (const ParagData *data = paragDataOf(block); LongLine::isLong(block) && data && data->longLine)
            noteWidth(block);
    }
    Q_EMIT documentSizeChanged(documentSize());
}

QSizeF LineLayout::documentSize() const
{
    const QSizeF size = QPlainTextDocumentLayout::documentSize();
    return {std::max(size.width(), m_longWidth), size.height()};
}

/// The base class scrolls to the line of the cursor by the lines of its QTextLayout, except if that line has no width.
QRectF LineLayout::blockBoundingRect(const QTextBlock &block) const
{
    if (!LongLine::isLong(block))
        return QPlainTextDocumentLayout::blockBoundingRect(block);
    const qreal margin = block.next().isValid() ? 0 : document()->documentMargin();
    return {0, 0, 0, longLine(block).style().lineHeight() + margin};
}

qreal LineLayout::xOf(const QTextBlock &block, int index) const
{
    if (LongLine::isLong(block))
        return document()->documentMargin() + longLine(block).xOf(index);
    const QRectF laidOut = blockBoundingRect(block);
    Q_UNUSED(laidOut)
    return block.layout()->lineAt(0).cursorToX(index); // its x is the margin
}

int LineLayout::indexAt(const QTextBlock &block, qreal x) const
{
    if (LongLine::isLong(block))
        return longLine(block).positionAt(x - document()->documentMargin());
    const QRectF laidOut = blockBoundingRect(block);
    Q_UNUSED(laidOut)
    return block.layout()->lineAt(0).xToCursor(x);
}

// Changes -----------------------------------------------------------------------

/// The base class searches for the end of a change after the longer of its old and its new length. When the formats of
/// a line are set, it finds that end in a later line and repaints the whole screen. It also lays out such a line twice,
/// on screen or not; here the line is laid out on demand.
void LineLayout::documentChanged(int from, int, int charsAdded)
{
    const int added = std::max(charsAdded, 1);
    const int oldLineCount = std::exchange(m_lineCount, document()->blockCount());
    const QTextBlock line = document()->findBlock(from);
    const bool isInLine = oldLineCount == m_lineCount && line.contains(from + added - 1);
    if (m_firstKept > line.blockNumber())
        m_firstKept = std::max(line.blockNumber(), m_firstKept + m_lineCount - oldLineCount);
    if (isInLine && LongLine::isLong(line))
        return updateLongLine(line, from - line.position());
    if (isInLine && line.layout()->lineCount() == 0) {
        Q_EMIT updateBlock(line);
    } else {
        for (QTextBlock block = line; block.isValid() && block.position() < from + added; block = block.next()) {
            if (ParagData *data = paragDataOf(block))
                data->longLine.reset();
        }
        QPlainTextDocumentLayout::documentChanged(from, 0, added);
    }
    if (m_widest >= 0 && (!isInLine || line.blockNumber() == m_widest))
        findWidest();
}

/// The toolkit makes the glyphs of a line for its layout and again for each paint event, and throws them away. A key
/// paints the changed line and its neighbours: theirs are kept. Those of other lines go when they are painted next.
void LineLayout::keepGlyphsAround(const QTextBlock &line)
{
    const int first = std::max(0, line.blockNumber() - 1);
    if (first == m_firstKept)
        return;
    if (m_firstKept >= 0)
        keepGlyphs(m_firstKept, false);
    keepGlyphs(first, true);
    m_firstKept = first;
}

void LineLayout::keepGlyphs(int first, bool keep) const
{
    QTextBlock block = document()->findBlockByNumber(first);
    for (int i = 0; i < KeptLines && block.isValid(); ++i, block = block.next())
        block.layout()->setCacheEnabled(keep);
}

/// Before highlighters set formats, which counts as a change of the whole line.
void LineLayout::textChanged(int from, int removed, int added)
{
    const QTextBlock line = document()->findBlock(from);
    if (!LongLine::isLong(line)) {
        if (m_lineCount == document()->blockCount() && line.contains(from + std::max(added, 1) - 1))
            keepGlyphsAround(line);
        return;
    }
    const ParagData *data = paragDataOf(line);
    if (!data || !data->longLine)
        return;
    const int index = from - line.position();
    const int behind = std::max(0, index + added - (line.length() - 1)); // the end of the line may count as a character
    data->longLine->change(index, removed - std::min(behind, removed), added - behind);
}

void LineLayout::updateLongLine(const QTextBlock &block, int changedFrom)
{
    QTextBlock(block).clearLayout(); // it may have been short before
    const ParagData *data = paragDataOf(block);
    if (!data || !data->longLine) {
        Q_EMIT longLineChanged(block, 0);
        return;
    }
    data->longLine->updateFormats();
    if (block.blockNumber() == m_widest && widthOf(block) < m_longWidth)
        findWidest();
    else
        noteWidth(block);
    Q_EMIT longLineChanged(block, document()->documentMargin() + longLine(block).changedX(changedFrom));
}
