#pragma once
#include "bracketmatcher.h"
#include "document.h"
#include "markedlines.h"
#include "panenumbers.h"
#include "standins.h"
#include "textfile.h"
#include <QTextCursor>
#include <QTimer>
class HighlightDriver;
class SwapFile;
class SyntaxHighlighter;
class TextDocumentTemplate;
class TextIndent;
class TextLoading;

/// A text file. All panes of all its views share one QTextDocument.
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
    /// The last selected text of any pane.
    [[nodiscard]] virtual QString selectedText();

    /// What is loaded of the text: of a large file only the first lines for a while; see TextLoading.
    [[nodiscard]] QTextDocument *text() const { return m_text.get(); }
    [[nodiscard]] TextLoading *loading() const { return m_loading.get(); }
    [[nodiscard]] bool isLoading() const; ///< Whether a part of the text is missing.
    /// Loads the rest of a large file first. Call it before each change of the text, and before its end is read.
    QTextDocument *wholeText() const;
    /// Loads what is missing up to @p line, counted from 1.
    void loadTo(int line) const;
    [[nodiscard]] TextDocumentTemplate *textTemplate() const { return m_template; }
    [[nodiscard]] TextIndent *indenter() const;
    [[nodiscard]] SyntaxHighlighter *highlighter() const;
    [[nodiscard]] QColor paperColour() const;
    [[nodiscard]] QColor textColour() const;
    [[nodiscard]] int lineSpacing() const; ///< in pixels

    /// Whether the file is not valid UTF-8, so that it is read and written as Latin-1.
    [[nodiscard]] bool isLatin1() const { return m_format.encoding == TextFileFormat::Latin1; }
    [[nodiscard]] const TextFileFormat &fileFormat() const { return m_format; }
    /// The file gets @p format at the next save; a text that it cannot hold is saved as UTF-8.
    void changeFileFormat(const TextFileFormat &format);
    [[nodiscard]] SwapFile *swapFile() const { return m_swap.get(); } ///< null if there is no copy
    [[nodiscard]] const StandIns &standIns() const { return m_standIns; }
    /// @p text, whose lines end in "\n", in the form in which it can be inserted.
    [[nodiscard]] QString insertable(QString text);
    /// The whole text, its lines separated by ParagraphSeparator. The copy is kept for further searches until the text
    /// changes or was not used for some seconds: it takes twice the size of the file.
    [[nodiscard]] QString rawText();
    /// If the file holds exactly this text, the document counts as saved. Returns whether it does.
    bool adoptFile();
    /// Sets a text that was recovered after a crash; the file is unchanged until the next save. It is newer than the
    /// text if it was written after @p fileTime, unless that is unknown.
    void recover(QString text, const QDateTime &fileTime = {});

    /// Markers of lines, counted from 1. A line outside the text is ignored.
    void setMarker(int line, int mask, bool on, bool alternate);
    void clearMarkers(int mask);
    [[nodiscard]] bool hasMarker(int line, int mask) const;

    /// Searches for the partner of the bracket at @p cursor. If it is near, bracketMatch() returns it at once.
    void matchBrackets(const QTextCursor &cursor);
    /// The text from an opening bracket to the end of its partner, as a selection; null if there is no match.
    [[nodiscard]] QTextCursor bracketMatch() const { return m_bracketMatch; }
    void clearBracketMatch(); ///< also ends the search, which refers to lines that a change may remove

    /// Runs the highlighter over @p block and everything above it.
    void ensureProcessed(const QTextBlock &block);
    /// Gives the lines @p first to @p last, counted from 0, the formats with which they are painted.
    void ensureFormatted(int first, int last);
    void setSelection(const QTextCursor &cursor) { m_selection = cursor; }
    [[nodiscard]] PaneNumbers &paneNumbers() { return m_paneNumbers; } ///< in all views

Q_SIGNALS:
    void encodingChanged(bool latin1);
    void fileFormatChanged();
    /// A save has changed the encoding or the line ends of the file, which had the format @p before.
    void fileConverted(const TextFileFormat &before);
    void bracketMatchChanged();

private:
    void setFormat(const TextFileFormat &format);
    [[nodiscard]] QTextCharFormat format(int id) const;
    void applyFormats();
    void releaseRawText();
    void textChanged();
    void searchBracket();
    void setBracketMatch(const QTextCursor &match);
    void load(const QString &filename, const QByteArray &bytes);
    [[nodiscard]] QString nativeFilename() const;
    [[nodiscard]] QString fileText() const; ///< as it is saved

    TextDocumentTemplate *const m_template;
    QString m_filename;
    QDateTime m_lastModified;
    TextFileFormat m_format = newTextFileFormat();
    StandIns m_standIns;
    std::unique_ptr<MarkedLines> m_marked; ///< must outlive the text
    std::unique_ptr<QTextDocument> m_text;
    std::unique_ptr<TextLoading> m_loading;    ///< destroyed before the text
    std::unique_ptr<HighlightDriver> m_driver; ///< destroyed before the text; the template owns the highlighter
    std::unique_ptr<SwapFile> m_swap;
    QTextCursor m_selection;
    PaneNumbers m_paneNumbers;
    QTextCursor m_bracketMatch;
    BracketSearch m_search;
    QTimer m_searchTimer;
    QString m_rawText; ///< null if there is no copy
    QTimer m_rawTextTimer{this};
};
