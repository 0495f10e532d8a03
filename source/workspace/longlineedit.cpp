#include "longlineedit.h"
#include "linelayout.h"
#include "longline.h"
#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextLayout>

namespace {
constexpr int Around = 1000; ///< characters beside the cursor that input methods and movements look at

/// The start of the character behind (@p forward) or before @p index, which combining characters belong to.
int nextCharacter(const QTextBlock &block, int index, bool forward)
{
    const int from = std::max(0, index - Around);
    const int end = std::min(block.length() - 1, index + Around);
    QTextLayout layout(LongLine::textOf(block, from, end - from));
    return from + (forward ? layout.nextCursorPosition(index - from) : layout.previousCursorPosition(index - from));
}

int indexOf(const QTextCursor &cursor)
{
    return cursor.position() - cursor.block().position();
}

bool isTyped(const QKeyEvent &event)
{
    const Qt::KeyboardModifiers others = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    const QString text = event.text();
    return (others == Qt::NoModifier || others == Qt::GroupSwitchModifier) && !text.isEmpty()
           && (text[0].isPrint() || text[0] == u'\t' || text[0].isSurrogate());
}
} // namespace

LongLineEdit::LongLineEdit()
{
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect &rect, int dy) {
        if (dy != 0 || m_isTyping || !hasLongLines())
            return;
        for (const Line &line : linesAt(rect.top(), rect.bottom())) {
            if (isLong(line.block)) // the base class knows no widths in it
                viewport()->update(line.rect.toAlignedRect());
        }
    });
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &LongLineEdit::correctVerticalRange);
    const QObjectList parts = children();
    for (QObject *part : parts) {
        if (part->inherits("QWidgetTextControl"))
            part->installEventFilter(this);
    }
}

void LongLineEdit::setDocument(QTextDocument *document)
{
    disconnect(m_changes);
    QPlainTextEdit::setDocument(document);
    if (const LineLayout *layout = lineLayout())
        m_changes = connect(layout, &LineLayout::longLineChanged, this, &LongLineEdit::showChange);
}

LineLayout *LongLineEdit::lineLayout() const
{
    return qobject_cast<LineLayout *>(document()->documentLayout());
}

bool LongLineEdit::hasLongLines() const
{
    const LineLayout *layout = lineLayout();
    return layout && layout->hasLongLines();
}

bool LongLineEdit::isLong(const QTextBlock &block) const
{
    return LongLine::isLong(block) && lineLayout();
}

// Places ------------------------------------------------------------------------

QList<LongLineEdit::Line> LongLineEdit::linesAt(int top, int bottom) const
{
    QList<Line> lines;
    QTextBlock block = firstVisibleBlock();
    qreal y = contentOffset().y();
    for (; block.isValid() && y <= bottom; block = block.next()) {
        const qreal height = blockBoundingRect(block).height();
        if (y + height > top)
            lines.append({block, {0, y, qreal(viewport()->width()), height}});
        y += height;
    }
    return lines;
}

qreal LongLineEdit::xOf(const QTextBlock &block, int index) const
{
    return contentOffset().x() + lineLayout()->xOf(block, index);
}

QRect LongLineEdit::cursorRect(const QTextCursor &cursor) const
{
    const QTextBlock block = cursor.block();
    if (!isLong(block))
        return QPlainTextEdit::cursorRect(cursor);
    const QRectF line = blockBoundingGeometry(block).translated(contentOffset());
    const qreal height = lineLayout()->longLine(block).style().lineHeight();
    return QRectF(xOf(block, indexOf(cursor)), line.top(), cursorWidth(), height).toRect();
}

QTextCursor LongLineEdit::cursorForPosition(const QPoint &position) const
{
    QTextCursor cursor = QPlainTextEdit::cursorForPosition(position);
    if (const QTextBlock block = cursor.block(); isLong(block))
        cursor.setPosition(block.position() + lineLayout()->indexAt(block, position.x() - contentOffset().x()));
    return cursor;
}

/// As the base class does it.
void LongLineEdit::ensureCursorVisible()
{
    if (!isInLongLine())
        return QPlainTextEdit::ensureCursorVisible();
    const QRect visible = viewport()->rect();
    QRect cursor = cursorRect();
    const int line = textCursor().blockNumber();
    if (cursor.top() < visible.top())
        verticalScrollBar()->setValue(line); // the value is a line number, because lines are not wrapped
    else if (cursor.bottom() > visible.bottom())
        verticalScrollBar()->setValue(line + 1 - std::max(1, visible.height() / cursor.height()));
    cursor = cursorRect();
    QScrollBar *bar = horizontalScrollBar();
    if (cursor.left() < visible.left() || cursor.right() > visible.right())
        bar->setValue(cursor.center().x() + bar->value() - visible.width() / 2);
}

/// Does something in the base class, which scrolls to the start of a long line. Calls may be nested.
template <typename Action>
void LongLineEdit::keepingPlace(Action action)
{
    if (m_keepsPlace)
        return action();
    const int left = horizontalScrollBar()->value();
    m_keepsPlace = true;
    action();
    m_keepsPlace = false;
    m_cursorOn = true;
    if (!isInLongLine())
        return;
    horizontalScrollBar()->setValue(left);
    ensureCursorVisible();
    updateCursorLine();
}

void LongLineEdit::setTextCursor(const QTextCursor &cursor)
{
    m_wantedX.reset();
    keepingPlace([&] { QPlainTextEdit::setTextCursor(cursor); });
}

void LongLineEdit::moveCursor(QTextCursor::MoveOperation operation, QTextCursor::MoveMode mode)
{
    const auto move = [&] { QPlainTextEdit::moveCursor(operation, mode); };
    if (operation == QTextCursor::Up || operation == QTextCursor::Down)
        return moveVertically(mode, move);
    m_wantedX.reset();
    keepingPlace(move);
}

void LongLineEdit::undo()
{
    keepingPlace([this] { QPlainTextEdit::undo(); });
}

void LongLineEdit::redo()
{
    keepingPlace([this] { QPlainTextEdit::redo(); });
}

/// The base class counts the lines of the layouts that fit on the last page: none for a long line.
void LongLineEdit::correctVerticalRange()
{
    if (centerOnScroll() || !isVisible())
        return;
    const qreal visible = viewport()->height() - document()->documentMargin() - 1;
    bool anyLong = false;
    int fitting = 0;
    qreal height = 0;
    for (QTextBlock block = document()->lastBlock(); block.isValid(); block = block.previous(), ++fitting) {
        height += blockBoundingRect(block).height();
        if (height > visible)
            break;
        anyLong = anyLong || isLong(block);
    }
    m_pageStep = 0;
    if (!anyLong)
        return;
    m_pageStep = fitting;
    verticalScrollBar()->setRange(0, std::max(0, document()->lineCount() - fitting));
}

/// A key in a long line changes what is behind the cursor, which moves in there. Other changes may move a selection.
void LongLineEdit::showChange(const QTextBlock &block, qreal x)
{
    QRectF rect = blockBoundingGeometry(block).translated(contentOffset());
    rect.setRight(viewport()->width());
    if (m_isTyping)
        rect.setLeft(std::max(rect.left(), contentOffset().x() + x));
    viewport()->update(rect.toAlignedRect());
}

// Keys --------------------------------------------------------------------------

void LongLineEdit::keyPressEvent(QKeyEvent *event)
{
    if (isTyped(*event) && canType()) {
        m_wantedX.reset();
        edit(Typing, [event](QTextCursor &cursor) { cursor.insertText(event->text()); });
        return event->accept();
    }
    const auto press = [&] { QPlainTextEdit::keyPressEvent(event); };
    if (event == QKeySequence::MoveToNextLine || event == QKeySequence::MoveToPreviousLine
        || event == QKeySequence::MoveToNextPage || event == QKeySequence::MoveToPreviousPage)
        return moveVertically(QTextCursor::MoveAnchor, press);
    if (event == QKeySequence::SelectNextLine || event == QKeySequence::SelectPreviousLine
        || event == QKeySequence::SelectNextPage || event == QKeySequence::SelectPreviousPage)
        return moveVertically(QTextCursor::KeepAnchor, press);
    if (event->key() < Qt::Key_Shift || event->key() > Qt::Key_ScrollLock)
        m_wantedX.reset();
    if (isInLongLine() && pressInLongLine(*event))
        event->accept();
    else
        keepingPlace(press);
}

/// The keys that the base class handles in a time that depends on the length of the line.
bool LongLineEdit::pressInLongLine(const QKeyEvent &event)
{
    QKeyEvent *key = const_cast<QKeyEvent *>(&event); // for the comparisons
    if (key == QKeySequence::MoveToNextChar || key == QKeySequence::MoveToPreviousChar)
        return moveByCharacter(key == QKeySequence::MoveToNextChar, QTextCursor::MoveAnchor);
    if (key == QKeySequence::SelectNextChar || key == QKeySequence::SelectPreviousChar)
        return moveByCharacter(key == QKeySequence::SelectNextChar, QTextCursor::KeepAnchor);
    if (isReadOnly() || !textCursor().block().layout()->preeditAreaText().isEmpty())
        return false;
    if (key == QKeySequence::Delete)
        return removeCharacter(true);
    if (event.key() == Qt::Key_Backspace && !(event.modifiers() & ~Qt::ShiftModifier))
        return removeCharacter(false);
    return false;
}

/// The base class first compares a key with all movements, and asks for the place of the cursor more than once.
bool LongLineEdit::canType() const
{
    return !isReadOnly() && !overwriteMode() && !textCursor().hasSelection()
           && textCursor().block().layout()->preeditAreaText().isEmpty();
}

/// Cursors of the toolkit do not look for their place in the line while an edit block is open. Keys of one kind at one
/// place are one step for undo, as they are without edit blocks; but none goes back behind the saved state.
template <typename Action>
void LongLineEdit::edit(Change change, Action action)
{
    QTextCursor cursor = textCursor();
    const bool continues = change == m_lastChange && document()->revision() == m_lastRevision
                           && cursor.position() == m_lastPosition && !cursor.hasSelection() && document()->isModified();
    if (continues)
        cursor.joinPreviousEditBlock();
    else
        cursor.beginEditBlock();
    m_isTyping = !cursor.hasSelection() && isInLongLine();
    action(cursor);
    cursor.endEditBlock();
    m_isTyping = false;
    m_lastChange = change;
    m_lastRevision = document()->revision();
    m_lastPosition = textCursor().position();
    m_cursorOn = true;
    if (std::exchange(m_mayHaveBlinked, false) && !isInLongLine())
        QPlainTextEdit::setTextCursor(textCursor()); // shows the cursor
    else
        ensureCursorVisible();
}

bool LongLineEdit::removeCharacter(bool forward)
{
    const QTextCursor cursor = textCursor();
    if (!cursor.hasSelection() && (forward ? cursor.atBlockEnd() : cursor.atBlockStart()))
        return false;
    edit(Removing, [forward](QTextCursor &cursor) {
        if (cursor.hasSelection())
            return cursor.removeSelectedText();
        if (!forward)
            return cursor.deletePreviousChar();
        const QTextBlock block = cursor.block();
        cursor.setPosition(block.position() + nextCharacter(block, indexOf(cursor), true), QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    });
    return true;
}

bool LongLineEdit::moveByCharacter(bool forward, QTextCursor::MoveMode mode)
{
    QTextCursor cursor = textCursor();
    const bool atEdge = forward ? cursor.atBlockEnd() : cursor.atBlockStart();
    if (atEdge || (cursor.hasSelection() && mode == QTextCursor::MoveAnchor))
        return false;
    const QTextBlock block = cursor.block();
    cursor.setPosition(block.position() + nextCharacter(block, indexOf(cursor), forward), mode);
    setTextCursor(cursor);
    return true;
}

/// Up, Down and the page keys keep the distance from the left edge, which the base class knows in short lines only.
template <typename Action>
void LongLineEdit::moveVertically(QTextCursor::MoveMode mode, Action action)
{
    const QTextBlock before = textCursor().block();
    const bool known = m_wantedX || isLong(before);
    const qreal x = m_wantedX      ? *m_wantedX
                    : lineLayout() ? xOf(before, indexOf(textCursor())) - contentOffset().x()
                                   : 0;
    keepingPlace([&] {
        action();
        QTextCursor cursor = textCursor();
        const QTextBlock block = cursor.block();
        if (block == before || !(known || isLong(block)))
            return;
        cursor.setPosition(block.position() + lineLayout()->indexAt(block, x), mode);
        QPlainTextEdit::setTextCursor(cursor);
        m_wantedX = x;
    });
}

// The mouse ---------------------------------------------------------------------

void LongLineEdit::mousePressEvent(QMouseEvent *event)
{
    m_wantedX.reset();
    const QTextCursor pressed = cursorForPosition(event->position().toPoint());
    if (!isLong(pressed.block()) || event->button() != Qt::LeftButton)
        return keepingPlace([&] { QPlainTextEdit::mousePressEvent(event); });
    const QTextCursor before = textCursor();
    const bool extends = event->modifiers() & Qt::ShiftModifier;
    const QPoint lastPressed = std::exchange(m_pressed, event->position().toPoint());
    const bool isThird =
        !m_thirdClick.hasExpired() && (m_pressed - lastPressed).manhattanLength() < QApplication::startDragDistance();
    m_mayDrag = !isThird && !extends && pressed.position() >= before.selectionStart()
                && pressed.position() < before.selectionEnd();
    if (m_mayDrag)
        return;
    keepingPlace([&] {
        const int left = horizontalScrollBar()->value();
        QPlainTextEdit::setTextCursor(pressed); // a selection might be dragged by its start
        horizontalScrollBar()->setValue(left);  // for the place of the click
        QPlainTextEdit::mousePressEvent(event);
        if (!extends && textCursor().hasSelection()) // the third click selects the line
            return;
        QTextCursor cursor = before;
        cursor.setPosition(pressed.position(), extends ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
        QPlainTextEdit::setTextCursor(cursor);
    });
}

void LongLineEdit::mouseMoveEvent(QMouseEvent *event)
{
    if (m_mayDrag) {
        if ((event->position().toPoint() - m_pressed).manhattanLength() >= QApplication::startDragDistance())
            dragSelection();
        return;
    }
    const int anchor = textCursor().anchor();
    const QTextCursor reached = cursorForPosition(event->position().toPoint());
    const bool isLongReached = isLong(reached.block()) || isLong(document()->findBlock(anchor));
    keepingPlace([&] {
        QPlainTextEdit::mouseMoveEvent(event);
        if (!(event->buttons() & Qt::LeftButton) || !isLongReached)
            return;
        QTextCursor cursor = textCursor();
        cursor.setPosition(anchor);
        cursor.setPosition(reached.position(), QTextCursor::KeepAnchor);
        QPlainTextEdit::setTextCursor(cursor);
    });
}

void LongLineEdit::mouseReleaseEvent(QMouseEvent *event)
{
    const QTextCursor reached = cursorForPosition(event->position().toPoint());
    if (std::exchange(m_mayDrag, false))
        return setTextCursor(reached);
    const QMimeData *selected = QGuiApplication::clipboard()->mimeData(QClipboard::Selection);
    if (event->button() == Qt::MiddleButton && isLong(reached.block()) && !isReadOnly()
        && QGuiApplication::clipboard()->supportsSelection()) {
        return keepingPlace([&] {
            QPlainTextEdit::setTextCursor(reached);
            insertFromMimeData(selected);
        });
    }
    keepingPlace([&] { QPlainTextEdit::mouseReleaseEvent(event); });
}

void LongLineEdit::mouseDoubleClickEvent(QMouseEvent *event)
{
    const int interval = QApplication::doubleClickInterval();
    m_thirdClick.setRemainingTime(interval);
    m_blinkPause.setRemainingTime(2 * qint64(interval));
    m_pressed = event->position().toPoint();
    const QTextCursor clicked = cursorForPosition(event->position().toPoint());
    keepingPlace([&] {
        QPlainTextEdit::mouseDoubleClickEvent(event);
        if (!isLong(clicked.block()) || event->button() != Qt::LeftButton)
            return;
        QTextCursor word = clicked;
        word.select(QTextCursor::WordUnderCursor);
        QPlainTextEdit::setTextCursor(word);
    });
}

void LongLineEdit::dragSelection()
{
    m_mayDrag = false;
    auto *drag = new QDrag(viewport()); // as in short lines, for drops there; deletes itself
    drag->setMimeData(createMimeDataFromSelection());
    const Qt::DropActions actions = isReadOnly() ? Qt::CopyAction : Qt::CopyAction | Qt::MoveAction;
    const Qt::DropAction done = drag->exec(actions, isReadOnly() ? Qt::CopyAction : Qt::MoveAction);
    if (done == Qt::MoveAction) // a drop in this pane leaves no selection
        textCursor().removeSelectedText();
}

void LongLineEdit::dropEvent(QDropEvent *event)
{
    QTextCursor target = cursorForPosition(event->position().toPoint());
    if (!isLong(target.block()) || isReadOnly() || !canInsertFromMimeData(event->mimeData()))
        return keepingPlace([&] { QPlainTextEdit::dropEvent(event); });
    QDragLeaveEvent left; // ends what the base class shows while something is dragged
    QPlainTextEdit::dragLeaveEvent(&left);
    target.beginEditBlock();
    if (event->dropAction() == Qt::MoveAction && event->source() == viewport())
        textCursor().removeSelectedText();
    keepingPlace([&] {
        QPlainTextEdit::setTextCursor(target);
        insertFromMimeData(event->mimeData());
    });
    target.endEditBlock();
    event->acceptProposedAction();
    ensureCursorVisible();
}

// Input methods -----------------------------------------------------------------

void LongLineEdit::inputMethodEvent(QInputMethodEvent *event)
{
    keepingPlace([&] { QPlainTextEdit::inputMethodEvent(event); });
}

QVariant LongLineEdit::inputMethodQuery(Qt::InputMethodQuery query) const
{
    if (!isInLongLine()) // each key asks a dozen times
        return QPlainTextEdit::inputMethodQuery(query);
    const QTextCursor cursor = textCursor();
    const QTextBlock block = cursor.block();
    const int from = std::max(0, indexOf(cursor) - Around);
    switch (query) {
    case Qt::ImCursorRectangle:
        return cursorRect().translated(viewport()->pos());
    case Qt::ImSurroundingText:
        return LongLine::textOf(block, from, std::min(block.length() - 1 - from, 2 * Around));
    case Qt::ImCursorPosition:
        return indexOf(cursor) - from;
    case Qt::ImAnchorPosition:
        return std::clamp(cursor.anchor() - block.position() - from, 0, 2 * Around);
    default:
        return QPlainTextEdit::inputMethodQuery(query);
    }
}

// The cursor ------------------------------------------------------------------

void LongLineEdit::updateCursorLine()
{
    const QRect cursor = cursorRect();
    viewport()->update(0, cursor.top(), viewport()->width(), cursor.height());
}

/// The base class would blink at the start of a long line, and look for the place there for a long time. Its timer for
/// a third click runs on.
bool LongLineEdit::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::Timer)
        return PasteGuard<QPlainTextEdit>::eventFilter(object, event);
    m_mayHaveBlinked = true;
    if (!isInLongLine() || !m_blinkPause.hasExpired())
        return false;
    m_cursorOn = !m_cursorOn;
    updateCursorLine();
    return true;
}
