#pragma once
#include "lineranges.h"
#include <QBasicTimer>
#include <QObject>
#include <QTextBlock>

class QTextDocument;
class SyntaxHighlighter;

/// Runs a highlighter over one document as late as possible: changed lines at once, visible lines before they are
/// painted, all others in slices of one millisecond while the program is idle and the user does not type.
///
/// A changed end state marks the next line; the lines below follow one by one as long as their states change too. So
/// the cost of an edit does not depend on its place or on the size of the document. Visible lines below a key keep
/// their old formats for up to 30 ms, so that the key appears without waiting for them.
///
/// A run over a line gives it an end state and brackets. Its formats take several times the memory of its text, so only
/// lines on the screen and some around them have formats.
class HighlightDriver : public QObject
{
    Q_OBJECT
public:
    /// Owns neither the document nor the highlighter; both must outlive the driver. Initially the whole document is
    /// due.
    HighlightDriver(QTextDocument *document, SyntaxHighlighter *highlighter, QObject *parent = nullptr);

    /// Runs over @p block and everything above it, before its brackets are read. Costs nothing if that is done already.
    /// Do not call it within an edit block of a cursor.
    void ensureProcessed(const QTextBlock &block);
    /// Gives formats to the lines of @p range, counted from 0, before they are painted. Lines that are far from there
    /// may lose theirs. Otherwise like ensureProcessed().
    void ensureFormatted(LineRanges::Range range);
    /// Whether ensureProcessed() has nothing to do for @p block.
    [[nodiscard]] bool isProcessed(const QTextBlock &block) const;
    /// Highlights every line again, because the formats have changed.
    void rehighlight();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void slotContentsChange(int from, int removed, int added);
    [[nodiscard]] bool isBehindStart(int from) const;
    void processUpTo(int blockNumber);
    void processFirst();
    void process(QTextBlock block);
    void keepFormatsAround(LineRanges::Range range);
    void removeFormats(QTextBlock block);

    QTextDocument *const m_document;
    SyntaxHighlighter *const m_highlighter;
    LineRanges m_due;       ///< the lines that need a run, from the top
    LineRanges m_formatted; ///< the lines that have formats, or get them by the run that is due
    int m_blockCount;
    bool m_failed = false; ///< the highlighter has thrown an exception
    int m_delayed = -1;    ///< the last line that was to be painted during m_delay
    QBasicTimer m_idle;
    QBasicTimer m_delay; ///< after a key that has changed the end state of its line
};
