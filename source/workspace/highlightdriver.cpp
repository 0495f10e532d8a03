#include "highlightdriver.h"
#include "callplugin.h"
#include "longline.h"
#include "paragdata.h"
#include "syntaxhighlighter.h"
#include <QAbstractTextDocumentLayout>
#include <QDeadlineTimer>
#include <QTextDocument>
#include <QTimerEvent>

namespace {
constexpr int IdleSlice = 1;           // milliseconds
constexpr int QuietTime = 200;         // milliseconds after an edit: typing must not wait for a slice
constexpr int KeyDelay = 30;           // milliseconds: a key's line is shown before the lines below change
constexpr int BlocksBetweenLooks = 16; // between two looks at the clock
constexpr int MostChangedBlocks = 100; // highlighted at once: about one screen after a paste
constexpr int MostFormatted = 1000;    // lines that have formats: several panes may show several places
constexpr int KeptAround = 300;        // lines that keep their formats above and below a pane
} // namespace

HighlightDriver::HighlightDriver(QTextDocument *document, SyntaxHighlighter *highlighter, QObject *parent)
    : QObject(parent), m_document(document), m_highlighter(highlighter), m_blockCount(document->blockCount())
{
    connect(document, &QTextDocument::contentsChange, this, &HighlightDriver::slotContentsChange);
    rehighlight();
}

void HighlightDriver::ensureProcessed(const QTextBlock &block)
{
    processUpTo(block.blockNumber());
}

void HighlightDriver::ensureFormatted(LineRanges::Range range)
{
    if (m_formatted.contains(range)) {
        if (m_delay.isActive())
            m_delayed = std::max(m_delayed, range.last);
        else
            processUpTo(range.last);
        return;
    }
    m_formatted.add(range);
    processUpTo(range.last);
    QTextBlock block = m_document->findBlockByNumber(range.first);
    for (int line = range.first; line <= range.last && block.isValid(); ++line, block = block.next()) {
        if (ensureParagData(block)->skipsFormats)
            process(block);
    }
    if (m_formatted.count() > MostFormatted)
        keepFormatsAround(range);
}

bool HighlightDriver::isProcessed(const QTextBlock &block) const
{
    return m_due.isEmpty() || block.blockNumber() < m_due.first();
}

void HighlightDriver::rehighlight()
{
    m_failed = false;
    m_delay.stop();
    m_due.add({0, m_blockCount - 1});
    m_idle.start(0, this);
}

void HighlightDriver::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_delay.timerId()) {
        m_delay.stop();
        processUpTo(std::exchange(m_delayed, -1));
        return;
    }
    if (event->timerId() != m_idle.timerId()) {
        QObject::timerEvent(event);
        return;
    }
    const QDeadlineTimer deadline(IdleSlice);
    while (!m_due.isEmpty() && !deadline.hasExpired()) {
        for (int i = 0; i < BlocksBetweenLooks && !m_due.isEmpty(); ++i)
            processFirst();
    }
    if (m_due.isEmpty())
        m_idle.stop();
    else
        m_idle.start(0, this);
}

void HighlightDriver::slotContentsChange(int from, int removed, int added)
{
    const int inserted = m_document->blockCount() - m_blockCount;
    m_blockCount += inserted;
    const QTextBlock start = m_document->findBlock(from);
    const QTextBlock end = start.contains(from + added) ? start : m_document->findBlock(from + added);
    const int first = start.blockNumber();
    const int last = end == start ? first : end.isValid() ? end.blockNumber() : m_blockCount - 1;
    if (!m_due.isEmpty())
        m_idle.start(QuietTime, this);
    if (inserted == 0 && first == last && isBehindStart(from))
        return;
    m_due.replaceLines(first, last - inserted, inserted);
    m_formatted.replaceLines(first, last - inserted, inserted);
    m_formatted.remove({first + MostChangedBlocks, last}); // what of them is on screen will be painted
    const int other = removed > 0 ? 1 : 0; // the block after a removal may have lost the block whose end state it used
    const LineRanges::Range changed{first, std::min(last + other, m_blockCount - 1)};
    m_due.add(changed);
    if (m_due.first() == first) {
        processUpTo(std::min(changed.last, first + MostChangedBlocks - 1));
        const bool changesBelow = !m_due.isEmpty() && m_due.first() == changed.last + 1;
        if (changesBelow && inserted == 0 && first == last && !m_delay.isActive())
            m_delay.start(KeyDelay, this);
    }
    if (!m_due.isEmpty())
        m_idle.start(QuietTime, this);
}

/// Whether a change in one line lies behind what the highlighter reads of it.
bool HighlightDriver::isBehindStart(int from) const
{
    const QTextBlock block = m_document->findBlock(from);
    return from - block.position() > LongLine::Limit
           && askPlugin("SyntaxHighlighter::readsStartsOnly", [this] { return m_highlighter->readsStartsOnly(); });
}

void HighlightDriver::processUpTo(int blockNumber)
{
    while (!m_due.isEmpty() && m_due.first() <= blockNumber)
        processFirst();
}

void HighlightDriver::processFirst()
{
    const QTextBlock block = m_document->findBlockByNumber(m_due.takeFirst());
    process(block);
    const QTextBlock next = block.next();
    if (next.isValid() && next.userState() == -1)
        m_due.add({next.blockNumber(), next.blockNumber()});
}

/// After an exception the following lines are plain: one message, not one for each line.
void HighlightDriver::process(QTextBlock block)
{
    const int line = block.blockNumber();
    ParagData *data = ensureParagData(block);
    data->skipsFormats = !m_formatted.contains({line, line});
    if (!m_failed)
        m_failed =
            !runPlugin("SyntaxHighlighter::process", [&] { m_highlighter->process(m_document, block, 0, true); });
    if (m_failed)
        block.setUserState(0);
    if (m_failed || data->skipsFormats)
        removeFormats(block);
}

void HighlightDriver::keepFormatsAround(LineRanges::Range range)
{
    LineRanges far = m_formatted;
    far.remove({range.first - KeptAround, range.last + KeptAround});
    for (const LineRanges::Range lines : far.ranges()) {
        m_formatted.remove(lines);
        QTextBlock block = m_document->findBlockByNumber(lines.first);
        for (int line = lines.first; line <= lines.last && block.isValid(); ++line, block = block.next()) {
            ensureParagData(block)->skipsFormats = true;
            removeFormats(block);
        }
    }
}

/// Without an update on the screen: before the line is painted again, it gets formats.
void HighlightDriver::removeFormats(QTextBlock block)
{
    if (!std::exchange(ensureParagData(block)->hasFormats, false))
        return;
    const QSignalBlocker quiet(m_document->documentLayout());
    block.clearLayout();
    block.layout()->clearFormats();
    m_document->markContentsDirty(block.position(), 1);
}
