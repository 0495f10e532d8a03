#include "debugfixture.h"
#include "dockwindow.h"
#include "isymbollookup.h"
#include "isymbols64.h"
#include "listview.h"
#include "processordock.h"
#include "processorlist.h"
#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

/// The list of processors with the real control of sessions and the stub's processors.
class ProcessorDockTest : public QObject, protected DebugFixture
{
    Q_OBJECT

private:
    std::unique_ptr<ProcessorDock> m_dock;
    DockWindow *m_dockWindow = nullptr;

    DockWindow *addDock(const QString &objectName, const QString &caption, Qt::DockWidgetArea) override
    {
        m_dockWindow = new DockWindow(objectName, caption);
        return m_dockWindow;
    }

    ProcessorList *list() const { return m_dockWindow->findChild<ProcessorList *>(); }
    ListView *table() const { return m_dockWindow->findChild<ListView *>(); }
    QPushButton *button(const QString &name) const { return m_dockWindow->findChild<QPushButton *>(name); }
    /// The names of the enabled buttons.
    QString enabled() const
    {
        QStringList names;
        for (const QPushButton *each : m_dockWindow->findChildren<QPushButton *>()) {
            if (each->isEnabled())
                names.append(each->text());
        }
        return names.join(u", "_s);
    }
    void select(int row) const { table()->setCurrentItem(table()->topLevelItem(row)); }
    void press(const QString &name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    void doubleClick(int row) const
    {
        const QPoint centre = table()->visualItemRect(table()->topLevelItem(row)).center();
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, centre);
        QTest::mouseDClick(table()->viewport(), Qt::LeftButton, {}, centre);
    }

    /// Two processors in a session: "one" is paused, "two", the current one, runs.
    std::pair<Project *, Project *> addTwo()
    {
        Project *one = addProcessor(u"one"_s, {ISymbolLookup::Iid});
        Project *two = addProcessor(u"two"_s);
        scriptOf(u"one"_s).sourceLines = {{0x100, {path(u"main.c"_s), 7}}};
        scriptOf(u"one"_s).symbols = {{u"regulate + 12"_s, 0x100}};
        m_activity->setState(StateRunning);
        report(one, IExecutionEnvironment::ProgramPaused);
        report(two, IExecutionEnvironment::ProgramRunning);
        story();
        return {one, two};
    }

private Q_SLOTS:
    void init()
    {
        setUp();
        auto *menu = new QMenu(m_window.get());
        menu->setObjectName(u"debugWindowsMenu"_s);
        m_dock = std::make_unique<ProcessorDock>(*m_activity, static_cast<WindowServices &>(*this), *m_control);
        m_dockWindow->resize(900, 300);
        m_dockWindow->show();
    }

    void cleanup()
    {
        m_dock.reset();
        delete m_dockWindow;
        tearDown();
    }

    void menuItemShowsAndHidesTheDock()
    {
        auto *action = m_window->findChild<QAction *>(u"debugToggleProcessorWindow"_s);
        QVERIFY(m_window->findChild<QMenu *>(u"debugWindowsMenu"_s)->actions().contains(action));
        QVERIFY(action->isChecked());
        action->trigger();
        QVERIFY(m_dockWindow->isHidden());
        QVERIFY(!action->isChecked());
        action->trigger();
        QVERIFY(m_dockWindow->isVisible());
        QVERIFY(action->isChecked());
    }

    void everyProcessorHasARow()
    {
        addTwo();
        addProject(u"library"_s, {}, {});
        m_workspace->setCurrentProject(1);
        QTRY_COMPARE(list()->text(), u"one|Paused|regulate|main.c:7|Pause or step\n"
                                     "two|Running|||\n"
                                     "library|No debugger|||\n"_s);
        QVERIFY(!table()->topLevelItem(0)->font(0).bold());
        QVERIFY(table()->topLevelItem(1)->font(0).bold());
        QCOMPARE(table()->topLevelItem(0)->text(5), u"0:00"_s);
        QCOMPARE(table()->topLevelItem(2)->text(5), QString());
    }

    void rowsFollowReports()
    {
        const auto [one, two] = addTwo();
        m_control->statusInfo(u"Watchpoint 3"_s, 1, one->executionInterface());
        m_control->statusInfo(u"board"_s, 0, one->executionInterface());
        report(one, IExecutionEnvironment::ProgramPaused);
        QTRY_COMPARE(list()->text(), u"one|Paused|regulate|main.c:7|Watchpoint 3\ntwo|Running|||\n"_s);
        scriptOf(u"one"_s).location = {u"disassembler:"_s, 0x21};
        report(one, IExecutionEnvironment::ProgramRunning);
        QTRY_COMPARE(list()->text(), u"one|Running|||Watchpoint 3\ntwo|Running|||\n"_s);
        report(one, IExecutionEnvironment::ProgramPaused);
        report(two, IExecutionEnvironment::ProgramBreakpointHit);
        QTRY_COMPARE(list()->text(), u"one|Paused||0x00000020|Watchpoint 3\ntwo|Paused||main.c:7|Breakpoint\n"_s);
        m_control->debugStop();
        QTRY_COMPARE(list()->text(), u"one|Not started|||\ntwo|Not started|||\n"_s);
    }

    void doubleClickAndReturnMakeAProjectCurrent()
    {
        const auto [one, two] = addTwo();
        QTRY_COMPARE(table()->topLevelItemCount(), 2);
        doubleClick(0);
        QCOMPARE(m_activity->currentProject(), one);
        QTRY_VERIFY(table()->topLevelItem(0)->font(0).bold());
        select(1);
        QTest::keyClick(table(), Qt::Key_Return);
        QCOMPARE(m_activity->currentProject(), two);
    }

    void buttonsOperateTheSelectedProcessorOnly()
    {
        const auto [one, two] = addTwo();
        QTRY_COMPARE(table()->topLevelItemCount(), 2);
        select(0);
        QCOMPARE(enabled(), u"Run, Run All, Pause All"_s);
        effects();
        press(u"processorRun"_s);
        QCOMPARE(effects(), u"one.run()"_s); // the state, that of the current project, stays
        report(one, IExecutionEnvironment::ProgramRunning);
        QTRY_COMPARE(enabled(), u"Pause, Pause All"_s);
        effects();
        press(u"processorPause"_s);
        QCOMPARE(effects(), u"one.pause()"_s);
        select(1);
        report(two, IExecutionEnvironment::ProgramPaused);
        QTRY_COMPARE(enabled(), u"Run, Run All, Pause All"_s);
        effects();
        press(u"processorRun"_s);
        QCOMPARE(effects(), u"state 4\ntwo.run()"_s);
    }

    void buttonsForAllNeverAsk()
    {
        addTwo();
        m_control->options().setAction(RunEvent, AskForProcessors);
        m_control->options().setAction(PauseEvent, AskForProcessors);
        QTRY_COMPARE(table()->topLevelItemCount(), 2);
        effects();
        press(u"processorPauseAll"_s);
        QCOMPARE(effects(), u"one.pause()\ntwo.pause()"_s);
        press(u"processorRunAll"_s);
        QCOMPARE(effects(), u"state 4\none.run()\ntwo.run()"_s);
    }

    void runStartsASession()
    {
        addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        be(StateIdle);
        QTRY_COMPARE(table()->topLevelItemCount(), 2);
        select(0);
        QCOMPARE(enabled(), u"Run, Run All"_s);
        press(u"processorRun"_s);
        QVERIFY(effects().endsWith(u"one.start(false)\nstate 3\ntwo.start(false)\none.run()"_s));
    }

    void anEmptyWorkspaceHasNoRows()
    {
        QTest::qWait(0);
        QCOMPARE(list()->text(), QString());
        QCOMPARE(enabled(), QString());
        QTest::keyClick(table(), Qt::Key_Return);
        dropWorkspace();
        QCOMPARE(enabled(), QString());
    }

    void aRemovedProjectLosesItsRow()
    {
        const auto [one, two] = addTwo();
        QTRY_COMPARE(table()->topLevelItemCount(), 2);
        m_workspace->removeProject(one);
        doubleClick(0); // the row is still there
        QTRY_COMPARE(list()->text(), u"two|Running|||\n"_s);
        dropWorkspace();
        QCOMPARE(table()->topLevelItemCount(), 0);
    }

    void anEnvironmentMayVanishWhileItIsAsked()
    {
        const auto [one, two] = addTwo();
        scriptOf(u"one"_s).on[u"currentLocation"_s] = [this, one] { m_workspace->removeProject(one); };
        QTRY_COMPARE(list()->text(), u"two|Running|||\n"_s);
        QCOMPARE(m_activity->currentProject(), two);
    }

    void theWorkspaceMayCloseWhileAnEnvironmentIsAsked()
    {
        addTwo();
        scriptOf(u"one"_s).on[u"currentLocation"_s] = [this] { closeWorkspace(); };
        QTRY_VERIFY(!m_activity->workspace());
        QTest::qWait(0);
        QCOMPARE(list()->text(), QString());
        QCOMPARE(enabled(), QString());
    }

    void thePluginMayDeleteTheDockWhileItIsAsked()
    {
        addTwo();
        QPointer<DockWindow> dock(m_dockWindow);
        scriptOf(u"one"_s).on[u"currentLocation"_s] = [dock] { delete dock; };
        QTRY_VERIFY(!dock);
        m_dockWindow = nullptr;
    }

    void functionComesFromWideSymbolsIfTheyAreOffered()
    {
        Project *one = addProcessor(u"one"_s, {ISymbolLookup::Iid, ISymbols64::Iid});
        scriptOf(u"one"_s).sourceLines = {{0x100, {path(u"main.c"_s), 7}}};
        scriptOf(u"one"_s).symbols = {{u"narrow"_s, 0x100}};
        scriptOf(u"one"_s).wideLines = {{0xffffffff80000100, {path(u"main.c"_s), 7}}};
        scriptOf(u"one"_s).wideSymbols = {{u"wide + 12"_s, 0xffffffff80000100}};
        m_activity->setState(StateRunning);
        report(one, IExecutionEnvironment::ProgramPaused);
        QTRY_VERIFY(list()->text().contains(u"|wide|"_s));
    }

    void aPluginMayThrow()
    {
        const auto [one, two] = addTwo();
        scriptOf(u"one"_s).on[u"symbolAt"_s] = throwError;
        scriptOf(u"one"_s).on[u"run"_s] = throwError;
        expectException("ISymbolLookup::symbolAt");
        QTRY_COMPARE(list()->text(), u"one|Paused||main.c:7|Pause or step\ntwo|Running|||\n"_s);
        select(0);
        expectException("IExecutionEnvironment::run");
        press(u"processorRun"_s);
        scriptOf(u"one"_s).on[u"currentLocation"_s] = throwError;
        expectException("IExecutionEnvironment::currentLocation");
        report(one, IExecutionEnvironment::ProgramPaused);
        QTRY_COMPARE(list()->text(), u"one|Paused|||Pause or step\ntwo|Running|||\n"_s);
    }

    void aHiddenListAsksNothing()
    {
        const auto [one, two] = addTwo();
        QTRY_COMPARE(table()->topLevelItemCount(), 2);
        m_dockWindow->hide();
        story();
        scriptOf(u"one"_s).location.line = 9;
        report(one, IExecutionEnvironment::ProgramPaused);
        report(two, IExecutionEnvironment::ProgramRunning);
        QTest::qWait(0);
        QVERIFY(!story().contains(u"one.currentLocation"_s));
        m_dockWindow->show();
        QTRY_VERIFY(list()->text().contains(u"main.c:9"_s));
    }
};

QTEST_MAIN(ProcessorDockTest)
#include "tst_processordock.moc"
