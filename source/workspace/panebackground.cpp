#include "panebackground.h"
#include "editorcolours.h"
#include "longline.h"
#include "markedlines.h"
#include "textdocument.h"
#include "textdocumenttemplate.h"
#include "textviewedit.h"
#include <ctime>
#include <QPainter>
#include <QTextLayout>

namespace {
constexpr int LongestLine = 100;         // milliseconds for an expression in one line
constexpr qint64 LongestSearch = 20'000; // microseconds of the processor for it in all lines of one paint event

/// In microseconds. The time of other programs does not count: how much work there is does not depend on them.
qint64 processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * 1'000'000 + time.tv_nsec / 1000;
}
} // namespace

void PaneBackground::markMatches(const std::shared_ptr<const TextPattern> &pattern)
{
    m_marked = pattern ? *pattern : TextPattern();
    m_marked.setTimeLimit(LongestLine);
    m_pane.viewport()->update();
}

void PaneBackground::paint(const QRect &rect, qreal left)
{
    paintBands(rect);
    if (m_marked.canMatch())
        paintMatches(rect, left);
}

/// Paints all of @p rect: the pane is not cleared before.
void PaneBackground::paintBands(const QRect &rect)
{
    const EditorColours &colours = this->colours(); // may ask a plug-in, which may process events: not while painting
    m_shownLine = m_pane.textCursor().block();      // if it is not below rect, it is painted later or not on screen
    QWidget *viewport = m_pane.viewport();
    const QBrush paper = viewport->palette().brush(viewport->backgroundRole());
    QPainter painter(viewport);
    QRectF rest = rect;
    for (const TextViewEdit::Line &line : m_pane.linesAt(rect.top(), rect.bottom())) {
        if (line.rect.top() > rest.top()) // above the first line
            painter.fillRect(QRectF(rest.topLeft(), line.rect.topRight()), paper);
        painter.fillRect(line.rect, bandOf(line.block, colours).value_or(paper));
        rest.setTop(line.rect.bottom());
    }
    if (rest.height() > 0)
        painter.fillRect(rest, paper);
}

/// No value if the line has none.
std::optional<QBrush> PaneBackground::bandOf(const QTextBlock &line, const EditorColours &colours) const
{
    if (const QColor band = colours.band(int(MarkedLines::markers(line))); band.isValid())
        return band;
    if (line == m_shownLine && m_document.textTemplate()->showsCurrentLine())
        return colours.currentLine;
    return {};
}

/// They take long to find out for each key.
const EditorColours &PaneBackground::colours()
{
    const QColor paper = m_document.paperColour();
    if (paper != m_paper) {
        m_paper = paper;
        m_colours = editorColours(paper);
    }
    return m_colours;
}

void PaneBackground::refreshCurrentLine()
{
    const QTextBlock current = m_pane.textCursor().block();
    if (!m_document.textTemplate()->showsCurrentLine() || current == m_shownLine)
        return;
    for (const TextViewEdit::Line &line : m_pane.linesAt(0, m_pane.viewport()->height())) {
        if (line.block == current || line.block == m_shownLine)
            m_pane.viewport()->update(line.rect.toAlignedRect());
    }
}

void PaneBackground::paintMatches(const QRect &rect, qreal left)
{
    const qint64 start = processorTime();
    const EditorColours &colours = this->colours();
    QPainter painter(m_pane.viewport());
    painter.setPen(colours.matchFrame);
    painter.setBrush(colours.match);
    for (const TextViewEdit::Line &line : m_pane.linesAt(rect.top(), rect.bottom())) {
        if (LongLine::isLong(line.block))
            continue; // the places of matches take too long
        const QString text = line.block.text();
        const QTextLine layout = line.block.layout()->lineAt(0);
        for (auto match = m_marked.forward(text, 0, text.size()); match && layout.isValid();
             match = m_marked.forward(text, match->position + match->length, text.size())) {
            const qreal begin = layout.cursorToX(int(match->position));
            const qreal end = layout.cursorToX(int(match->position + match->length));
            painter.drawRect(QRectF(left + begin, line.rect.top(), end - begin, line.rect.height() - 1));
        }
        if (m_marked.hasGivenUp() || (m_marked.options().regExp && processorTime() - start > LongestSearch))
            return markMatches(nullptr); // each further paint event would take as long
    }
}
