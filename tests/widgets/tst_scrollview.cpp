#include "scrollview.h"
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
/// A view of 200 by 100 pixels.
struct Fixture
{
    Fixture()
    {
        view.setFrameStyle(QFrame::NoFrame);
        view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setSteps(8, 16);
        view.resize(200, 100);
        view.show();
    }
    ScrollView view;
};
} // namespace

class ScrollViewTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support )"_s)); }

    void positionStaysInTheContents()
    {
        Fixture f;
        f.view.resizeContents(300, 1000);
        f.view.setContentsPos(500, 5000);
        QCOMPARE(f.view.contentsX(), 100);
        QCOMPARE(f.view.contentsY(), 900);
        f.view.setContentsPos(-1, -1);
        QCOMPARE(f.view.contentsX(), 0);
        QCOMPARE(f.view.contentsY(), 0);
        f.view.setContentsPos(100, 900);
        f.view.resizeContents(100, 50);
        QCOMPARE(f.view.contentsX(), 0);
        QCOMPARE(f.view.contentsY(), 0);
    }

    void announcesMovesOnlyOnce()
    {
        Fixture f;
        f.view.resizeContents(300, 1000);
        QSignalSpy moving(&f.view, &ScrollView::contentsMoving);
        f.view.setContentsPos(10, 20);
        QCOMPARE(moving.takeFirst(), (QVariantList{10, qint64(20)}));
        f.view.setContentsPos(10, 20);
        QVERIFY(moving.isEmpty());
        f.view.verticalScrollBar()->setValue(30);
        QCOMPARE(moving.takeFirst(), (QVariantList{10, qint64(30)}));
    }

    void barsFollowTheContentsAndScrollThem()
    {
        Fixture f;
        f.view.resizeContents(300, 1000);
        f.view.setContentsPos(10, 20);
        QCOMPARE(f.view.horizontalScrollBar()->value(), 10);
        QCOMPARE(f.view.verticalScrollBar()->value(), 20);
        f.view.verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        QCOMPARE(f.view.contentsY(), 36);
        f.view.verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
        QCOMPARE(f.view.contentsY(), 136);
        f.view.horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        QCOMPARE(f.view.contentsX(), 18);
    }

    void contentsMayBeHigherThanTheRangeOfABar()
    {
        Fixture f;
        const qint64 height = 300'000'000ll * 17;
        f.view.resizeContents(300, height);
        f.view.setContentsPos(0, height);
        QCOMPARE(f.view.contentsY(), height - 100);
        QCOMPARE(f.view.verticalScrollBar()->value(), f.view.verticalScrollBar()->maximum());
        f.view.setContentsPos(0, 12345678901ll % height);
        QCOMPARE(f.view.contentsY(), 12345678901ll % height); // exactly, whatever the bar can express
        f.view.horizontalScrollBar()->setValue(5);
        QCOMPARE(f.view.contentsY(), 12345678901ll % height);
        f.view.verticalScrollBar()->setValue(f.view.verticalScrollBar()->maximum());
        QCOMPARE(f.view.contentsY(), height - 100);
        f.view.verticalScrollBar()->setValue(0);
        QCOMPARE(f.view.contentsY(), 0);
    }

    void scrollsOnlyAsFarAsAPlaceNeedsToBeVisible()
    {
        Fixture f;
        f.view.resizeContents(1000, 1000);
        f.view.ensureVisible(50, 50, 0, 10);
        QCOMPARE(f.view.contentsY(), 0);
        f.view.ensureVisible(0, 95, 0, 10);
        QCOMPARE(f.view.contentsY(), 6);
        f.view.ensureVisible(0, 500, 0, 1000); // margins larger than the view: in the middle
        QCOMPARE(f.view.contentsY(), 450);
        f.view.ensureVisible(0, 300, 0, 10);
        QCOMPARE(f.view.contentsY(), 290);
        f.view.ensureVisible(250, 300, 20, 10);
        QCOMPARE(f.view.contentsX(), 71);
    }

    void resizingKeepsThePositionInTheContents()
    {
        Fixture f;
        f.view.resizeContents(300, 1000);
        f.view.setContentsPos(0, 900);
        f.view.resize(200, 300);
        QCOMPARE(f.view.contentsY(), 700);
        QCOMPARE(f.view.bottomContentsY(), 700);
    }
};

QTEST_MAIN(ScrollViewTest)
#include "tst_scrollview.moc"
