#include "dockfit.h"
#include "dockwindow.h"
#include <algorithm>
#include <QMainWindow>
#include <QTest>
#include <QToolBar>

namespace {
/// Four dock windows above each other at the right edge, each at least 130 pixels high.
struct Column
{
    explicit Column(const QSize &size)
    {
        keepDocksFitting(window);
        for (int i = 0; i < 4; ++i) {
            docks.append(new DockWindow(QString::number(i), QString::number(i), &window));
            docks.last()->setWidget(new QWidget);
            docks.last()->widget()->setMinimumSize(150, 130);
            window.addDockWidget(Qt::RightDockWidgetArea, docks.last());
        }
        window.resize(size);
        window.show();
        settle();
    }

    void settle() const
    {
        for (int round = 0; round < 10; ++round)
            QCoreApplication::processEvents();
    }

    /// The vertical places of those that are not behind another one.
    QList<int> placesBeside() const
    {
        QList<int> places;
        for (const DockWindow *dock : docks) {
            if (!dock->visibleRegion().isEmpty())
                places.append(dock->y());
        }
        return places;
    }

    int beside() const { return int(placesBeside().size()); }

    QList<QRect> geometries() const
    {
        QList<QRect> all;
        for (const DockWindow *dock : docks)
            all.append(dock->geometry());
        return all;
    }

    QMainWindow window;
    QList<DockWindow *> docks;
};
} // namespace

class DockWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support)"))); }

    void toggleHidesAndShows()
    {
        QMainWindow window;
        DockWindow dock(QStringLiteral("one"), QStringLiteral("One"));
        window.addDockWidget(Qt::RightDockWidgetArea, &dock);
        window.show();
        dock.toggleVisible();
        QVERIFY(dock.isHidden());
        dock.toggleVisible();
        QVERIFY(dock.isVisible());
    }

    void toggleBringsAWindowBehindAnotherToTheFront()
    {
        QMainWindow window;
        DockWindow one(QStringLiteral("one"), QStringLiteral("One"));
        DockWindow two(QStringLiteral("two"), QStringLiteral("Two"));
        window.addDockWidget(Qt::RightDockWidgetArea, &one);
        window.addDockWidget(Qt::RightDockWidgetArea, &two);
        window.tabifyDockWidget(&one, &two);
        window.resize(400, 300);
        window.show();
        two.raise();
        QTRY_VERIFY(one.visibleRegion().isEmpty());
        one.toggleVisible();
        QVERIFY(!one.isHidden());
        QTRY_VERIFY(!one.visibleRegion().isEmpty());
        one.toggleVisible();
        QVERIFY(one.isHidden());
    }

    void windowDoesNotGrowForADock_data()
    {
        QTest::addColumn<Qt::DockWidgetArea>("area");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("beside"); ///< how many stand beside each other
        QTest::newRow("column with room") << Qt::RightDockWidgetArea << QSize(500, 900) << 4;
        QTest::newRow("low window") << Qt::RightDockWidgetArea << QSize(500, 420) << 2;
        QTest::newRow("lower window") << Qt::LeftDockWidgetArea << QSize(500, 250) << 1;
        QTest::newRow("row with room") << Qt::BottomDockWidgetArea << QSize(900, 500) << 4;
        QTest::newRow("narrow window") << Qt::BottomDockWidgetArea << QSize(350, 500) << 2;
    }

    void windowDoesNotGrowForADock()
    {
        QFETCH(Qt::DockWidgetArea, area);
        QFETCH(QSize, size);
        QMainWindow window;
        QList<DockWindow *> docks;
        for (int i = 0; i < 4; ++i) {
            auto *dock = new DockWindow(QString::number(i), QString::number(i), &window);
            auto *content = new QWidget;
            content->setMinimumSize(150, 130);
            dock->setWidget(content);
            window.addDockWidget(area, dock);
            dock->hide();
            docks.append(dock);
        }
        window.resize(size);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        for (DockWindow *dock : std::as_const(docks)) {
            dock->toggleVisible();
            for (int round = 0; round < 10; ++round)
                QCoreApplication::processEvents();
            QCOMPARE(window.size(), size);
            QVERIFY(!dock->visibleRegion().isEmpty());
        }
        const auto seen = [](const DockWindow *dock) { return !dock->visibleRegion().isEmpty(); };
        QTEST(int(std::ranges::count_if(docks, seen)), "beside");
    }

    void dockOfAnotherEdgeMakesRoom()
    {
        QMainWindow window;
        const auto add = [&window](Qt::DockWidgetArea area) {
            auto *dock = new DockWindow(QString::number(window.children().size()), {}, &window);
            dock->setWidget(new QWidget);
            dock->widget()->setMinimumHeight(100);
            window.addDockWidget(area, dock);
            return dock;
        };
        DockWindow *one = add(Qt::RightDockWidgetArea);
        DockWindow *two = add(Qt::RightDockWidgetArea);
        DockWindow *top = add(Qt::TopDockWidgetArea);
        top->hide();
        window.resize(500, 320);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        top->bringUp();
        QCoreApplication::processEvents();
        QCOMPARE(window.height(), 320);
        QCOMPARE(window.tabifiedDockWidgets(one), QList<QDockWidget *>{two});
        QVERIFY(!top->visibleRegion().isEmpty());
    }

    /// As of a list and a plot that stand above each other in a narrow place.
    void contentsMayNeedMoreRoomWhenTheyAreLaidOut()
    {
        class Content : public QWidget
        {
            void resizeEvent(QResizeEvent *) override { setMinimumHeight(200); }
        };
        QMainWindow window;
        QList<DockWindow *> docks;
        for (int i = 0; i < 2; ++i) {
            auto *dock = new DockWindow(QString::number(i), QString::number(i), &window);
            dock->setWidget(new Content);
            window.addDockWidget(Qt::RightDockWidgetArea, dock);
            dock->hide();
            docks.append(dock);
        }
        window.resize(500, 350);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        for (DockWindow *dock : std::as_const(docks)) {
            dock->bringUp();
            QTRY_COMPARE(window.tabifiedDockWidgets(dock).size(), dock == docks.last() ? 1 : 0);
            QTRY_COMPARE(window.height(), 350);
        }
    }

    /// Beside a column that is wider than it has to be.
    void dockInARowMakesTheColumnBesideItNarrower()
    {
        QMainWindow window;
        window.setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
        window.setCentralWidget(new QWidget);
        const auto add = [&window](Qt::DockWidgetArea area, int width) {
            auto *dock = new DockWindow({}, {}, &window);
            dock->setWidget(new QWidget);
            dock->widget()->setMinimumWidth(width);
            window.addDockWidget(area, dock);
            return dock;
        };
        DockWindow *column = add(Qt::LeftDockWidgetArea, 100);
        add(Qt::RightDockWidgetArea, 200);
        DockWindow *one = add(Qt::BottomDockWidgetArea, 200);
        DockWindow *two = add(Qt::BottomDockWidgetArea, 350);
        two->hide();
        window.resize(700, 500);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.resizeDocks({column}, {250}, Qt::Horizontal);
        QTRY_COMPARE(column->width(), 250);
        two->bringUp();
        QTRY_VERIFY(two->geometry().right() < window.width());
        QCOMPARE(window.width(), 700);
        QVERIFY(!one->visibleRegion().isEmpty());
        QVERIFY(column->width() >= 100);
    }

    /// As when a session starts and lists get tabs for each processor.
    void windowDoesNotGrowWhenContentsNeedMoreRoom()
    {
        QMainWindow window;
        keepDocksFitting(window);
        QList<DockWindow *> docks;
        for (int i = 0; i < 2; ++i) {
            docks.append(new DockWindow(QString::number(i), QString::number(i), &window));
            docks.last()->setWidget(new QWidget);
            docks.last()->widget()->setMinimumHeight(100);
            window.addDockWidget(Qt::RightDockWidgetArea, docks.last());
        }
        window.resize(500, 350);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(window.tabifiedDockWidgets(docks[0]).isEmpty());
        docks[0]->widget()->setMinimumHeight(250);
        QTRY_COMPARE(window.tabifiedDockWidgets(docks[0]), QList<QDockWidget *>{docks[1]});
        for (int round = 0; round < 10; ++round)
            QCoreApplication::processEvents();
        QCOMPARE(window.size(), QSize(500, 350));
        docks[0]->widget()->setMinimumHeight(400); // there is nothing left to join
        QTRY_VERIFY(window.height() > 400);
        window.resize(500, 200); // the user cannot make it smaller than its contents
        QVERIFY(window.height() > 400);
    }

    void docksReturnToTheirPlacesWhenThereIsRoom_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("beside"); ///< how many stand beside each other
        QTest::newRow("room for one more") << QSize(500, 420) << 2;
        QTest::newRow("room for all but one") << QSize(500, 560) << 3;
        QTest::newRow("room for all") << QSize(500, 900) << 4;
        QTest::newRow("only wider") << QSize(900, 250) << 1;
    }

    void docksReturnToTheirPlacesWhenThereIsRoom()
    {
        QFETCH(QSize, size);
        Column column(QSize(500, 250));
        QCOMPARE(column.beside(), 1);
        column.window.resize(size);
        QFETCH(int, beside);
        QTRY_COMPARE(column.beside(), beside);
        QCOMPARE(column.window.size(), size);
        QVERIFY(std::ranges::is_sorted(column.placesBeside()));
        column.window.resize(500, 250); // and again
        QTRY_COMPARE(column.beside(), 1);
        QCOMPARE(column.window.size(), QSize(500, 250));
        column.window.resize(500, 900);
        QTRY_COMPARE(column.beside(), 4);
        QVERIFY(std::ranges::is_sorted(column.placesBeside()));
    }

    void nestedDocksReturnToTheirPlaces()
    {
        Column column(QSize(500, 900));
        column.window.splitDockWidget(column.docks[0], column.docks[3], Qt::Horizontal);
        column.window.tabifyDockWidget(column.docks[1], column.docks[2]);
        column.settle();
        const QList<QRect> before = column.geometries();
        QVERIFY(before[0].left() < before[3].left());
        column.docks[0]->widget()->setMinimumHeight(780);
        QTRY_COMPARE(column.beside(), 2);
        column.docks[0]->widget()->setMinimumHeight(130);
        column.window.resize(500, 1200);
        QTRY_COMPARE(column.beside(), 3);
        column.window.resize(500, 900);
        column.settle();
        QCOMPARE(column.window.tabifiedDockWidgets(column.docks[1]), QList<QDockWidget *>{column.docks[2]});
        QVERIFY(column.window.tabifiedDockWidgets(column.docks[3]).isEmpty());
        QCOMPARE(column.docks[3]->y(), column.docks[0]->y());
        QVERIFY(column.docks[3]->x() > column.docks[0]->x());
    }

    void dockThatTheUserHidesMakesRoomForTheOthers()
    {
        Column column(QSize(500, 420));
        QCOMPARE(column.beside(), 2);
        column.docks[1]->hide();
        column.docks[3]->hide();
        QTRY_COMPARE(column.window.tabifiedDockWidgets(column.docks[0]).size(), 0);
        QTRY_COMPARE(column.window.tabifiedDockWidgets(column.docks[2]).size(), 0);
        QVERIFY(column.docks[1]->isHidden());
        QVERIFY(column.docks[3]->isHidden());
        QVERIFY(column.docks[0]->y() < column.docks[2]->y());
    }

    void changesOfTheUserWhileDocksAreJoinedRemain()
    {
        Column column(QSize(500, 250));
        auto *one = new QToolBar(QStringLiteral("one"), &column.window);
        auto *two = new QToolBar(QStringLiteral("two"), &column.window);
        for (QToolBar *bar : {one, two}) {
            bar->setObjectName(bar->windowTitle());
            bar->addWidget(new QWidget)->setVisible(true);
        }
        column.docks[2]->hide();
        column.docks[3]->setFloating(true);
        column.window.addToolBar(Qt::LeftToolBarArea, two);
        column.window.addToolBar(Qt::LeftToolBarArea, one);
        column.settle();
        column.window.resize(500, 900);
        QTRY_COMPARE(column.window.tabifiedDockWidgets(column.docks[0]).size(), 0);
        QVERIFY(column.docks[2]->isHidden());
        QVERIFY(column.docks[3]->isFloating());
        QCOMPARE(column.window.toolBarArea(one), Qt::LeftToolBarArea);
        QCOMPARE(column.window.toolBarArea(two), Qt::LeftToolBarArea);
        column.settle();
        QVERIFY(two->y() < one->y());
    }

    void dockInFrontStaysInFront()
    {
        Column column(QSize(500, 250));
        column.docks[1]->raise();
        column.settle();
        QVERIFY(!column.docks[1]->visibleRegion().isEmpty());
        column.window.resize(500, 420);
        QTRY_COMPARE(column.beside(), 2);
        QVERIFY(!column.docks[1]->visibleRegion().isEmpty());
    }

    void dockThatTheUserMovesMakesTheLayoutTheUsersOwn()
    {
        Column column(QSize(500, 250));
        column.window.addDockWidget(Qt::LeftDockWidgetArea, column.docks[3]);
        column.settle();
        column.window.resize(500, 900);
        column.settle();
        QCOMPARE(column.window.dockWidgetArea(column.docks[3]), Qt::LeftDockWidgetArea);
        QVERIFY(column.window.tabifiedDockWidgets(column.docks[3]).isEmpty());
        QCOMPARE(column.window.tabifiedDockWidgets(column.docks[0]).size(), 2);
    }

    /// A layout that requests another one would use the whole time of a processor.
    void windowThatIsLaidOutRequestsNoFurtherLayout()
    {
        struct Counter : QObject
        {
            bool eventFilter(QObject *, QEvent *event) override
            {
                requests += int(event->type() == QEvent::LayoutRequest);
                return false;
            }
            int requests = 0;
        } counter;
        QMainWindow window;
        keepDocksFitting(window);
        for (const Qt::DockWidgetArea area :
             {Qt::RightDockWidgetArea, Qt::RightDockWidgetArea, Qt::BottomDockWidgetArea}) {
            auto *dock = new DockWindow(QStringLiteral("dock"), QStringLiteral("dock"), &window);
            dock->setWidget(new QWidget);
            dock->widget()->setMinimumHeight(300); // more than there is room for
            window.addDockWidget(area, dock);
        }
        window.resize(500, 350);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        for (int round = 0; round < 20; ++round)
            QCoreApplication::processEvents();
        window.installEventFilter(&counter);
        for (int round = 0; round < 20; ++round)
            QCoreApplication::processEvents();
        QCOMPARE(counter.requests, 0);
    }
};

QTEST_MAIN(DockWindowTest)
#include "tst_dockwindow.moc"
