#include "outputpage.h"
#include <QAction>
#include <QMenu>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>

namespace {
/// What is known of a line of output.
struct LineData : QTextBlockUserData
{
    std::optional<LookupPlace> place; ///< given with the line; otherwise it is searched in the text
    QString owner;                    ///< empty except for lines of replaceLines()
    OutputSeverity severity = OutputSeverity::None;
};

LineData *dataOf(const QTextBlock &line)
{
    return static_cast<LineData *>(line.userData());
}

LineData *newDataOf(QTextBlock &line)
{
    if (!line.userData())
        line.setUserData(new LineData); // owned by the line
    return dataOf(line);
}

bool isReturn(const QKeyEvent *event)
{
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

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
    const int lastLine = document()->blockCount() - 1;
    insertAtEnd(text);
    m_lineOpen = !endsLine;
    if (text.contains(u'\n'))
        finishLines(document()->findBlockByNumber(lastLine));
}

void OutputPage::outputLine(const QString &text, const LookupPlace &place)
{
    if (m_lineOpen)
        outputLine(QStringLiteral("\n"));
    m_placeOfNext = place;
    outputLine(text);
    m_placeOfNext.reset();
}

void OutputPage::replaceLines(const QString &owner, const QList<Line> &lines)
{
    removeLines(owner);
    if (m_lineOpen && !lines.isEmpty())
        outputLine(QStringLiteral("\n"));
    for (const Line &line : lines)
        addLine({line.text, line.place, owner});
}

/// Writes the other lines again, since the paragraphs of a document cannot be removed together with their data.
void OutputPage::removeLines(const QString &owner)
{
    QList<Line> kept;
    bool found = false;
    for (QTextBlock line = document()->begin(); line.isValid(); line = line.next()) {
        const LineData *data = dataOf(line);
        if (data && data->owner == owner)
            found = true;
        else if (line.next().isValid() || m_lineOpen || line.userState() == LineEndHeldBack) // not the empty last line
            kept.append({line.text(), data ? data->place : std::nullopt, data ? data->owner : QString()});
    }
    if (!found)
        return;
    const QString openLine = m_lineOpen ? kept.takeLast().text : QString();
    clear();
    QSignalBlocker blocker(this); // they were reported
    for (const Line &line : std::as_const(kept))
        addLine(line);
    if (!openLine.isEmpty())
        outputLine(openLine);
    blocker.unblock();
    Q_EMIT countsChanged();
}

void OutputPage::addLine(const Line &line)
{
    m_placeOfNext = line.place;
    m_ownerOfNext = line.owner;
    outputLine(line.text + u'\n');
    m_placeOfNext.reset();
    m_ownerOfNext.clear();
}

/// Examines the lines from @p line on that are complete now.
void OutputPage::finishLines(QTextBlock line)
{
    const int errors = m_errors;
    const int warnings = m_warnings;
    for (; line.isValid() && !(m_lineOpen && !line.next().isValid()); line = line.next()) {
        if (m_placeOfNext)
            newDataOf(line)->place = m_placeOfNext;
        if (!m_ownerOfNext.isEmpty())
            newDataOf(line)->owner = m_ownerOfNext;
        if (m_diagnostics && !line.text().isEmpty()) {
            qsizetype length = 0;
            const bool hasPlace = m_lookup.find(line.text(), &length).has_value();
            const OutputSeverity severity = outputSeverity(line.text().sliced(length), hasPlace);
            if (severity != OutputSeverity::None) {
                newDataOf(line)->severity = severity;
                colour(line);
            }
            m_errors += severity == OutputSeverity::Error;
            m_warnings += severity == OutputSeverity::Warning;
        }
        Q_EMIT lineAdded(line.text());
    }
    if (m_errors != errors || m_warnings != warnings)
        Q_EMIT countsChanged();
}

QString OutputPage::countsText() const
{
    QStringList counts;
    if (m_errors > 0)
        counts += m_errors == 1 ? tr("1 error") : tr("%1 errors").arg(m_errors);
    if (m_warnings > 0)
        counts += m_warnings == 1 ? tr("1 warning") : tr("%1 warnings").arg(m_warnings);
    return counts.join(QStringLiteral(", "));
}

/// As a highlighter does it: the format belongs to the layout, not to the text.
void OutputPage::colour(const QTextBlock &line) const
{
    const LineData *data = dataOf(line);
    if (!data || data->severity == OutputSeverity::None)
        return;
    QTextLayout::FormatRange range;
    range.start = 0;
    range.length = line.length();
    range.format.setForeground(outputColour(data->severity, palette()));
    line.layout()->setFormats({range});
}

void OutputPage::appendLine(const QString &line)
{
    QTextCursor cursor = endOfText(*document());
    if (!cursor.atBlockStart() || cursor.block().userState() == LineEndHeldBack)
        cursor.insertBlock();
    const int first = cursor.blockNumber(); // the text can have several lines
    cursor.insertText(line);
    cursor.block().setUserState(LineEndHeldBack);
    finishLines(document()->findBlockByNumber(first));
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
        return; // a cursor at the end moves with the text
    closeBatch();
    setTextCursor(endOfText(*document()));
    openBatch();
    m_followCursor = true;
}

void OutputPage::clear()
{
    closeBatch();
    QPlainTextEdit::clear();
    m_lineOpen = false;
    m_currentLine = 0;
    m_visited = false;
    m_errors = 0;
    m_warnings = 0;
    Q_EMIT countsChanged();
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

/// Further errors often follow from the first one. A user who has scrolled is reading something else.
void OutputPage::showFirstError()
{
    constexpr int LinesBefore = 2; // they often name the function or the file that includes the one with the error
    closeBatch();
    if (!isAtEnd())
        return;
    for (QTextBlock line = document()->begin(); line.isValid(); line = line.next()) {
        const LineData *data = dataOf(line);
        if (!data || data->severity != OutputSeverity::Error)
            continue;
        const int first = std::max(0, line.blockNumber() - LinesBefore); // the bar counts lines
        if (first < verticalScrollBar()->value())
            verticalScrollBar()->setValue(first);
        horizontalScrollBar()->setValue(horizontalScrollBar()->minimum());
        return;
    }
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

std::optional<LookupPlace> OutputPage::placeIn(const QTextBlock &line) const
{
    const LineData *data = dataOf(line);
    return data && data->place ? data->place : m_lookup.find(line.text());
}

bool OutputPage::isMessage(const QTextBlock &line, const FileCheck &isFile) const
{
    const std::optional<LookupPlace> place = placeIn(line);
    if (!place)
        return false;
    const LineData *data = dataOf(line);
    return (!m_diagnostics || (data && data->severity != OutputSeverity::None)) && (!isFile || isFile(place->file));
}

bool OutputPage::lookup(QString &file, int &line) const
{
    const std::optional<LookupPlace> place = placeIn(document()->findBlockByNumber(m_currentLine));
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

bool OutputPage::lookupMessage(bool forward, const FileCheck &isFile)
{
    const int count = document()->blockCount();
    const int first = m_visited ? (forward ? m_currentLine + 1 : m_currentLine - 1) : (forward ? 0 : count - 1);
    for (int i = 0; i < count; ++i) {
        const int line = ((forward ? first + i : first - i) % count + count) % count;
        if (isMessage(document()->findBlockByNumber(line), isFile)) {
            m_currentLine = line;
            doLookup();
            return true;
        }
    }
    return false;
}

void OutputPage::doLookup()
{
    const std::optional<LookupPlace> place = placeIn(document()->findBlockByNumber(m_currentLine));
    if (!place)
        return;
    m_visited = true;
    closeBatch();
    QTextCursor cursor(document()->findBlockByNumber(m_currentLine));
    cursor.movePosition(QTextCursor::EndOfBlock);
    cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor); // shows the start of a long line
    setTextCursor(cursor);
    Q_EMIT lookupSource(place->file, place->line, place->column);
}

// User ----------------------------------------------------------------------

void OutputPage::keyPressEvent(QKeyEvent *event)
{
    if (isReturn(event) && event->modifiers() == (event->modifiers() & Qt::KeypadModifier)
        && placeIn(textCursor().block())) {
        m_currentLine = textCursor().blockNumber();
        doLookup();
    } else if (isHandled(event)) {
        QPlainTextEdit::keyPressEvent(event);
    } else {
        event->ignore();
    }
}

void OutputPage::mousePressEvent(QMouseEvent *event)
{
    const QTextCursor pressed = cursorForPosition(event->position().toPoint());
    const bool right = event->button() == Qt::RightButton;
    if (right && !textCursor().hasSelection()) // keep a selection, so that it can be copied
        setTextCursor(pressed);
    QPlainTextEdit::mousePressEvent(event);
    m_currentLine = right ? pressed.blockNumber() : textCursor().blockNumber();
    m_visited = true;
}

void OutputPage::mouseDoubleClickEvent(QMouseEvent *event)
{
    QPlainTextEdit::mouseDoubleClickEvent(event); // selects the word in a line without a place
    if (event->button() == Qt::LeftButton)
        doLookup();
}

void OutputPage::changeEvent(QEvent *event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() != QEvent::PaletteChange || !m_diagnostics)
        return;
    for (QTextBlock line = document()->begin(); line.isValid(); line = line.next())
        colour(line);
    viewport()->update();
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
