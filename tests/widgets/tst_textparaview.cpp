#include "linesource.h"
#include "rowpainter.h"
#include "textparamarkerwidget.h"
#include "textparaview.h"
#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
using Place = TextParaView::Place;
using Calls = QList<QVariantList>;

struct Paras : IParaSource
{
    QStringList para(int index) override
    {
        asked << index;
        if (whenAsked)
            whenAsked();
        return paras(index);
    }
    int paraCount() override { return count; }
    bool fetch(int index, int) override { return !isSlow || isReady(index); }

    std::function<QStringList(int)> paras;
    std::function<bool(int)> isReady;
    bool isSlow = false; ///< whether isReady counts
    std::function<void()> whenAsked;
    int count = 1000;
    QList<int> asked;
};

/// Every fourth paragraph has a line; every sixteenth two source lines above it.
QStringList instructions(int index)
{
    if (index % 4 != 0)
        return {};
    QStringList lines;
    if (index % 16 == 0)
        lines << u"source %1 a"_s.arg(index) << u"source %1 b"_s.arg(index);
    return lines << u"<b>code</b>&nbsp;%1"_s.arg(index);
}

/// A view 10 rows high.
struct Fixture
{
    explicit Fixture(const std::function<QStringList(int)> &paras = instructions, int count = 1000)
    {
        source.paras = paras;
        source.count = count;
        view = std::make_unique<TextParaView>(&source);
        margin = std::make_unique<TextParaMarkerWidget>(view.get());
        margin->setPictures([](const QString &) {
            QPixmap picture(10, 10);
            picture.fill(Qt::red);
            return picture;
        });
        view->setFrameStyle(QFrame::NoFrame);
        view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->setFont(QFont(u"DejaVu Sans Mono"_s, 10));
        view->resize(400, 10 * view->lineHeight());
        margin->setLineHeight(view->lineHeight());
        margin->resize(MarkerWidget::Width, 10 * view->lineHeight());
        view->show();
        view->activateWindow();
        view->setFocus();
        [[maybe_unused]] const bool shown = QTest::qWaitForWindowActive(view.get());
    }
    [[nodiscard]] QString row(int number) const { return view->visibleText().section(u'\n', number, number); }
    [[nodiscard]] QString cursor() const
    {
        const Place place = view->cursorPlace();
        return u"%1,%2,%3"_s.arg(place.para).arg(place.line).arg(place.column);
    }
    [[nodiscard]] QPoint at(int row, int column) const
    {
        return {column * view->charWidth() + 2, row * view->lineHeight() + 2};
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const { QTest::keyClick(view.get(), key, modifiers); }

    Paras source;
    std::unique_ptr<TextParaView> view;
    std::unique_ptr<TextParaMarkerWidget> margin;
};
} // namespace

class TextParaViewTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support )"_s)); }

    void showsLinesFromTheTop()
    {
        Fixture f;
        QCOMPARE(f.row(0), u"source 0 a"_s);
        QCOMPARE(f.row(1), u"source 0 b"_s);
        QCOMPARE(f.row(2), u"code 0"_s);
        QCOMPARE(f.row(3), u"code 4"_s); // paragraphs without lines take no row
        QCOMPARE(f.row(6), u"source 16 a"_s);
        QCOMPARE(f.view->verticalScrollBar()->minimum(), 0);
        QCOMPARE(f.view->verticalScrollBar()->maximum(), 999);
        QCOMPARE(f.view->verticalScrollBar()->pageStep(), 10);
    }

    void asksForWhatIsOnScreenOnly()
    {
        Fixture f(instructions, 2'000'000'000);
        f.source.asked.clear();
        f.view->gotoPara(1'000'000'000);
        const auto [first, last] = std::ranges::minmax(f.source.asked);
        QVERIFY(first >= 1'000'000'000);
        QVERIFY(last < 1'000'000'000 + 50);
        f.source.asked.clear();
        QVERIFY(!f.view->grab().isNull());
        f.view->nextLine();
        QVERIFY(f.source.asked.size() < 10); // what is known is not asked for again
        f.source.asked.clear();
        f.view->reload();
        QVERIFY(!f.source.asked.isEmpty());
    }

    void newViewIsAskedForItsTargetOnly()
    {
        Paras source;
        source.paras = instructions;
        TextParaView view(&source);
        view.resize(400, 10 * view.lineHeight());
        view.show();
        view.showPara(600);
        QCoreApplication::processEvents();
        QVERIFY(view.visibleText().contains(u"600"_s));
        QVERIFY(std::ranges::min(source.asked) > 400);
    }

    void scrollsByLines()
    {
        Fixture f;
        QSignalSpy moving(f.view.get(), &ScrollView::contentsMoving);
        f.view->nextLine();
        QCOMPARE(f.row(0), u"source 0 b"_s);
        QCOMPARE(moving.takeFirst(), (QVariantList{0, qint64(1)}));
        f.view->nextLine();
        f.view->nextLine();
        QCOMPARE(f.row(0), u"code 4"_s);
        QCOMPARE(f.view->verticalScrollBar()->value(), 4);
        f.view->prevLine();
        QCOMPARE(f.row(0), u"code 0"_s);
        QCOMPARE(f.view->topLine(), 2); // the last line of the paragraph before
        f.view->prevLine();
        f.view->prevLine();
        moving.clear();
        f.view->prevLine();
        QVERIFY(moving.isEmpty());
        QCOMPARE(f.row(0), u"source 0 a"_s);
    }

    void scrollsByPages()
    {
        Fixture f;
        const QString tenth = f.row(9);
        f.view->nextPage();
        f.view->prevLine();
        QCOMPARE(f.row(0), tenth);
        f.view->nextLine();
        f.view->prevPage();
        QCOMPARE(f.row(0), u"source 0 a"_s);
        f.view->gotoPara(996);
        f.view->nextPage();
        QCOMPARE(f.row(0), u"code 996"_s);
    }

    void barScrollsByLinesAndGoesToParagraphs()
    {
        Fixture f;
        QScrollBar *bar = f.view->verticalScrollBar();
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        QCOMPARE(f.row(0), u"source 0 b"_s);
        QCOMPARE(bar->value(), 0);
        bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
        QCOMPARE(f.row(0), u"source 0 a"_s);
        bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
        QCOMPARE(f.row(0), u"code 20"_s.replace(u"20"_s, QString::number(f.view->topPara())));
        QVERIFY(f.view->topPara() > 10);
        bar->triggerAction(QAbstractSlider::SliderPageStepSub);
        QCOMPARE(f.view->topPara(), 0);
        bar->setValue(100);
        QCOMPARE(f.row(0), u"code 100"_s);
        bar->setValue(101); // no paragraph with lines: the next one that has some
        QCOMPARE(f.row(0), u"code 104"_s);
    }

    void wheelScrollsByLines()
    {
        Fixture f;
        const auto turn = [&](int angle) {
            QWheelEvent wheel({5, 5}, f.view->viewport()->mapToGlobal(QPointF(5, 5)), {}, {0, angle}, Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(f.view->viewport(), &wheel);
        };
        turn(-120);
        QCOMPARE(f.row(0), u"code 4"_s);
        turn(60);
        turn(60);
        QCOMPARE(f.row(0), u"source 0 a"_s);
    }

    void longGapTakesOneRow()
    {
        const auto sparse = [](int index) {
            return index == 0 || index >= 100'000 ? QStringList{u"code %1"_s.arg(index)} : QStringList();
        };
        Fixture f(sparse, 200'000'000);
        QCOMPARE(f.row(0), u"code 0"_s);
        QCOMPARE(f.row(1), u"..."_s);
        QVERIFY(f.source.asked.size() < 12 * (TextParaView::LongestGap + 2));
        f.view->gotoPara(100'000);
        QCOMPARE(f.row(0), u"code 100000"_s);
        f.view->prevLine();
        QCOMPARE(f.row(0), u"..."_s);
    }

    void sourceWithoutParagraphsIsEmpty()
    {
        Fixture f(instructions, 0);
        QCOMPARE(f.view->rowCount(), 0);
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Right})
            f.key(key, Qt::ControlModifier);
        QTest::mouseClick(f.view->viewport(), Qt::LeftButton, {}, {30, 30});
        f.view->selectAll();
        f.view->copy();
        QVERIFY(!f.view->grab().isNull());
        QCOMPARE(f.view->cursorPlace().para, 0);
    }

    void keysMoveTheCursor()
    {
        Fixture f;
        f.view->setCursor({0, 0, 3});
        f.key(Qt::Key_Down);
        QCOMPARE(f.cursor(), u"0,1,3"_s);
        f.key(Qt::Key_Down);
        f.key(Qt::Key_Down);
        QCOMPARE(f.cursor(), u"4,0,3"_s);
        f.key(Qt::Key_Up);
        QCOMPARE(f.cursor(), u"0,2,3"_s);
        f.key(Qt::Key_Left);
        f.key(Qt::Key_Right);
        f.key(Qt::Key_Right);
        QCOMPARE(f.cursor(), u"0,2,4"_s);
        f.key(Qt::Key_Home);
        QCOMPARE(f.cursor(), u"0,2,0"_s);
        f.key(Qt::Key_Left);
        QCOMPARE(f.cursor(), u"0,2,0"_s);
        f.key(Qt::Key_End);
        QCOMPARE(f.cursor(), u"0,2,6"_s);
        f.key(Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(f.view->cursorPlace().para, 999);
        f.key(Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(f.cursor(), u"0,0,0"_s);
        QVERIFY(f.view->isCursorVisible());
        for (int i = 0; i < 15; ++i)
            f.key(Qt::Key_Down);
        QVERIFY(f.view->isCursorVisible());
        QVERIFY(f.view->topPara() > 0);
    }

    void pageKeysScrollTheView()
    {
        Fixture f;
        f.key(Qt::Key_PageDown);
        const int top = f.view->topPara();
        QVERIFY(top > 0);
        QCOMPARE(f.view->cursorPlace().para, top); // in the same row as before
        f.key(Qt::Key_PageUp);
        QCOMPARE(f.view->topPara(), 0);
    }

    void otherKeysArePassedOn()
    {
        Fixture f;
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_Return, Qt::Key_Escape}) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
            QApplication::sendEvent(f.view.get(), &event);
            QVERIFY(!event.isAccepted());
        }
        QKeyEvent back(QEvent::KeyPress, Qt::Key_Left, Qt::AltModifier);
        QApplication::sendEvent(f.view.get(), &back);
        QVERIFY(!back.isAccepted());
    }

    void clickPutsTheCursorIntoTheParagraph()
    {
        Fixture f;
        QSignalSpy clicked(f.view.get(), &TextParaView::clicked);
        QSignalSpy moved(f.view.get(), &TextParaView::cursorPositionChanged);
        QTest::mouseClick(f.view->viewport(), Qt::LeftButton, {}, f.at(3, 2));
        QCOMPARE(f.cursor(), u"4,0,2"_s);
        QCOMPARE(clicked.size(), 1);
        QCOMPARE(moved, Calls({{4, 2}}));
        int para = 0;
        int line = 0;
        QVERIFY(f.view->rowToPara(7, &para, &line));
        QCOMPARE(para, 16);
        QCOMPARE(line, 1);
        QVERIFY(!f.view->rowToPara(90, &para, &line));
        QVERIFY(!f.view->rowToPara(-1, &para, &line));
    }

    void dragSelectsAcrossParagraphs()
    {
        Fixture f;
        QSignalSpy clicked(f.view.get(), &TextParaView::clicked);
        QTest::mousePress(f.view->viewport(), Qt::LeftButton, {}, f.at(1, 7));
        QMouseEvent move(QEvent::MouseMove, f.at(3, 4), f.view->viewport()->mapToGlobal(f.at(3, 4)), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(f.view->viewport(), &move);
        QTest::mouseRelease(f.view->viewport(), Qt::LeftButton, {}, f.at(3, 4));
        QVERIFY(clicked.isEmpty());
        QCOMPARE(f.view->selectedText(), u"0 b\ncode 0\ncode"_s);
        f.view->copy();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"0 b\ncode 0\ncode"_s);
        f.key(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(f.view->selectedText(), u"0 b\ncode 0\ncode 4\ncode"_s);
        f.key(Qt::Key_Down);
        QVERIFY(!f.view->hasSelection());
        f.view->setSelection({4, 0, 2}, {0, 2, 2});
        QCOMPARE(f.view->selectedText(), u"de 0\nco"_s);
        QCOMPARE(f.view->selectedText(3), u"de "_s);
    }

    void matchIsPaintedWithoutFocusUntilTheSelectionChanges()
    {
        const Fixture f;
        const auto isHighlighted = [&] {
            const QImage image = f.view->viewport()->grab().toImage();
            return image.pixelColor(f.at(0, 2)) == f.view->palette().color(QPalette::Highlight)
                   || image.pixelColor(f.at(0, 2) + QPoint(0, f.view->lineHeight() - 3))
                          == f.view->palette().color(QPalette::Highlight);
        };
        f.view->clearFocus();
        f.view->showMatch({0, 0, 1}, {0, 0, 6});
        QVERIFY(isHighlighted());
        f.view->setSelection({0, 0, 1}, {0, 0, 6});
        QVERIFY(!isHighlighted());
    }

    void dragBeyondTheEdgeScrolls()
    {
        Fixture f;
        QTest::mousePress(f.view->viewport(), Qt::LeftButton, {}, f.at(3, 2));
        const QPoint below(20, 13 * f.view->lineHeight());
        QMouseEvent move(QEvent::MouseMove, below, f.view->viewport()->mapToGlobal(below), Qt::NoButton, Qt::LeftButton,
                         {});
        QApplication::sendEvent(f.view->viewport(), &move);
        QTRY_VERIFY(f.view->topPara() > 0);
        QVERIFY(f.view->hasSelection());
        QTest::mouseRelease(f.view->viewport(), Qt::LeftButton, {}, {});
    }

    void paragraphIsShownInTheMiddle()
    {
        Fixture f;
        const int middle = f.view->viewport()->height() / f.view->lineHeight() / 2;
        f.view->showPara(500);
        QCOMPARE(f.cursor(), u"500,0,0"_s);
        QCOMPARE(f.row(middle), u"code 500"_s);
        f.view->showPara(504); // in sight: nothing moves
        QCOMPARE(f.row(middle), u"code 500"_s);
        f.view->showPara(512);
        QCOMPARE(f.cursor(), u"512,2,0"_s); // the instruction, not its source
        QVERIFY(f.view->isCursorVisible());
    }

    void bandLiesBehindTheInstruction()
    {
        Fixture f;
        f.view->setBands([](int para) { return para == 0 ? QColor(Qt::green) : QColor(); });
        const QImage image = f.view->viewport()->grab().toImage();
        QString banded;
        for (int row = 0; row < 5; ++row) {
            const QColor colour = image.pixelColor(image.width() - 2, row * f.view->lineHeight() + 2);
            banded += colour == QColor(Qt::green) ? u'x' : u'.';
        }
        QCOMPARE(banded, u"..x.."_s); // its source lines have none
    }

    /// Grey that is readable on white is made darker on a band.
    void textOnABandIsReadable()
    {
        const QColor band(0xff, 0xf2, 0xa8);
        Fixture f([](int) { return QStringList{u"<font color=\"#808080\">MMMMMMMM</font>"_s}; });
        f.view->setBands([&band](int para) { return para == 0 ? band : QColor(); });
        const QImage image = f.view->viewport()->grab().toImage();
        const auto darkest = [&](int row) {
            int least = 255;
            for (int y = row * f.view->lineHeight() + 1; y < (row + 1) * f.view->lineHeight(); ++y) {
                for (int x = 4 * f.view->charWidth(); x < 8 * f.view->charWidth(); ++x) // the cursor is before
                    least = std::min(least, qGray(image.pixel(x, y)));
            }
            return least;
        };
        QVERIFY(darkest(0) <= qGray(readableOn(band, QColor(u"#808080"_s)).rgb()) + 3);
        QVERIFY(darkest(1) > qGray(readableOn(band, QColor(u"#808080"_s)).rgb()) + 3);
    }

    void marksStandBesideTheInstruction()
    {
        Fixture f;
        f.margin->setMarker(1, 0x01, true, false); // of paragraph 0, with its source lines
        f.margin->setMarker(5, 0x01, true, false);
        const QImage image = f.margin->grab().toImage();
        QString marked;
        for (int row = 0; row < 10; ++row)
            marked += image.pixelColor(5, row * f.view->lineHeight() + f.view->lineHeight() / 2) == QColor(Qt::red)
                          ? u'x'
                          : u'.';
        QCOMPARE(marked, u"..xx......"_s);
    }

    void clickInTheMarginTogglesAParagraph()
    {
        Fixture f;
        QSignalSpy toggled(f.margin.get(), &MarkerWidget::toggleBreakpoint);
        QTest::mouseClick(f.margin.get(), Qt::LeftButton, {}, {5, f.view->lineHeight() + 2}); // a source line
        QTest::mouseClick(f.margin.get(), Qt::LeftButton, {}, {5, 3 * f.view->lineHeight() + 2});
        QCOMPARE(toggled, Calls({{1}, {5}}));
        f.margin->resize(18, 5000);
        QTest::mouseClick(f.margin.get(), Qt::LeftButton, {}, {5, 4500}); // below the last row
        QCOMPARE(toggled.size(), 2);
    }

    void arrowLeadsFromRowToRow()
    {
        Fixture f;
        const QImage before = f.margin->grab().toImage();
        f.margin->setArrow(4, 16);
        const QImage image = f.margin->grab().toImage();
        const int x = MarkerWidget::Width - 4;
        const auto changed = [&](int row) {
            const int y = row * f.view->lineHeight() + 1;
            return image.pixelColor(x, y) != before.pixelColor(x, y);
        };
        QVERIFY(!changed(3));
        for (const int row : {4, 5, 6, 7, 8})
            QVERIFY(changed(row));
        QVERIFY(!changed(9));
        f.margin->setArrow(16, 900); // to below the screen
        QVERIFY(f.margin->grab().toImage() != image);
        f.margin->setArrow(-1, -1);
        QCOMPARE(f.margin->grab().toImage(), before);
    }

    void sourceMayDestroyTheView()
    {
        for (const int round : {0, 1, 2, 3, 4}) {
            Fixture f;
            f.view->setSelection({0, 0, 0}, {900, 0, 0});
            f.source.whenAsked = [&] {
                f.source.whenAsked = nullptr;
                f.margin.reset();
                f.view.reset();
            };
            TextParaView *view = f.view.get();
            if (round == 0)
                view->gotoPara(400);
            else if (round == 1)
                view->reload();
            else if (round == 2)
                view->showPara(700);
            else if (round == 3)
                QCOMPARE(view->selectedText().isEmpty(), false);
            else
                view->nextPage();
            QVERIFY(!f.view);
        }
    }

    // A source that needs time --------------------------------------------------

    void rowsStayUntilTheSourceHasNewOnes()
    {
        Fixture f;
        QSignalSpy loaded(f.view.get(), &ParaScrollView::loaded);
        QSignalSpy waitsLong(f.view.get(), &ParaScrollView::waitsLong);
        f.source.isSlow = true;
        f.source.isReady = [](int) { return false; };
        f.source.paras = [](int index) { return QStringList{u"new %1"_s.arg(index)}; };
        f.view->reload();
        QVERIFY(f.view->isWaiting());
        QCOMPARE(f.row(2), u"code 0"_s);
        QTRY_COMPARE(waitsLong.size(), 1);
        QCOMPARE(f.row(2), u"code 0"_s);
        QVERIFY(loaded.isEmpty());
        f.source.isSlow = false;
        QTRY_COMPARE(loaded.size(), 1);
        QCOMPARE(f.row(2), u"new 2"_s);
        QVERIFY(!f.view->isWaiting());
        QCOMPARE(waitsLong.size(), 1);
    }

    void firstRowsAreDotsUntilTheSourceHasThem()
    {
        Paras source;
        source.paras = instructions;
        source.isSlow = true;
        source.isReady = [](int) { return false; };
        TextParaView view(&source);
        view.resize(400, 300);
        view.show();
        QTRY_COMPARE(view.visibleText(), u"...\n"_s);
        source.isSlow = false;
        QTRY_VERIFY(view.visibleText().startsWith(u"source 0 a\n"_s));
    }

    void jumpIsFinishedWhenTheSourceHasTheParagraphs()
    {
        Fixture f;
        QSignalSpy moved(f.view.get(), &TextParaView::cursorPositionChanged);
        f.source.isSlow = true;
        f.source.isReady = [](int index) { return index < 300; };
        f.view->showPara(400);
        QCOMPARE(f.cursor(), u"400,0,0"_s);
        QCOMPARE(moved.size(), 1);
        QCOMPARE(f.row(2), u"code 0"_s);
        f.source.isReady = [](int index) { return index >= 400; }; // the lines above are still missing
        QTRY_COMPARE(f.row(0), u"source 400 a"_s);
        QVERIFY(f.view->isWaiting());
        f.source.isSlow = false;
        QTRY_VERIFY(!f.view->isWaiting());
        QCOMPARE(f.row(f.view->viewport()->height() / f.view->lineHeight() / 2), u"source 400 a"_s);
        QCOMPARE(f.cursor(), u"400,2,0"_s); // on its last line
    }

    void pagesAreScrolledWhenTheSourceHasThem()
    {
        Fixture f;
        f.source.isSlow = true;
        f.source.isReady = [](int index) { return index < 24; }; // the first 10 rows, and some more
        f.key(Qt::Key_Down);
        f.key(Qt::Key_PageDown);
        QVERIFY(f.view->isWaiting());
        QCOMPARE(f.cursor(), u"0,1,0"_s);
        f.source.isSlow = false;
        QTRY_VERIFY(!f.view->isWaiting());
        QCOMPARE(f.row(0), u"code 24"_s);
        QCOMPARE(f.cursor(), u"28,0,0"_s); // stays in the second row
        f.key(Qt::Key_PageUp);
        QCOMPARE(f.row(0), u"source 0 a"_s);
    }

    void cursorBelowTheScreenBecomesTheLowestLineLater()
    {
        Fixture f;
        f.source.isSlow = true;
        f.source.isReady = [](int index) { return index < 60; };
        f.view->setCursor({80, 2, 0});
        QVERIFY(f.view->isWaiting());
        f.source.isSlow = false;
        QTRY_VERIFY(!f.view->isWaiting());
        QCOMPARE(f.row(9), u"code 80"_s);
    }

    void laterMoveReplacesWhatIsAwaited()
    {
        Fixture f;
        f.source.isSlow = true;
        f.source.isReady = [](int index) { return index < 300; };
        f.view->showPara(400);
        f.view->gotoPara(16);
        QVERIFY(!f.view->isWaiting());
        f.source.isSlow = false;
        QTest::qWait(0);
        QCOMPARE(f.row(0), u"source 16 a"_s);
        f.source.isSlow = true;
        f.view->showPara(800);
        f.view->setCursor({16, 0, 0});
        f.source.isSlow = false;
        QTRY_VERIFY(!f.view->isWaiting());
        QCOMPARE(f.cursor(), u"16,0,0"_s);
    }

    void linesInTimeAreThoseThatTheSourceHas()
    {
        Fixture f;
        f.source.isSlow = true;
        f.source.isReady = [](int index) { return index < 300; };
        QCOMPARE(f.view->linesInTime(0)->size(), 3);
        QVERIFY(f.view->linesInTime(301 - 2)->isEmpty());
        QVERIFY(!f.view->linesInTime(400));
        QVERIFY(f.view->linesInTime(5000)->isEmpty()); // there is no such paragraph
        QCOMPARE(f.view->linesOf(400).size(), 3);      // waits
    }

    void fewerParagraphsMoveTheView()
    {
        Fixture f;
        f.view->gotoPara(900);
        f.source.count = 100;
        f.view->reload();
        QCOMPARE(f.view->topPara(), 99);
        f.source.count = 0;
        f.view->reload();
        QCOMPARE(f.view->rowCount(), 0);
    }
};

QTEST_MAIN(TextParaViewTest)
#include "tst_textparaview.moc"
