#pragma once
#include "bracketmatcher.h"
#include "document.h"
#include "markedlines.h"
#include "textfile.h"
#include <QTextCursor>
#include <QTimer>
class HighlightDriver;
class QFile;
class SwapFile;
class SyntaxHighlighter;
class TextDocumentTemplate;
class TextIndent;

/// A text file. All panes of all its views share its QTextDocument.
class TextDocument : public Document
{
    Q_OBJECT
public:
    explicit TextDocument(TextDocumentTemplate *docTemplate);
    ~TextDocument() override;

    bool open(const QString &filename) override;
    bool create(const QString &filename) override;
    bool save() override;
    bool saveAs(const QString &filename) override;
    [[nodiscard]] QDateTime lastModified() override { return m_lastModified; }
    [[nodiscard]] QString filename() override { return m_filename; }
    [[nodiscard]] QString title() override;
    [[nodiscard]] bool isNewerOnDisk() override;
    /// The text selected last in any pane.
    [[nodiscard]] virtual QString selectedText();

    [[nodiscard]] QTextDocument *text() const { return m_text.get(); }
    [[nodiscard]] TextDocumentTemplate *textTemplate() const { return m_template; }
    [[nodiscard]] TextIndent *indenter() const;
    [[nodiscard]] SyntaxHighlighter *highlighter() const;
    [[nodiscard]] QColor paperColour() const;
    [[nodiscard]] QColor textColour() const;
    [[nodiscard]] int lineSpacing() const; ///< in pixels

    /// Whether the file's bytes are no UTF-8, so that they are read and written as Latin-1.
    [[nodiscard]] bool isLatin1() const { return m_format.encoding == TextFileFormat::Latin1; }
    [[nodiscard]] SwapFile *swapFile() const { return m_swap.get(); } ///< null if none is kept
    /// The whole text, its lines parted by ParagraphSeparator. Searches ask for it again and again, so the copy is kept
    /// until the text changes or nobody has asked for some seconds: it takes twice the size of the file.
    [[nodiscard]] QString rawText();
    /// Puts in a text that was rescued from a crash; the file stays as it is until the next save.
    void recover(const QString &text);

    /// Markers of lines counted from 1. A line outside the text is ignored.
    void setMarker(int line, int mask, bool on, bool alternate);
    void clearMarkers(int mask);
    [[nodiscard]] bool hasMarker(int line, int mask) const;

    /// Searches the partner of the bracket at @p cursor. bracketMatch() has it at once if it is near.
    void matchBrackets(const QTextCursor &cursor);
    /// The text from an opening bracket to behind its partner, as a selection; null if nothing matches.
    [[nodiscard]] QTextCursor bracketMatch() const { return m_bracketMatch; }
    void clearBracketMatch(); ///< and ends the search, which looks at lines that a change may take away

    /// Has @p block and what stands above it highlighted.
    void ensureProcessed(const QTextBlock &block);
    void setSelection(const QTextCursor &cursor) { m_selection = cursor; }

Q_SIGNALS:
    void encodingChanged(bool latin1);
    void bracketMatchChanged();

private:
    void setFormat(const TextFileFormat &format);
    void applyFormats();
    void releaseRawText();
    void searchBracket();
    void setBracketMatch(const QTextCursor &match);
    bool load(QFile &file);
    [[nodiscard]] QString nativeFilename() const;

    TextDocumentTemplate *const m_template;
    QString m_filename;
    QDateTime m_lastModified;
    TextFileFormat m_format = newTextFileFormat();
    std::unique_ptr<MarkedLines> m_marked; ///< goes after the text
    std::unique_ptr<QTextDocument> m_text;
    std::unique_ptr<HighlightDriver> m_driver; ///< goes before the text; the highlighter stays with the template
    std::unique_ptr<SwapFile> m_swap;
    QTextCursor m_selection;
    QTextCursor m_bracketMatch;
    BracketSearch m_search;
    QTimer m_searchTimer;
    QString m_rawText; ///< null while no copy is kept
    QTimer m_rawTextTimer{this};
};
