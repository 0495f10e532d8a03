#include "dockwindow.h"
#include <QMainWindow>
#include <QTest>

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
};

QTEST_MAIN(DockWindowTest)
#include "tst_dockwindow.moc"
