#pragma once
#include <QHash>
#include <QTextCharFormat>
#include <QTextLayout>

class QTextBlock;
class QTextDocument;

/// Text formats by identifier, as the highlighters paint with them.
using FormatTable = QHash<int, QTextCharFormat>;

/// Identifiers that the highlighters know in a FormatTable.
namespace FormatId {
enum {
    Background, ///< its foreground is the paper colour; also stands in for an identifier that the table lacks
    Standard,
    Comment,
    Number,
    String,
    Reserved,
    Keyword,
    PreProcessor,
    Label
};
}

/// Paints the lines of text documents. This class itself paints everything as standard text; languages derive from it.
///
/// A run over a line sets the formats of its layout and leaves the state at its end in QTextBlock::userState(), where
/// the run over the next line finds it; -1 there says that the line needs a run. One object serves any number of
/// documents. A HighlightDriver per document decides which lines are run, and when.
class SyntaxHighlighter
{
public:
    /// @p formats must outlive the highlighter, or be replaced in time.
    explicit SyntaxHighlighter(const FormatTable *formats = nullptr);
    virtual ~SyntaxHighlighter();
    Q_DISABLE_COPY_MOVE(SyntaxHighlighter)

    /// Paints @p block of @p document, after the lines above it that have no end state yet, and sets its end state.
    /// The whole line is painted, whatever @p start. If @p invalidate is set and the end state differs from that of the
    /// last run, the next block's state becomes -1; the blocks below follow when that one is run.
    virtual void process(QTextDocument *document, QTextBlock block, int start, bool invalidate = true);
    /// The format with the identifier @p id, or else that with identifier 0, or else an empty one.
    [[nodiscard]] virtual QTextCharFormat format(int id) const;

    /// Sets the table to paint with: for highlighters that are made before they can know it.
    void setFormats(const FormatTable *formats);

protected:
    /// Gives the layout of @p block the formats @p ranges, which are told in positions of its text. Does nothing if it
    /// has them already.
    static void paint(QTextDocument *document, const QTextBlock &block, QList<QTextLayout::FormatRange> ranges);
    /// The state that @p block starts with: the end state of the block above, or 0 for the first. Runs process() over
    /// the blocks right above that have no end state.
    int startState(QTextDocument *document, const QTextBlock &block);
    /// Stores the end state of @p block and marks the next block as process() tells.
    static void setEndState(QTextBlock block, int endState, bool invalidate);

private:
    const FormatTable *m_formats;
};
