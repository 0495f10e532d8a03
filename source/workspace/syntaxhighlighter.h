#pragma once
#include "editorversion.h"
#include <QHash>
#include <QTextCharFormat>
#include <QTextLayout>

class QTextBlock;
class QTextDocument;

/// Text formats by identifier, used by the highlighters.
using FormatTable = QHash<int, QTextCharFormat>;

/// The identifiers of a FormatTable that the highlighters use.
namespace FormatId {
enum {
    Background, ///< its foreground is the paper colour; also used for an identifier that is not in the table
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

/// Highlights the lines of text documents. This class formats everything as standard text; languages derive from it.
///
/// A run over a line sets the formats of its layout, if they are needed, and stores the state at its end in
/// QTextBlock::userState(), where the run over the next line reads it; -1 there means that the line needs a run. One
/// object serves any number of documents. Each document has a HighlightDriver, which decides when lines are run.
class SyntaxHighlighter
{
public:
    /// @p formats must outlive the highlighter, or be replaced before.
    explicit SyntaxHighlighter(const FormatTable *formats = nullptr);
    virtual ~SyntaxHighlighter();
    Q_DISABLE_COPY_MOVE(SyntaxHighlighter)

    /// Highlights @p block of @p document, after the lines above it that have no end state yet, and sets its end state.
    /// The whole line is highlighted, @p start is ignored. If @p invalidate is set and the end state differs from that
    /// of the last run, the state of the next block becomes -1; the blocks below follow when that one is run.
    virtual void process(QTextDocument *document, QTextBlock block, int start, bool invalidate = true);
    /// Whether what is behind the first LongLine::Limit characters of a line never changes formats, brackets or states.
    [[nodiscard]] virtual bool readsStartsOnly() const { return false; }
    /// The format with the identifier @p id; if there is none, that with identifier 0; otherwise an empty one.
    [[nodiscard]] virtual QTextCharFormat format(int id) const;

    /// Sets the table, for highlighters that are created before the table exists.
    void setFormats(const FormatTable *formats);

protected:
    /// Sets the formats @p ranges, given in positions of the text, in the layout of @p block. Does nothing if they are
    /// set already, or if the line is far from the screen (ParagData::skipsFormats).
    static void paint(QTextDocument *document, const QTextBlock &block, QList<QTextLayout::FormatRange> ranges);
    /// The start state of @p block: the end state of the block above, or 0 for the first. Calls process() for the
    /// blocks directly above that have no end state.
    int startState(QTextDocument *document, const QTextBlock &block);
    /// Stores the end state of @p block and marks the next block as described at process().
    static void setEndState(QTextBlock block, int endState, bool invalidate);

private:
    const FormatTable *m_formats;
};
