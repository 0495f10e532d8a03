#include "outputpage.h"
#include <QAction>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>
#include <QTextBlock>

namespace {
constexpr int BatchMilliseconds = 16; // about one frame of a usual screen

/// State of a last paragraph whose "\n" was output, but is shown only when more text follows.
constexpr int LineEndHeldBack = 1;

bool isNavigationKey(int key)
{
    switch (key) {
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_Right:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return true;
    default:
        return false;
    }
}

bool isHandled(const QKeyEvent *event)
{
    const bool copies = event->key() == Qt::Key_C || event->key() == Qt::Key_Insert;
    return isNavigationKey(event->key()) || (copies && event->modifiers().testFlag(Qt::ControlModifier));
}

QString withoutLineEnd(const QString &text)
{
    return text.chopped(text.endsWith(QLatin1String("\r\n")) ? 2 : 1);
}

/// The place of a line that was output with it.
struct Link : QTextBlockUserData
{
    Link(const LookupPlace &linked, int linkedColumn) : place(linked), column(linkedColumn) {}

    const LookupPlace place;
    const int column;
};

const Link *linkOf(const QTextBlock &block)
{
    return dynamic_cast<const Link *>(block.userData());
}

int columnOf(const QTextBlock &block)
{
    const Link *link = linkOf(block);
    return link ? link->column : 0;
}

/// A relative move would determine the text direction of the last line, which is slow for a long line.
QTextCursor endOfText(QTextDocument &document)
{
    QTextCursor cursor(&document);
    cursor.setPosition(document.characterCount() - 1);
    return cursor;
}
} // namespace

OutputPage::OutputPage(QWidget *parent) : QPlainTextEdit(parent)
{
    setFrameShape(QFrame::NoFrame);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard); // read-only, but with a cursor
    setAcceptDrops(false);
    viewport()->setAcceptDrops(false);
}

bool OutputPage::setLookupPattern(const QString &pattern, bool greedy)
{
    return m_lookup.set(pattern, greedy);
}

// Output ----------------------------------------------------------------

void OutputPage::outputLine(const QString &text)
{
    openBatch();
    const bool endsLine = text.endsWith(u'\n');
    if (!m_lineOpen && endsLine && text.size() > 1) {
        appendLine(withoutLineEnd(text));
        return;
    }
    moveCursorToEnd();
    insertAtEnd(text);
    m_lineOpen = !endsLine;
}

void OutputPage::outputLink(const QString &text, const LookupPlace &place, int column)
{
    if (m_lineOpen)
        outputLine(QStringLiteral("\n"));
    outputLine(QString(text).replace(u'\n', u' ') + u'\n');
    document()->lastBlock().setUserData(new Link(place, column));
}

void OutputPage::appendLine(const QString &line)
{
    QTextCursor cursor = endOfText(*document());
    if (!cursor.atBlockStart() || cursor.block().userState() == LineEndHeldBack)
        cursor.insertBlock();
    cursor.insertText(line);
    cursor.block().setUserState(LineEndHeldBack);
}

void OutputPage::insertAtEnd(const QString &text)
{
    if (text.isEmpty())
        return;
    QTextCursor cursor = endOfText(*document());
    const bool heldBack = cursor.block().userState() == LineEndHeldBack;
    const bool emptyLine = text == u'\n';
    if (heldBack && !emptyLine)
        cursor.insertBlock();
    cursor.insertText(text);
    if (heldBack && emptyLine) // this line end was held back, and now the next one is
        cursor.block().setUserState(LineEndHeldBack);
}

void OutputPage::moveCursorToEnd()
{
    m_followCursor = true;
    if (textCursor().atEnd() && !textCursor().hasSelection())
        return; // it follows by itself
    closeBatch();
    setTextCursor(endOfText(*document()));
    openBatch();
    m_followCursor = true;
}

void OutputPage::clear()
{
    closeBatch();
    QPlainTextEdit::clear();
}

// In an edit block the document notifies its layout and view only once, also for 100,000 lines. Text and paragraphs are
// always up to date. The block ends with the timer, or before any access to the layout.

void OutputPage::openBatch()
{
    if (m_batch.isActive())
        return;
    m_followEnd = isAtEnd();
    m_followCursor = false;
    QTextCursor(document()).beginEditBlock();
    m_batch.start(BatchMilliseconds, this);
}

void OutputPage::closeBatch()
{
    if (!m_batch.isActive())
        return;
    m_batch.stop();
    const bool followEnd = m_followEnd;
    const bool followCursor = m_followCursor;
    QTextCursor(document()).endEditBlock(); // notifies observers, which may write more output
    if (followCursor)
        ensureCursorVisible(); // a long line may end outside the view
    if (followEnd || followCursor)
        scrollToEnd();
}

bool OutputPage::isAtEnd() const
{
    return verticalScrollBar()->value() >= verticalScrollBar()->maximum();
}

void OutputPage::scrollToEnd()
{
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

bool OutputPage::event(QEvent *event)
{
    closeBatch();
    if (event->type() != QEvent::ShortcutOverride)
        return QPlainTextEdit::event(event);
    event->setAccepted(isHandled(static_cast<QKeyEvent *>(event)));
    return true;
}

bool OutputPage::viewportEvent(QEvent *event)
{
    closeBatch();
    return QPlainTextEdit::viewportEvent(event);
}

void OutputPage::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_batch.timerId())
        QPlainTextEdit::timerEvent(event);
}

void OutputPage::resizeEvent(QResizeEvent *event)
{
    const bool atEnd = isAtEnd();
    QPlainTextEdit::resizeEvent(event);
    if (atEnd)
        scrollToEnd();
}

// Lookup ------------------------------------------------------------------

bool OutputPage::lookup(QString &file, int &line) const
{
    const QTextBlock paragraph = document()->findBlockByNumber(m_currentLine);
    const Link *link = linkOf(paragraph);
    const std::optional<LookupPlace> place = link ? link->place : m_lookup.find(paragraph.text());
    if (!place)
        return false;
    file = place->file;
    line = place->line;
    return true;
}

void OutputPage::lookupNextLine()
{
    m_currentLine = m_currentLine + 1 < document()->blockCount() ? m_currentLine + 1 : 0;
    doLookup();
}

void OutputPage::doLookup()
{
    QString file;
    int line = 0;
    if (!lookup(file, line))
        return;
    closeBatch();
    QTextCursor cursor(document()->findBlockByNumber(m_currentLine));
    cursor.movePosition(QTextCursor::EndOfBlock);
    cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor); // shows the start of a long line
    setTextCursor(cursor);
    const int column = columnOf(cursor.block());
    const QPointer<OutputPage> self(this);
    Q_EMIT lookupSource(file, line);
    if (self && column > 0)
        Q_EMIT lookupColumn(column);
}

// User ----------------------------------------------------------------------

void OutputPage::keyPressEvent(QKeyEvent *event)
{
    if (isHandled(event))
        QPlainTextEdit::keyPressEvent(event);
    else
        event->ignore();
}

void OutputPage::mousePressEvent(QMouseEvent *event)
{
    const QTextCursor pressed = cursorForPosition(event->position().toPoint());
    const bool right = event->button() == Qt::RightButton;
    if (right && !textCursor().hasSelection()) // keep a selection, so that it can be copied
        setTextCursor(pressed);
    QPlainTextEdit::mousePressEvent(event);
    m_currentLine = right ? pressed.blockNumber() : textCursor().blockNumber();
}

QMenu *OutputPage::createPopupMenu()
{
    auto *menu = new QMenu(this);
    menu->addAction(tr("&Copy"), this, &OutputPage::copy)->setEnabled(textCursor().hasSelection());
    menu->addAction(tr("Select &All"), this, &OutputPage::selectAll);
    menu->addSeparator();
    menu->addAction(tr("Clear"), this, &OutputPage::clear);
    menu->addSeparator();
    QString file;
    int line = 0;
    menu->addAction(tr("Lookup source line"), this, &OutputPage::doLookup)->setEnabled(lookup(file, line));
    return menu;
}

void OutputPage::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createPopupMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}
