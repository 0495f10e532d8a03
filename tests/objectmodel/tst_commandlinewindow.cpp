#include "commandlinewindow.h"
#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
using namespace Qt::StringLiterals;

using Keys = QList<QKeyCombination>;
Q_DECLARE_METATYPE(Keys)

/// A window that receives the key events that its child ignores.
class Surroundings : public QWidget
{
public:
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent *event) override { keys.append(event->key()); }
};

class TestCommandLineWindow : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Surroundings> m_surroundings;
    CommandLineWindow *m_console = nullptr;

    /// The whole text, with "|" at the cursor and "^" at the other end of a selection.
    QString shown() const
    {
        const QTextCursor cursor = m_console->textCursor();
        QString text = m_console->toPlainText();
        text.insert(cursor.selectionEnd(), cursor.position() < cursor.anchor() ? u'^' : u'|');
        if (cursor.hasSelection())
            text.insert(cursor.selectionStart(), cursor.position() < cursor.anchor() ? u'|' : u'^');
        return text;
    }
    void setCursor(int position, int anchor = -1) const
    {
        QTextCursor cursor = m_console->textCursor();
        cursor.setPosition(anchor < 0 ? position : anchor);
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        m_console->setTextCursor(cursor);
    }
    /// Presses a key, with the text that a keyboard sends with it.
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QString text;
        if (key == Qt::Key_Tab)
            text = u"\t"_s;
        else if (key == Qt::Key_Space)
            text = u" "_s;
        else if (key == Qt::Key_Backspace)
            text = modifiers & Qt::ControlModifier ? u"\x7f"_s : u"\b"_s;
        else if (key == Qt::Key_Delete)
            text = u"\x7f"_s;
        else if (key == Qt::Key_Return || key == Qt::Key_Enter)
            text = u"\r"_s;
        else if (key == Qt::Key_Escape)
            text = u"\x1b"_s;
        else if (key >= Qt::Key_A && key <= Qt::Key_Z)
            text = QChar(modifiers & Qt::ControlModifier ? key - 0x40
                         : modifiers & Qt::ShiftModifier ? key
                                                         : key + 0x20);
        send(key, modifiers, text);
    }
    void send(int key, Qt::KeyboardModifiers modifiers, const QString &text) const
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QApplication::sendEvent(m_console, &event);
    }
    void type(const QString &text) const
    {
        for (const QChar c : text)
            send(c == u'\t' ? Qt::Key_Tab : Qt::Key_unknown, Qt::NoModifier, c);
    }
    /// Types a line and answers it like the interpreter.
    void enter(const QString &line, const QString &answer = u">>> "_s) const
    {
        type(line);
        press(Qt::Key_Return);
        m_console->outputLine(answer);
    }
    void paste(const QString &text) const
    {
        QGuiApplication::clipboard()->setText(text);
        m_console->paste();
    }
    QStringList lastLines(int count) const { return m_console->toPlainText().split(u'\n').last(count); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_surroundings = std::make_unique<Surroundings>();
        m_console = new CommandLineWindow(m_surroundings.get());
        m_console->resize(400, 200);
        m_console->outputLine(u"past\n"_s);
        m_console->outputLine(u">>> "_s);
    }

    void hasTheLookOfAPage()
    {
        QCOMPARE(m_console->frameShape(), QFrame::NoFrame);
        QCOMPARE(m_console->frameShadow(), QTextEdit().frameShadow());
        QCOMPARE(m_console->lineWrapMode(), QTextEdit::WidgetWidth);
        QCOMPARE(m_console->wordWrapMode(), QTextOption::WrapAnywhere);
        QVERIFY(!m_console->isReadOnly());
    }
    void indentsHaveTheWidthOfThePrompts()
    {
        for (const int size : {9, 20}) {
            const QFont font(u"Courier"_s, size);
            m_console->setFont(font);
            QCOMPARE(m_console->tabStopDistance(), 4 * QFontMetricsF(font).horizontalAdvance(u' '));
        }
    }

    // Output

    void outputIsAppended_data()
    {
        QTest::addColumn<QStringList>("outputs");
        QTest::addColumn<QString>("expected");
        QTest::newRow("piece") << QStringList{u"a"_s} << u"past\n>>> a|"_s;
        QTest::newRow("lines") << QStringList{u"a\nb\n"_s, u"c"_s} << u"past\n>>> a\nb\nc|"_s;
        QTest::newRow("a carriage return replaces the last line, the prompt included")
            << QStringList{u"\r50%"_s} << u"past\n50%|"_s;
        QTest::newRow("a carriage return alone empties the last line") << QStringList{u"\r"_s} << u"past\n|"_s;
        QTest::newRow("of two carriage returns each replaces") << QStringList{u"\r\rx"_s} << u"past\nx|"_s;
        QTest::newRow("carriage returns without end")
            << QStringList{u"a\n"_s, u"\r"_s.repeated(1000000) + u'x'} << u"past\n>>> a\nx|"_s;
        QTest::newRow("what follows a carriage return may have several lines")
            << QStringList{u"\rdone\n>>> "_s} << u"past\ndone\n>>> |"_s;
        QTest::newRow("rich text that replaces a line") << QStringList{u"\r<html><b>x</b></html>"_s} << u"past\nx|"_s;
        QTest::newRow("rich text is a paragraph of its own")
            << QStringList{u"<html>x</html>"_s, u"y\n>>> "_s} << u"past\n>>> \nxy\n>>> |"_s;
        QTest::newRow("rich text after a line end leaves no empty line")
            << QStringList{u"a\n"_s, u"<html>x</html>"_s, u"\n>>> "_s} << u"past\n>>> a\nx\n>>> |"_s;
        QTest::newRow("rich text of several lines")
            << QStringList{u"\n"_s, u"<html><p>x</p><p>y</p></html>"_s, u"\nz"_s} << u"past\n>>> \nx\ny\nz|"_s;
        QTest::newRow("a tag inside is plain text") << QStringList{u"x<html>"_s} << u"past\n>>> x<html>|"_s;
        QTest::newRow("a tag without its end is plain text") << QStringList{u"<html>x"_s} << u"past\n>>> <html>x|"_s;
        QTest::newRow("a tag with text after its end is plain text")
            << QStringList{u"<html>x</html>\n"_s} << u"past\n>>> <html>x</html>\n|"_s;
        QTest::newRow("other markup is plain text") << QStringList{u"<b>x</b>"_s} << u"past\n>>> <b>x</b>|"_s;
    }
    void outputIsAppended()
    {
        QFETCH(QStringList, outputs);
        QFETCH(QString, expected);
        setCursor(2, 0);
        for (const QString &output : outputs)
            m_console->outputLine(output);
        QCOMPARE(shown(), expected);
    }

    void textAfterBoldRichTextIsNotBold_data()
    {
        QTest::addColumn<QString>("output");
        QTest::newRow("small letters") << u"<html><b>x</b></html>"_s;
        QTest::newRow("capitals") << u"<HTML><B>x</B></HTML>"_s;
        QTest::newRow("mixed") << u"<Html><b>x</b></hTML>"_s;
    }
    void textAfterBoldRichTextIsNotBold()
    {
        QFETCH(QString, output);
        m_console->outputLine(output);
        QCOMPARE(m_console->textCursor().charFormat().fontWeight(), int(QFont::Bold));
        m_console->outputLine(u"\n>>> "_s);
        type(u"y"_s);
        QCOMPARE(shown(), u"past\n>>> \nx\n>>> y|"_s);
        QVERIFY(!m_console->textCursor().charFormat().hasProperty(QTextFormat::FontWeight));
    }
    void textAfterAListIsNotAnItem()
    {
        m_console->outputLine(u"\n"_s);
        m_console->outputLine(u"<html><ul><li>x</li><li>y</li></ul></html>"_s);
        QVERIFY(m_console->textCursor().currentList());
        m_console->outputLine(u"\na\nb"_s);
        QVERIFY(!m_console->textCursor().currentList());
        QCOMPARE(lastLines(4), (QStringList{u"x"_s, u"y"_s, u"a"_s, u"b"_s}));
    }
    void outputKeepsWhatIsTyped_data()
    {
        QTest::addColumn<QStringList>("outputs");
        QTest::addColumn<QString>("expected");
        QTest::newRow("line") << QStringList{u"out\n"_s} << u"past\nout\n>>> typ|ed"_s;
        QTest::newRow("part of a line") << QStringList{u"out"_s} << u"past\nout\n>>> typ|ed"_s;
        QTest::newRow("several") << QStringList{u"a\n"_s, u"b\n"_s} << u"past\na\nb\n>>> typ|ed"_s;
        QTest::newRow("rich text") << QStringList{u"<html><b>out</b></html>"_s} << u"past\nout\n>>> typ|ed"_s;
    }
    void outputKeepsWhatIsTyped()
    {
        QFETCH(const QStringList, outputs);
        type(u"typed"_s);
        press(Qt::Key_Left);
        press(Qt::Key_Left);
        for (const QString &output : outputs)
            m_console->outputLine(output);
        QTEST(shown(), "expected");
        const QSignalSpy lines(m_console, &CommandLineWindow::inputLine);
        press(Qt::Key_Return);
        QCOMPARE(lines.last(), QList<QVariant>{u"typed"_s});
    }
    void lineTypedDuringAStatementStandsBehindTheNextPrompt()
    {
        type(u"run"_s);
        press(Qt::Key_Return);
        type(u"next"_s);
        m_console->outputLine(u"out\n"_s);
        QCOMPARE(shown(), u"past\n>>> run\nout\nnext|"_s);
        m_console->outputLine(u">>> "_s);
        QCOMPARE(shown(), u"past\n>>> run\nout\n>>> next|"_s);
    }
    void outputScrollsIntoView()
    {
        m_console->resize(200, 100);
        m_surroundings->show();
        m_console->outputLine(u"line\n"_s.repeated(100));
        QVERIFY(m_console->verticalScrollBar()->maximum() > 0);
        QVERIFY(m_console->viewport()->rect().contains(m_console->cursorRect()));
    }

    // Typing. The text is "past\n>>> input"; the input starts at 9

    void keysChangeTheInputOnly_data()
    {
        QTest::addColumn<int>("anchor");
        QTest::addColumn<int>("position");
        QTest::addColumn<QKeyCombination>("key");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, int anchor, int position, QKeyCombination key, const QString &expected) {
            QTest::newRow(name) << anchor << position << key << expected;
        };
        const auto at = [](const char *name, int position, QKeyCombination key, const QString &expected) {
            QTest::newRow(name) << position << position << key << expected;
        };
        at("a letter goes in at the cursor", 10, Qt::Key_X, u"past\n>>> ix|nput"_s);
        at("a letter at the start of the input", 9, Qt::Key_X, u"past\n>>> x|input"_s);
        at("a letter typed in the prompt goes to the end", 8, Qt::Key_X, u"past\n>>> inputx|"_s);
        at("a letter typed in the past goes to the end", 0, Qt::Key_X, u"past\n>>> inputx|"_s);
        row("a letter replaces a selection in the input", 9, 11, Qt::Key_X, u"past\n>>> x|put"_s);
        row("a letter does not replace a selection in the output", 0, 2, Qt::Key_X, u"past\n>>> inputx|"_s);
        row("a letter does not replace a selection that reaches into the output", 7, 11, Qt::Key_X,
            u"past\n>>> inputx|"_s);
        row("the same for a selection made backwards", 11, 7, Qt::Key_X, u"past\n>>> inputx|"_s);
        at("a letter with Alt is a letter", 14, Qt::ALT | Qt::Key_X, u"past\n>>> inputx|"_s);
        at("a capital letter", 14, Qt::SHIFT | Qt::Key_X, u"past\n>>> inputX|"_s);
        at("Tab goes in at the cursor", 10, Qt::Key_Tab, u"past\n>>> i\t|nput"_s);
        row("Tab replaces a selection in the input", 9, 11, Qt::Key_Tab, u"past\n>>> \t|put"_s);
        at("Tab in the past goes to the end", 2, Qt::Key_Tab, u"past\n>>> input\t|"_s);
        at("Tab backwards does nothing", 14, Qt::SHIFT | Qt::Key_Backtab, u"past\n>>> input|"_s);
        at("Backspace", 11, Qt::Key_Backspace, u"past\n>>> i|put"_s);
        at("Backspace leaves the prompt alone", 9, Qt::Key_Backspace, u"past\n>>> |input"_s);
        at("Backspace in the past does nothing", 3, Qt::Key_Backspace, u"pas|t\n>>> input"_s);
        row("Backspace removes a selection in the input", 9, 12, Qt::Key_Backspace, u"past\n>>> |ut"_s);
        row("Backspace with a selection that reaches into the output removes one character", 7, 11, Qt::Key_Backspace,
            u"past\n>>> i|put"_s);
        at("Backspace with Shift", 11, Qt::SHIFT | Qt::Key_Backspace, u"past\n>>> i|put"_s);
        at("Backspace with Shift leaves the prompt alone", 9, Qt::SHIFT | Qt::Key_Backspace, u"past\n>>> |input"_s);
        at("Backspace of a word stops at the prompt", 12, Qt::CTRL | Qt::Key_Backspace, u"past\n>>> |ut"_s);
        at("Backspace of a word at the prompt", 9, Qt::CTRL | Qt::Key_Backspace, u"past\n>>> |input"_s);
        at("Delete", 11, Qt::Key_Delete, u"past\n>>> in|ut"_s);
        at("Delete at the start of the input", 9, Qt::Key_Delete, u"past\n>>> |nput"_s);
        at("Delete at the end", 14, Qt::Key_Delete, u"past\n>>> input|"_s);
        at("Delete in the prompt does nothing", 8, Qt::Key_Delete, u"past\n>>>| input"_s);
        row("Delete removes a selection in the input", 12, 9, Qt::Key_Delete, u"past\n>>> |ut"_s);
        row("Delete keeps a selection in the output", 0, 2, Qt::Key_Delete, u"^pa|st\n>>> input"_s);
        at("Delete of a word in the past does nothing", 0, Qt::CTRL | Qt::Key_Delete, u"|past\n>>> input"_s);
        at("Delete of a word", 9, Qt::CTRL | Qt::Key_Delete, u"past\n>>> |"_s);
        row("Cut keeps the output", 0, 2, Qt::CTRL | Qt::Key_X, u"^pa|st\n>>> input"_s);
        row("Cut of a selection in the input", 9, 11, Qt::CTRL | Qt::Key_X, u"past\n>>> |put"_s);
        at("Home goes to the start of the input", 12, Qt::Key_Home, u"past\n>>> |input"_s);
        at("Home from the past too", 1, Qt::Key_Home, u"past\n>>> |input"_s);
        row("Home drops a selection", 10, 12, Qt::Key_Home, u"past\n>>> |input"_s);
        at("Home with Shift selects the input up to the cursor", 12, Qt::SHIFT | Qt::Key_Home, u"past\n>>> |inp^ut"_s);
        row("Home with Shift begins at the cursor", 14, 12, Qt::SHIFT | Qt::Key_Home, u"past\n>>> |inp^ut"_s);
        at("End", 10, Qt::Key_End, u"past\n>>> input|"_s);
        at("End stays in its line", 1, Qt::Key_End, u"past|\n>>> input"_s);
        at("End with Shift selects", 10, Qt::SHIFT | Qt::Key_End, u"past\n>>> i^nput|"_s);
        at("Left", 10, Qt::Key_Left, u"past\n>>> |input"_s);
        at("Left stays at the start of the input", 9, Qt::Key_Left, u"past\n>>> |input"_s);
        row("Left at the start of the input drops the selection", 12, 9, Qt::Key_Left, u"past\n>>> |input"_s);
        row("Left in the input goes to the start of a selection", 10, 13, Qt::Key_Left, u"past\n>>> i|nput"_s);
        at("Right", 9, Qt::Key_Right, u"past\n>>> i|nput"_s);
        at("Right at the end", 14, Qt::Key_Right, u"past\n>>> input|"_s);
        at("Right goes out of the past", 4, Qt::Key_Right, u"past\n|>>> input"_s);
        at("Left with Shift selects", 14, Qt::SHIFT | Qt::Key_Left, u"past\n>>> inpu|t^"_s);
        at("everything can be selected", 14, Qt::CTRL | Qt::Key_A, u"^past\n>>> input|"_s);
        at("Return with Shift does nothing", 11, Qt::SHIFT | Qt::Key_Return, u"past\n>>> in|put"_s);
        at("Return with Control does nothing", 11, Qt::CTRL | Qt::Key_Return, u"past\n>>> in|put"_s);
        at("the Control key alone", 11, Qt::CTRL | Qt::Key_Control, u"past\n>>> in|put"_s);
    }
    void keysChangeTheInputOnly()
    {
        QFETCH(int, anchor);
        QFETCH(int, position);
        QFETCH(QKeyCombination, key);
        QFETCH(QString, expected);
        type(u"input"_s);
        setCursor(position, anchor);
        press(key.key(), key.keyboardModifiers());
        QCOMPARE(shown(), expected);
        QVERIFY(m_surroundings->keys.isEmpty());
    }

    void outputCannotBeUndone()
    {
        m_console->undo();
        QCOMPARE(shown(), u"past\n>>> |"_s);
    }
    void leftInTheOutputStopsAtTheColumnOfTheInput()
    {
        m_console->outputLine(u"\na longer line\n>>> "_s);
        setCursor(10 + 6);
        press(Qt::Key_Left);
        press(Qt::Key_Left);
        press(Qt::Key_Left);
        QCOMPARE(shown(), u"past\n>>> \na lo|nger line\n>>> "_s);
    }

    void textOfAnyLanguageCanBeTyped()
    {
        type(u"äΩ"_s);
        QCOMPARE(shown(), u"past\n>>> äΩ|"_s);
    }
    void textFromAnInputMethodIsInsertedIntoTheInput()
    {
        setCursor(2, 0);
        QInputMethodEvent event;
        QApplication::sendEvent(m_console, &event);
        QCOMPARE(shown(), u"^pa|st\n>>> "_s); // nothing was typed yet
        event.setCommitString(u"語"_s);
        QApplication::sendEvent(m_console, &event);
        QCOMPARE(shown(), u"past\n>>> 語|"_s);
    }

    void otherKeysAreForwardedToTheParent_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Escape") << int(Qt::Key_Escape);
        QTest::newRow("F5") << int(Qt::Key_F5);
        QTest::newRow("Page Up") << int(Qt::Key_PageUp);
        QTest::newRow("Insert") << int(Qt::Key_Insert);
    }
    void otherKeysAreForwardedToTheParent()
    {
        QFETCH(int, key);
        press(key);
        QCOMPARE(m_surroundings->keys, QList<int>{key});
        QCOMPARE(shown(), u"past\n>>> |"_s);
    }

    void breakKeyEmitsBreakAndKeepsTheText_data()
    {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::newRow("Control") << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("Control and Shift") << (Qt::ControlModifier | Qt::ShiftModifier);
    }
    void breakKeyEmitsBreakAndKeepsTheText()
    {
        QFETCH(Qt::KeyboardModifiers, modifiers);
        const QSignalSpy breaks(m_console, &CommandLineWindow::breakExecution);
        type(u"input"_s);
        press(Qt::Key_Z, modifiers);
        QCOMPARE(breaks.size(), 1);
        QCOMPARE(shown(), u"past\n>>> input|"_s);
    }

    void menusDoNotGetItsKeys_data()
    {
        QTest::addColumn<QKeyCombination>("key");
        QTest::addColumn<bool>("taken");
        const auto row = [](const char *name, QKeyCombination key, bool taken) { QTest::newRow(name) << key << taken; };
        row("break", Qt::CTRL | Qt::Key_Z, true);
        row("completion", Qt::CTRL | Qt::Key_Space, true);
        row("history up", Qt::Key_Up, true);
        row("history down", Qt::Key_Down, true);
        row("tab", Qt::Key_Tab, true);
        row("a letter", Qt::Key_X, true);
        row("paste", Qt::CTRL | Qt::Key_V, true);
        row("a command of the program", Qt::CTRL | Qt::Key_F9, false);
        row("moving with Alt", Qt::ALT | Qt::Key_Left, false);
        row("a function key", Qt::Key_F5, false);
    }
    void menusDoNotGetItsKeys()
    {
        QFETCH(QKeyCombination, key);
        QFETCH(bool, taken);
        const QString text = key == QKeyCombination(Qt::Key_X) ? u"x"_s : QString();
        QKeyEvent event(QEvent::ShortcutOverride, key.key(), key.keyboardModifiers(), text);
        event.ignore();
        QApplication::sendEvent(m_console, &event);
        QCOMPARE(event.isAccepted(), taken);
        QCOMPARE(shown(), u"past\n>>> |"_s);
    }

    // Clipboard, mouse and menu

    void pasteInsertsIntoTheInput_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const QString refused = u"pa|st\n>>> "_s; // not even the cursor moves
        QTest::newRow("one line") << u"a b"_s << u"past\n>>> a b|"_s;
        QTest::newRow("markup") << u"<b>a</b>"_s << u"past\n>>> <b>a</b>|"_s;
        QTest::newRow("two lines") << u"a\nb"_s << refused;
        QTest::newRow("a line with its end") << u"a\n"_s << refused;
        QTest::newRow("carriage return") << u"a\rb"_s << refused;
        QTest::newRow("paragraphs of another program") << u"a\u2029b"_s << refused;
        QTest::newRow("nothing") << u""_s << refused;
    }
    void pasteInsertsIntoTheInput()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        setCursor(2);
        paste(text);
        QCOMPARE(shown(), expected);
    }
    void pasteReplacesASelectionInTheInputOnly()
    {
        type(u"input"_s);
        setCursor(9, 11);
        paste(u"x"_s);
        QCOMPARE(shown(), u"past\n>>> x|put"_s);
        setCursor(0, 3);
        paste(u"y"_s);
        QCOMPARE(shown(), u"past\n>>> xputy|"_s);
    }
    void pasteKeyAndDroppedTextInsertIntoTheInput()
    {
        QGuiApplication::clipboard()->setText(u"key "_s);
        setCursor(0);
        press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(shown(), u"past\n>>> key |"_s);
        QMimeData rich;
        rich.setHtml(u"<b>bold</b>"_s);
        rich.setText(u"bold"_s);
        const QPoint past = m_console->cursorRect().center() - QPoint(0, m_console->fontMetrics().height());
        QDragEnterEvent enter(past, Qt::CopyAction, &rich, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_console->viewport(), &enter);
        QDropEvent drop(past, Qt::CopyAction, &rich, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_console->viewport(), &drop);
        QCOMPARE(shown(), u"past\n>>> key bold|"_s);
        QVERIFY(!m_console->textCursor().charFormat().hasProperty(QTextFormat::FontWeight));
    }
    void selectedOutputCannotBeDraggedAway()
    {
        m_surroundings->show();
        setCursor(4, 0);
        const QPoint inside = m_console->cursorRect().center() - QPoint(5, 0);
        QTest::mousePress(m_console->viewport(), Qt::LeftButton, Qt::NoModifier, inside);
        QVERIFY(!m_console->textCursor().hasSelection());
        QTest::mouseRelease(m_console->viewport(), Qt::LeftButton, Qt::NoModifier, inside);
        QCOMPARE(m_console->toPlainText(), u"past\n>>> "_s);
    }

    void contextMenuHasNoUndoAndNoCut()
    {
        const std::unique_ptr<QMenu> menu(m_console->createPopupMenu());
        QStringList names;
        for (const QAction *action : menu->actions())
            names.append(action->isSeparator() ? u"-"_s : action->text().section(u'\t', 0, 0));
        QCOMPARE(names, (QStringList{u"&Copy"_s, u"&Paste"_s, u"Delete"_s, u"-"_s, u"Select All"_s}));
    }
    void contextMenuDeletesInTheInputOnly_data()
    {
        QTest::addColumn<int>("anchor");
        QTest::addColumn<int>("position");
        QTest::addColumn<bool>("deletes");
        QTest::newRow("no selection") << 9 << 9 << false;
        QTest::newRow("input") << 9 << 11 << true;
        QTest::newRow("output") << 0 << 2 << false;
        QTest::newRow("both") << 2 << 11 << false;
    }
    void contextMenuDeletesInTheInputOnly()
    {
        QFETCH(int, anchor);
        QFETCH(int, position);
        QFETCH(bool, deletes);
        type(u"input"_s);
        setCursor(position, anchor);
        const std::unique_ptr<QMenu> menu(m_console->createPopupMenu());
        QCOMPARE(menu->actions().at(2)->isEnabled(), deletes);
    }
    void contextMenuOpens()
    {
        m_surroundings->show();
        QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
        QTest::ignoreMessage(QtWarningMsg, "This plugin does not support grabbing the keyboard");
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), m_console->mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(m_console->viewport(), &event);
        QPointer<QWidget> menu = QApplication::activePopupWidget();
        QVERIFY(menu);
        menu->close();
        QTRY_VERIFY(!menu);
    }

    // Lines

    void returnEmitsTheLine_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("line");
        QTest::newRow("a line") << u"1 + 2"_s << u"1 + 2"_s;
        QTest::newRow("nothing") << u""_s << u""_s;
        QTest::newRow("white space at the end is dropped") << u"a \t "_s << u"a"_s;
        QTest::newRow("white space at the start stays") << u"  a"_s << u"  a"_s;
        QTest::newRow("white space alone") << u"\t \t"_s << u""_s;
    }
    void returnEmitsTheLine()
    {
        QFETCH(QString, typed);
        QFETCH(QString, line);
        const QSignalSpy lines(m_console, &CommandLineWindow::inputLine);
        type(typed);
        press(Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(lines, (QList<QList<QVariant>>{{line}}));
        QCOMPARE(shown(), u"past\n>>> "_s + typed + u"\n|"_s);
    }
    void returnEmitsTheWholeLineAtAnyCursorPosition()
    {
        const QSignalSpy lines(m_console, &CommandLineWindow::inputLine);
        type(u"first"_s);
        setCursor(11, 10);
        press(Qt::Key_Return);
        m_console->outputLine(u">>> "_s);
        type(u"second"_s);
        setCursor(2);
        press(Qt::Key_Return);
        QCOMPARE(lines, (QList<QList<QVariant>>{{u"first"_s}, {u"second"_s}}));
        QCOMPARE(shown(), u"past\n>>> first\n>>> second\n|"_s);
    }
    void lineTypedWhileAStatementRunsIsTheNext()
    {
        const QSignalSpy lines(m_console, &CommandLineWindow::inputLine);
        type(u"first"_s);
        press(Qt::Key_Return);
        type(u"x"_s);
        press(Qt::Key_Backspace);
        press(Qt::Key_Backspace);
        type(u"second"_s);
        press(Qt::Key_Return);
        QCOMPARE(lines, (QList<QList<QVariant>>{{u"first"_s}, {u"second"_s}}));
        QCOMPARE(shown(), u"past\n>>> first\nsecond\n|"_s);
    }

    void nextLineIsIndented_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("indent");
        QTest::newRow("none") << u"a"_s << u""_s;
        QTest::newRow("a colon") << u"if 1:"_s << u"\t"_s;
        QTest::newRow("a colon with white space after it") << u"if 1: "_s << u"\t"_s;
        QTest::newRow("a tab") << u"\ta"_s << u"\t"_s;
        QTest::newRow("a tab and a colon") << u"\tif 1:"_s << u"\t\t"_s;
        QTest::newRow("a tab for each blank") << u"    a"_s << u"\t\t\t\t"_s;
        QTest::newRow("white space alone") << u"\t\t"_s << u""_s;
    }
    void nextLineIsIndented()
    {
        QFETCH(QString, line);
        QFETCH(QString, indent);
        enter(line, u"... "_s);
        QCOMPARE(shown(), u"past\n>>> "_s + line + u"\n... "_s + indent + u'|');
        enter(QString());
        QCOMPARE(lastLines(1), QStringList{u">>> "_s});
    }
    void indentFollowsTheContinuationPromptOnly()
    {
        enter(u"if 1:"_s, u"\n"_s); // an output of another script
        m_console->outputLine(u"... "_s);
        QCOMPARE(shown(), u"past\n>>> if 1:\n\n... \t|"_s);
        enter(u"print('x:"_s, u"SyntaxError\n"_s);
        m_console->outputLine(u">>> "_s);
        QCOMPARE(lastLines(1), QStringList{u">>> "_s});
        enter(u"x"_s, u"... "_s);
        QCOMPARE(lastLines(1), QStringList{u"... "_s});
    }
    void indentCanBeEdited()
    {
        const QSignalSpy lines(m_console, &CommandLineWindow::inputLine);
        enter(u"if 1:"_s, u"... "_s);
        press(Qt::Key_Backspace);
        press(Qt::Key_Backspace);
        QCOMPARE(shown(), u"past\n>>> if 1:\n... |"_s);
        enter(u"x"_s);
        QCOMPARE(lines.last(), QList<QVariant>{u"x"_s});
    }
    void lineWithOnlyAnIndentIsEmpty()
    {
        const QSignalSpy lines(m_console, &CommandLineWindow::inputLine);
        enter(u"if 1:"_s, u"... "_s);
        press(Qt::Key_Return);
        QCOMPARE(lines.last(), QList<QVariant>{u""_s});
    }

    // History: "a", "bb" and "bb" were entered

    void upAndDownShowTheHistory_data()
    {
        QTest::addColumn<Keys>("keys");
        QTest::addColumn<QString>("input");
        using enum Qt::Key;
        QTest::newRow("up") << Keys{Key_Up} << u"bb"_s;
        QTest::newRow("a repeated line is kept twice") << Keys{Key_Up, Key_Up} << u"bb"_s;
        QTest::newRow("to the oldest") << Keys{Key_Up, Key_Up, Key_Up} << u"a"_s;
        QTest::newRow("up from the oldest stays") << Keys{Key_Up, Key_Up, Key_Up, Key_Up} << u"a"_s;
        QTest::newRow("up and down") << Keys{Key_Up, Key_Up, Key_Up, Key_Down} << u"bb"_s;
        QTest::newRow("nothing after the last") << Keys{Key_Up, Key_Down} << u""_s;
        QTest::newRow("down after the last stays") << Keys{Key_Up, Key_Down, Key_Down} << u""_s;
        QTest::newRow("up then shows the last again") << Keys{Key_Up, Key_Down, Key_Down, Key_Up} << u"bb"_s;
        QTest::newRow("down straight after Return does nothing") << Keys{Key_X, Key_Down} << u"x"_s;
        QTest::newRow("an entry replaces the typed text") << Keys{Key_X, Key_Home, Key_Up} << u"bb"_s;
        QTest::newRow("an entry may be changed") << Keys{Key_Up, Key_Backspace, Key_X} << u"bx"_s;
    }
    void upAndDownShowTheHistory()
    {
        QFETCH(Keys, keys);
        QFETCH(QString, input);
        for (const QString &line : {u"a"_s, u"bb"_s, u""_s, u"bb"_s, u""_s})
            enter(line);
        for (const QKeyCombination key : keys)
            press(key.key());
        QVERIFY2(shown().endsWith(u"\n>>> "_s + input + u'|'), qPrintable(shown()));
    }
    void upAndDownWithoutAHistoryDoNothing()
    {
        type(u"input"_s);
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up}) {
            press(key);
            QCOMPARE(shown(), u"past\n>>> input|"_s);
        }
        enter(QString());
        press(Qt::Key_Up);
        QVERIFY2(shown().endsWith(u">>> input|"_s), qPrintable(shown()));
    }
    void emptyLineKeepsTheHistoryPosition()
    {
        for (const QString &line : {u"a"_s, u"b"_s})
            enter(line);
        press(Qt::Key_Up);
        press(Qt::Key_Up);
        press(Qt::Key_Backspace);
        enter(QString());
        press(Qt::Key_Down);
        QVERIFY2(shown().endsWith(u">>> b|"_s), qPrintable(shown()));
    }
    void enteredLineResetsTheHistoryPosition()
    {
        for (const QString &line : {u"a"_s, u"b"_s})
            enter(line);
        press(Qt::Key_Up);
        press(Qt::Key_Up);
        enter(QString()); // enters "a" again
        press(Qt::Key_Down);
        QVERIFY2(shown().endsWith(u"\n>>> |"_s), qPrintable(shown()));
        press(Qt::Key_Up);
        QVERIFY2(shown().endsWith(u"\n>>> a|"_s), qPrintable(shown()));
    }
    void indentedEntryIsShownWithItsIndent()
    {
        enter(u"if 1:"_s, u"... "_s);
        enter(u"x"_s, u"... "_s);
        press(Qt::Key_Up);
        QVERIFY2(shown().endsWith(u"\n... \tx|"_s), qPrintable(shown()));
    }

    void escapeDropsTheEntry()
    {
        enter(u"a"_s);
        type(u"typed"_s);
        press(Qt::Key_Escape);
        QCOMPARE(lastLines(1), QStringList{u">>> "_s});
        press(Qt::Key_Up);
        press(Qt::Key_Escape);
        QCOMPARE(lastLines(1), QStringList{u">>> "_s});
        press(Qt::Key_Up); // starts at the newest again
        QCOMPARE(lastLines(1), QStringList{u">>> a"_s});
    }
    void controlCInterruptsUnlessTextIsSelected()
    {
        const QSignalSpy interrupts(m_console, &CommandLineWindow::interruptRequested);
        type(u"typed"_s);
        setCursor(9, 11);
        press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(interrupts.size(), 0);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"ty"_s);
        press(Qt::Key_End);
        press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(interrupts.size(), 1);
        QCOMPARE(lastLines(1), QStringList{u">>> "_s});
    }
    void controlRSearchesTheHistory()
    {
        m_console->setHistory({u"import os"_s, u"os.getcwd()"_s, u"x = 1"_s, u"OS.listdir()"_s});
        QStringList found;
        type(u"os"_s);
        for (int i = 0; i < 4; ++i) {
            press(Qt::Key_R, Qt::ControlModifier);
            found << lastLines(1);
        }
        QCOMPARE(found, (QStringList{u">>> OS.listdir()"_s, u">>> os.getcwd()"_s, u">>> import os"_s,
                                     u">>> import os"_s})); // the oldest stays
        press(Qt::Key_Escape);
        type(u"nowhere"_s);
        press(Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(lastLines(1), QStringList{u">>> nowhere"_s});
    }
    void enteredLinesAreTheHistory()
    {
        m_console->setHistory({u"old"_s});
        enter(u"new"_s);
        QCOMPARE(m_console->history(), (QStringList{u"old"_s, u"new"_s}));
        press(Qt::Key_Up);
        press(Qt::Key_Up);
        QCOMPARE(lastLines(1), QStringList{u">>> old"_s});
    }

    // Completion

    void completionReplacesTheWordBeforeTheCursor_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("back");
        QTest::addColumn<QString>("word");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QString &typed, int back, const QString &word,
                            const QStringList &names, const QString &expected) {
            QTest::newRow(name) << typed << back << word << names << expected;
        };
        row("one name", u"os.ge"_s, 0, u"os.ge"_s, {u"os.getcwd()"_s}, u"past\n>>> os.getcwd()|"_s);
        row("what names have in common", u"os.g"_s, 0, u"os.g"_s, {u"os.getcwd("_s, u"os.getcwdb("_s, u"os.getenv("_s},
            u"past\n>>> os.get|"_s);
        row("several that differ at once are listed", u"a = os.get"_s, 0, u"os.get"_s,
            {u"os.getcwd("_s, u"os.getenv("_s}, u"past\n>>> a = os.get\nos.getcwd(  os.getenv(\n>>> a = os.get|"_s);
        row("no name", u"xyz"_s, 0, u"xyz"_s, {}, u"past\n>>> xyz|"_s);
        row("a whole name", u"abs"_s, 0, u"abs"_s, {u"abs"_s}, u"past\n>>> abs|"_s);
        row("inside the line", u"print(sy)"_s, 1, u"sy"_s, {u"sys"_s}, u"past\n>>> print(sys|)"_s);
        row("the list leaves the cursor in its place", u"print(s)"_s, 1, u"s"_s, {u"str("_s, u"sum("_s},
            u"past\n>>> print(s)\nstr(  sum(\n>>> print(s|)"_s);
        row("letters of any language", u"(zäh"_s, 0, u"zäh"_s, {u"zähler"_s}, u"past\n>>> (zähler|"_s);
        row("nothing before the cursor", u"a "_s, 0, QString(), {u"x"_s}, u"past\n>>> a |"_s);
    }
    void completionReplacesTheWordBeforeTheCursor()
    {
        QFETCH(QString, typed);
        QFETCH(int, back);
        QFETCH(QString, word);
        QFETCH(QStringList, names);
        QFETCH(QString, expected);
        QString asked;
        m_console->setCompleter([&](const QString &beginning) {
            asked = beginning;
            return names;
        });
        type(typed);
        for (int i = 0; i < back; ++i)
            press(Qt::Key_Left);
        press(Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(shown(), expected);
        QCOMPARE(asked, word);
    }
    void namesThatAreListedAreNotBrokenAtTheEdge()
    {
        QStringList names;
        for (int i = 0; i < 40; ++i)
            names.append(QChar(u'a' + i % 26) + u"_name_%1("_s.arg(i));
        m_console->setCompleter([&](const QString &) { return names; });
        m_surroundings->resize(400, 200);
        m_surroundings->show();
        type(u"x"_s);
        press(Qt::Key_Space, Qt::ControlModifier);
        QStringList listed;
        for (QTextBlock block = m_console->document()->begin(); block.isValid(); block = block.next()) {
            if (!block.text().contains(u"_name_"_s))
                continue;
            QVERIFY(block.layout()->boundingRect().isValid());
            QCOMPARE(block.layout()->lineCount(), 1);
            listed += block.text().split(u"  "_s);
        }
        QCOMPARE(listed, names);
    }
    void completionInTheOutputCompletesTheInput()
    {
        m_console->setCompleter([](const QString &) { return QStringList{u"input"_s}; });
        type(u"in"_s);
        setCursor(1);
        press(Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(shown(), u"past\n>>> input|"_s);
    }
    void lineIsStillTheInputAfterAList()
    {
        const QSignalSpy lines(m_console, &CommandLineWindow::inputLine);
        m_console->setCompleter([](const QString &) { return QStringList{u"str("_s, u"sum("_s}; });
        type(u"s"_s);
        press(Qt::Key_Space, Qt::ControlModifier);
        press(Qt::Key_Backspace);
        press(Qt::Key_Backspace);
        type(u"1"_s);
        press(Qt::Key_Return);
        QCOMPARE(lines, (QList<QList<QVariant>>{{u"1"_s}}));
    }
    void completionWithoutACompleterDoesNothing()
    {
        type(u"in"_s);
        press(Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(shown(), u"past\n>>> in|"_s);
    }
};

QTEST_MAIN(TestCommandLineWindow)
#include "tst_commandlinewindow.moc"
