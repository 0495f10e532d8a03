#include "toolbar.h"
#include <QMainWindow>
#include <QTest>
#include <QToolButton>

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

    void buttonForItemsThatDoNotFitHasAName()
    {
        QMainWindow window;
        auto *bar = new ToolBar(&window);
        bar->setObjectName(u"bar"_s);
        window.addToolBar(bar);
        for (int i = 0; i < 20; ++i)
            bar->addAction(u"A long text of an action"_s);
        window.resize(300, 200);
        window.show();
        const auto *more = bar->findChild<QToolButton *>(u"qt_toolbar_ext_button"_s);
        QVERIFY(more && more->isVisible());
        QCOMPARE(more->accessibleName(), u"More"_s);
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
