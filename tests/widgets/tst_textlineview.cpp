#include "linesource.h"
#include "textlineview.h"
#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
using Place = TextLineView::Place;
using Calls = QList<QVariantList>;

struct Lines : ILineSource
{
    QString line(int index) override
    {
        asked << index;
        return lines.value(index);
    }
    int lineCount() override { return count ? count : int(lines.size()); }

    QStringList lines;
    int count = 0; ///< if not that of the lines
    QList<int> asked;
};

QStringList numbered(int count)
{
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines << u"line %1\n"_s.arg(i);
    return lines;
}

/// A view 10 rows high and 40 columns wide.
struct Fixture
{
    explicit Fixture(const QStringList &lines = numbered(100))
    {
        source.lines = lines;
        view = std::make_unique<TextLineView>(&source);
        view->setFrameStyle(QFrame::NoFrame);
        view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->setFont(QFont(u"DejaVu Sans Mono"_s, 10));
        view->resize(40 * view->charWidth(), 10 * view->lineHeight());
        view->show();
        view->activateWindow();
        view->setFocus();
        [[maybe_unused]] const bool shown = QTest::qWaitForWindowActive(view.get());
    }
    [[nodiscard]] QString cursor() const
    {
        return u"%1,%2"_s.arg(view->cursorPlace().line).arg(view->cursorPlace().column);
    }
    [[nodiscard]] QString selection() const
    {
        const Place a = view->selectionStart();
        const Place b = view->selectionEnd();
        return view->hasSelection() ? u"%1,%2-%3,%4"_s.arg(a.line).arg(a.column).arg(b.line).arg(b.column) : QString();
    }
    [[nodiscard]] QPoint at(int row, int column) const
    {
        return {column * view->charWidth() + 2, row * view->lineHeight() + 2};
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const { QTest::keyClick(view.get(), key, modifiers); }
    void drag(const QPoint &to) const
    {
        QMouseEvent move(QEvent::MouseMove, to, view->viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(view->viewport(), &move);
    }
    [[nodiscard]] QImage image() const { return view->viewport()->grab().toImage(); }
    /// Whether a cell contains a colour.
    [[nodiscard]] bool has(const QImage &image, int row, int column, const QColor &colour) const
    {
        for (int y = row * view->lineHeight(); y < (row + 1) * view->lineHeight(); ++y) {
            for (int x = column * view->charWidth(); x < (column + 1) * view->charWidth(); ++x) {
                if (image.pixelColor(x, y).rgb() == colour.rgb())
                    return true;
            }
        }
        return false;
    }

    Lines source;
    std::unique_ptr<TextLineView> view;
};
} // namespace

class TextLineViewTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support )"_s)); }

    void contentsAre160ColumnsWide()
    {
        Fixture f;
        QCOMPARE(f.view->contentsWidth(), 160 * f.view->charWidth());
        QCOMPARE(f.view->contentsHeight(), 100 * f.view->lineHeight());
    }

    void startsInBlackOnWhite()
    {
        Lines source;
        TextLineView view(&source);
        QCOMPARE(view.palette().color(QPalette::Text), QColor(Qt::black));
        QCOMPARE(view.palette().color(QPalette::Base), QColor(Qt::white));
        QCOMPARE(view.focusPolicy(), Qt::StrongFocus);
    }

    void longerLinesWidenTheContents()
    {
        Fixture f({QString(300, u'x')});
        f.view->grab();
        QTRY_COMPARE(f.view->contentsWidth(), 300 * f.view->charWidth());
    }

    void asksForTheLinesOnScreenOnly()
    {
        Fixture f;
        f.source.count = 300'000'000;
        f.view->linesChanged();
        f.view->setContentsPos(0, 1000ll * f.view->lineHeight());
        f.source.asked.clear();
        f.view->viewport()->grab();
        std::ranges::sort(f.source.asked);
        QVERIFY(f.source.asked.size() < 40);
        for (const int line : std::as_const(f.source.asked))
            QVERIFY(line == 0 || (line >= 999 && line <= 1011)); // and the cursor's
    }

    void lastOfManyLinesCanBeReached()
    {
        Fixture f;
        f.source.count = 300'000'000;
        f.view->linesChanged();
        f.key(Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(f.view->cursorPlace().line, 299'999'999);
        QVERIFY(f.view->isCursorVisible());
        QCOMPARE(f.view->contentsY(), (299'999'999ll - 9) * f.view->lineHeight());
    }

    void keysMoveTheCursor_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("control");
        QTest::addColumn<QString>("to");
        const auto row = [](const char *name, const char *from, Qt::Key key, bool control, const char *to) {
            QTest::newRow(name) << QString::fromLatin1(from) << int(key) << control << QString::fromLatin1(to);
        };
        row("home", "5,3", Qt::Key_Home, false, "5,0");
        row("start of the file", "5,3", Qt::Key_Home, true, "0,0");
        row("end, before the line end", "5,0", Qt::Key_End, false, "5,6");
        row("end of the file", "5,0", Qt::Key_End, true, "99,7");
        row("left", "5,3", Qt::Key_Left, false, "5,2");
        row("left at the start", "5,0", Qt::Key_Left, false, "5,0");
        row("right", "5,3", Qt::Key_Right, false, "5,4");
        row("right behind the end", "5,80", Qt::Key_Right, false, "5,81");
        row("up", "5,3", Qt::Key_Up, false, "4,3");
        row("up in the first line", "0,3", Qt::Key_Up, false, "0,3");
        row("down", "5,3", Qt::Key_Down, false, "6,3");
        row("down in the last line", "99,3", Qt::Key_Down, false, "99,3");
        row("page up", "55,3", Qt::Key_PageUp, false, "45,3");
        row("page up near the start", "5,3", Qt::Key_PageUp, false, "0,3");
        row("page down", "55,3", Qt::Key_PageDown, false, "65,3");
        row("page down near the end", "95,3", Qt::Key_PageDown, false, "99,3");
    }

    void keysMoveTheCursor()
    {
        QFETCH(QString, from);
        QFETCH(int, key);
        QFETCH(bool, control);
        Fixture f;
        f.view->setCursor(from.section(u',', 0, 0).toInt(), from.section(u',', 1).toInt());
        f.key(Qt::Key(key), control ? Qt::ControlModifier : Qt::NoModifier);
        QTEST(f.cursor(), "to");
        QVERIFY(f.view->isCursorVisible());
    }

    void otherKeysArePassedOn()
    {
        Fixture f;
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_Tab, Qt::Key_Return, Qt::Key_Delete, Qt::Key_Escape}) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, u"a"_s);
            event.accept();
            QApplication::sendEvent(f.view.get(), &event);
            QVERIFY(!event.isAccepted() || key == Qt::Key_Tab); // Tab moves the focus
        }
        QKeyEvent alt(QEvent::KeyPress, Qt::Key_Left, Qt::AltModifier);
        QApplication::sendEvent(f.view.get(), &alt);
        QVERIFY(!alt.isAccepted()); // a shortcut of other views: go back
    }

    void keysWithShiftSelect()
    {
        Fixture f;
        f.view->setCursor(5, 3);
        f.key(Qt::Key_Right, Qt::ShiftModifier);
        f.key(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(f.selection(), u"5,3-6,4"_s);
        f.key(Qt::Key_Up, Qt::ShiftModifier);
        f.key(Qt::Key_Home, Qt::ShiftModifier);
        QCOMPARE(f.selection(), u"5,0-5,3"_s);
        f.key(Qt::Key_Right);
        QVERIFY(!f.view->hasSelection());
    }

    void cursorScrollsIntoSight()
    {
        Fixture f;
        QSignalSpy moved(f.view.get(), &TextLineView::cursorPositionChanged);
        f.view->setCursor(50, 2);
        QCOMPARE(moved, Calls({{50, 2}}));
        QCOMPARE(f.view->contentsY(), (50 - 10 + 2) * f.view->lineHeight() - f.view->lineHeight() + 1);
        f.view->setCursor(49, 2); // in sight: nothing moves
        const qint64 y = f.view->contentsY();
        QCOMPARE(f.view->contentsY(), y);
        f.view->setCursor(-5, -5);
        QCOMPARE(f.cursor(), u"0,0"_s);
        QCOMPARE(f.view->contentsY(), 0);
        f.view->setCursor(0, 150);
        QVERIFY(f.view->contentsX() > 100 * f.view->charWidth());
    }

    void gotoLineIgnoresTheLastLine()
    {
        Fixture f;
        f.view->gotoLine(50);
        QCOMPARE(f.cursor(), u"49,0"_s);
        const qint64 below = f.view->contentsY() + f.view->visibleHeight() - 49ll * f.view->lineHeight();
        QVERIFY(below > 4 * f.view->lineHeight()); // with four lines around it
        for (const int line : {0, -1, 100, 101}) {
            f.view->gotoLine(line);
            QCOMPARE(f.cursor(), u"49,0"_s);
        }
        f.view->gotoLine(99);
        QCOMPARE(f.cursor(), u"98,0"_s);
    }

    void clickPutsTheCursorAndEndsTheSelection()
    {
        Fixture f;
        f.view->setSelection({1, 1}, {2, 2});
        f.view->setContentsPos(0, 20 * f.view->lineHeight());
        QTest::mouseClick(f.view->viewport(), Qt::LeftButton, {}, f.at(3, 4));
        QCOMPARE(f.cursor(), u"23,4"_s);
        QVERIFY(!f.view->hasSelection());
        QTest::mouseClick(f.view->viewport(), Qt::LeftButton, {}, f.at(3, 30)); // behind the end of the line
        QCOMPARE(f.cursor(), u"23,30"_s);
        QTest::mouseClick(f.view->viewport(), Qt::LeftButton, Qt::ShiftModifier, f.at(5, 1));
        QCOMPARE(f.selection(), u"23,30-25,1"_s);
        QTest::mouseClick(f.view->viewport(), Qt::RightButton, {}, f.at(1, 1));
        QCOMPARE(f.selection(), u"23,30-25,1"_s);
    }

    void dragSelects()
    {
        Fixture f;
        QSignalSpy changed(f.view.get(), &TextLineView::selectionChanged);
        QTest::mousePress(f.view->viewport(), Qt::LeftButton, {}, f.at(4, 4));
        QVERIFY(changed.isEmpty() || !f.view->hasSelection());
        f.drag(f.at(6, 2));
        QCOMPARE(f.selection(), u"4,4-6,2"_s);
        QCOMPARE(f.cursor(), u"6,2"_s);
        f.drag(f.at(2, 1));
        QCOMPARE(f.selection(), u"2,1-4,4"_s);
        QTest::mouseRelease(f.view->viewport(), Qt::LeftButton, {}, f.at(2, 1));
        f.drag(f.at(8, 8));
        QCOMPARE(f.selection(), u"2,1-4,4"_s);
        QVERIFY(!changed.isEmpty());
    }

    void dragBeyondTheEdgeScrollsByTheTimer()
    {
        Fixture f;
        QTest::mousePress(f.view->viewport(), Qt::LeftButton, {}, f.at(4, 4));
        f.drag(QPoint(f.at(4, 4).x(), 12 * f.view->lineHeight()));
        QCOMPARE(f.cursor(), u"4,4"_s); // until the timer
        f.view->selectTimeout();
        QCOMPARE(f.cursor(), u"7,4"_s);
        QTRY_VERIFY(f.view->cursorPlace().line > 12); // the timer runs
        QVERIFY(f.view->contentsY() > 0);
        f.drag(f.at(5, 5));
        const QString stopped = f.cursor();
        f.view->selectTimeout();
        QCOMPARE(f.cursor(), stopped);
        f.drag(QPoint(-3 * f.view->charWidth(), f.at(5, 5).y()));
        f.view->selectTimeout();
        QCOMPARE(f.view->cursorPlace().column, 2);
        QTest::mouseRelease(f.view->viewport(), Qt::LeftButton, {}, {});
    }

    void endsOfASelectionAreOrdered()
    {
        Fixture f;
        f.view->setSelection({4, 1}, {2, 5});
        QCOMPARE(f.selection(), u"2,5-4,1"_s);
        f.view->setSelection({4, 5}, {4, 1});
        QCOMPARE(f.selection(), u"4,1-4,5"_s);
        f.view->setSelection({4, 5}, {4, 5});
        QVERIFY(!f.view->hasSelection());
        f.view->setBlockMode(true);
        f.view->setSelection({4, 1}, {2, 5});
        QCOMPARE(f.selection(), u"2,1-4,5"_s);
    }

    void selectedTextJoinsLines_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("selection");
        QTest::addColumn<bool>("block");
        QTest::addColumn<QString>("text");
        const QStringList lines{u"first\n"_s, u"second\n"_s, u"third\n"_s};
        QTest::newRow("none") << lines << u"0,0-0,0"_s << false << QString();
        QTest::newRow("part of a line") << lines << u"1,1-1,4"_s << false << u"eco"_s;
        QTest::newRow("across lines") << lines << u"0,2-2,2"_s << false << u"rst\nsecond\nth"_s;
        QTest::newRow("without line ends") << QStringList{u"ab"_s, u"cd"_s} << u"0,1-1,1"_s << false << u"b\nc"_s;
        QTest::newRow("block") << lines << u"0,1-2,3"_s << true << u"ir\nec\nhi"_s;
        QTest::newRow("block behind short lines") << QStringList{u"long line\n"_s, u"x\n"_s, u"y\n"_s, u"long line\n"_s}
                                                  << u"0,5-3,9"_s << true << u"line\n\n\nline"_s;
        QTest::newRow("empty piece of a line")
            << QStringList{u"a\n"_s, QString(), u"b"_s} << u"0,0-2,1"_s << false << u"a\n\nb"_s;
        QTest::newRow("markup") << QStringList{u"<b>a&nbsp;b</b>c\n"_s, u"d"_s} << u"0,1-1,1"_s << false << u" bc\nd"_s;
        QTest::newRow("behind the end") << lines << u"0,4-0,90"_s << false << u"t\n"_s;
    }

    void selectedTextJoinsLines()
    {
        QFETCH(QStringList, lines);
        QFETCH(QString, selection);
        QFETCH(bool, block);
        Fixture f(lines);
        f.view->setBlockMode(block);
        const auto place = [&](int i) {
            const QString text = selection.section(u'-', i, i);
            return Place{text.section(u',', 0, 0).toInt(), text.section(u',', 1).toInt()};
        };
        f.view->setSelection(place(0), place(1));
        QTEST(f.view->selectedText(), "text");
    }

    void copyPutsTheSelectionOnTheClipboard()
    {
        Fixture f;
        QGuiApplication::clipboard()->setText(u"before"_s);
        f.view->copy();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"before"_s);
        f.view->setSelection({1, 0}, {2, 4});
        f.view->copy();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"line 1\nline"_s);
    }

    void wholeTextIsSelectedAndReturnedUpToALimit()
    {
        Fixture f(numbered(3));
        f.view->selectAll();
        QCOMPARE(f.selection(), u"0,0-2,6"_s);
        QCOMPARE(f.view->selectedText(), u"line 0\nline 1\nline 2"_s);
        QCOMPARE(f.view->selectedText(9), u"line 0\nli"_s);
        Fixture empty(numbered(0));
        empty.view->selectAll();
        QVERIFY(!empty.view->hasSelection());
    }

    void selectionIsPaintedWithFocusOnly()
    {
        Fixture f;
        f.view->setSelection({2, 2}, {4, 2});
        const QColor highlight = f.view->palette().color(QPalette::Highlight);
        QImage image = f.image();
        QVERIFY(!f.has(image, 2, 1, highlight));
        QVERIFY(f.has(image, 2, 2, highlight));
        QVERIFY(f.has(image, 2, 35, highlight)); // to the end of the row
        QVERIFY(f.has(image, 3, 0, highlight));
        QVERIFY(f.has(image, 4, 1, highlight));
        QVERIFY(!f.has(image, 4, 2, highlight));
        f.view->clearFocus();
        QVERIFY(!f.has(f.image(), 3, 0, highlight));
    }

    void matchIsPaintedWithoutFocusUntilTheSelectionChanges()
    {
        Fixture f;
        f.view->clearFocus();
        const QColor highlight = f.view->palette().color(QPalette::Highlight);
        f.view->showMatch({2, 2}, {2, 4});
        QVERIFY(f.has(f.image(), 2, 2, highlight));
        f.view->setSelection({2, 2}, {2, 4});
        QVERIFY(!f.has(f.image(), 2, 2, highlight));
    }

    void blockSelectionIsPaintedInColumns()
    {
        Fixture f;
        f.view->setBlockMode(true);
        f.view->setSelection({2, 2}, {4, 5});
        const QColor highlight = f.view->palette().color(QPalette::Highlight);
        const QImage image = f.image();
        for (const int row : {2, 3, 4}) {
            QVERIFY(!f.has(image, row, 1, highlight));
            QVERIFY(f.has(image, row, 2, highlight));
            QVERIFY(f.has(image, row, 4, highlight));
            QVERIFY(!f.has(image, row, 5, highlight));
        }
    }

    void markupIsInterpretedWhenPainted()
    {
        Fixture plain({u"x bold\n"_s});
        Fixture marked({u"x <b>bold</b>\n"_s});
        Fixture coloured({u"x <font color=\"#c00000\">bold</font>\n"_s});
        for (Fixture *f : {&plain, &marked, &coloured})
            f->view->clearFocus();
        QCOMPARE(marked.view->visibleText(), u"x bold\n"_s);
        QVERIFY(marked.image() != plain.image());
        const QRect behind(7 * plain.view->charWidth(), 0, 20 * plain.view->charWidth(), plain.view->lineHeight());
        QCOMPARE(marked.image().copy(behind), plain.image().copy(behind)); // no tag is shown
        const QRect before(0, 0, plain.view->charWidth(), plain.view->lineHeight());
        QCOMPARE(marked.image().copy(before), plain.image().copy(before));
        QVERIFY(coloured.has(coloured.image(), 0, 2, QColor(0xc0, 0, 0)));
    }

    void plainAndMarkedUpTextLookTheSame()
    {
        Fixture plain({u"plain text = 12;\n"_s});
        Fixture marked({u"plain <x>text&nbsp;= 12;\n"_s});
        Fixture span({u"<span>plain</span> text<i></i> = 12;\n"_s});
        for (Fixture *f : {&plain, &marked, &span})
            f->view->clearFocus();
        QCOMPARE(marked.image(), plain.image());
        QCOMPARE(span.image(), plain.image());
    }

    void cursorBlinksWithFocusOnly()
    {
        Fixture f({QString(), QString()});
        const auto cursorShown = [&] { return f.has(f.image(), 1, 0, Qt::black); };
        f.view->setCursor(1, 0);
        QVERIFY(cursorShown());
        f.view->blinkCursor();
        QVERIFY(!cursorShown());
        f.view->blinkCursor();
        QVERIFY(cursorShown());
        f.view->clearFocus();
        QVERIFY(!cursorShown());
    }

    void linesKeepTheirPlaceWhenTheyGetOtherNumbers()
    {
        Fixture f;
        f.view->setCursor(45, 2);
        f.view->setSelection({44, 1}, {46, 3});
        f.view->setContentsPos(0, 40ll * f.view->lineHeight() + 5);
        QCOMPARE(f.view->heldLines(), (QList<int>{40, 45, 44, 46, 44}));
        f.source.lines = numbered(200);
        f.view->setHeldLines({140, 145, 144, 146, 144});
        QCOMPARE(f.view->contentsY(), 140ll * f.view->lineHeight() + 5);
        QCOMPARE(f.cursor(), u"145,2"_s);
        QCOMPARE(f.selection(), u"144,1-146,3"_s);
    }

    void fewerLinesMoveTheView()
    {
        Fixture f;
        f.view->setContentsPos(0, 80ll * f.view->lineHeight());
        f.source.lines = numbered(20);
        f.view->linesChanged();
        QCOMPARE(f.view->contentsY(), 10ll * f.view->lineHeight());
        f.source.lines.clear();
        f.view->linesChanged();
        QCOMPARE(f.view->contentsY(), 0);
        f.key(Qt::Key_End, Qt::ControlModifier);
        f.key(Qt::Key_Down);
        f.key(Qt::Key_PageDown);
        QCOMPARE(f.view->cursorPlace().line, 0);
        QVERIFY(!f.image().isNull());
    }

    void textOnScreenIsAProperty()
    {
        Fixture f;
        f.view->setContentsPos(0, 50ll * f.view->lineHeight());
        QVERIFY(f.view->property("text").toString().startsWith(u"line 50\nline 51\n"_s));
    }
};

QTEST_MAIN(TextLineViewTest)
#include "tst_textlineview.moc"
