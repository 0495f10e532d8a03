#include "commandlinewindow.h"
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
using namespace Qt::StringLiterals;

namespace {

const auto Prompt = u">>> "_s;
const auto ContinuationPrompt = u"... "_s;
constexpr int IndentWidth = 4; // characters: as wide as the prompts, so that a block is aligned with its first line

bool isRichText(const QString &text)
{
    return text.startsWith("<html>"_L1, Qt::CaseInsensitive) && text.endsWith("</html>"_L1, Qt::CaseInsensitive);
}

bool hasLineBreak(const QString &text)
{
    static constexpr QChar breaks[] = {u'\n', u'\r', QChar::LineSeparator, QChar::ParagraphSeparator};
    return std::ranges::any_of(breaks, [&text](QChar c) { return text.contains(c); });
}

/// Inserts text without the format of rich text before it.
void insertPlain(QTextCursor cursor, const QString &text)
{
    const qsizetype lineEnd = cursor.blockFormat().isEmpty() ? -1 : text.indexOf(u'\n');
    cursor.insertText(text.left(lineEnd), QTextCharFormat());
    if (lineEnd < 0)
        return;
    cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
    cursor.insertText(text.mid(lineEnd + 1), QTextCharFormat());
}

/// Inserts rich text as separate paragraphs.
void insertRich(QTextCursor cursor, const QString &text)
{
    if (!cursor.atBlockStart())
        cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
    cursor.insertHtml(text);
}

/// Whether the key inserts its text, with any modifiers that are part of that text.
bool isTyped(const QKeyEvent &event)
{
    static constexpr int others[] = {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Delete, Qt::Key_Backspace};
    return !event.text().isEmpty() && event.text().at(0) > QChar(31) && std::ranges::count(others, event.key()) == 0;
}

bool isBreak(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Z && event.modifiers() & Qt::ControlModifier;
}

/// The lines are not longer than @p width, as far as the names are not.
QString linesOfNames(const QStringList &names, const QFontMetrics &metrics, int width)
{
    QString lines;
    QString line;
    for (const QString &name : names) {
        const QString longer = line.isEmpty() ? name : line + u"  "_s + name;
        const bool fits = line.isEmpty() || metrics.horizontalAdvance(longer) <= width;
        if (!fits)
            lines += line + u'\n';
        line = fits ? longer : name;
    }
    return lines + line;
}

bool isCompletion(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Space && event.modifiers() == Qt::ControlModifier;
}

bool isInterrupt(const QKeyEvent &event)
{
    return event.key() == Qt::Key_C && event.modifiers() == Qt::ControlModifier;
}

bool isHistorySearch(const QKeyEvent &event)
{
    return event.key() == Qt::Key_R && event.modifiers() == Qt::ControlModifier;
}

/// Whether the key has a function here, so that no shortcut may take it.
bool isConsoleKey(const QKeyEvent &event)
{
    static constexpr int keys[] = {Qt::Key_Tab, Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Escape};
    const bool plain = !(event.modifiers() & ~Qt::KeypadModifier);
    return isBreak(event) || isCompletion(event) || isHistorySearch(event)
           || (plain && std::ranges::count(keys, event.key()) > 0);
}

/// The range from the cursor on that a deleting key with modifiers deletes; NoMove for every other key.
QTextCursor::MoveOperation deletionOf(const QKeyEvent &event)
{
    if (event.matches(QKeySequence::DeleteStartOfWord))
        return QTextCursor::PreviousWord;
    if (event.matches(QKeySequence::DeleteEndOfWord))
        return QTextCursor::NextWord;
    if (event.matches(QKeySequence::DeleteEndOfLine))
        return QTextCursor::EndOfBlock;
    if (event.matches(QKeySequence::DeleteCompleteLine))
        return QTextCursor::StartOfBlock;
    if (event.matches(QKeySequence::Backspace) || event.key() == Qt::Key_Backspace)
        return QTextCursor::PreviousCharacter;
    if (event.matches(QKeySequence::Delete) || event.key() == Qt::Key_Delete)
        return QTextCursor::NextCharacter;
    return QTextCursor::NoMove;
}

QString withoutTrailingSpace(QString text)
{
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    return text;
}

QString commonBeginning(const QStringList &names)
{
    const auto [first, last] = std::ranges::minmax(names);
    const auto end = std::mismatch(first.begin(), first.end(), last.begin(), last.end()).first;
    return first.left(end - first.begin());
}

} // namespace

CommandLineWindow::CommandLineWindow(QWidget *parent) : QTextEdit(parent), m_inputStart(document())
{
    setFrameShape(QFrame::NoFrame);
    setLineWrapMode(QTextEdit::WidgetWidth);
    setWordWrapMode(QTextOption::WrapAnywhere);
    setUndoRedoEnabled(false); // printed output cannot be undone
    m_inputStart.setKeepPositionOnInsert(true);
}

void CommandLineWindow::outputLine(const QString &line)
{
    const Typed typed = takeTyped();
    showOutput(line);
    const bool continues = line.endsWith(ContinuationPrompt);
    if (continues && typed.text.isEmpty())
        insertInput(m_pendingIndent);
    if (continues || line.endsWith(Prompt))
        m_pendingIndent.clear();
    giveBack(typed);
}

CommandLineWindow::Typed CommandLineWindow::takeTyped()
{
    Typed typed{{}, input(), textCursor().position() - m_inputStart.position()};
    if (typed.text.isEmpty())
        return typed;
    const QString before = m_inputStart.block().text().left(m_inputStart.positionInBlock());
    if (before == Prompt || before == ContinuationPrompt)
        typed.prompt = before;
    QTextCursor cursor(document());
    cursor.setPosition(m_inputStart.position() - int(typed.prompt.size()));
    cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    return typed;
}

void CommandLineWindow::giveBack(const Typed &typed)
{
    if (typed.text.isEmpty())
        return;
    if (!typed.prompt.isEmpty())
        showOutput((m_inputStart.positionInBlock() > 0 ? u"\n"_s : QString()) + typed.prompt);
    insertInput(typed.text);
    moveTo(m_inputStart.position() + std::clamp(typed.cursor, 0, int(typed.text.size())));
}

void CommandLineWindow::showOutput(const QString &line)
{
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    if (line.startsWith(u'\r')) {
        end.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
        end.removeSelectedText();
        const auto rest = std::ranges::find_if_not(line, [](QChar c) { return c == u'\r'; });
        return showOutput(line.mid(rest - line.begin())); // further ones would replace an empty line
    }
    if (isRichText(line))
        insertRich(end, line);
    else
        insertPlain(end, line);
    moveCursor(QTextCursor::End);
    m_inputStart.setPosition(textCursor().position());
}

void CommandLineWindow::paste()
{
    insertInput(QApplication::clipboard()->text());
}

void CommandLineWindow::insertFromMimeData(const QMimeData *source)
{
    insertInput(source->text());
}

void CommandLineWindow::insertInput(const QString &text)
{
    if (text.isEmpty() || hasLineBreak(text))
        return;
    enterInput();
    textCursor().insertText(text, QTextCharFormat());
    ensureCursorVisible();
}

/// Keeps the cursor and the selection if they are in the input; otherwise moves the cursor to the end.
void CommandLineWindow::enterInput()
{
    const bool outside = textCursor().hasSelection() || textCursor().position() < m_inputStart.position();
    if (outside && !selectionInInput())
        moveCursor(QTextCursor::End);
}

bool CommandLineWindow::selectionInInput() const
{
    return textCursor().hasSelection() && textCursor().selectionStart() >= m_inputStart.position();
}

QString CommandLineWindow::input() const
{
    return m_inputStart.block().text().mid(m_inputStart.positionInBlock());
}

void CommandLineWindow::moveTo(int position, QTextCursor::MoveMode mode)
{
    QTextCursor cursor = textCursor();
    if (mode == QTextCursor::KeepAnchor)
        cursor.clearSelection(); // the new selection starts at the cursor
    cursor.setPosition(position, mode);
    setTextCursor(cursor);
}

bool CommandLineWindow::event(QEvent *event)
{
    const bool takesKey =
        event->type() == QEvent::ShortcutOverride && isConsoleKey(*static_cast<const QKeyEvent *>(event));
    if (takesKey) {
        event->accept(); // otherwise the shortcut of a menu takes it
        return true;
    }
    return QTextEdit::event(event);
}

void CommandLineWindow::changeEvent(QEvent *event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        setTabStopDistance(IndentWidth * QFontMetricsF(font()).horizontalAdvance(u' '));
}

void CommandLineWindow::keyPressEvent(QKeyEvent *event)
{
    if (!isHistorySearch(*event) && event->key() != Qt::Key_Control)
        m_searched = QString();
    if (isBreak(*event))
        Q_EMIT breakExecution();
    else if (isInterrupt(*event) && !textCursor().hasSelection())
        interrupt();
    else if (isHistorySearch(*event))
        searchHistory();
    else if (isCompletion(*event))
        complete();
    else if (event->key() == Qt::Key_Control)
        event->accept();
    else if (isTyped(*event))
        insertInput(event->text());
    else if (event->key() == Qt::Key_Home && event->modifiers() & Qt::ShiftModifier)
        moveTo(m_inputStart.position(), QTextCursor::KeepAnchor);
    else if (event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier))
        modifiedKeyPress(event);
    else
        plainKeyPress(event);
}

/// Handles the keys of the text edit, except where they would change text outside the input.
void CommandLineWindow::modifiedKeyPress(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cut)) {
        if (selectionInInput())
            cut();
        return;
    }
    if (const auto deletion = deletionOf(*event); deletion != QTextCursor::NoMove)
        return deleteInput(deletion);
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Backtab)
        return; // the input is one line, and a tab must not change the output
    QTextEdit::keyPressEvent(event);
}

void CommandLineWindow::plainKeyPress(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Tab:
        return insertInput(event->text());
    case Qt::Key_Backspace:
        return deleteInput(QTextCursor::PreviousCharacter);
    case Qt::Key_Delete:
        return deleteInput(QTextCursor::NextCharacter);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return submit();
    case Qt::Key_Home:
        return moveTo(m_inputStart.position());
    case Qt::Key_End:
        return moveCursor(QTextCursor::EndOfLine);
    case Qt::Key_Left:
        if (textCursor().positionInBlock() > m_inputStart.positionInBlock())
            return moveCursor(QTextCursor::PreviousCharacter);
        return moveTo(textCursor().position());
    case Qt::Key_Right:
        return moveCursor(QTextCursor::NextCharacter);
    case Qt::Key_Up:
        if (m_historyIndex < 0)
            m_historyIndex = m_history.size();
        return browseHistory(m_historyIndex - 1);
    case Qt::Key_Down:
        if (m_historyIndex >= 0)
            browseHistory(m_historyIndex + 1);
        return;
    case Qt::Key_Escape:
        return input().isEmpty() ? event->ignore() : dropInput();
    default:
        event->ignore();
    }
}

void CommandLineWindow::dropInput()
{
    m_historyIndex = -1;
    replaceInput({});
}

void CommandLineWindow::interrupt()
{
    dropInput();
    Q_EMIT interruptRequested();
}

/// Shows the newest entry that contains what was typed; when called again, the next older one.
void CommandLineWindow::searchHistory()
{
    if (m_searched.isNull()) {
        m_searched = u""_s + input();
        m_historyIndex = -1;
    }
    qsizetype index = m_historyIndex < 0 ? m_history.size() : m_historyIndex;
    while (--index >= 0) {
        if (m_history[index].contains(m_searched, Qt::CaseInsensitive) && m_history[index] != input())
            break;
    }
    if (index < 0)
        return;
    m_historyIndex = index;
    replaceInput(m_history[index]);
}

void CommandLineWindow::replaceInput(const QString &text)
{
    moveTo(m_inputStart.position());
    moveCursor(QTextCursor::End, QTextCursor::KeepAnchor);
    textCursor().removeSelectedText();
    insertInput(text);
}

void CommandLineWindow::submit()
{
    const QString line = withoutTrailingSpace(input());
    moveCursor(QTextCursor::End);
    insertPlain(textCursor(), u"\n"_s);
    m_inputStart.movePosition(QTextCursor::End); // a line that is typed while the statement runs starts here
    if (!line.isEmpty()) {
        m_history.append(line);
        m_historyIndex = -1;
    }
    indentAfter(line);
    Q_EMIT inputLine(line);
}

void CommandLineWindow::indentAfter(const QString &line)
{
    const qsizetype indent = line.size() - line.trimmed().size();
    if (indent > 0)
        m_pendingIndent = QString(indent, u'\t');
    if (line.endsWith(u':'))
        m_pendingIndent += u'\t';
}

/// Replaces the input by an entry of the history, or clears it after the last entry; does nothing outside this range.
void CommandLineWindow::browseHistory(qsizetype index)
{
    if (index < 0 || index > m_history.size())
        return;
    m_historyIndex = index;
    replaceInput(m_history.value(index));
}

/// Deletes the selection if it is in the input, otherwise the range @p extent from the cursor inside the input.
void CommandLineWindow::deleteInput(QTextCursor::MoveOperation extent)
{
    QTextCursor cursor = textCursor();
    if (!selectionInInput()) {
        const int start = m_inputStart.position();
        if (cursor.position() < start)
            return;
        cursor.clearSelection();
        cursor.movePosition(extent, QTextCursor::KeepAnchor);
        cursor.setPosition(std::max(cursor.position(), start), QTextCursor::KeepAnchor);
    }
    cursor.removeSelectedText();
    setTextCursor(cursor);
}

/// Completes the word before the cursor if there is one possibility, otherwise lists the possibilities.
void CommandLineWindow::complete()
{
    static const QRegularExpression lastWord(u"[\\w.]+$"_s, QRegularExpression::UseUnicodePropertiesOption);
    enterInput();
    const qsizetype typed = textCursor().position() - m_inputStart.position();
    const QString word = lastWord.match(input().left(typed)).captured();
    const QStringList names = m_completer && !word.isEmpty() ? m_completer(word) : QStringList();
    if (names.isEmpty())
        return;
    if (const QString common = commonBeginning(names); common.size() > word.size())
        insertInput(common.mid(word.size()));
    else if (names.size() > 1)
        listNames(names);
}

/// Prints the names below the input line, then the prompt and the line again.
void CommandLineWindow::listNames(const QStringList &names)
{
    const QString line = input();
    const QString prompt = m_inputStart.block().text().left(m_inputStart.positionInBlock());
    const int typed = textCursor().position() - m_inputStart.position();
    const qreal room =
        contentsRect().width() - verticalScrollBar()->sizeHint().width() - 2 * document()->documentMargin();
    showOutput(u'\n' + linesOfNames(names, fontMetrics(), int(room)) + u'\n' + prompt);
    insertInput(line);
    moveTo(m_inputStart.position() + typed);
}

void CommandLineWindow::inputMethodEvent(QInputMethodEvent *event)
{
    if (!event->commitString().isEmpty() || !event->preeditString().isEmpty())
        enterInput();
    QTextEdit::inputMethodEvent(event);
}

void CommandLineWindow::mousePressEvent(QMouseEvent *event)
{
    // By default the text edit moves a selection that is dragged out; the output must not be removed.
    if (event->button() == Qt::LeftButton && textCursor().hasSelection() && !selectionInInput())
        moveTo(textCursor().position());
    QTextEdit::mousePressEvent(event);
}

QMenu *CommandLineWindow::createPopupMenu()
{
    QMenu *menu = createStandardContextMenu();
    for (int position = 3; position >= 0; --position) // Cut, a separator, Redo, Undo
        menu->removeAction(menu->actions().at(position));
    menu->actions().at(2)->setEnabled(selectionInInput()); // Delete
    return menu;
}

void CommandLineWindow::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createPopupMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}
