#include "memoryedit.h"
#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextFrame>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
/// A window that receives the keys that the edit does not use.
class Surroundings : public QWidget
{
public:
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent *event) override { keys.append(event->key()); }
};
} // namespace

class MemoryEditTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Surroundings> m_window;
    MemoryEdit *m_edit = nullptr;
    QStringList m_reports;

    /// Two lines of four bytes: "0010 41 42 43 44 ABCD" and the same from 45 on.
    void showBytes() const
    {
        m_edit->showLines(
            {{0x10, {{0, 0x41}, {0, 0x42}, {0, 0x43}, {0, 0x44}}}, {0x14, {{0, 0x45}, {0, 0x46}, {2, 0}, {0, 0x48}}}},
            4, 4, 1);
    }
    QString line(int para) const { return m_edit->document()->findBlockByNumber(para).text(); }
    QString cursor() const { return u"%1,%2"_s.arg(m_edit->cursorPara()).arg(m_edit->cursorIndex()); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const { QTest::keyClick(m_edit, key, modifiers); }
    void type(const QString &keys) const { QTest::keyClicks(m_edit, keys); }
    QTextCharFormat formatAt(int para, int index) const
    {
        QTextCursor cursor(m_edit->document()->findBlockByNumber(para));
        cursor.setPosition(cursor.position() + index + 1); // the format of the character before it
        return cursor.charFormat();
    }
    QString colourAt(int para, int index) const { return formatAt(para, index).foreground().color().name(); }
    QPoint pointAt(int para, int index) const
    {
        QTextCursor cursor(m_edit->document()->findBlockByNumber(para));
        cursor.setPosition(cursor.position() + index);
        const QRect rect = m_edit->cursorRect(cursor);
        return {rect.left() + 2, rect.center().y()};
    }
    /// The same text and formats in the layout that text edits usually have.
    void copyInto(QTextEdit &peer) const
    {
        peer.setLineWrapMode(QTextEdit::NoWrap);
        peer.setOverwriteMode(true);
        peer.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        peer.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        peer.setFont(m_edit->font());
        peer.setPalette(m_edit->palette());
        peer.setGeometry(m_edit->geometry());
        peer.document()->setDocumentMargin(0);
        QTextCursor end(peer.document());
        for (QTextBlock block = m_edit->document()->begin(); block.isValid(); block = block.next()) {
            if (block.blockNumber() > 0)
                end.insertBlock();
            for (auto it = block.begin(); !it.atEnd(); ++it)
                end.insertText(it.fragment().text(), it.fragment().charFormat());
        }
        QTextFrameFormat frame = peer.document()->rootFrame()->frameFormat();
        frame.setMargin(0);
        frame.setLeftMargin(4);
        peer.document()->rootFrame()->setFrameFormat(frame);
        peer.show();
    }
    static void select(QTextEdit &edit, int from, int to)
    {
        QTextCursor cursor(edit.document());
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        edit.setTextCursor(cursor);
    }
    QStringList reports() { return std::exchange(m_reports, {}); }
    static bool isTakenFromActions(QWidget *widget, int key, Qt::KeyboardModifiers modifiers, const QString &text)
    {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers, text);
        event.ignore();
        QApplication::sendEvent(widget, &event);
        return event.isAccepted();
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_window = std::make_unique<Surroundings>();
        m_edit = new MemoryEdit;
        auto *layout = new QVBoxLayout(m_window.get());
        layout->addWidget(m_edit);
        layout->addWidget(new QWidget); // for Tab to go to
        layout->itemAt(1)->widget()->setFocusPolicy(Qt::StrongFocus);
        connect(m_edit, &MemoryEdit::updateMemory, this, [this] { m_reports += u"update"_s; });
        connect(m_edit, &MemoryEdit::scrollPage, this, [this](int by) { m_reports += u"page %1"_s.arg(by); });
        connect(m_edit, &MemoryEdit::scrollLine, this, [this](int by) { m_reports += u"line %1"_s.arg(by); });
        connect(m_edit, &MemoryEdit::hexChanged, this,
                [this](int para, int index, int value) { m_reports += u"%1,%2=%3"_s.arg(para).arg(index).arg(value); });
        showBytes();
        m_window->resize(500, 300);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        m_edit->setFocus();
    }

    void cleanup()
    {
        m_window.reset();
        m_reports.clear();
    }

    void fontIsCourierInOverwriteModeWithoutScrollBars()
    {
        QVERIFY(m_edit->overwriteMode());
        QCOMPARE(m_edit->font().family(), u"Courier"_s);
        QCOMPARE(m_edit->font().pointSize(), 10);
        QCOMPARE(m_edit->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(m_edit->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    }

    void linesHaveBlueAddresses()
    {
        QCOMPARE(m_edit->toPlainText(), u"0010 41 42 43 44 ABCD\n0014 45 46 ?? 48 EF.H"_s);
        for (const int para : {0, 1}) {
            QCOMPARE(colourAt(para, 0), u"#0000ff"_s);
            QCOMPARE(colourAt(para, 3), u"#0000ff"_s);
            QVERIFY(!formatAt(para, 4).hasProperty(QTextFormat::ForegroundBrush));
        }
    }

    void theAddressIsReadableOnDarkPaper()
    {
        QPalette palette = m_edit->palette();
        palette.setColor(QPalette::Base, u"#1e1f22"_s);
        m_edit->setPalette(palette);
        showBytes();
        const QColor colour = formatAt(0, 0).foreground().color();
        QVERIFY2(colour.lightness() > 150, qPrintable(colour.name()));
        QCOMPARE(colour.hue(), QColor(u"#0000ff"_s).hue());
    }

    void changedCellsAreRedAndUnderlined()
    {
        m_edit->showLines({{0, {{0, 1, false}, {0, 2, true}, {0, 3, false}}}}, 2, 4, 1);
        QCOMPARE(line(0), u"00 01 02 03 ..."_s);
        for (const int index : {6, 7}) {
            QCOMPARE(colourAt(0, index), u"#e60000"_s);
            QVERIFY(formatAt(0, index).fontUnderline());
        }
        for (const int index : {4, 5, 8, 9}) {
            QVERIFY(!formatAt(0, index).hasProperty(QTextFormat::ForegroundBrush));
            QVERIFY(!formatAt(0, index).fontUnderline());
        }
    }

    void theLinesFitTheHeight()
    {
        const int lines = m_edit->visibleLines();
        QVERIFY(lines > 5);
        QList<MemoryLine> many(lines, MemoryLine{0, {{0, 1}}});
        m_edit->showLines(many, 8, 1, 1);
        QVERIFY(m_edit->document()->size().height() <= m_edit->viewport()->height());
        QCOMPARE(m_edit->verticalScrollBar()->maximum(), 0);
        many.append(many.first());
        m_edit->showLines(many, 8, 1, 1);
        QVERIFY(m_edit->document()->size().height() > m_edit->viewport()->height());
    }

    void linesLookAsInAnEditOfRichText_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::addColumn<bool>("changed");
        QTest::addColumn<bool>("dark");
        QTest::addColumn<QByteArray>("family");
        QTest::newRow("ordinary") << false << false << false << QByteArray("DejaVu Sans Mono");
        QTest::newRow("selected") << true << false << false << QByteArray("DejaVu Sans Mono");
        QTest::newRow("changed") << false << true << false << QByteArray("DejaVu Sans Mono");
        QTest::newRow("dark") << true << true << true << QByteArray("DejaVu Sans Mono");
        QTest::newRow("proportional font") << true << true << false << QByteArray("DejaVu Sans");
    }

    void linesLookAsInAnEditOfRichText()
    {
        QFETCH(bool, selected);
        QFETCH(bool, changed);
        QFETCH(bool, dark);
        QFETCH(QByteArray, family);
        m_edit->setTextFont(QFont(QString::fromLatin1(family), 11));
        if (dark) {
            QPalette palette = m_edit->palette();
            palette.setColor(QPalette::Base, Qt::black);
            palette.setColor(QPalette::Text, Qt::white);
            m_edit->setPalette(palette);
        }
        showBytes();
        if (changed)
            m_edit->markChanged(1, 8, 2);
        m_window->layout()->itemAt(1)->widget()->setFocus();
        QTextEdit peer(m_window.get());
        copyInto(peer);
        select(peer, selected ? 7 : 0, selected ? 30 : 0);
        select(*m_edit, selected ? 7 : 0, selected ? 30 : 0);
        const QImage shown = m_edit->viewport()->grab().toImage();
        QCOMPARE(shown.size(), peer.viewport()->size());
        QCOMPARE(shown, peer.viewport()->grab().toImage());
        for (int column = 0; column < 8; ++column) { // and characters are where they are seen
            const QPoint point = pointAt(1, column);
            QCOMPARE(m_edit->cursorForPosition(point).position(), peer.cursorForPosition(point).position());
        }
    }

    void theCharactersFitTheWidth()
    {
        const int characters = m_edit->visibleCharacters() - 3; // of which columns are made
        const MemoryLine line{0, QList<MemoryCell>((characters - 8) / 3, MemoryCell{0, 1})};
        m_edit->showLines({line}, 8, int(line.cells.size()), 2);
        m_edit->showLines({{0, QList<MemoryCell>((characters - 8) / 5, MemoryCell{0, 1})}}, 8, 1, 2);
        QVERIFY(m_edit->document()->size().width() <= m_edit->viewport()->width());
        QCOMPARE(m_edit->horizontalScrollBar()->maximum(), 0);
    }

    void typingOverADigitReplacesItAndMovesOn()
    {
        m_edit->setCursorPosition(0, 6); // the second digit of the first byte
        type(u"A"_s);
        QCOMPARE(line(0), u"0010 4A 42 43 44 ABCD"_s);
        QCOMPARE(reports(), QStringList{u"0,6=10"_s});
        QCOMPARE(cursor(), u"0,7"_s);
    }

    void smallLettersBecomeCapitals()
    {
        m_edit->setCursorPosition(1, 5);
        type(u"f"_s);
        QCOMPARE(line(1), u"0014 F5 46 ?? 48 EF.H"_s);
        QCOMPARE(reports(), QStringList{u"1,5=15"_s});
    }

    void typingOnASeparatorGoesToTheNextWord()
    {
        m_edit->setCursorPosition(0, 7);
        type(u"9"_s);
        QCOMPARE(line(0), u"0010 41 92 43 44 ABCD"_s);
        QCOMPARE(reports(), QStringList{u"0,8=9"_s});
        QCOMPARE(cursor(), u"0,9"_s);
    }

    void digitsInARowFillOneWordAfterAnother()
    {
        m_edit->setCursorPosition(0, 5);
        type(u"1234"_s);
        QCOMPARE(line(0), u"0010 12 34 43 44 ABCD"_s);
        QCOMPARE(reports(), (QStringList{u"0,5=1"_s, u"0,6=2"_s, u"0,8=3"_s, u"0,9=4"_s}));
    }

    void keypadDigitsAreTyped()
    {
        m_edit->setCursorPosition(0, 5);
        press(Qt::Key_7, Qt::KeypadModifier);
        QCOMPARE(reports(), QStringList{u"0,5=7"_s});
    }

    void spaceMovesOverASeparatorOnly()
    {
        m_edit->setCursorPosition(0, 7);
        press(Qt::Key_Space);
        QCOMPARE(cursor(), u"0,8"_s);
        press(Qt::Key_Space); // on a digit
        QCOMPARE(cursor(), u"0,8"_s);
        type(u"g-"_s);
        QCOMPARE(cursor(), u"0,8"_s);
        QCOMPARE(line(0), u"0010 41 42 43 44 ABCD"_s);
        QCOMPARE(reports(), QStringList());
    }

    void nothingIsTypedOutsideTheWords_data()
    {
        QTest::addColumn<int>("para");
        QTest::addColumn<int>("index");
        QTest::newRow("address") << 0 << 2;
        QTest::newRow("blank behind the address") << 0 << 4;
        QTest::newRow("blank before the characters") << 0 << 16;
        QTest::newRow("characters") << 0 << 17;
        QTest::newRow("end of the line") << 0 << 21;
        QTest::newRow("word without memory") << 1 << 11;
        QTest::newRow("separator before it") << 1 << 10;
    }
    void nothingIsTypedOutsideTheWords()
    {
        QFETCH(int, para);
        QFETCH(int, index);
        m_edit->setCursorPosition(para, index);
        const QString before = m_edit->toPlainText();
        type(u"5"_s);
        QCOMPARE(m_edit->toPlainText(), before);
        QCOMPARE(reports(), QStringList());
    }

    void selectionIsCollapsedToItsStart()
    {
        m_edit->setCursorPosition(0, 8);
        press(Qt::Key_Right, Qt::ShiftModifier);
        press(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(m_edit->textCursor().selectedText(), u"42"_s);
        type(u"7"_s);
        QCOMPARE(line(0), u"0010 41 72 43 44 ABCD"_s);
        QCOMPARE(reports(), QStringList{u"0,8=7"_s});
    }

    void selectionThatStartsInTheAddressIsNotOverwritten()
    {
        m_edit->setCursorPosition(0, 2);
        for (int i = 0; i < 4; ++i)
            press(Qt::Key_Right, Qt::ShiftModifier);
        type(u"7"_s);
        QCOMPARE(line(0), u"0010 41 42 43 44 ABCD"_s);
        QCOMPARE(reports(), QStringList());
    }

    void deletingKeysAndTabChangeNothing()
    {
        m_edit->setCursorPosition(0, 6);
        for (const Qt::Key key : {Qt::Key_Backspace, Qt::Key_Delete}) {
            press(key);
            QCOMPARE(cursor(), u"0,6"_s);
        }
        press(Qt::Key_Tab); // goes to the next control
        QVERIFY(!m_edit->hasFocus());
        QCOMPARE(m_edit->toPlainText(), u"0010 41 42 43 44 ABCD\n0014 45 46 ?? 48 EF.H"_s);
        QCOMPARE(m_window->keys, QList<int>());
    }

    void keysMoveTheCursorAndShiftSelects()
    {
        m_edit->setCursorPosition(0, 6);
        press(Qt::Key_Home);
        QCOMPARE(cursor(), u"0,0"_s);
        press(Qt::Key_End);
        QCOMPARE(cursor(), u"0,21"_s);
        press(Qt::Key_Right);
        QCOMPARE(cursor(), u"1,0"_s);
        press(Qt::Key_Left);
        QCOMPARE(cursor(), u"0,21"_s);
        m_edit->setCursorPosition(0, 6);
        press(Qt::Key_Down);
        QCOMPARE(cursor(), u"1,6"_s);
        press(Qt::Key_Up);
        QCOMPARE(cursor(), u"0,6"_s);
        press(Qt::Key_Down, Qt::ShiftModifier);
        press(Qt::Key_Home, Qt::ShiftModifier);
        QCOMPARE(m_edit->textCursor().selectedText(), u"1 42 43 44 ABCD\u2029"_s);
    }

    void returnAsksForTheUpdate()
    {
        press(Qt::Key_Return);
        press(Qt::Key_Enter);
        QCOMPARE(reports(), (QStringList{u"update"_s, u"update"_s}));
    }

    void pageKeysScroll()
    {
        press(Qt::Key_PageUp);
        press(Qt::Key_PageDown);
        press(Qt::Key_Up, Qt::ControlModifier);
        press(Qt::Key_Down, Qt::ControlModifier);
        QCOMPARE(reports(), (QStringList{u"page -1"_s, u"page 1"_s, u"line -1"_s, u"line 1"_s}));
    }

    void controlCCopies()
    {
        QApplication::clipboard()->setText(u"before"_s);
        m_edit->setCursorPosition(0, 5);
        press(Qt::Key_Right, Qt::ShiftModifier);
        press(Qt::Key_Right, Qt::ShiftModifier);
        press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"41"_s);
        QCOMPARE(reports(), QStringList());
        QCOMPARE(line(0), u"0010 41 42 43 44 ABCD"_s);
    }

    void readOnlyTextIsNotChanged()
    {
        m_edit->setReadOnly(true);
        QVERIFY(m_edit->isReadOnly());
        m_edit->setCursorPosition(0, 5);
        type(u"9"_s);
        press(Qt::Key_Return);
        QCOMPARE(line(0), u"0010 41 42 43 44 ABCD"_s);
        QCOMPARE(reports(), QStringList());
        press(Qt::Key_Right); // the cursor moves, for copying
        QCOMPARE(cursor(), u"0,6"_s);
        press(Qt::Key_PageDown);
        QCOMPARE(reports(), QStringList{u"page 1"_s});
    }

    void nothingIsPastedOrDropped()
    {
        const QString before = m_edit->toPlainText();
        QApplication::clipboard()->setText(u"99"_s);
        m_edit->setCursorPosition(0, 5);
        press(Qt::Key_V, Qt::ControlModifier);
        m_edit->paste();
        QVERIFY(!m_edit->canPaste());
        QVERIFY(!m_edit->acceptDrops());
        QVERIFY(!m_edit->viewport()->acceptDrops());
        QVERIFY(!m_edit->testAttribute(Qt::WA_InputMethodEnabled));
        press(Qt::Key_Z, Qt::ControlModifier);
        press(Qt::Key_X, Qt::ControlModifier);
        QTest::mouseClick(m_edit->viewport(), Qt::MiddleButton, {}, pointAt(0, 6));
        QCOMPARE(m_edit->toPlainText(), before);
    }

    void mousePlacesTheCursorAndSelects()
    {
        QTest::mouseClick(m_edit->viewport(), Qt::LeftButton, {}, pointAt(1, 6));
        QCOMPARE(cursor(), u"1,6"_s);
        QTest::mouseClick(m_edit->viewport(), Qt::LeftButton, Qt::ShiftModifier, pointAt(1, 9));
        QCOMPARE(m_edit->textCursor().selectedText(), u"5 4"_s);
        QTest::mouseDClick(m_edit->viewport(), Qt::LeftButton, {}, pointAt(0, 8));
        QCOMPARE(m_edit->textCursor().selectedText(), u"42"_s);
    }

    void pressOnASelectionStartsANewOne()
    {
        m_edit->setCursorPosition(0, 8);
        press(Qt::Key_End, Qt::ShiftModifier);
        QTest::mousePress(m_edit->viewport(), Qt::LeftButton, {}, pointAt(0, 9));
        QVERIFY(!m_edit->textCursor().hasSelection()); // kept, if it could be dragged away
        QTest::mouseRelease(m_edit->viewport(), Qt::LeftButton, {}, pointAt(0, 9));
    }

    void usedKeysAreTakenFromActions()
    {
        const auto taken = [&](int key, Qt::KeyboardModifiers modifiers = {}, const QString &text = {}) {
            return isTakenFromActions(m_edit, key, modifiers, text);
        };
        for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Return, Qt::Key_Enter, Qt::Key_PageUp,
                                  Qt::Key_PageDown, Qt::Key_Home, Qt::Key_Down, Qt::Key_Space})
            QVERIFY2(taken(key), qPrintable(QString::number(key)));
        QVERIFY(taken(Qt::Key_C, Qt::ControlModifier));
        QVERIFY(taken(Qt::Key_Up, Qt::ControlModifier));
        QVERIFY(taken(Qt::Key_A, {}, u"a"_s));
        QVERIFY(!taken(Qt::Key_F5));
        QVERIFY(!taken(Qt::Key_A, Qt::ControlModifier));
        QVERIFY(!taken(Qt::Key_Left, Qt::AltModifier));
        QVERIFY(!taken(Qt::Key_Tab));
    }

    void keysOfTheWindowArePassedOn()
    {
        m_edit->setCursorPosition(0, 5);
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_A, Qt::AltModifier);
        QVERIFY(m_window->keys.contains(Qt::Key_A));
        QCOMPARE(line(0), u"0010 41 42 43 44 ABCD"_s);
        QCOMPARE(reports(), QStringList());
    }

    void theCursorStaysWhenTheTextIsReplaced()
    {
        m_edit->setCursorPosition(1, 6);
        showBytes();
        QCOMPARE(cursor(), u"1,6"_s);
        m_edit->showLines({{0, {{0, 1}}}}, 2, 1, 1);
        QCOMPARE(cursor(), u"0,6"_s);
        m_edit->showLines({}, 2, 1, 1);
        QCOMPARE(m_edit->toPlainText(), QString());
        type(u"5"_s);
        QCOMPARE(m_edit->toPlainText(), QString());
    }

    void selectionStaysWhenValuesChange()
    {
        m_edit->setCursorPosition(0, 8);
        press(Qt::Key_Down, Qt::ShiftModifier);
        press(Qt::Key_Left, Qt::ShiftModifier);
        m_edit->showLines(
            {{0x10, {{0, 0x51}, {0, 0x52}, {0, 0x53}, {0, 0x54}}}, {0x14, {{0, 0x55}, {0, 0x56}, {2, 0}, {0, 0x58}}}},
            4, 4, 1);
        QCOMPARE(m_edit->textCursor().selectedText(), u"52 53 54 QRST\u20290014 55"_s);
        QCOMPARE(cursor(), u"1,7"_s);
        press(Qt::Key_Left, Qt::ShiftModifier); // goes on at the same end
        QCOMPARE(m_edit->textCursor().selectedText(), u"52 53 54 QRST\u20290014 5"_s);
    }

    void selectionEndsWhenOtherAddressesAreShown()
    {
        m_edit->setCursorPosition(0, 5);
        press(Qt::Key_Right, Qt::ShiftModifier);
        m_edit->showLines(
            {{0x20, {{0, 0x41}, {0, 0x42}, {0, 0x43}, {0, 0x44}}}, {0x24, {{0, 0x45}, {0, 0x46}, {2, 0}, {0, 0x48}}}},
            4, 4, 1);
        QVERIFY(!m_edit->textCursor().hasSelection());
        QCOMPARE(cursor(), u"0,6"_s);
    }

    void narrowTextIsScrolledBack()
    {
        m_edit->setFixedWidth(m_edit->fontMetrics().horizontalAdvance(u'X') * 8);
        QCoreApplication::processEvents();
        m_edit->setCursorPosition(0, 0);
        press(Qt::Key_End);
        QVERIFY(m_edit->horizontalScrollBar()->value() > 0);
        showBytes();
        QCOMPARE(m_edit->horizontalScrollBar()->value(), 0);
        QCOMPARE(m_edit->verticalScrollBar()->value(), 0);
    }

    void placesOutsideTheTextBecomeTheNearestOnes()
    {
        for (const int para : {-1, 2, 1000}) {
            m_edit->markChanged(para, 0, 2);
            m_edit->setCursorPosition(para, 1000);
        }
        m_edit->markChanged(0, -1, 2);
        m_edit->markChanged(0, 20, 2);
        QCOMPARE(cursor(), u"1,21"_s);
        QVERIFY(!formatAt(0, 20).fontUnderline());
    }
};

QTEST_MAIN(MemoryEditTest)
#include "tst_memoryedit.moc"
