#pragma once
#include "lookuppattern.h"
#include <QBasicTimer>
#include <QPlainTextEdit>
class QMenu;

/// A page of the output window: read-only text that grows at its end, with lines that may refer to source lines.
///
/// Text is added to the document at once, but text that arrives faster than it can be shown is laid out in one step.
class OutputPage : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit OutputPage(QWidget *parent = nullptr);

    /// The form of places in lines; see LookupPattern::set().
    bool setLookupPattern(const QString &pattern, bool greedy);
    /// The place in the current line; if there is none, returns false and does not change the arguments.
    bool lookup(QString &file, int &line) const;
    /// The current context menu, owned by the caller.
    [[nodiscard]] QMenu *createPopupMenu();

public Q_SLOTS:
    /// Adds text at the end. A whole line, which ends in "\n", becomes a new paragraph, and its line end is shown only
    /// when more text follows; text without "\n" at its end is continued by the next text.
    void outputLine(const QString &text);
    /// Makes the next paragraph (after the last one the first) the current line, and looks it up.
    /// Adds a line, without "\n" at its end, that contains a place besides those of the pattern. @p column counts from
    /// 1; 0 if it is not known.
    void outputLink(const QString &text, const LookupPlace &place, int column);
    void lookupNextLine();
    /// Selects the current line and emits lookupSource() if the line contains a place.
    void doLookup();
    void clear();

Q_SIGNALS:
    void lookupSource(const QString &file, int line);
    void lookupColumn(int column); ///< After lookupSource(), if the column is known.

protected:
    bool event(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void appendLine(const QString &line);
    void insertAtEnd(const QString &text);
    void moveCursorToEnd();
    void openBatch();
    void closeBatch();
    [[nodiscard]] bool isAtEnd() const;
    void scrollToEnd();

    LookupPattern m_lookup;
    bool m_lineOpen = false;     ///< the last output did not end in "\n"
    int m_currentLine = 0;       ///< index of the paragraph to look up; may be beyond the end after clear()
    QBasicTimer m_batch;         ///< runs while text is collected in one edit block
    bool m_followEnd = false;    ///< the end was visible when the batch started
    bool m_followCursor = false; ///< the batch moved the cursor to the end
};
