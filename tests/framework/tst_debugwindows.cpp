#include "activity.h"
#include "debugpane.h"
#include "debugwindows.h"
#include "dockwindow.h"
#include "fakeservices.h"
#include "multiwidget.h"
#include "project.h"
#include "projectworkspace.h"
#include <QAction>
#include <QMainWindow>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
class FakePane : public DebugPane
{
public:
    using DebugPane::DebugPane;
    void releaseEnvironment() override {}
    void setPaused(bool value) override { paused = value; }
    void update() override { ++updates; }

    int updates = 0;
    bool paused = false;
};

class FakePanes : public MultiWidget
{
public:
    using MultiWidget::MultiWidget;
    [[nodiscard]] FakePane *pane() const { return static_cast<FakePane *>(widgets().value(0)); }

protected:
    DebugPane *createWidget(QWidget *parent, IExecutionEnvironment *, bool) override { return new FakePane(parent); }
};

class FakeWindow : public QMainWindow, public FakeServices
{
public:
    DockWindow *addDock(const QString &objectName, const QString &caption, Qt::DockWidgetArea area) override
    {
        auto *dock = new DockWindow(objectName, caption, this);
        addDockWidget(area, dock);
        return dock;
    }
    QAction *action(const QString &name) const override { return findChild<QAction *>(name); }
    void showMessage(const QString &text, int) override { messages.append(text); }

    QStringList messages; ///< of the status bar
};
} // namespace

class DebugWindowsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<FakeWindow> m_window;
    std::unique_ptr<Activity> m_activity;
    std::unique_ptr<DebugWindows> m_windows;

    FakePane *addPanes(DebugWindows::Window window)
    {
        auto *panes = new FakePanes(*m_activity);
        m_windows->setContent(window, panes);
        panes->workspaceChanged();
        return panes->pane();
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_window = std::make_unique<FakeWindow>();
        m_activity = std::make_unique<Activity>();
        m_windows = std::make_unique<DebugWindows>(*m_activity, *m_window);
        m_window->show();
    }

    void cleanup()
    {
        m_windows.reset();
        m_window.reset();
        m_activity.reset();
    }

    void theDocksAreHiddenAtTheirEdges()
    {
        QStringList docks;
        for (const auto window : {DebugWindows::Registers, DebugWindows::Peripherals, DebugWindows::Watches,
                                  DebugWindows::Memory, DebugWindows::CallStack, DebugWindows::Variables}) {
            DockWindow *dock = m_windows->dock(window);
            docks += u"%1 %2 %3 %4 %5"_s.arg(dock->objectName(), dock->windowTitle())
                         .arg(m_window->dockWidgetArea(dock))
                         .arg(dock->newLine())
                         .arg(dock->isHidden());
        }
        QCOMPARE(docks,
                 (QStringList{u"registerDockWindow Registers 2 0 1"_s, u"peripheralDockWindow Peripherals 2 0 1"_s,
                              u"watchDockWindow Watches 2 1 1"_s, u"memoryDockWindow Memory 4 1 1"_s,
                              u"callStackDockWindow Call Stack 2 1 1"_s, u"variablesDockWindow Variables 2 1 1"_s}));
    }

    void togglingShowsAndHidesADock()
    {
        DockWindow *dock = m_windows->dock(DebugWindows::Watches);
        m_windows->toggle(DebugWindows::Watches);
        QVERIFY(dock->isVisible());
        QVERIFY(m_windows->dock(DebugWindows::Memory)->isHidden());
        m_windows->toggle(DebugWindows::Watches);
        QVERIFY(dock->isHidden());
    }

    void aDockThatAppearsIsRefreshed()
    {
        const FakePane *pane = addPanes(DebugWindows::Registers);
        m_windows->toggle(DebugWindows::Registers);
        QCOMPARE(pane->updates, 1);
        m_windows->toggle(DebugWindows::Registers);
        QCOMPARE(pane->updates, 1);
    }

    void onlyVisibleDocksAreRefreshed()
    {
        const FakePane *registers = addPanes(DebugWindows::Registers);
        const FakePane *watches = addPanes(DebugWindows::Watches);
        const FakePane *memory = addPanes(DebugWindows::Memory);
        m_windows->toggle(DebugWindows::Watches);
        const int before = watches->updates;
        m_windows->updateData();
        m_windows->updateRegisters();
        QCOMPARE(watches->updates, before + 1);
        QCOMPARE(memory->updates, 0);
        QCOMPARE(registers->updates, 0);
        m_windows->dock(DebugWindows::Memory)->show(); // by the user, from a menu of the toolkit
        QCOMPARE(memory->updates, 1);
        m_windows->dock(DebugWindows::Memory)->hide();
        m_windows->dock(DebugWindows::Memory)->show(); // nothing has changed meanwhile
        QCOMPARE(memory->updates, 1);
    }

    void messageOfAPaneIsShown()
    {
        FakePane *pane = addPanes(DebugWindows::Registers);
        Q_EMIT pane->message(u"text"_s);
        QCOMPARE(m_window->messages, QStringList(u"text"_s));
    }

    void valuesThatAPaneHasWrittenAreReported()
    {
        FakePane *pane = addPanes(DebugWindows::Memory);
        m_windows->toggle(DebugWindows::Memory);
        QSignalSpy written(m_windows.get(), &DebugWindows::valuesWritten);
        m_windows->updateData();
        QCOMPARE(written.size(), 0);
        Q_EMIT pane->doUpdate();
        QCOMPARE(written.size(), 1);
    }

    void panesGetThePausedStateBeforeItIsEntered()
    {
        const FakePane *pane = addPanes(DebugWindows::Memory);
        QVERIFY(!pane->paused);
        bool pausedWhenEntered = false;
        connect(m_activity.get(), &Activity::stateEntered, this, [&] { pausedWhenEntered = pane->paused; });
        m_activity->setState(StatePaused);
        QVERIFY(pausedWhenEntered);
        m_activity->setState(StateRunning);
        QVERIFY(!pane->paused);
    }

    void panesAddedWhilePausedGetThePausedState()
    {
        m_activity->setState(StatePaused);
        QVERIFY(addPanes(DebugWindows::Memory)->paused);
    }

    void theCheckMarksFollowTheDocks()
    {
        auto *action = new QAction(m_window.get());
        action->setObjectName(u"debugToggleMemoryWindow"_s);
        action->setCheckable(true);
        int toggled = 0;
        connect(action, &QAction::toggled, this, [&] { ++toggled; });
        m_windows->toggle(DebugWindows::Memory);
        m_windows->updateCheckMarks();
        QVERIFY(action->isChecked());
        m_windows->toggle(DebugWindows::Memory);
        m_windows->updateCheckMarks();
        QVERIFY(!action->isChecked());
        QCOMPARE(toggled, 0);
    }
};

QTEST_MAIN(DebugWindowsTest)
#include "tst_debugwindows.moc"
