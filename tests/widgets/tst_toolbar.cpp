#include "toolbar.h"
#include <QMainWindow>
#include <QTest>

using namespace Qt::StringLiterals;

class ToolBarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        // The offscreen platform warns for every window about functions that it does not support.
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
    }

    void togglesBetweenShownAndHidden()
    {
        QMainWindow window;
        auto *bar = new ToolBar(&window);
        window.addToolBar(bar);
        window.show();
        QVERIFY(bar->isVisible());
        bar->toggleVisible();
        QVERIFY(!bar->isVisible());
        bar->toggleVisible();
        QVERIFY(bar->isVisible());
    }

    void toolBarOfAHiddenWindowCountsAsShown()
    {
        QMainWindow window;
        auto *bar = new ToolBar(&window);
        window.addToolBar(bar);
        bar->toggleVisible();
        window.show();
        QVERIFY(!bar->isVisible());
    }

    void slotCanBeInvokedByName()
    {
        ToolBar bar;
        bar.show();
        QVERIFY(QMetaObject::invokeMethod(&bar, "toggleVisible"));
        QVERIFY(bar.isHidden());
    }
};

QTEST_MAIN(ToolBarTest)
#include "tst_toolbar.moc"
