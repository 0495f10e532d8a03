#include "highlightdriver.h"
#include "callplugin.h"
#include "longline.h"
#include "syntaxhighlighter.h"
#include <QDeadlineTimer>
#include <QTextDocument>
#include <QTimerEvent>

namespace {
constexpr int IdleSlice = 1;           // milliseconds
constexpr int QuietTime = 200;         // milliseconds after an edit: typing must not wait for a slice
constexpr int BlocksBetweenLooks = 16; // between two looks at the clock
constexpr int MostChangedBlocks = 100; // highlighted at once: about one screen after a paste
} // namespace

HighlightDriver::HighlightDriver(QTextDocument *document, SyntaxHighlighter *highlighter, QObject *parent)
    : QObject(parent), m_document(document), m_highlighter(highlighter), m_blockCount(document->blockCount())
{
    connect(document, &QTextDocument::contentsChange, this, &HighlightDriver::slotContentsChange);
    rehighlight();
}

void HighlightDriver::ensureProcessed(const QTextBlock &block)
{
    if (!m_due.empty())
        processUpTo(block.blockNumber());
}

bool HighlightDriver::isProcessed(const QTextBlock &block) const
{
    return m_due.empty() || block.blockNumber() < m_due.front().first;
}

void HighlightDriver::rehighlight()
{
    m_failed = false;
    addRange({0, m_blockCount - 1});
    m_idle.start(0, this);
}

void HighlightDriver::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_idle.timerId()) {
        QObject::timerEvent(event);
        return;
    }
    const QDeadlineTimer deadline(IdleSlice);
    while (!m_due.empty() && !deadline.hasExpired()) {
        for (int i = 0; i < BlocksBetweenLooks && !m_due.empty(); ++i)
            processFirst();
    }
    if (m_due.empty())
        m_idle.stop();
    else
        m_idle.start(0, this);
}

void HighlightDriver::slotContentsChange(int from, int removed, int added)
{
    const int inserted = m_document->blockCount() - m_blockCount;
    m_blockCount += inserted;
    const QTextBlock end = m_document->findBlock(from + added);
    const int first = m_document->findBlock(from).blockNumber();
    const int last = end.isValid() ? end.blockNumber() : m_blockCount - 1;
    if (inserted == 0 && first == last && isBehindStart(from, removed, added)) {
        if (!m_due.empty())
            m_idle.start(QuietTime, this);
        return;
    }
    shiftRanges(first, last - inserted, inserted);
    const int other = removed > 0 ? 1 : 0; // the block after a removal may have lost the block whose end state it used
    const Range changed{first, std::min(last + other, m_blockCount - 1)};
    addRange(changed);
    if (m_due.front().first == first)
        processUpTo(std::min(changed.last, first + MostChangedBlocks - 1));
    if (!m_due.empty())
        m_idle.start(QuietTime, this);
}

/// Whether a change in one line lies behind what the highlighter reads of it.
bool HighlightDriver::isBehindStart(int from, int removed, int added) const
{
    const QTextBlock block = m_document->findBlock(from);
    const int before = block.length() - 1 - added + removed;
    return block.userState() != -1 && LongLine::isLong(block) && before > LongLine::Limit
           && from - block.position() > LongLine::Limit
           && askPlugin("SyntaxHighlighter::readsStartsOnly", [this] { return m_highlighter->readsStartsOnly(); });
}

// Blocks first to oldLast became blocks first to oldLast + inserted.
void HighlightDriver::shiftRanges(int first, int oldLast, int inserted)
{
    for (Range &range : m_due) {
        if (range.first > oldLast)
            range.first += inserted;
        else
            range.first = std::min(range.first, first);
        if (range.last > oldLast)
            range.last += inserted;
        else if (range.last >= first)
            range.last = oldLast + inserted;
    }
}

void HighlightDriver::addRange(Range added)
{
    const auto first = std::ranges::find_if(m_due, [added](Range range) { return range.last + 1 >= added.first; });
    const auto behind = std::find_if(first, m_due.end(), [added](Range range) { return range.first > added.last + 1; });
    if (first != behind) {
        added.first = std::min(added.first, first->first);
        added.last = std::max(added.last, std::prev(behind)->last);
    }
    m_due.insert(m_due.erase(first, behind), added);
}

void HighlightDriver::processUpTo(int blockNumber)
{
    while (!m_due.empty() && m_due.front().first <= blockNumber)
        processFirst();
}

void HighlightDriver::processFirst()
{
    Range &range = m_due.front();
    const QTextBlock block = m_document->findBlockByNumber(range.first);
    if (range.first++ == range.last)
        m_due.erase(m_due.begin());
    process(block);
    const QTextBlock next = block.next();
    if (next.isValid() && next.userState() == -1)
        addRange({next.blockNumber(), next.blockNumber()});
}

/// After an exception the following lines are plain: one message, not one for each line.
void HighlightDriver::process(QTextBlock block)
{
    if (!m_failed)
        m_failed =
            !runPlugin("SyntaxHighlighter::process", [&] { m_highlighter->process(m_document, block, 0, true); });
    if (!m_failed)
        return;
    block.layout()->clearFormats();
    block.setUserState(0);
}
