#include "syntaxhighlighter.h"
#include "longline.h"
#include "paragdata.h"
#include "varnelassert.h"
#include <QAbstractTextDocumentLayout>
#include <QTextDocument>

namespace {
using FormatRange = QTextLayout::FormatRange;

constexpr int AnyLength = 1 << 30; ///< more than any line

/// Long lines are laid out in pieces, without the ligatures and the kerning between them. The last format reaches as
/// far as the line, however it grows.
void prepareForPieces(int lineLength, QList<FormatRange> &ranges)
{
    for (FormatRange &range : ranges) {
        range.format.setFontStyleStrategy(QFont::PreferNoShaping);
        if (range.start + range.length >= lineLength)
            range.length = AnyLength;
    }
}

/// Only text of the first 256 characters may be laid out without shaping, which combines characters.
void prepareForShaping(const QTextBlock &block, QList<FormatRange> &ranges)
{
    const QString text = block.text();
    if (std::ranges::all_of(text, [](QChar ch) { return ch.unicode() < 256; }))
        return;
    for (FormatRange &range : ranges)
        range.format.clearProperty(QTextFormat::FontStyleStrategy);
}

// The layout contains text that an input method is composing, the document does not: the formats of that text are kept,
// and the others are moved behind it.
void makeRoomForPreedit(const QTextLayout &layout, QList<FormatRange> &ranges)
{
    const int start = layout.preeditAreaPosition();
    const int length = int(layout.preeditAreaText().size());
    if (length == 0)
        return;
    for (FormatRange &range : ranges) {
        if (range.start >= start)
            range.start += length;
        else if (range.start + range.length > start)
            range.length += length;
    }
    const QList<FormatRange> formats = layout.formats();
    std::ranges::copy_if(formats, std::back_inserter(ranges), [start, length](const FormatRange &range) {
        return range.start >= start && range.start + range.length <= start + length;
    });
}
} // namespace

SyntaxHighlighter::SyntaxHighlighter(const FormatTable *formats) : m_formats(formats) {}

SyntaxHighlighter::~SyntaxHighlighter() = default;

void SyntaxHighlighter::process(QTextDocument *document, QTextBlock block, int, bool)
{
    const int length = block.length() - 1;
    paint(document, block,
          length > 0 ? QList{FormatRange{0, length, format(FormatId::Standard)}} : QList<FormatRange>());
    block.setUserState(0);
}

QTextCharFormat SyntaxHighlighter::format(int id) const
{
    VARNEL_ASSERT(m_formats);
    if (!m_formats)
        return {};
    const auto found = m_formats->constFind(id);
    return found != m_formats->cend() ? *found : m_formats->value(FormatId::Background);
}

void SyntaxHighlighter::setFormats(const FormatTable *formats)
{
    m_formats = formats;
}

void SyntaxHighlighter::paint(QTextDocument *document, const QTextBlock &block, QList<FormatRange> ranges)
{
    ParagData *data = paragDataOf(block);
    if (data && data->skipsFormats)
        return;
    if (data)
        data->hasFormats = true;
    QTextLayout *layout = block.layout(); // takes much memory for each line that has one
    const bool isLong = LongLine::isLong(block);
    if (isLong)
        prepareForPieces(block.length() - 1, ranges);
    else
        prepareForShaping(block, ranges);
    makeRoomForPreedit(*layout, ranges);
    if (layout->formats() == ranges)
        return;
    const bool isLaidOut = isLong || layout->lineCount() > 0;
    layout->setFormats(ranges);
    const QSignalBlocker quiet(isLaidOut ? nullptr : document->documentLayout()); // nothing is on screen yet
    document->markContentsDirty(block.position(), isLong ? LongLine::Limit : block.length());
}

int SyntaxHighlighter::startState(QTextDocument *document, const QTextBlock &block)
{
    QTextBlock first = block;
    while (first.previous().isValid() && first.previous().userState() == -1)
        first = first.previous();
    for (; first != block; first = first.next())
        process(document, first, 0, false);
    return block.previous().isValid() ? block.previous().userState() : 0;
}

void SyntaxHighlighter::setEndState(QTextBlock block, int endState, bool invalidate)
{
    ParagData *data = ensureParagData(block);
    const bool changed = data->endState != endState;
    data->endState = endState;
    block.setUserState(endState);
    QTextBlock next = block.next();
    if (invalidate && changed)
        next.setUserState(-1);
}
