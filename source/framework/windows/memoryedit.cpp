#include "memoryedit.h"
#include "memorytextlayout.h"
#include "rowpainter.h"
#include <cmath>
#include <optional>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTextBlock>

using namespace Qt::StringLiterals;

namespace {
bool isHexDigit(QChar character)
{
    return (character >= u'0' && character <= u'9') || (character >= u'a' && character <= u'f')
           || (character >= u'A' && character <= u'F');
}

bool isHexDigit(const QString &text)
{
    return text.size() == 1 && isHexDigit(text.front());
}

/// Keys with other modifiers are commands of the window.
bool isTyping(const QKeyEvent *event)
{
    const Qt::KeyboardModifiers others = event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    return others == Qt::NoModifier;
}

int lineDirection(const QKeyEvent *event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier))
        return 0;
    return event->key() == Qt::Key_Up ? -1 : event->key() == Qt::Key_Down ? 1 : 0;
}

std::optional<QTextCursor::MoveOperation> moveOf(int key)
{
    switch (key) {
    case Qt::Key_Home:
        return QTextCursor::StartOfLine;
    case Qt::Key_End:
        return QTextCursor::EndOfLine;
    case Qt::Key_Left:
        return QTextCursor::PreviousCharacter;
    case Qt::Key_Up:
        return QTextCursor::Up;
    case Qt::Key_Right:
        return QTextCursor::NextCharacter;
    case Qt::Key_Down:
        return QTextCursor::Down;
    default:
        return {};
    }
}

/// Without these, actions of the window with the same keys would act on the text behind.
bool isHandled(const QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy) || lineDirection(event) != 0)
        return true;
    if (!isTyping(event))
        return false;
    switch (event->key()) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Space:
        return true;
    default:
        return moveOf(event->key()) || isHexDigit(event->text());
    }
}
} // namespace

MemoryEdit::MemoryEdit(QWidget *parent) : QTextEdit(parent)
{
    auto *lines = new QTextDocument(this);
    lines->setDocumentLayout(new MemoryTextLayout(lines));
    setDocument(lines);
    QFont courier(u"Courier"_s, 10);
    courier.setStyleHint(QFont::TypeWriter);
    setTextFont(courier);
    setOverwriteMode(true);
    setUndoRedoEnabled(false);
    setAcceptRichText(false);
    setTabChangesFocus(true);
    setLineWrapMode(QTextEdit::NoWrap);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setReadOnly(false);
    setAcceptDrops(false);
    viewport()->setAcceptDrops(false);
}

/// Hexadecimal digits need no shaping. Characters of whole pixels can be copied from pictures.
void MemoryEdit::setTextFont(QFont font)
{
    font.setStyleStrategy(QFont::PreferNoShaping);
    int width = 0;
    font = withPixelPitch(font, &width);
    setFont(font);
    document()->setDefaultFont(font);
}

// Text --------------------------------------------------------------------------

void MemoryEdit::showLines(const QList<MemoryLine> &lines, int addressDigits, int columns, int width)
{
    const int para = cursorPara();
    const int index = cursorIndex();
    const int anchor = textCursor().anchor();
    const int position = textCursor().position();
    const MemoryEditRange range = memoryEditRange(addressDigits, columns, width);
    const quint64 address = lines.isEmpty() ? 0 : lines.first().address;
    const bool isSame = range == m_range && address == m_address && lines.size() == m_lines;
    m_range = range;
    m_address = address;
    m_lines = lines.size();
    insertLines(lines, addressDigits, width);
    if (isSame && anchor != position) {
        QTextCursor cursor(document());
        cursor.setPosition(anchor);
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        setTextCursor(cursor);
    } else {
        setCursorPosition(para, index);
    }
    horizontalScrollBar()->setValue(0); // the bars are not shown, so the user could not get back
    verticalScrollBar()->setValue(0);
}

void MemoryEdit::insertLines(const QList<MemoryLine> &lines, int addressDigits, int width)
{
    const QTextCharFormat address = addressFormat();
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.removeSelectedText();
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString text = memoryLineText(lines[i], addressDigits, width);
        if (i > 0)
            cursor.insertBlock(QTextBlockFormat(), address);
        cursor.insertText(text.left(addressDigits), address);
        cursor.insertText(text.mid(addressDigits), QTextCharFormat());
        for (qsizetype cell = 0; cell < lines[i].cells.size(); ++cell) {
            if (lines[i].cells[cell].changed)
                markChanged(int(i), m_range.first + int(cell) * (2 * width + 1), 2 * width);
        }
    }
    cursor.endEditBlock();
}

void MemoryEdit::markChanged(int para, int index, int length)
{
    const QTextBlock block = document()->findBlockByNumber(para);
    if (!block.isValid() || index < 0 || index + length >= block.length())
        return;
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + index);
    cursor.setPosition(block.position() + index + length, QTextCursor::KeepAnchor);
    cursor.mergeCharFormat(changedFormat());
}

/// The cursor is visible in text that is read-only too.
void MemoryEdit::setReadOnly(bool readOnly)
{
    QTextEdit::setReadOnly(readOnly);
    setTextInteractionFlags(textInteractionFlags() | Qt::TextSelectableByKeyboard);
    setAttribute(Qt::WA_InputMethodEnabled, false); // it would insert text
}

void MemoryEdit::setCursorPosition(int para, int index)
{
    const QTextBlock block = document()->findBlockByNumber(std::clamp(para, 0, document()->blockCount() - 1));
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + std::clamp(index, 0, block.length() - 1));
    setTextCursor(cursor);
}

int MemoryEdit::visibleLines() const
{
    return viewport()->height() / std::max(1, int(std::ceil(QFontMetricsF(font(), this).height())));
}

int MemoryEdit::visibleCharacters() const
{
    return int(viewport()->width() / std::max(1.0, QFontMetricsF(font(), this).horizontalAdvance(u"X"_s)));
}

// Colours -----------------------------------------------------------------------

QColor MemoryEdit::onPaper(const QColor &colour) const
{
    return readableOn(palette().color(QPalette::Base), colour);
}

QTextCharFormat MemoryEdit::addressFormat() const
{
    QTextCharFormat format;
    format.setForeground(onPaper(u"#0000ff"_s));
    return format;
}

QTextCharFormat MemoryEdit::changedFormat() const
{
    QTextCharFormat format;
    format.setForeground(onPaper(Qt::red));
    format.setFontUnderline(true); // not by colour alone
    return format;
}

// Keys --------------------------------------------------------------------------

bool MemoryEdit::event(QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return QTextEdit::event(event);
    event->setAccepted(isHandled(static_cast<QKeyEvent *>(event)));
    return true;
}

void MemoryEdit::keyPressEvent(QKeyEvent *event)
{
    event->accept();
    if (event->matches(QKeySequence::Copy))
        return copy();
    if (const int direction = lineDirection(event); direction != 0)
        return scrollLine(direction);
    if (moveByKey(event))
        return;
    switch (event->key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!isReadOnly())
            Q_EMIT updateMemory();
        return;
    case Qt::Key_PageUp:
        return scrollPage(-1);
    case Qt::Key_PageDown:
        return scrollPage(1);
    default:
        typeKey(event);
    }
}

bool MemoryEdit::moveByKey(const QKeyEvent *event)
{
    const auto move = moveOf(event->key());
    if (move) {
        const bool selects = event->modifiers().testFlag(Qt::ShiftModifier);
        moveCursor(*move, selects ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
    }
    return move.has_value();
}

void MemoryEdit::typeKey(QKeyEvent *event)
{
    if (!isTyping(event)) {
        event->ignore();
        return;
    }
    if (!m_range.contains(cursorIndex()))
        return;
    if (!isHexDigit(event->text())) {
        if (event->key() == Qt::Key_Space && !isDigitAt(cursorIndex()))
            moveCursor(QTextCursor::NextCharacter);
        return;
    }
    collapseSelection();
    if (!m_range.contains(cursorIndex()))
        return;
    if (isDigitAt(cursorIndex())) {
        overwrite(event);
    } else if (isDigitAt(cursorIndex() + 1)) {
        moveCursor(QTextCursor::NextCharacter);
        overwrite(event);
    }
}

bool MemoryEdit::isDigitAt(int index) const
{
    return isHexDigit(textCursor().block().text().mid(index, 1));
}

void MemoryEdit::collapseSelection()
{
    QTextCursor cursor = textCursor();
    if (!cursor.hasSelection())
        return;
    cursor.setPosition(cursor.selectionStart());
    setTextCursor(cursor);
}

void MemoryEdit::overwrite(const QKeyEvent *event)
{
    const int para = cursorPara();
    const int index = cursorIndex();
    const QString digit = event->text().toUpper(); // as the other digits
    QKeyEvent upper(event->type(), event->key(), event->modifiers(), digit, event->isAutoRepeat());
    QTextEdit::keyPressEvent(&upper);
    if (!isReadOnly())
        Q_EMIT hexChanged(para, index, digit.toInt(nullptr, 16));
}

// No other way to change the text -------------------------------------------------

/// A press on the selection would begin to drag it, and the text would be moved out of here.
void MemoryEdit::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && !event->modifiers().testFlag(Qt::ShiftModifier))
        collapseSelection();
    QTextEdit::mousePressEvent(event);
}

bool MemoryEdit::canInsertFromMimeData(const QMimeData *) const
{
    return false;
}

void MemoryEdit::insertFromMimeData(const QMimeData *) {}
