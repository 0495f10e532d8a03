#pragma once
#include <QBasicTimer>
#include <QObject>
#include <QTextBlock>
#include <vector>

class QTextDocument;
class SyntaxHighlighter;

/// Runs a highlighter over one document, as late as can be: changed lines at once, lines on screen before they are
/// painted, all others in slices of a millisecond while the program has nothing else to do and nobody types.
///
/// A changed end state marks the next line; the lines below are reached one by one, and only as far as their states
/// change too. So an edit costs the same anywhere in a document of any size.
class HighlightDriver : public QObject
{
    Q_OBJECT
public:
    /// Neither the document nor the highlighter is owned; both must outlive the driver. The whole document is due at
    /// first.
    HighlightDriver(QTextDocument *document, SyntaxHighlighter *highlighter, QObject *parent = nullptr);

    /// Brings @p block and everything above it up to date: before its formats are painted or its brackets are read.
    /// Costs nothing where that is so already. Not for use within an edit block of a cursor.
    void ensureProcessed(const QTextBlock &block);
    /// Whether @p block and everything above it is up to date.
    [[nodiscard]] bool isProcessed(const QTextBlock &block) const;
    /// Has every line painted anew: the formats have changed.
    void rehighlight();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Range ///< block numbers, both included
    {
        int first;
        int last;
    };

    void slotContentsChange(int from, int removed, int added);
    void shiftRanges(int first, int oldLast, int inserted);
    void addRange(Range added);
    void processUpTo(int blockNumber);
    void processFirst();

    QTextDocument *const m_document;
    SyntaxHighlighter *const m_highlighter;
    std::vector<Range> m_due; ///< ascending, apart from each other; the first block of a range is run first
    int m_blockCount;
    QBasicTimer m_idle;
};
