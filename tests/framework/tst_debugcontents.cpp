#include "debugcontents.h"
#include "debugwindows.h"
#include "dockwindow.h"
#include "fakeservices.h"
#include "multiwatchwindow.h"
#include "peripheralwidget.h"
#include "propertyitem.h"
#include "propertylist.h"
#include "registerwidget.h"
#include "stubfixture.h"
#include "watchwindow.h"
#include <QAction>
#include <QJsonArray>
#include <QMainWindow>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {
class FakeWindow : public QMainWindow, public FakeServices
{
public:
    DockWindow *addDock(const QString &objectName, const QString &caption, Qt::DockWidgetArea area) override
    {
        auto *dock = new DockWindow(objectName, caption, this);
        addDockWidget(area, dock);
        return dock;
    }
};
} // namespace

/// The panes of all windows in their docks, with the stub's processors.
class DebugContentsTest : public QObject, private StubFixture
{
    Q_OBJECT

private:
    std::unique_ptr<FakeWindow> m_window;
    std::unique_ptr<DebugWindows> m_windows;

    Project *addProcessor(const QString &name, const QSet<QUuid> &offers)
    {
        StubScript &script = executionScript(name, offers);
        script.registers = {{u"r0"_s, 8, {}, 4, 4, {}, false}};
        script.peripherals = {{u"TIMER"_s, {{u"LOAD"_s, 8, false}}}};
        script.values = {{u"x"_s, u"1"_s}};
        Project *project = addProject(name, {}, name);
        project->setExecutionEnvironment(
            queryInterface<IExecutionEnvironment>(InterfacePtr<IPluginObject>(create(u'{' + name + u'}')).get()).get());
        Q_EMIT m_activity->projectsChanged();
        m_stub->takeCalls();
        return project;
    }
    template <typename Pane>
    Pane *pane(const QString &name) const
    {
        return m_window->findChild<Pane *>(name);
    }
    /// What the processors were asked.
    QString calls()
    {
        QStringList calls = m_stub->takeCalls();
        calls.removeIf([](const QString &call) {
            return call.contains("registers("_L1) || call.contains("peripherals("_L1) || call.contains("canAttach"_L1);
        });
        return calls.join(u' ');
    }

private Q_SLOTS:
    void init()
    {
        setUp();
        m_window = std::make_unique<FakeWindow>();
        m_windows = std::make_unique<DebugWindows>(*m_activity, *m_window);
        addDebugContents(*m_windows, *m_activity);
        m_window->resize(800, 600);
        m_window->show();
    }

    void cleanup()
    {
        dropWorkspace();
        m_windows.reset();
        m_window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        tearDown();
    }

    void docksHaveTheirContents()
    {
        QStringList names;
        for (const auto window : {DebugWindows::Registers, DebugWindows::Peripherals, DebugWindows::Watches})
            names += m_windows->dock(window)->widget()->objectName();
        QCOMPARE(names, (QStringList{u"registerWidget"_s, u"peripheralWidget"_s, u"watchWindow"_s}));
    }

    void environmentHasPanesForWhatItOffers()
    {
        addProcessor(u"fw"_s, {IRegisters::Iid});
        addProcessor(u"dsp"_s, {IPeripherals::Iid});
        QVERIFY(pane<RegisterWidget>(u"fw/registers"_s) && !pane<RegisterWidget>(u"dsp/registers"_s));
        QVERIFY(!pane<PeripheralWidget>(u"fw/peripherals"_s) && pane<PeripheralWidget>(u"dsp/peripherals"_s));
        QVERIFY(pane<WatchWindow>(u"fw/watches"_s) && pane<WatchWindow>(u"dsp/watches"_s));
    }

    void onlyVisibleDocksAreReadAndOthersWhenTheyAppear()
    {
        addProcessor(u"fw"_s, {IRegisters::Iid, IPeripherals::Iid});
        m_activity->setState(StatePaused);
        m_windows->toggle(DebugWindows::Registers);
        calls();
        m_windows->updateRegisters();
        m_windows->updateData();
        QCOMPARE(calls(), u"fw.value(r0, 0)"_s);
        m_windows->dock(DebugWindows::Peripherals)->show();
        QCOMPARE(calls(), u"fw.value(, LOAD)"_s);
    }

    void writeRefreshesTheOtherVisibleWindows()
    {
        addProcessor(u"fw"_s, {IRegisters::Iid, IPeripherals::Iid});
        m_activity->setState(StatePaused);
        m_windows->toggle(DebugWindows::Registers);
        m_windows->toggle(DebugWindows::Watches);
        pane<WatchWindow>(u"fw/watches"_s)->addItem(u"x"_s);
        calls();
        auto *registers = pane<RegisterWidget>(u"fw/registers"_s);
        registers->findChild<PropertyList *>()->firstChild()->setValue(5u, true);
        QCOMPARE(calls(), u"fw.setValue(r0, 5, 0) fw.value(r0, 0) fw.evaluate(x)"_s);
        m_windows->toggle(DebugWindows::Peripherals);
        QCOMPARE(calls(), u"fw.value(, LOAD)"_s);
    }

    void writeInOneProcessorRefreshesThePanesOfTheOthers()
    {
        addProcessor(u"fw"_s, {IRegisters::Iid});
        addProcessor(u"dsp"_s, {IRegisters::Iid});
        m_windows->toggle(DebugWindows::Registers);
        calls();
        pane<RegisterWidget>(u"fw/registers"_s)->findChild<PropertyList *>()->firstChild()->setValue(5u, true);
        QCOMPARE(calls(), u"fw.setValue(r0, 5, 0) fw.value(r0, 0) dsp.value(r0, 0)"_s);
    }

    void panesMadeWhilePausedHaveValues()
    {
        addProcessor(u"fw"_s, {IRegisters::Iid});
        m_activity->setState(StatePaused);
        m_windows->toggle(DebugWindows::Registers);
        calls();
        addProcessor(u"dsp"_s, {IRegisters::Iid});
        m_stub->takeCalls();
        Q_EMIT m_activity->projectActivityChanged();
        QCOMPARE(calls(), u"fw.value(r0, 0) dsp.value(r0, 0)"_s);
    }

    void onlyThePeripheralsOfTheTabInFrontAreRead()
    {
        addProcessor(u"fw"_s, {IPeripherals::Iid});
        addProcessor(u"dsp"_s, {IPeripherals::Iid}); // now the current one
        m_activity->setState(StatePaused);
        m_windows->toggle(DebugWindows::Peripherals);
        QCoreApplication::processEvents();
        calls();
        m_windows->updateData();
        QCOMPARE(calls(), u"dsp.value(, LOAD)"_s);
        m_window->findChild<QWidget *>(u"peripheralWidget"_s)->findChild<QTabWidget *>()->setCurrentIndex(0);
        QString seen;
        QTRY_COMPARE((seen += calls(), seen), u"fw.value(, LOAD)"_s);
    }

    void panesMadeInAHiddenDockWhilePausedAreReadWhenItAppears()
    {
        addProcessor(u"fw"_s, {IRegisters::Iid});
        m_activity->setState(StatePaused);
        m_windows->toggle(DebugWindows::Registers);
        m_windows->dock(DebugWindows::Registers)->hide();
        Q_EMIT m_activity->projectActivityChanged();
        calls();
        m_windows->dock(DebugWindows::Registers)->show();
        QString seen;
        QTRY_COMPARE((seen += calls(), seen), u"fw.value(r0, 0)"_s);
        m_windows->dock(DebugWindows::Registers)->hide();
        m_windows->dock(DebugWindows::Registers)->show(); // they have been read
        QCoreApplication::processEvents();
        QCOMPARE(calls(), QString());
    }

    void panesMadeInAHiddenDockAreReadOnceIfTheProgramStopsMeanwhile()
    {
        addProcessor(u"fw"_s, {IRegisters::Iid});
        m_activity->setState(StatePaused);
        m_windows->toggle(DebugWindows::Registers);
        m_windows->dock(DebugWindows::Registers)->hide();
        Q_EMIT m_activity->projectActivityChanged();
        m_windows->updateRegisters();
        calls();
        m_windows->dock(DebugWindows::Registers)->show();
        QCoreApplication::processEvents();
        QCOMPARE(calls(), u"fw.value(r0, 0)"_s);
    }

    void watchesOfTheSessionAreEvaluatedWhenTheirDockAppears()
    {
        const Project *fw = addProcessor(u"fw"_s, {});
        m_windows->toggle(DebugWindows::Watches);
        m_windows->dock(DebugWindows::Watches)->hide();
        m_window->findChild<MultiWatchWindow *>()->setWatches({{fw->fileName(), QJsonArray{u"x"_s}}});
        QCOMPARE(calls(), QString());
        m_windows->dock(DebugWindows::Watches)->show();
        QTRY_COMPARE(pane<WatchWindow>(u"fw/watches"_s)->text(), u"x = 1\nClick to add new = \n"_s);
        QCOMPARE(calls(), u"fw.evaluate(x)"_s);
    }

    // Names and words that the windows pass to a plug-in

    void peripheralIsWrittenWithTheNameOfItsRegister()
    {
        addProcessor(u"fw"_s, {IPeripherals::Iid});
        m_activity->setState(StatePaused);
        m_windows->toggle(DebugWindows::Peripherals);
        calls();
        pane<PeripheralWidget>(u"fw/peripherals"_s)->findChild<PropertyList *>()->firstChild()->setValue(5u, true);
        QCOMPARE(calls(), u"fw.setValue(LOAD, LOAD, 5)"_s);
    }

    void headingsOfPeripheralsAreReadAsRegistersWithoutAPeripheral()
    {
        addProcessor(u"fw"_s, {IPeripherals::Iid});
        executionScript(u"fw"_s, {IPeripherals::Iid}).peripherals = {{u"TIMER"_s, {{u"LOAD"_s, 8, false}}},
                                                                     {u"UART"_s, {{u"DATA"_s, 8, false}}}};
        m_activity->setState(StatePaused);
        m_windows->toggle(DebugWindows::Peripherals);
        QCOMPARE(calls(), u"fw.value(, TIMER) fw.value(, UART)"_s);
    }

    void longRegisterIsReadWithOneWordMore()
    {
        addProcessor(u"fw"_s, {IRegisters::Iid});
        executionScript(u"fw"_s, {IRegisters::Iid}).registers = {{u"d0"_s, 64, {}, 4, 4, {}, false}};
        m_activity->setState(StatePaused);
        m_windows->toggle(DebugWindows::Registers);
        QCOMPARE(calls(), u"fw.value(d0, 0) fw.value(d0, 1) fw.value(d0, 2)"_s);
    }

    void watchesStayWhenProjectsAreAdded()
    {
        addProcessor(u"fw"_s, {});
        pane<WatchWindow>(u"fw/watches"_s)->addItem(u"x"_s);
        addProcessor(u"dsp"_s, {});
        QCOMPARE(pane<WatchWindow>(u"fw/watches"_s)->watches(), QStringList(u"x"_s));
        QCOMPARE(pane<WatchWindow>(u"dsp/watches"_s)->watches(), QStringList());
    }

    void watchesAreGivenToTheSessionAndTakenFromIt()
    {
        Project *fw = addProcessor(u"fw"_s, {});
        pane<WatchWindow>(u"fw/watches"_s)->addItem(u"x"_s);
        auto *holder = m_window->findChild<MultiWatchWindow *>();
        const QJsonObject kept = holder->watches();
        QCOMPARE(kept, (QJsonObject{{fw->fileName(), QJsonArray{u"x"_s}}}));
        holder->setWatches({});
        QCOMPARE(pane<WatchWindow>(u"fw/watches"_s)->watches(), QStringList());
        holder->setWatches(kept);
        QCOMPARE(pane<WatchWindow>(u"fw/watches"_s)->watches(), QStringList(u"x"_s));
        QCOMPARE(holder->watches(), kept);
    }

    void damagedWatchesAreLeftOut()
    {
        Project *fw = addProcessor(u"fw"_s, {});
        auto *holder = m_window->findChild<MultiWatchWindow *>();
        QJsonArray many;
        for (int i = 0; i < 5000; ++i)
            many.append(u"x"_s);
        holder->setWatches({{fw->fileName(), QJsonArray{1, QString(), u"x"_s, QJsonObject()}}, {u"other"_s, 5}});
        QCOMPARE(pane<WatchWindow>(u"fw/watches"_s)->watches(), QStringList(u"x"_s));
        holder->setWatches({{fw->fileName(), many}});
        QCOMPARE(pane<WatchWindow>(u"fw/watches"_s)->watches().size(), 1000);
    }
};

QTEST_MAIN(DebugContentsTest)
#include "tst_debugcontents.moc"
