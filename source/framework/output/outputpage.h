#pragma once
#include "lookuppattern.h"
#include <QBasicTimer>
#include <QPlainTextEdit>
class QMenu;

/// A page of the output window: read-only text that grows at its end, and whose lines may lead to a source line.
///
/// Text is in the document at once, but what arrives faster than a screen shows it is laid out in one go.
class OutputPage : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit OutputPage(QWidget *parent = nullptr);

    /// How lines name a source line; see LookupPattern::set().
    bool setLookupPattern(const QString &pattern, bool greedy);
    /// The place that the current line names; if there is none, returns false and leaves both as they are.
    bool lookup(QString &file, int &line) const;
    /// The context menu as it stands now, for the caller to delete.
    [[nodiscard]] QMenu *createPopupMenu();

public Q_SLOTS:
    /// Adds text at the end. A whole line, one that ends in "\n", becomes a paragraph of its own, and its line end
    /// shows only when something follows; what does not end in "\n" is a piece of a line that goes on.
    void outputLine(const QString &text);
    /// Makes the next paragraph the current line, after the last one the first, and looks it up.
    void lookupNextLine();
    /// Selects the current line and emits lookupSource(), if the line names a place.
    void doLookup();
    void clear();

Q_SIGNALS:
    void lookupSource(const QString &file, int line);

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
    int m_currentLine = 0;       ///< number of the paragraph to look up; may be beyond the end after clear()
    QBasicTimer m_batch;         ///< runs while the document gathers text in one edit block
    bool m_followEnd = false;    ///< the batch began with the end in view
    bool m_followCursor = false; ///< the batch moved the cursor to the end
};
