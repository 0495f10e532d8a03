#include "toolbar.h"
#include "toolbarrows.h"
#include <QMainWindow>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

class ToolBarTest : public QObject
{
    Q_OBJECT

    /// Makes the window wide enough for @p count bars in a row.
    static void resizeFor(QMainWindow &window, const QList<QToolBar *> &bars, int count)
    {
        window.resize(count * bars.first()->sizeHint().width() + 20, 300);
    }

    /// Three tool bars of the same width.
    static QList<QToolBar *> addBars(QMainWindow &window)
    {
        QList<QToolBar *> bars;
        for (const QString &name : {u"a"_s, u"b"_s, u"c"_s}) {
            auto *bar = new ToolBar(&window);
            bar->setObjectName(name);
            bar->setMovable(false);
            for (int i = 0; i < 6; ++i)
                bar->addAction(u"Button"_s); // those that do not fit are hidden
            window.addToolBar(bar);
            bars.append(bar);
        }
        return bars;
    }

    /// The numbers of the rows in which the bars are.
    static QString rows(const QList<QToolBar *> &bars)
    {
        QList<int> heights;
        QStringList numbers;
        for (const QToolBar *bar : bars) {
            if (!heights.contains(bar->y()))
                heights.append(bar->y());
            numbers << QString::number(heights.indexOf(bar->y()) + 1);
        }
        return numbers.join(u' ');
    }

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

    void barsBeginARowWhereTheWindowIsNarrow()
    {
        QMainWindow window;
        new ToolBarRows(&window);
        const QList<QToolBar *> bars = addBars(window);
        resizeFor(window, bars, 3);
        window.show();
        QTRY_COMPARE(rows(bars), u"1 1 1"_s);
        resizeFor(window, bars, 2);
        QTRY_COMPARE(rows(bars), u"1 1 2"_s);
        resizeFor(window, bars, 1);
        QTRY_COMPARE(rows(bars), u"1 2 3"_s);
        resizeFor(window, bars, 3);
        QTRY_COMPARE(rows(bars), u"1 1 1"_s);
        bars[0]->hide();
        resizeFor(window, bars, 2);
        QTRY_COMPARE(rows(bars.last(2)), u"1 1"_s);
    }

    void rowsOfTheUserStay()
    {
        QMainWindow window;
        new ToolBarRows(&window);
        const QList<QToolBar *> bars = addBars(window);
        window.insertToolBarBreak(bars[1]);
        resizeFor(window, bars, 2);
        window.show();
        QTRY_COMPARE(rows(bars), u"1 2 2"_s);
        resizeFor(window, bars, 3);
        QCoreApplication::processEvents();
        QCOMPARE(rows(bars), u"1 2 2"_s);
    }

    void storedStateHasOnlyTheRowsOfTheUser()
    {
        QByteArray state;
        {
            QMainWindow window;
            new ToolBarRows(&window);
            const QList<QToolBar *> bars = addBars(window);
            resizeFor(window, bars, 1);
            window.show();
            QTRY_COMPARE(rows(bars), u"1 2 3"_s);
            state = ToolBarRows::stateOf(&window);
            QVERIFY(ToolBarRows::isWrapped(bars[1])); // as before
        }
        QMainWindow window;
        const QList<QToolBar *> bars = addBars(window);
        resizeFor(window, bars, 3);
        QVERIFY(window.restoreState(state));
        window.show();
        QTRY_COMPARE(rows(bars), u"1 1 1"_s);
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
