#pragma once
#include "pasteguard.h"
#include <optional>
#include <QDeadlineTimer>
#include <QPlainTextEdit>
#include <QTextBlock>
class LineLayout;

/// A text editor for documents with a LineLayout, in which a key takes the same time in a line of any length. For the
/// base class a long line is empty: this class paints it, finds places in it, and does in it what depends on places.
/// With short lines, everything is left to the base class.
class LongLineEdit : public PasteGuard<QPlainTextEdit>
{
    Q_OBJECT
public:
    struct Line
    {
        QTextBlock block;
        QRectF rect; ///< in the viewport
    };

    LongLineEdit();
    void setDocument(QTextDocument *document); ///< of which the layout is set already
    /// The visible lines between the heights @p top and @p bottom of the viewport.
    [[nodiscard]] QList<Line> linesAt(int top, int bottom) const;
    /// The distance of a position in @p block from the left edge of the viewport.
    [[nodiscard]] qreal xOf(const QTextBlock &block, int index) const;

    // As those of the base class, also for long lines
    [[nodiscard]] QRect cursorRect(const QTextCursor &cursor) const;
    [[nodiscard]] QRect cursorRect() const { return cursorRect(textCursor()); }
    [[nodiscard]] QTextCursor cursorForPosition(const QPoint &position) const;
    void setTextCursor(const QTextCursor &cursor);
    void moveCursor(QTextCursor::MoveOperation operation, QTextCursor::MoveMode mode = QTextCursor::MoveAnchor);
    void ensureCursorVisible();
    void endUndoStep() { m_lastChange = Nothing; } ///< The next key starts a step of its own.
    void undo();
    void redo();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    enum Change { Nothing, Typing, Removing };

    [[nodiscard]] LineLayout *lineLayout() const;
    [[nodiscard]] bool hasLongLines() const;
    [[nodiscard]] bool isLong(const QTextBlock &block) const;
    [[nodiscard]] bool isInLongLine() const { return isLong(textCursor().block()); }
    template <typename Action>
    void keepingPlace(Action action);
    [[nodiscard]] bool canType() const;
    [[nodiscard]] bool pressInLongLine(const QKeyEvent &event);
    [[nodiscard]] bool removeCharacter(bool forward);
    [[nodiscard]] bool moveByCharacter(bool forward, QTextCursor::MoveMode mode);
    template <typename Action>
    void edit(Change change, Action action);
    template <typename Action>
    void moveVertically(QTextCursor::MoveMode mode, Action action);
    void dragSelection();
    void showChange(const QTextBlock &block, qreal x);
    void drawLongLine(QPainter &painter, const Line &line, const QRectF &clip) const;
    void updateCursorLine();
    void correctVerticalRange();

    std::optional<qreal> m_wantedX; ///< where Up and Down go in their lines, after such a key in a long one
    Change m_lastChange = Nothing;  ///< with which the next one makes one step for undo
    int m_lastRevision = -1;        ///< of the document after that change
    int m_lastPosition = -1;
    int m_pageStep = 0;           ///< of the vertical scroll bar, if there are long lines on the last page
    bool m_cursorOn = true;       ///< the phase of the blinking cursor in a long line
    bool m_mayHaveBlinked = true; ///< the cursor of the base class, since a key has shown it
    bool m_keepsPlace = false;
    bool m_isTyping = false; ///< a key changes a long line
    QMetaObject::Connection m_changes;
    bool m_mayDrag = false; ///< the mouse was pressed on the selection
    QPoint m_pressed;
    QDeadlineTimer m_thirdClick; ///< until when a click after a double click counts as its third one
    QDeadlineTimer m_blinkPause; ///< while the base class may wait for that click
};
