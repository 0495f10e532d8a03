#include "dockfit.h"
#include "docklayout.h"
#include "dockwindow.h"
#include "toolbar.h"
#include "toolbarrows.h"
#include <QLayout>
#include <QMainWindow>
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(DockPlacement)

namespace {
DockPlacement docked(int edge, int offset, bool newLine, QSize extent, bool visible)
{
    DockPlacement placement;
    placement.edge = edge;
    placement.offset = offset;
    placement.newLine = newLine;
    placement.extent = extent;
    placement.visible = visible;
    return placement;
}

DockPlacement tornOff(const QRect &geometry, bool visible)
{
    DockPlacement placement;
    placement.edge = DockPlacement::TornOff;
    placement.geometry = geometry;
    placement.visible = visible;
    return placement;
}

/// A window with a tool bar and three dock windows.
struct Windows
{
    explicit Windows(QSettings &settings) : layout(&window, &settings, [this] { return all(); })
    {
        bar = new ToolBar(&window);
        bar->setWindowTitle(u"bar"_s);
        bar->setObjectName(u"bar"_s);
        window.addToolBar(bar);
        first = add(u"first"_s, Qt::LeftDockWidgetArea);
        second = add(u"second"_s, Qt::LeftDockWidgetArea);
        third = add(u"third"_s, Qt::BottomDockWidgetArea);
        window.setCentralWidget(new QWidget);
        window.resize(800, 600);
        window.show();
        QCoreApplication::processEvents();
    }

    DockWindow *add(const QString &name, Qt::DockWidgetArea area)
    {
        auto *dock = new DockWindow(name, name, &window);
        dock->setWidget(new QWidget);
        window.addDockWidget(area, dock);
        return dock;
    }

    QList<QWidget *> all() const { return {bar, first, second, third}; }

    QMainWindow window;
    ToolBar *bar;
    DockWindow *first;
    DockWindow *second;
    DockWindow *third;
    DockLayout layout;
};
} // namespace

class DockLayoutTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_directory->filePath(u"s.ini"_s), QSettings::IniFormat);
    }

    void entries_data()
    {
        QTest::addColumn<DockPlacement>("placement");
        QTest::addColumn<QString>("text");
        QTest::newRow("docked") << docked(DockPlacement::Left, 56, false, {236, 682}, true) << u"[5,56,0,236,682,1]"_s;
        QTest::newRow("new line, hidden")
            << docked(DockPlacement::Top, 0, true, {-1, -1}, false) << u"[2,0,1,-1,-1,0]"_s;
        QTest::newRow("torn off") << tornOff({-3, 40, 500, 60}, true) << u"[1,-3,40,500,60,1]"_s;
    }

    void entries()
    {
        QFETCH(DockPlacement, placement);
        QFETCH(QString, text);
        QCOMPARE(placement.text(), text);
        QCOMPARE(DockPlacement::fromText(text), placement);
    }

    void rowOfANarrowWindowIsNotStored()
    {
        QMainWindow window;
        const ToolBarRows rows(&window);
        QList<ToolBar *> bars;
        for (const QString &name : {u"one"_s, u"two"_s}) {
            bars.append(new ToolBar(&window));
            bars.last()->setObjectName(name);
            for (int i = 0; i < 6; ++i)
                bars.last()->addAction(u"Button"_s); // those that do not fit are hidden
            window.addToolBar(bars.last());
        }
        const int width = bars[0]->sizeHint().width();
        window.resize(width * 3 / 2, 200);
        window.show();
        QTRY_VERIFY(ToolBarRows::isWrapped(bars[1]));
        const DockLayout layout(&window, m_settings.get(), [&bars] { return QList<QWidget *>{bars[1]}; });
        const auto storesNewLine = [&] {
            layout.save(StateIdle);
            return DockPlacement::fromText(m_settings->value(u"Geometry/Editor/two"_s).toString()).newLine;
        };
        QVERIFY(!storesNewLine());
        window.resize(width * 3, 200);
        QTRY_VERIFY(!ToolBarRows::isWrapped(bars[1]));
        window.insertToolBarBreak(bars[1]); // by the user
        QVERIFY(storesNewLine());
    }

    void onlyABarBehindABreakBeginsALine()
    {
        QMainWindow window;
        QList<QToolBar *> bars;
        for (const QString &name : {u"one"_s, u"two"_s, u"three"_s}) {
            bars.append(window.addToolBar(name));
            bars.last()->setObjectName(name);
        }
        window.insertToolBarBreak(bars[2]);
        const DockLayout layout(&window, m_settings.get(),
                                [&bars] { return QList<QWidget *>(bars.begin(), bars.end()); });
        layout.save(StateIdle);
        QList<bool> lines;
        for (const QToolBar *bar : bars) {
            const QString entry = m_settings->value(u"Geometry/Editor/"_s + bar->objectName()).toString();
            lines.append(DockPlacement::fromText(entry).newLine);
        }
        QCOMPARE(lines, (QList<bool>{false, false, true}));
    }

    void windowThatWasNeverShownHasNoSize()
    {
        QMainWindow window;
        DockWindow dock(u"dock"_s, u"dock"_s, &window);
        const DockLayout layout(&window, m_settings.get(), [&dock] { return QList<QWidget *>{&dock}; });
        layout.save(StateIdle);
        const QString entry = m_settings->value(u"Geometry/Editor/dock"_s).toString();
        QCOMPARE(DockPlacement::fromText(entry).extent, DockPlacement().extent);
    }

    void restoringKeepsTheRuleForTheSizeOfTheWindow()
    {
        Windows w(*m_settings);
        w.layout.save(StateIdle);
        const QLayout::SizeConstraint rule = w.window.layout()->sizeConstraint();
        QVERIFY(rule != QLayout::SetNoConstraint);
        w.layout.restore(StateIdle);
        QCOMPARE(w.window.layout()->sizeConstraint(), rule);
    }

    void restoringDoesNotEnlargeTheWindow()
    {
        Windows w(*m_settings);
        for (const DockWindow *dock : {w.first, w.second})
            dock->widget()->setMinimumSize(200, 200);
        w.window.tabifyDockWidget(w.first, w.second);
        w.third->hide();
        const QSize size(500, 350); // lower than both docks
        w.window.resize(size);
        QCoreApplication::processEvents();
        QCOMPARE(w.window.size(), size);
        w.layout.save(StateIdle);
        w.layout.restore(StateIdle);
        QCoreApplication::processEvents();
        QCOMPARE(w.window.size(), size);
        QCOMPARE(w.window.tabifiedDockWidgets(w.first), QList<QDockWidget *>{w.second});
    }

    void docksJoinedForLackOfRoomAreStoredAsTheUserPlacedThem()
    {
        Windows small(*m_settings);
        keepDocksFitting(small.window);
        for (DockWindow *dock : {small.first, small.second})
            dock->widget()->setMinimumHeight(260);
        small.layout.save(StateIdle); // the user's own
        const QString ownPlace = m_settings->value(u"Geometry/Editor/second"_s).toString();
        small.window.resize(800, 400);
        QTRY_COMPARE(small.window.tabifiedDockWidgets(small.first), QList<QDockWidget *>{small.second});
        small.layout.save(StateIdle);
        QCOMPARE(small.window.tabifiedDockWidgets(small.first), QList<QDockWidget *>{small.second});
        Windows large(*m_settings);
        large.window.tabifyDockWidget(large.first, large.second);
        large.layout.restore(StateIdle);
        QVERIFY(large.window.tabifiedDockWidgets(large.first).isEmpty());
        QVERIFY(large.first->y() < large.second->y());
    }

    void restoredWindowsFitIntoASmallerWindow()
    {
        Windows w(*m_settings);
        for (const DockWindow *dock : {w.first, w.second})
            dock->widget()->setMinimumSize(200, 200);
        w.third->hide();
        QCoreApplication::processEvents();
        w.layout.save(StateIdle);
        w.second->hide();
        QCoreApplication::processEvents();
        const QSize size(500, 350); // lower than both docks
        w.window.resize(size);
        QCoreApplication::processEvents();
        QCOMPARE(w.window.size(), size);
        w.layout.restore(StateIdle);
        QCoreApplication::processEvents();
        QVERIFY(!w.second->isHidden());
        QCOMPARE(w.window.tabifiedDockWidgets(w.first), QList<QDockWidget *>{w.second});
        QCOMPARE(w.window.size(), size);
    }

    void windowsOfAHiddenMainWindowAreStoredAsVisible()
    {
        Windows windows(*m_settings);
        windows.third->hide();
        windows.window.hide();
        windows.layout.save(StateIdle);
        const auto visible = [this](const QString &name) {
            return DockPlacement::fromText(m_settings->value(u"Geometry/Editor/"_s + name).toString()).visible;
        };
        QVERIFY(visible(u"first"_s));
        QVERIFY(visible(u"bar"_s));
        QVERIFY(!visible(u"third"_s));
    }

    void damagedEntriesAreReadUpToTheDamage_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("edge");
        QTest::addColumn<bool>("visible");
        QTest::newRow("empty") << u""_s << 0 << false;
        QTest::newRow("one character") << u"["_s << 0 << false;
        QTest::newRow("too short") << u"[3,1]"_s << 3 << true;
        QTest::newRow("no numbers") << u"[a,b,c]"_s << 0 << false;
        QTest::newRow("other brackets") << u"(4,0,0,10,10,1)"_s << 4 << true;
    }

    void damagedEntriesAreReadUpToTheDamage()
    {
        QFETCH(QString, text);
        const DockPlacement placement = DockPlacement::fromText(text);
        QTEST(placement.edge, "edge");
        QTEST(placement.visible, "visible");
    }

    void positionBeyondTheDesktopIsReducedOnce_data()
    {
        QTest::addColumn<QPoint>("stored");
        QTest::addColumn<QPoint>("shown");
        QTest::newRow("on it") << QPoint(10, 20) << QPoint(10, 20);
        QTest::newRow("at its edge") << QPoint(1000, 800) << QPoint(1000, 800);
        QTest::newRow("beyond it") << QPoint(1001, 801) << QPoint(1, 1);
        QTest::newRow("far beyond it") << QPoint(2500, 2000) << QPoint(1500, 1200);
        QTest::newRow("before it") << QPoint(-50, -60) << QPoint(-50, -60);
    }

    void positionBeyondTheDesktopIsReducedOnce()
    {
        QFETCH(QPoint, stored);
        QFETCH(QPoint, shown);
        QCOMPARE(ontoDesktop(QRect(stored, QSize(5, 6)), QSize(1000, 800)), QRect(shown, QSize(5, 6)));
    }

    void eachWindowHasAnEntryInTheGroupOfItsState_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("group");
        for (const int state : {0, 1, 2})
            QTest::addRow("state %d", state) << state << u"Geometry/Editor"_s;
        for (const int state : {3, 4, 5, 6, 7})
            QTest::addRow("state %d", state) << state << u"Geometry/Debugger"_s;
    }

    void eachWindowHasAnEntryInTheGroupOfItsState()
    {
        QFETCH(int, state);
        QFETCH(QString, group);
        Windows windows(*m_settings);
        windows.third->hide();
        windows.layout.save(ActivityState(state));
        QCOMPARE(m_settings->childGroups(), QStringList{u"Geometry"_s});
        m_settings->beginGroup(group);
        QStringList keys = m_settings->childKeys();
        keys.sort();
        QCOMPARE(keys, (QStringList{u"State"_s, u"bar"_s, u"first"_s, u"second"_s, u"third"_s}));
        const auto placement = [this](const char *name) {
            return DockPlacement::fromText(m_settings->value(QString::fromLatin1(name)).toString());
        };
        QCOMPARE(placement("bar").edge, int(DockPlacement::Top));
        QCOMPARE(placement("first"),
                 docked(DockPlacement::Left, windows.first->y(), false, windows.first->size(), true));
        QCOMPARE(placement("second").edge, int(DockPlacement::Left));
        QCOMPARE(placement("second").offset, windows.second->y());
        QCOMPARE(placement("third").edge, int(DockPlacement::Bottom));
        QCOMPARE(placement("third").visible, false);
    }

    void windowsComeBackWithAndWithoutTheExactState_data()
    {
        QTest::addColumn<bool>("exact");
        QTest::newRow("exact") << true;
        QTest::newRow("entries alone") << false;
    }

    void windowsComeBackWithAndWithoutTheExactState()
    {
        QFETCH(bool, exact);
        {
            Windows windows(*m_settings);
            windows.window.addDockWidget(Qt::RightDockWidgetArea, windows.first);
            windows.window.addDockWidget(Qt::TopDockWidgetArea, windows.third);
            windows.second->hide();
            windows.window.addToolBar(Qt::BottomToolBarArea, windows.bar);
            QCoreApplication::processEvents();
            windows.layout.save(StateIdle);
        }
        if (!exact)
            m_settings->remove(u"Geometry/Editor/State"_s);
        Windows windows(*m_settings);
        windows.layout.restore(StateIdle);
        QCOMPARE(windows.window.dockWidgetArea(windows.first), Qt::RightDockWidgetArea);
        QCOMPARE(windows.window.dockWidgetArea(windows.third), Qt::TopDockWidgetArea);
        QVERIFY(windows.second->isHidden());
        QVERIFY(!windows.third->isHidden());
        QCOMPARE(windows.window.toolBarArea(windows.bar), Qt::BottomToolBarArea);
    }

    void toolBarOfANewLineComesBack()
    {
        m_settings->setValue(u"Geometry/Editor/bar"_s, u"[2,0,1,100,30,1]"_s);
        Windows windows(*m_settings);
        windows.window.addToolBar(u"in the line above"_s);
        QVERIFY(!windows.window.toolBarBreak(windows.bar));
        windows.layout.restore(StateIdle);
        QVERIFY(windows.window.toolBarBreak(windows.bar));
    }

    void toolBarOfTheSameLineStaysInIt()
    {
        m_settings->setValue(u"Geometry/Editor/bar"_s, u"[2,0,0,100,30,1]"_s);
        Windows windows(*m_settings);
        windows.window.addToolBar(u"before it"_s);
        windows.layout.restore(StateIdle);
        QVERIFY(!windows.window.toolBarBreak(windows.bar));
    }

    /// The entries of the windows do not contain this.
    void tabsOfDockWindowsComeBack()
    {
        {
            Windows windows(*m_settings);
            windows.window.tabifyDockWidget(windows.first, windows.second);
            windows.layout.save(StateIdle);
        }
        Windows windows(*m_settings);
        QVERIFY(windows.window.tabifiedDockWidgets(windows.first).isEmpty());
        windows.layout.restore(StateIdle);
        QCOMPARE(windows.window.tabifiedDockWidgets(windows.first), QList<QDockWidget *>{windows.second});
    }

    void aRowOfWindowsComesBackInTheOrderOfOffsets()
    {
        m_settings->beginGroup(u"Geometry/Editor"_s);
        m_settings->setValue(u"bar"_s, u"[2,0,0,100,30,1]"_s);
        m_settings->setValue(u"first"_s, u"[3,400,0,200,150,1]"_s);
        m_settings->setValue(u"second"_s, u"[3,0,0,200,150,1]"_s);
        m_settings->setValue(u"third"_s, u"[3,0,1,400,150,1]"_s);
        m_settings->endGroup();
        Windows windows(*m_settings);
        windows.layout.restore(StateIdle);
        QCoreApplication::processEvents();
        QCOMPARE(windows.window.dockWidgetArea(windows.first), Qt::BottomDockWidgetArea);
        QVERIFY(windows.second->x() < windows.first->x());
        QCOMPARE(windows.second->y(), windows.first->y());
        QVERIFY(windows.third->newLine());
        QVERIFY(windows.third->y() > windows.first->y());
    }

    void aColumnOfWindowsComesBackInTheOrderOfOffsets_data()
    {
        QTest::addColumn<int>("stored");
        QTest::addColumn<Qt::DockWidgetArea>("area");
        QTest::newRow("left") << 5 << Qt::LeftDockWidgetArea;
        QTest::newRow("right") << 4 << Qt::RightDockWidgetArea;
    }

    void aColumnOfWindowsComesBackInTheOrderOfOffsets()
    {
        QFETCH(const int, stored);
        m_settings->beginGroup(u"Geometry/Editor"_s);
        m_settings->setValue(u"bar"_s, u"[2,0,0,100,30,1]"_s);
        m_settings->setValue(u"first"_s, u"[%1,300,0,150,300,1]"_s.arg(stored));
        m_settings->setValue(u"second"_s, u"[%1,0,0,150,150,1]"_s.arg(stored));
        m_settings->setValue(u"third"_s, u"[%1,0,1,250,150,1]"_s.arg(stored));
        m_settings->endGroup();
        Windows windows(*m_settings);
        windows.layout.restore(StateIdle);
        QCoreApplication::processEvents();
        QTEST(windows.window.dockWidgetArea(windows.first), "area");
        QTEST(windows.window.dockWidgetArea(windows.third), "area");
        QCOMPARE(windows.second->x(), windows.first->x());
        QVERIFY(windows.second->y() < windows.first->y());
        QVERIFY(windows.second->height() < windows.first->height());
        QVERIFY(windows.third->newLine());
        QVERIFY(windows.third->x() > windows.first->x());
        QVERIFY(windows.third->width() > windows.first->width());
    }

    void aTornOffWindowComesBack()
    {
        {
            Windows windows(*m_settings);
            windows.first->setFloating(true);
            windows.first->setGeometry(100, 120, 300, 200);
            QCoreApplication::processEvents();
            windows.layout.save(StatePaused);
            QVERIFY(m_settings->value(u"Geometry/Debugger/first"_s).toString().startsWith(u"[1,"_s));
        }
        m_settings->remove(u"Geometry/Debugger/State"_s);
        Windows windows(*m_settings);
        windows.layout.restore(StatePaused);
        QVERIFY(windows.first->isFloating());
        QCOMPARE(windows.first->size(), QSize(300, 200));
    }

    void restoreStopsAtTheFirstWindowWithoutAnEntry()
    {
        m_settings->setValue(u"Geometry/Editor/bar"_s, u"[2,0,0,100,30,0]"_s);
        m_settings->setValue(u"Geometry/Editor/second"_s, u"[4,0,0,100,100,0]"_s);
        Windows windows(*m_settings);
        windows.layout.restore(StateIdle);
        QVERIFY(windows.bar->isHidden());
        QVERIFY(!windows.second->isHidden());
        QCOMPARE(windows.window.dockWidgetArea(windows.second), Qt::LeftDockWidgetArea);
    }

    void withNoEntriesNothingChanges()
    {
        Windows windows(*m_settings);
        const QByteArray before = windows.window.saveState();
        windows.layout.restore(StateIdle);
        windows.layout.restore(StateRunning);
        QCOMPARE(windows.window.saveState(), before);
    }

    void damagedExactStateIsIgnored()
    {
        {
            Windows windows(*m_settings);
            windows.window.addDockWidget(Qt::RightDockWidgetArea, windows.first);
            windows.layout.save(StateIdle);
        }
        m_settings->setValue(u"Geometry/Editor/State"_s, QByteArray("nonsense"));
        Windows windows(*m_settings);
        windows.layout.restore(StateIdle);
        QCOMPARE(windows.window.dockWidgetArea(windows.first), Qt::RightDockWidgetArea);
    }
};

QTEST_MAIN(DockLayoutTest)
#include "tst_docklayout.moc"
