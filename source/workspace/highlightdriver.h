#pragma once
#include <QBasicTimer>
#include <QObject>
#include <QTextBlock>
#include <vector>

class QTextDocument;
class SyntaxHighlighter;

/// Runs a highlighter over one document as late as possible: changed lines at once, visible lines before they are
/// painted, all others in slices of one millisecond while the program is idle and the user does not type.
///
/// A changed end state marks the next line; the lines below follow one by one as long as their states change too. So
/// the cost of an edit does not depend on its place or on the size of the document.
class HighlightDriver : public QObject
{
    Q_OBJECT
public:
    /// Owns neither the document nor the highlighter; both must outlive the driver. Initially the whole document is
    /// due.
    HighlightDriver(QTextDocument *document, SyntaxHighlighter *highlighter, QObject *parent = nullptr);

    /// Highlights @p block and everything above it, before its formats are painted or its brackets are read. Costs
    /// nothing if that is done already. Do not call it within an edit block of a cursor.
    void ensureProcessed(const QTextBlock &block);
    /// Whether @p block and everything above it is highlighted.
    [[nodiscard]] bool isProcessed(const QTextBlock &block) const;
    /// Highlights every line again, because the formats have changed.
    void rehighlight();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Range ///< block numbers, both inclusive
    {
        int first;
        int last;
    };

    void slotContentsChange(int from, int removed, int added);
    [[nodiscard]] bool isBehindStart(int from, int removed, int added) const;
    void shiftRanges(int first, int oldLast, int inserted);
    void addRange(Range added);
    void processUpTo(int blockNumber);
    void processFirst();
    void process(QTextBlock block);

    QTextDocument *const m_document;
    SyntaxHighlighter *const m_highlighter;
    std::vector<Range> m_due; ///< ascending and disjoint; the first block of a range is highlighted first
    int m_blockCount;
    bool m_failed = false; ///< the highlighter has thrown an exception
    QBasicTimer m_idle;
};
