#pragma once
#include "lookuppattern.h"
#include "outputseverity.h"
#include <functional>
#include <QBasicTimer>
#include <QPlainTextEdit>
class QMenu;

/// A page of the output window: read-only text that grows at its end, with lines that may refer to source lines.
///
/// Text is added to the document at once, but text that arrives faster than it can be shown is laid out in one step.
class OutputPage : public QPlainTextEdit
{
    Q_OBJECT
    Q_PROPERTY(QString text READ toPlainText) // for test drivers
public:
    /// Whether a file that a line names exists.
    using FileCheck = std::function<bool(const QString &file)>;

    explicit OutputPage(QWidget *parent = nullptr);

    /// The form of places in lines; see LookupPattern::set().
    bool setLookupPattern(const QString &pattern, bool greedy);
    /// The place in the current line; if there is none, returns false and does not change the arguments.
    bool lookup(QString &file, int &line) const;
    /// Colours errors and warnings from now on, and counts them. Messages are then these lines only.
    void setDiagnostics(bool on) { m_diagnostics = on; }
    [[nodiscard]] int errors() const { return m_errors; }
    [[nodiscard]] int warnings() const { return m_warnings; }
    [[nodiscard]] QString countsText() const; ///< "2 errors, 1 warning"; empty without any
    /// The current context menu, owned by the caller.
    [[nodiscard]] QMenu *createPopupMenu();
    /// Makes the next or previous message the current line, and looks it up: the next line that contains a place and,
    /// with diagnostics, an error or a warning. Lines whose file fails @p isFile are skipped: other programs write
    /// lines of the same form. After the last message the first follows. False if there is none.
    bool lookupMessage(bool forward, const FileCheck &isFile = {});
    /// A whole line without its line end.
    struct Line
    {
        QString text;
        std::optional<LookupPlace> place; ///< otherwise it is searched in the text
        QString owner;                    ///< of replaceLines(); empty for other output
    };
    /// Adds lines of @p owner at the end, in place of those that it has added before. Other lines stay.
    void replaceLines(const QString &owner, const QList<Line> &lines);
    /// Scrolls to the first error, if there is one and the end is shown. The cursor stays.
    void showFirstError();

public Q_SLOTS:
    /// Adds text at the end, which can have several lines. A whole line, which ends in "\n", becomes a new paragraph,
    /// and its line end is shown only when more text follows; text without "\n" at its end is continued by the next
    /// text.
    void outputLine(const QString &text);
    /// Makes the next paragraph (after the last one the first) the current line, and looks it up.
    void lookupNextLine();
    /// Selects the current line and emits lookupSource() if the line contains a place.
    void doLookup();
    /// Adds a whole line whose place is known: its text is not searched for one. A line that is open ends before it.
    void outputLine(const QString &text, const LookupPlace &place);
    void clear();

Q_SIGNALS:
    void lookupSource(const QString &file, int line, int column = 0);
    void lineAdded(const QString &line); ///< a whole line, without its line end
    void countsChanged();                ///< of errors and warnings

protected:
    bool event(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void removeLines(const QString &owner);
    void addLine(const Line &line);
    void appendLine(const QString &line);
    void insertAtEnd(const QString &text);
    void moveCursorToEnd();
    void openBatch();
    void closeBatch();
    [[nodiscard]] bool isAtEnd() const;
    void scrollToEnd();
    [[nodiscard]] std::optional<LookupPlace> placeIn(const QTextBlock &line) const;
    [[nodiscard]] bool isMessage(const QTextBlock &line, const FileCheck &isFile) const;
    void finishLines(QTextBlock line);
    void colour(const QTextBlock &line) const;

    LookupPattern m_lookup;
    bool m_lineOpen = false; ///< the last output did not end in "\n"
    int m_currentLine = 0;   ///< index of the paragraph to look up
    bool m_visited = false;  ///< the current line was pressed or looked up, so the next message is behind it
    bool m_diagnostics = false;
    int m_errors = 0;
    int m_warnings = 0;
    std::optional<LookupPlace> m_placeOfNext; ///< of the line that is being added
    QString m_ownerOfNext;
    QBasicTimer m_batch;         ///< runs while text is collected in one edit block
    bool m_followEnd = false;    ///< the end was visible when the batch started
    bool m_followCursor = false; ///< the batch moved the cursor to the end
};
