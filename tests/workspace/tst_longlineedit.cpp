#include "editorfixture.h"
#include "linelayout.h"
#include "longline.h"
#include "paintcounter.h"
#include <QDragEnterEvent>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString Words = u"int value_x = some(call, 12); "_s;
const QString MarkedE = u"e\u0301"_s; // two characters, one place
} // namespace

/// A long line in a pane looks and behaves as a short one.
class LongLineEditTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<EditorFixture> m_editor;

    void open(const QString &text) { m_editor = std::make_unique<EditorFixture>(text); }
    [[nodiscard]] TextViewEdit *edit() const { return m_editor->edit(); }
    [[nodiscard]] QString cursor() const { return m_editor->selection(); }
    [[nodiscard]] QString text() const { return m_editor->text(); }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(edit(), Qt::Key(key), modifiers);
    }
    [[nodiscard]] bool showsCursor() const
    {
        return edit()->viewport()->rect().contains(edit()->cursorRect().adjusted(0, 1, 0, -1));
    }
    /// Whether the screen shows what the pane would paint. Timers do not run, which would paint the brackets and so the
    /// whole line.
    [[nodiscard]] bool screenIsPainted() const
    {
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(edit()->window(), &request);
        const QImage screen = onScreen(edit()->viewport()->rect());
        return screen == edit()->viewport()->grab().toImage().convertToFormat(screen.format());
    }
    /// What the screen shows of a part of the pane.
    [[nodiscard]] QImage onScreen(const QRect &part) const
    {
        const QPoint corner = edit()->viewport()->mapTo(m_editor->view.get(), part.topLeft());
        return edit()
            ->screen()
            ->grabWindow(m_editor->view->winId(), corner.x(), corner.y(), part.width(), part.height())
            .toImage();
    }
    /// Between characters @p index - 1 and @p index of line @p line.
    [[nodiscard]] QPoint pointOf(int line, int index) const
    {
        QTextCursor cursor(edit()->document()->findBlockByNumber(line));
        cursor.setPosition(cursor.position() + index);
        return edit()->cursorRect(cursor).center() + QPoint(1, 0);
    }

private Q_SLOTS:
    void cleanup() { m_editor.reset(); }
    void looksLikeAShortLine_data();
    void looksLikeAShortLine();
    void keysChangeTheScreen_data();
    void keysChangeTheScreen();
    void selectionOverSeveralLongLinesIsPainted();
    void bothPanesShowAChange();
    void formerDocumentIsNotPainted();
    void documentMayHaveAnotherLayout();
    void typedCharactersAreOneStepForUndo();
    void tabsAndRareCharactersAreTypedLikeOthers();
    void typedCharactersOfAShortLineAreOneStepForUndo();
    void typedCharacterShowsTheCursorOfAShortLine();
    void undoStopsAtTheSavedState();
    void typingReplacesTheSelection();
    void removingTheSelectionIsAStepOfItsOwn();
    void removesCharacters();
    void movesByCharacter();
    void movesToEndsAndByWords();
    void upAndDownKeepTheirPlace();
    void cursorStaysVisible();
    void keysKeepTheLinesOnTheScreen();
    void shortLinesNeedNoScrollBar();
    void scrollBarShrinksWithTheWidestLine();
    void jumpsShowTheCursor();
    void verticalScrollBarEndsAtTheLastLine();
    void clickMovesTheCursor();
    void draggingSelects();
    void doubleAndTripleClicks();
    void pressOnTheSelectionKeepsIt();
    void pressOnTheSelectionWithShiftChangesIt();
    void draggingFromBehindTheSelectionSelects();
    void selectedStartOfALineIsNotDraggedFromBehindIt();
    void droppedTextIsInsertedWhereItIsDropped();
    void otherPanesFollow();
    void cursorBlinks();
    void cursorIsShownInTheActivePaneOnly();
    void inputMethodSeesThePlace();
    void composedTextMovesOnlyWhatIsBehindIt();
    void bracketsAreFound();
    void bracketsArePainted();
    void keysWorkAnywhereInALineOfMegabytes_data();
    void keysWorkAnywhereInALineOfMegabytes();
    void highlightedStartFollows();
    void readOnlyTextStays();
};

void LongLineEditTest::looksLikeAShortLine_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("selected");
    QTest::newRow("start") << 0 << 0;
    QTest::newRow("middle") << 4000 << 0;
    QTest::newRow("selection") << 4000 << 30;
    QTest::newRow("bracket") << 20 + 30 * 100 - 2 << 0;
}

// The first line is just not too long to be laid out as a whole.
void LongLineEditTest::looksLikeAShortLine()
{
    QFETCH(const int, column);
    QFETCH(const int, selected);
    const auto shown = [&](int repeated) {
        open(u"first\n\t"_s + Words.repeated(repeated) + u"\nlast"_s);
        m_editor->putCursor(1, column);
        m_editor->putCursor(1, column, 1, column + selected);
        return std::pair(edit()->viewport()->grab().toImage(), edit()->cursorRect());
    };
    const auto [shortImage, shortRect] = shown(330);
    QCOMPARE(edit()->document()->findBlockByNumber(1).layout()->lineCount(), 1);
    const auto [longImage, longRect] = shown(700);
    QCOMPARE(edit()->document()->findBlockByNumber(1).layout()->lineCount(), 0);
    QCOMPARE(longRect, shortRect);
    QCOMPARE(longImage, shortImage);
}

void LongLineEditTest::keysChangeTheScreen_data()
{
    QTest::addColumn<int>("column");
    QTest::newRow("coloured part") << 5000;
    QTest::newRow("plain part") << 15'000;
    QTest::newRow("start") << 0;
    QTest::newRow("end") << int(1000 * Words.size());
}

/// A key paints a part of the line only. The rest of the screen must be what it was painted before.
void LongLineEditTest::keysChangeTheScreen()
{
    QFETCH(const int, column);
    open(u"first\n"_s + Words.repeated(1000) + u"\nlast"_s);
    m_editor->putCursor(1, column);
    QTRY_VERIFY(screenIsPainted());
    const QStringList typed{u" "_s, u"r"_s, u"e"_s, u"t"_s,  u"u"_s, u"r"_s,      u"n"_s, u" "_s, u"i"_s,
                            u"n"_s, u"t"_s, u" "_s, u"\t"_s, u"e"_s, u"\u0301"_s, u"W"_s, u"("_s};
    for (const QString &key : typed) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, key);
        QCoreApplication::sendEvent(edit(), &press);
        QVERIFY2(screenIsPainted(), qPrintable(key));
    }
    const std::initializer_list<std::pair<int, Qt::KeyboardModifiers>> keys{{Qt::Key_Backspace, {}},
                                                                            {Qt::Key_Left, {}},
                                                                            {Qt::Key_Delete, {}},
                                                                            {Qt::Key_Left, Qt::ShiftModifier},
                                                                            {Qt::Key_X, {}},
                                                                            {Qt::Key_Z, Qt::ControlModifier},
                                                                            {Qt::Key_Left, {}},
                                                                            {Qt::Key_Backspace, {}},
                                                                            {Qt::Key_Return, {}},
                                                                            {Qt::Key_Backspace, {}},
                                                                            {Qt::Key_Left, Qt::ShiftModifier},
                                                                            {Qt::Key_Delete, {}}};
    for (const auto &[key, modifiers] : keys) {
        press(key, modifiers);
        QVERIFY2(screenIsPainted(), qPrintable(QKeySequence(key).toString()));
    }
}

void LongLineEditTest::selectionOverSeveralLongLinesIsPainted()
{
    open(u"first\n"_s + (Words.repeated(400) + u'\n').repeated(5) + u"last"_s);
    m_editor->putCursor(1, 5000);
    QTRY_VERIFY(screenIsPainted());
    for (int i = 0; i < 3; ++i) {
        press(Qt::Key_Down, Qt::ShiftModifier);
        QVERIFY(screenIsPainted());
    }
    m_editor->putCursor(6, 2);
    QVERIFY(screenIsPainted());
    m_editor->putCursor(1, 5000, 4, 5000);
    QVERIFY(screenIsPainted());
    press(Qt::Key_Down);
    QVERIFY(screenIsPainted());
    m_editor->putCursor(1, 10);
    QTextCursor replaced(edit()->document()->findBlockByNumber(1));
    replaced.setPosition(replaced.position() + 20);
    replaced.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    replaced.setPosition(replaced.position() + 5, QTextCursor::KeepAnchor);
    replaced.insertText(u"a\nbcdefghij"_s); // one line end for another
    QVERIFY(screenIsPainted());
}

void LongLineEditTest::formerDocumentIsNotPainted()
{
    QTextDocument first;
    QTextDocument second;
    for (QTextDocument *document : {&first, &second}) {
        document->setDocumentLayout(new LineLayout(document));
        document->setPlainText(Words.repeated(400));
    }
    LongLineEdit pane;
    pane.setDocument(&first);
    pane.setDocument(&second);
    pane.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pane));
    const auto paintsAfterTyping = [&](QTextDocument &document) {
        QCoreApplication::processEvents();
        const PaintCounter paints(pane.viewport());
        QTextCursor(&document).insertText(u"x"_s);
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&pane, &request);
        return paints.count;
    };
    QVERIFY(paintsAfterTyping(second) > 0);
    QCOMPARE(paintsAfterTyping(first), 0);
}

void LongLineEditTest::documentMayHaveAnotherLayout()
{
    QTextDocument document;
    document.setDocumentLayout(new QPlainTextDocumentLayout(&document));
    document.setPlainText(Words.repeated(400));
    LongLineEdit pane;
    pane.setDocument(&document);
    pane.show();
    pane.moveCursor(QTextCursor::End);
    QTest::keyClicks(&pane, u"x"_s);
    QVERIFY(!pane.cursorRect().isEmpty());
    QVERIFY(!pane.grab().isNull());
    QVERIFY(document.toPlainText() == Words.repeated(400) + u'x');
    pane.setDocument(nullptr);
}

void LongLineEditTest::bothPanesShowAChange()
{
    open(Words.repeated(1000));
    m_editor->view->split();
    TextViewEdit *other =
        m_editor->view->edits().first() == edit() ? m_editor->view->edits().last() : m_editor->view->edits().first();
    m_editor->putCursor(0, 15'003);
    QTextCursor same(other->document());
    same.setPosition(15'000);
    other->setTextCursor(same);
    QCoreApplication::processEvents();
    const QRect line = other->cursorRect();
    const auto screen = [this, other, line] {
        QCoreApplication::processEvents();
        const QPoint corner = other->viewport()->mapTo(m_editor->view.get(), line.topLeft());
        return edit()
            ->screen()
            ->grabWindow(m_editor->view->winId(), corner.x(), corner.y(), other->viewport()->width() / 3, line.height())
            .toImage();
    };
    const QImage before = screen();
    press(Qt::Key_W, Qt::ShiftModifier);
    QTRY_VERIFY(screen() != before);
}

void LongLineEditTest::typedCharactersAreOneStepForUndo()
{
    const QString line = Words.repeated(1000);
    open(line);
    QSignalSpy changes(edit(), &QPlainTextEdit::textChanged);
    m_editor->putCursor(0, 15'000);
    QTest::keyClicks(edit(), u"abc"_s);
    QCOMPARE(changes.size(), 3);
    QCOMPARE(cursor(), u"0,15003"_s);
    QString typed = line;
    QVERIFY(text() == typed.insert(15'000, u"abc"_s));
    press(Qt::Key_Left);
    QTest::keyClicks(edit(), u"d"_s);
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    QVERIFY(text() == QString(typed).remove(15'001, 1));
    edit()->undo();
    QVERIFY(text() == QString(typed).insert(15'002, u'd'));
    edit()->undo();
    QVERIFY(text() == typed);
    edit()->undo();
    QVERIFY(text() == line);
    QVERIFY(!edit()->document()->isUndoAvailable());
    edit()->redo();
    QVERIFY(text() == typed);
    QVERIFY(showsCursor());
}

void LongLineEditTest::tabsAndRareCharactersAreTypedLikeOthers()
{
    const QString line = Words.repeated(1000);
    open(line);
    m_editor->putCursor(0, 15'000);
    const auto type = [this](const QString &text, Qt::KeyboardModifiers modifiers) {
        QKeyEvent press(QEvent::KeyPress, 0, modifiers, text);
        QCoreApplication::sendEvent(edit(), &press);
    };
    type(u"a"_s, {});
    type(u"\t"_s, {});
    type(u"\U0001F600"_s, {});
    type(u"\u00e4"_s, Qt::GroupSwitchModifier);
    type(u"b"_s, {});
    QVERIFY(text() == QString(line).insert(15'000, u"a\t\U0001F600\u00e4b"_s));
    edit()->undo();
    QVERIFY(text() == line);
}

void LongLineEditTest::typedCharactersOfAShortLineAreOneStepForUndo()
{
    open(u"some words"_s);
    m_editor->putCursor(0, 4);
    QTest::keyClicks(edit(), u"abc"_s);
    QCOMPARE(text(), u"someabc words"_s);
    press(Qt::Key_Left);
    QTest::keyClicks(edit(), u"d"_s);
    QCOMPARE(text(), u"someabdc words"_s);
    press(Qt::Key_Backspace);
    QTest::keyClicks(edit(), u"ef"_s);
    m_editor->putCursor(0, 0, 0, 4);
    QSignalSpy copy(edit(), &QPlainTextEdit::copyAvailable);
    QTest::keyClicks(edit(), u"x"_s);
    QCOMPARE(copy, QList<QVariantList>{{false}});
    QCOMPARE(text(), u"xabefc words"_s);
    for (const QString &expected :
         {u"someabefc words"_s, u"someabc words"_s, u"someabdc words"_s, u"someabc words"_s, u"some words"_s}) {
        QVERIFY(edit()->document()->isUndoAvailable());
        edit()->undo();
        QCOMPARE(text(), expected);
    }
    QVERIFY(!edit()->document()->isUndoAvailable());
}

void LongLineEditTest::typedCharacterShowsTheCursorOfAShortLine()
{
    open(u"some words"_s);
    m_editor->putCursor(0, 4);
    const auto isShown = [this] {
        const QRect cursor = edit()->cursorRect();
        const QImage image = edit()->viewport()->grab().toImage();
        return image.pixelColor(cursor.left(), cursor.center().y()).lightness() < 100;
    };
    QTRY_VERIFY(isShown());
    QTRY_VERIFY(!isShown()); // it blinks
    QTest::keyClick(edit(), Qt::Key_Space);
    QVERIFY(isShown());
}

void LongLineEditTest::undoStopsAtTheSavedState()
{
    open(Words.repeated(1000));
    m_editor->putCursor(0, 15'000);
    QTest::keyClicks(edit(), u"ab"_s);
    edit()->document()->setModified(false);
    QTest::keyClicks(edit(), u"cd"_s);
    edit()->undo();
    QCOMPARE(text().sliced(14'999, 4), QString(Words.repeated(1000).sliced(14'999, 1) + u"ab"_s + u"i"_s));
    QVERIFY(!edit()->document()->isModified());
}

void LongLineEditTest::typingReplacesTheSelection()
{
    const QString line = Words.repeated(1000);
    open(line);
    m_editor->putCursor(0, 12'000, 0, 12'500);
    QTest::keyClicks(edit(), u"xy"_s);
    QVERIFY(text() == QString(line).replace(12'000, 500, u"xy"_s));
    QCOMPARE(cursor(), u"0,12002"_s);
    edit()->undo();
    QVERIFY(text() == QString(line).replace(12'000, 500, u"x"_s));
    edit()->redo();
    m_editor->putCursor(0, 12'000, 0, 12'500);
    press(Qt::Key_Backspace);
    QVERIFY(text() == line.left(12'000) + line.sliced(12'998));
}

void LongLineEditTest::removingTheSelectionIsAStepOfItsOwn()
{
    const QString line = Words.repeated(1000);
    open(line);
    m_editor->putCursor(0, int(line.size()));
    QTest::keyClicks(edit(), u"xy"_s);
    press(Qt::Key_Backspace);
    edit()->selectAll();
    press(Qt::Key_Backspace);
    QCOMPARE(text(), QString());
    edit()->undo();
    QVERIFY(text() == line + u'x');
}

void LongLineEditTest::removesCharacters()
{
    const QString line = u"x"_s.repeated(12'000) + MarkedE + u"\U0001F600"_s + u"y"_s.repeated(100) + u"\nend"_s;
    open(line);
    m_editor->putCursor(0, 12'000);
    press(Qt::Key_Delete);
    QVERIFY(text() == QString(line).remove(12'000, 2));
    press(Qt::Key_Delete);
    QVERIFY(text() == QString(line).remove(12'000, 4));
    edit()->undo();
    QVERIFY(text() == line);
    m_editor->putCursor(0, 11'000, 0, 11'010);
    press(Qt::Key_Delete);
    QVERIFY(text() == QString(line).remove(11'000, 10));
    edit()->undo();
    m_editor->putCursor(0, 12'004);
    press(Qt::Key_Backspace);
    QVERIFY(text() == QString(line).remove(12'002, 2));
    press(Qt::Key_Backspace); // the mark alone, as in short lines
    QVERIFY(text() == QString(line).remove(12'001, 3));
    m_editor->putCursor(0, 12'101);
    press(Qt::Key_Delete);
    QVERIFY(text().endsWith(u"yend"_s));
    QCOMPARE(edit()->document()->blockCount(), 1);
}

void LongLineEditTest::movesByCharacter()
{
    open(u"x"_s.repeated(12'000) + MarkedE + u"\U0001F600\tabc"_s + u"\nend"_s);
    m_editor->putCursor(0, 12'000);
    QStringList places;
    for (int i = 0; i < 3; ++i) {
        press(Qt::Key_Right);
        places << cursor();
    }
    press(Qt::Key_Left, Qt::ShiftModifier);
    places << cursor();
    press(Qt::Key_Left, Qt::ShiftModifier);
    places << cursor();
    press(Qt::Key_Left);
    places << cursor();
    QCOMPARE(places.join(u' '), u"0,12002 0,12004 0,12005 0,12004-0,12005 0,12002-0,12005 0,12002"_s);
    press(Qt::Key_End);
    press(Qt::Key_Right);
    QCOMPARE(cursor(), u"1,0"_s);
    press(Qt::Key_Left);
    QCOMPARE(cursor(), u"0,12008"_s);
}

void LongLineEditTest::movesToEndsAndByWords()
{
    open(u"first\n"_s + Words.repeated(1000) + u"\nlast"_s);
    m_editor->putCursor(1, 300);
    press(Qt::Key_End);
    QCOMPARE(cursor(), u"1,30000"_s);
    QVERIFY(showsCursor());
    QVERIFY(edit()->horizontalScrollBar()->value() > 100'000);
    press(Qt::Key_Left, Qt::ControlModifier);
    press(Qt::Key_Left, Qt::ControlModifier);
    QCOMPARE(cursor(), u"1,29995"_s);
    QVERIFY(showsCursor());
    press(Qt::Key_Home, Qt::ShiftModifier);
    QCOMPARE(cursor(), u"1,0-1,29995"_s);
    QCOMPARE(edit()->horizontalScrollBar()->value(), 0);
    m_editor->view->moveCursor(TextView::MoveLineEnd, false);
    QCOMPARE(cursor(), u"1,30000"_s);
    QVERIFY(showsCursor());
    m_editor->putCursor(1, 18'011);
    press(Qt::Key_Backspace, Qt::ControlModifier);
    QCOMPARE(cursor(), u"1,18004"_s);
    QCOMPARE(edit()->document()->findBlockByNumber(1).length() - 1, 30'000 - 7);
}

void LongLineEditTest::upAndDownKeepTheirPlace()
{
    const QString line = Words.repeated(400);
    open(u"a short line\n"_s + line + u"\n\t"_s + line + u"\nab\n"_s + line + u'\n' + Words.repeated(20));
    m_editor->putCursor(1, 300);
    QStringList places;
    for (const int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_Up, Qt::Key_Up}) {
        press(key);
        places << cursor();
    }
    QCOMPARE(places.join(u' '), u"2,297 3,2 4,300 5,300 4,300 3,2 2,297"_s); // the tab is as wide as four characters
    m_editor->putCursor(0, 5);
    press(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(cursor(), u"0,5-1,5"_s);
    m_editor->putCursor(5, 200);
    m_editor->view->moveCursor(TextView::MoveUp, false);
    QCOMPARE(cursor(), u"4,200"_s);
    press(Qt::Key_PageUp);
    QCOMPARE(cursor(), u"0,12"_s);
    press(Qt::Key_PageDown);
    QCOMPARE(cursor(), u"5,200"_s);
    m_editor->putCursor(1, 300);
    press(Qt::Key_Down);
    press(Qt::Key_Home);
    press(Qt::Key_Up);
    QCOMPARE(cursor(), u"1,0"_s);
    m_editor->putCursor(4, 300);
    press(Qt::Key_Down);
    QCOMPARE(cursor(), u"5,300"_s);
    press(Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(cursor(), u"4,300-5,300"_s);
    m_editor->putCursor(4, 300);
    m_editor->view->moveCursor(TextView::MoveDown, false);
    QCOMPARE(cursor(), u"5,300"_s);
    m_editor->putCursor(1, 100);
    press(Qt::Key_PageDown, Qt::ShiftModifier);
    QCOMPARE(cursor(), u"1,100-5,100"_s);
    m_editor->putCursor(4, 100);
    press(Qt::Key_PageUp, Qt::ShiftModifier);
    QCOMPARE(cursor(), u"0,12-4,100"_s);
}

void LongLineEditTest::cursorStaysVisible()
{
    open(Words.repeated(1000));
    m_editor->putCursor(0, 15'000);
    QVERIFY(showsCursor());
    const int left = edit()->horizontalScrollBar()->value();
    QTest::keyClicks(edit(), u"ab"_s);
    press(Qt::Key_Right);
    press(Qt::Key_Backspace);
    QCOMPARE(edit()->horizontalScrollBar()->value(), left); // it was visible, so nothing moved
    QTest::keyClicks(edit(), QString(100, u'x'));
    QVERIFY(edit()->horizontalScrollBar()->value() > left);
    QVERIFY(showsCursor());
    edit()->horizontalScrollBar()->setValue(0);
    edit()->undo();
    QVERIFY(showsCursor());
    edit()->horizontalScrollBar()->setValue(0);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(showsCursor());
}

void LongLineEditTest::keysKeepTheLinesOnTheScreen()
{
    open(QString(100, u'\n') + Words.repeated(400) + QString(100, u'\n'));
    m_editor->putCursor(100, 5000);
    QScrollBar *bar = edit()->verticalScrollBar();
    for (const int above : {2, 10}) {
        bar->setValue(100 - above);
        QTest::keyClicks(edit(), u"a"_s);
        press(Qt::Key_Left);
        QCOMPARE(bar->value(), 100 - above);
    }
    bar->setValue(0);
    press(Qt::Key_Left);
    QVERIFY(showsCursor());
    bar->setValue(150);
    press(Qt::Key_Left);
    QVERIFY(showsCursor());
}

void LongLineEditTest::shortLinesNeedNoScrollBar()
{
    open(Words + QString(24, u'x') + u"\nlast"_s); // not much narrower than the pane
    m_editor->putCursor(0, 5);
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    QTest::mouseClick(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(0, 10));
    QCOMPARE(cursor(), u"0,10"_s);
    QCOMPARE(edit()->horizontalScrollBar()->maximum(), 0);
}

void LongLineEditTest::scrollBarShrinksWithTheWidestLine()
{
    open(Words.repeated(400) + u'\n' + Words.repeated(700) + u"\nlast"_s);
    QCoreApplication::processEvents();
    const QScrollBar *bar = edit()->horizontalScrollBar();
    const int both = bar->maximum();
    QTextCursor widest(edit()->document()->findBlockByNumber(1));
    widest.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    widest.insertText(u"short"_s);
    const int one = bar->maximum();
    QVERIFY(one > 0 && one < both);
    widest.setPosition(0);
    widest.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    widest.insertText(u"short"_s);
    QCOMPARE(bar->maximum(), 0);
}

// The base class would look for a line of the layout.
void LongLineEditTest::jumpsShowTheCursor()
{
    const QString lines = QString(200, u'\n');
    open(Words.repeated(400) + lines + Words.repeated(700) + lines + Words.repeated(500));
    for (const QTextCursor::MoveOperation end : {QTextCursor::End, QTextCursor::Start, QTextCursor::End}) {
        edit()->moveCursor(end);
        QVERIFY(showsCursor());
    }
    QTextCursor middle(edit()->document()->findBlockByNumber(200));
    middle.setPosition(middle.position() + 15'000);
    static_cast<QPlainTextEdit *>(edit())->setTextCursor(middle); // as code does that does not know the class
    edit()->ensureCursorVisible();
    QVERIFY(showsCursor());
    edit()->centerCursor();
    m_editor->view->gotoLine(1);
    QVERIFY(showsCursor());
    QVERIFY(m_editor->view->find(u"some(call"_s, true, false, true, true));
    QVERIFY(showsCursor());
    QCOMPARE(cursor(), u"0,14-0,23"_s);
    QVERIFY(m_editor->view->find(u"some(call"_s, true, false, false, false));
    QCOMPARE(edit()->textCursor().blockNumber(), 400);
    QVERIFY(showsCursor());
}

void LongLineEditTest::verticalScrollBarEndsAtTheLastLine()
{
    const auto range = [&](int repeated) {
        open(QString(100, u'\n') + (Words.repeated(repeated) + u'\n').repeated(3) + u"last"_s);
        edit()->verticalScrollBar()->setValue(1000);
        QCoreApplication::processEvents();
        edit()->moveCursor(QTextCursor::End);
        edit()->viewport()->repaint();
        const QScrollBar *bar = edit()->verticalScrollBar();
        return QList<int>{bar->maximum(), bar->pageStep(), bar->value()};
    };
    QCOMPARE(range(400), range(3));
    open(Words.repeated(700));
    QCOMPARE(edit()->verticalScrollBar()->maximum(), 0);
}

void LongLineEditTest::clickMovesTheCursor()
{
    open(u"first\n"_s + Words.repeated(1000) + u"\nlast"_s);
    m_editor->putCursor(1, 20'000);
    QTest::mouseClick(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(1, 20'007));
    QCOMPARE(cursor(), u"1,20007"_s);
    QTest::mouseClick(edit()->viewport(), Qt::LeftButton, Qt::ShiftModifier, pointOf(1, 19'998));
    QCOMPARE(cursor(), u"1,19998-1,20007"_s);
    QTest::mouseClick(edit()->viewport(), Qt::RightButton, Qt::NoModifier, pointOf(1, 20'010));
    QCOMPARE(cursor(), u"1,20010"_s);
    QCOMPARE(edit()->cursorForPosition(pointOf(1, 20'003)).positionInBlock(), 20'003);
    QTest::mouseClick(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(5, pointOf(2, 0).y()));
    QCOMPARE(cursor(), u"2,4"_s);
}

void LongLineEditTest::draggingSelects()
{
    open(u"first\n"_s + Words.repeated(1000) + u"\nlast"_s);
    m_editor->putCursor(1, 20'000);
    const auto move = [&](QPoint point) {
        QMouseEvent event(QEvent::MouseMove, point, edit()->viewport()->mapToGlobal(point), Qt::NoButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(edit()->viewport(), &event);
    };
    QTest::mousePress(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(1, 19'990));
    move(pointOf(1, 20'000));
    move(pointOf(1, 20'004));
    QCOMPARE(cursor(), u"1,19990-1,20004"_s);
    move(QPoint(pointOf(1, 20'000).x(), pointOf(0, 0).y()));
    QCOMPARE(cursor(), u"0,5-1,19990"_s);
    move(pointOf(1, 19'980));
    QTest::mouseRelease(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(1, 19'980));
    QCOMPARE(cursor(), u"1,19980-1,19990"_s);
    const QPoint point = pointOf(1, 19'970);
    QMouseEvent released(QEvent::MouseMove, point, edit()->viewport()->mapToGlobal(point), Qt::NoButton,
                         Qt::RightButton, Qt::NoModifier);
    QCoreApplication::sendEvent(edit()->viewport(), &released);
    QCOMPARE(cursor(), u"1,19980-1,19990"_s);
    m_editor->putCursor(0, 0);
    QTest::mousePress(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(0, 2));
    move(pointOf(1, 10));
    QCOMPARE(cursor(), u"0,2-1,10"_s);
    QTest::mouseRelease(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(1, 10));
}

void LongLineEditTest::doubleAndTripleClicks()
{
    open(u"first\n"_s + Words.repeated(1000) + u"\nlast"_s);
    m_editor->putCursor(1, 18'000);
    const QPoint onWord = pointOf(1, 18'007);
    QTest::mouseClick(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, onWord);
    QTest::mouseDClick(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, onWord);
    QCOMPARE(cursor(), u"1,18004-1,18011"_s);
    QTest::mousePress(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(1, 18'005)); // too far for a third
    QCOMPARE(cursor(), u"1,18004-1,18011"_s);
    QTest::mouseRelease(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(1, 18'005));
    QTest::mouseDClick(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, onWord);
    QTest::mouseClick(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, onWord);
    QCOMPARE(cursor(), u"1,0-2,0"_s);
    m_editor->putCursor(1, 18'002);
    QTest::mouseDClick(edit()->viewport(), Qt::RightButton, Qt::NoModifier, onWord);
    QVERIFY(!edit()->textCursor().hasSelection());

    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(1);
    const auto restore = qScopeGuard([interval] { QApplication::setDoubleClickInterval(interval); });
    QTest::mouseDClick(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, onWord);
    const QImage clicked = edit()->viewport()->grab().toImage();
    QTRY_VERIFY(edit()->viewport()->grab().toImage() != clicked);                  // the cursor has blinked
    QTest::mousePress(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, onWord); // much later, so not the third click
    QVERIFY(edit()->textCursor().hasSelection());
    QTest::mouseRelease(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, onWord);
    QVERIFY(!edit()->textCursor().hasSelection());
}

// It may be dragged; a click without a move moves the cursor when the button is released.
void LongLineEditTest::pressOnTheSelectionKeepsIt()
{
    open(Words.repeated(1000));
    m_editor->putCursor(0, 18'000, 0, 18'011);
    QTest::mousePress(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(0, 18'005));
    QCOMPARE(cursor(), u"0,18000-0,18011"_s);
    QTest::mouseRelease(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(0, 18'005));
    QCOMPARE(cursor(), u"0,18005"_s);
    m_editor->putCursor(0, 18'000, 0, 18'011);
    QTest::mouseClick(edit()->viewport(), Qt::RightButton, Qt::NoModifier, pointOf(0, 18'005));
    QCOMPARE(cursor(), u"0,18000-0,18011"_s);
}

void LongLineEditTest::pressOnTheSelectionWithShiftChangesIt()
{
    open(Words.repeated(1000));
    m_editor->putCursor(0, 18'000, 0, 18'011);
    QTest::mousePress(edit()->viewport(), Qt::LeftButton, Qt::ShiftModifier, pointOf(0, 18'005));
    QCOMPARE(cursor(), u"0,18000-0,18005"_s);
    QTest::mouseRelease(edit()->viewport(), Qt::LeftButton, Qt::ShiftModifier, pointOf(0, 18'005));
    QCOMPARE(cursor(), u"0,18000-0,18005"_s);
}

void LongLineEditTest::draggingFromBehindTheSelectionSelects()
{
    open(Words.repeated(1000));
    m_editor->putCursor(0, 18'000, 0, 18'004);
    QTest::mousePress(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(0, 18'008));
    QCOMPARE(cursor(), u"0,18008"_s);
    const QPoint point = pointOf(0, 18'014);
    QMouseEvent move(QEvent::MouseMove, point, edit()->viewport()->mapToGlobal(point), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(edit()->viewport(), &move);
    QTest::mouseRelease(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    QCOMPARE(cursor(), u"0,18008-0,18014"_s);
    QTest::mouseClick(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(0, 18'004));
    m_editor->putCursor(0, 18'008, 0, 18'014);
    QTest::mousePress(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(0, 18'004)); // and from before it
    QCOMPARE(cursor(), u"0,18004"_s);
    QTest::mouseRelease(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(0, 18'004));
}

// The base class knows one place in a long line only, its start.
void LongLineEditTest::selectedStartOfALineIsNotDraggedFromBehindIt()
{
    open(Words.repeated(1000));
    m_editor->putCursor(0, 0, 0, 4);
    QTest::mousePress(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(0, 8));
    const QPoint point = pointOf(0, 14);
    QMouseEvent move(QEvent::MouseMove, point, edit()->viewport()->mapToGlobal(point), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(edit()->viewport(), &move);
    QTest::mouseRelease(edit()->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    QCOMPARE(cursor(), u"0,8-0,14"_s);
}

void LongLineEditTest::droppedTextIsInsertedWhereItIsDropped()
{
    const QString line = Words.repeated(1000);
    open(line);
    m_editor->putCursor(0, 15'000);
    const QPoint place = pointOf(0, 15'005);
    QMimeData data;
    data.setText(u"dropped"_s);
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(edit()->viewport(), &enter);
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(edit()->viewport(), &drop);
    QVERIFY(drop.isAccepted());
    QVERIFY(text() == QString(line).insert(15'005, u"dropped"_s));
    QCOMPARE(cursor(), u"0,15012"_s);
    QVERIFY(showsCursor());
    edit()->undo();
    QVERIFY(text() == line);

    QMimeData picture;
    picture.setData(u"image/png"_s, "png");
    QDropEvent unknown(place, Qt::CopyAction, &picture, Qt::LeftButton, Qt::NoModifier);
    unknown.ignore();
    QCoreApplication::sendEvent(edit()->viewport(), &enter);
    QCoreApplication::sendEvent(edit()->viewport(), &unknown);
    QVERIFY(!unknown.isAccepted());

    edit()->setPlainText(line);
    QCoreApplication::sendEvent(edit()->viewport(), &enter);
    edit()->setReadOnly(true);
    QDropEvent refused(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(edit()->viewport(), &refused);
    QVERIFY(text() == line);
}

void LongLineEditTest::otherPanesFollow()
{
    open(Words.repeated(1000));
    m_editor->putCursor(0, 15'000);
    m_editor->view->split();
    TextViewEdit *other = m_editor->edit(1);
    QVERIFY(edit()->textCursor() == other->textCursor());
    const QImage before = edit()->viewport()->grab().toImage();
    QTest::keyClicks(other, u"abc"_s);
    QVERIFY(text().contains(u"abc"_s));
    const QImage after = edit()->viewport()->grab().toImage();
    QVERIFY(after != before);
    other->undo();
    QVERIFY(edit()->viewport()->grab().toImage() != after);
}

void LongLineEditTest::cursorBlinks()
{
    open(Words.repeated(1000));
    m_editor->putCursor(0, 15'000);
    const QRect cursor = edit()->cursorRect().adjusted(0, 2, 0, -2);
    const auto isDark = [](const QImage &image) { return image.pixelColor(0, image.height() - 1).lightness() < 100; };
    const auto isShown = [&] { return isDark(edit()->viewport()->grab(cursor).toImage()); };
    QVERIFY(isShown());
    QTRY_VERIFY(isDark(onScreen(cursor)));
    QTRY_VERIFY(!isDark(onScreen(cursor)));
    QTRY_VERIFY(!isShown());
    QTest::keyClicks(edit(), u" "_s);
    edit()->moveCursor(QTextCursor::Left);
    QVERIFY(isShown());
}

void LongLineEditTest::cursorIsShownInTheActivePaneOnly()
{
    open(QString(15'000, u' '));
    m_editor->view->split();
    const auto isShown = [this](int pane) {
        const QRect cursor = m_editor->edit(pane)->cursorRect().adjusted(0, 2, 0, -2);
        return m_editor->edit(pane)->viewport()->grab(cursor).toImage().pixelColor(0, 0).lightness() < 100;
    };
    for (const int active : {0, 1}) {
        m_editor->edit(active)->setFocus();
        m_editor->edit(active)->moveCursor(QTextCursor::Right); // begins with a cursor that is on
        QVERIFY(isShown(active));
        QVERIFY(!isShown(1 - active));
    }
    m_editor->edit(1)->setReadOnly(true);
    m_editor->edit(1)->moveCursor(QTextCursor::Right);
    QVERIFY(!isShown(1));
}

void LongLineEditTest::composedTextMovesOnlyWhatIsBehindIt()
{
    open(QString(15'000, u' '));
    m_editor->putCursor(0, 2);
    const QRect cursor = edit()->cursorRect();
    const auto firstOf = [&](const std::function<bool(const QColor &)> &isWanted) {
        const QImage image = edit()->viewport()->grab().toImage();
        int x = 0;
        while (x < image.width() && !isWanted(image.pixelColor(x, cursor.center().y())))
            ++x;
        return x;
    };
    const auto isDark = [](const QColor &colour) { return colour.lightness() < 100; };
    const auto isMarked = [](const QColor &colour) { return colour == QColor(Qt::yellow); };
    const auto mark = [this] {
        QTextEdit::ExtraSelection marked{QTextCursor(edit()->document()), {}};
        marked.cursor.setPosition(10);
        marked.cursor.setPosition(15, QTextCursor::KeepAnchor);
        marked.format.setBackground(Qt::yellow);
        edit()->setExtraSelections({marked});
    };
    mark();
    const int dark = firstOf(isDark);
    const int marked = firstOf(isMarked);
    const double width = (marked - dark) / 8.0;
    QInputMethodEvent composing(u"   "_s, {});
    QCoreApplication::sendEvent(edit(), &composing);
    mark();
    QVERIFY(qAbs(firstOf(isDark) - dark - 3 * width) <= 1);
    QVERIFY(qAbs(firstOf(isMarked) - marked - 3 * width) <= 1);
    QInputMethodEvent cancelled;
    QCoreApplication::sendEvent(edit(), &cancelled);
    m_editor->putCursor(0, 20);
    QCoreApplication::sendEvent(edit(), &composing);
    mark();
    QCOMPARE(firstOf(isMarked), marked);
}

void LongLineEditTest::inputMethodSeesThePlace()
{
    open(Words.repeated(1000));
    m_editor->putCursor(0, 15'000, 0, 15'010);
    const auto ask = [&](Qt::InputMethodQuery query) {
        QInputMethodQueryEvent event(query);
        QCoreApplication::sendEvent(edit(), &event);
        return event.value(query);
    };
    QCOMPARE(ask(Qt::ImCursorRectangle).toRectF().toRect(), edit()->cursorRect().translated(edit()->viewport()->pos()));
    const QString around = ask(Qt::ImSurroundingText).toString();
    QVERIFY(around.size() < 5000);
    QCOMPARE(around.sliced(ask(Qt::ImCursorPosition).toInt(), 20), text().sliced(15'010, 20));
    QCOMPARE(around.sliced(ask(Qt::ImAnchorPosition).toInt(), 20), text().sliced(15'000, 20));
    m_editor->putCursor(0, 15'000);
    const QImage before = edit()->viewport()->grab().toImage();
    QInputMethodEvent composing(u"abc"_s, {});
    QCoreApplication::sendEvent(edit(), &composing);
    QVERIFY(edit()->viewport()->grab().toImage() != before);
    QInputMethodEvent commit;
    commit.setCommitString(u"\u6F22"_s);
    QCoreApplication::sendEvent(edit(), &commit);
    QCOMPARE(text().sliced(15'000, 1), u"\u6F22"_s);
    const QTextBlock block = edit()->document()->firstBlock();
    const LongLine &line = qobject_cast<LineLayout *>(edit()->document()->documentLayout())->longLine(block);
    const auto style = std::make_shared<LongLineStyle>(line.style().font(), line.style().givenTabDistance());
    QCOMPARE(line.width(), LongLine(block, style).width());
    QCOMPARE(cursor(), u"0,15001"_s);
}

void LongLineEditTest::bracketsAreFound()
{
    open(Words.repeated(1000));
    m_editor->putCursor(0, 18);
    QCOMPARE(m_editor->document->bracketMatch().selectedText(), u"(call, 12)"_s);
}

void LongLineEditTest::bracketsArePainted()
{
    open(Words.repeated(1000));
    m_editor->putCursor(0, 18);
    const QImage before = edit()->viewport()->grab().toImage();
    QVERIFY(screenIsPainted());
    QTRY_VERIFY(edit()->viewport()->grab().toImage() != before); // after a while
    QVERIFY(screenIsPainted());
}

void LongLineEditTest::keysWorkAnywhereInALineOfMegabytes_data()
{
    QTest::addColumn<int>("column");
    QTest::newRow("start") << 100;
    QTest::newRow("middle") << 2'500'000;
    QTest::newRow("end") << 4'999'980;
}

void LongLineEditTest::keysWorkAnywhereInALineOfMegabytes()
{
    QFETCH(const int, column);
    open(Words.repeated(5'000'000 / 30));
    m_editor->putCursor(0, column);
    const QString before = edit()->toPlainText();
    for (int i = 0; i < 5; ++i) {
        QTest::keyClicks(edit(), u"ab"_s);
        press(Qt::Key_Backspace);
        edit()->viewport()->repaint();
        QVERIFY(showsCursor());
    }
    QCOMPARE(edit()->toPlainText(), before.left(column) + u"aaaaa"_s + before.mid(column));
    QCOMPARE(edit()->textCursor().positionInBlock(), column + 5);
}

void LongLineEditTest::highlightedStartFollows()
{
    open(Words.repeated(1000));
    m_editor->putCursor(0, 20'000);
    QTest::keyClicks(edit(), u"\""_s); // behind what is highlighted
    const auto colourAt = [&](int index) {
        for (const QTextLayout::FormatRange &range : edit()->document()->firstBlock().layout()->formats()) {
            if (index >= range.start && index < range.start + range.length)
                return range.format.foreground().color();
        }
        return QColor();
    };
    QCOMPARE(colourAt(5), m_editor->formats[FormatId::Standard].foreground().color());
    QCOMPARE(colourAt(text().size() - 1), m_editor->formats[FormatId::Standard].foreground().color());
    m_editor->putCursor(0, 0);
    QTest::keyClicks(edit(), u"//"_s);
    QCOMPARE(colourAt(5), m_editor->formats[FormatId::Comment].foreground().color());
    QCOMPARE(colourAt(text().size() - 1), m_editor->formats[FormatId::Standard].foreground().color());
}

void LongLineEditTest::readOnlyTextStays()
{
    const QString line = Words.repeated(1000);
    open(line);
    edit()->setReadOnly(true);
    m_editor->putCursor(0, 15'000);
    QTest::keyClicks(edit(), u"a"_s);
    press(Qt::Key_Backspace);
    press(Qt::Key_Delete);
    QVERIFY(text() == line);
    edit()->setReadOnly(false);
    edit()->setOverwriteMode(true);
    QTest::keyClicks(edit(), u"ab"_s);
    QVERIFY(text() == QString(line).replace(15'000, 2, u"ab"_s));
}

QTEST_MAIN(LongLineEditTest)
#include "tst_longlineedit.moc"
