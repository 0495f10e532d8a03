#include "callstackpane.h"
#include "debugdocksfixture.h"
#include "listview.h"
#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;

/// The window "Call Stack" with the real control of sessions and the stub's processors.
class CallStackPaneTest : public QObject, protected DebugDocksFixture
{
    Q_OBJECT

private:
    DockWindow *dock() const { return m_windows->dock(DebugWindows::CallStack); }
    CallStackPane *pane(int index = 0) const { return dock()->findChildren<CallStackPane *>().value(index); }
    ListView *list() const { return pane()->findChild<ListView *>(); }
    QLabel *note() const { return pane()->findChild<QLabel *>(u"note"_s); }
    /// The texts of the bold rows.
    QString bold() const
    {
        QStringList texts;
        for (QTreeWidgetItem *row = list()->topLevelItem(0); row; row = list()->itemBelow(row)) {
            if (row->font(0).bold())
                texts.append(row->text(0));
        }
        return texts.join(u' ');
    }
    QString selected() const { return list()->currentItem() ? list()->currentItem()->text(0) : QString(); }
    void press(int key) const { QTest::keyClick(list(), Qt::Key(key)); }

    static StackFrame frame(int level, const QString &function, const QString &file, int line)
    {
        return {level, quint64(0x1000 + level), function, file, line, {}};
    }
    Project *addStack(const QString &name = u"one"_s)
    {
        Project *project = addProcessor(name, {ICallStack::Iid});
        StubScript &script = scriptOf(name);
        script.threads = {{1, u"main"_s, {}, false}};
        script.frames[1] = {frame(0, u"blink"_s, u"/src/led.c"_s, 12),
                            frame(1, u"main"_s, u"main.c"_s, 7),
                            {2, 0x8000, {}, {}, 0, u"libc.so"_s}};
        script.place = StackPlace{1, 0};
        Q_EMIT m_activity->projectsChanged();
        story();
        return project;
    }

private Q_SLOTS:
    void init()
    {
        setUp();
        dock()->show();
    }

    void cleanup() { tearDown(); }

    void menuItemShowsAndHidesTheDock()
    {
        auto *action = m_window->findChild<QAction *>(u"debugToggleCallStackWindow"_s);
        QVERIFY(action);
        QVERIFY(m_window->findChild<QMenu *>(u"debugWindowsMenu"_s)->actions().contains(action));
        QCOMPARE(action->shortcut(), QKeySequence(u"Alt+9"_s));
        action->trigger();
        QVERIFY(dock()->isHidden());
        action->trigger();
        QVERIFY(dock()->isVisible());
    }

    void functionsOfOneThreadAreTheRows()
    {
        addStack();
        pause();
        QCOMPARE(pane()->objectName(), u"one/callStackView"_s);
        QCOMPARE(pane()->text(), u"0 blink led.c, 12\n1 main main.c, 7\n2 0x00008000 libc.so\n"_s);
        QCOMPARE(list()->topLevelItem(1)->text(3), u"0x00001001"_s);
        QCOMPARE(bold(), u"blink"_s);
        QCOMPARE(selected(), u"blink"_s);
        QCOMPARE(list()->accessibleName(), u"Call stack"_s);
    }

    void withoutAnInterfaceALineSaysSo()
    {
        addProcessor(u"one"_s);
        Q_EMIT m_activity->projectsChanged();
        pause();
        QVERIFY(note()->isVisible());
        QCOMPARE(pane()->note(), u"The debugger of this project does not offer a call stack."_s);
        dropWorkspace();
        QCOMPARE(pane()->note(), u"There is no program to be debugged."_s);
    }

    void runningProgramHasNoRows()
    {
        addStack();
        QCOMPARE(pane()->note(), u"The program is not paused."_s);
        pause();
        QVERIFY(list()->isVisible());
        m_activity->setState(StateRunning);
        QCOMPARE(list()->topLevelItemCount(), 3); // a step soon shows new ones
        QTRY_COMPARE(pane()->note(), u"The program is not paused."_s);
        QCOMPARE(list()->topLevelItemCount(), 0);
        pause();
        QCOMPARE(list()->topLevelItemCount(), 3);
        QCOMPARE(pane()->note(), QString());
    }

    void hiddenDockAsksNothing()
    {
        addStack();
        dock()->hide();
        pause();
        QVERIFY(!story().contains(u"requestThreads"_s));
        dock()->show();
        QTRY_COMPARE(list()->topLevelItemCount(), 3);
        QVERIFY(story().contains(u"requestThreads"_s));
    }

    void chosenFunctionShowsItsSourceAndRefreshesTheWindows()
    {
        addStack();
        open(u"main.c"_s);
        pause();
        m_windows->dock(DebugWindows::Registers)->show();
        list()->setFocus();
        press(Qt::Key_Down);
        scriptOf(u"one"_s).location = {u"main.c"_s, 3}; // that of the caller
        story();
        press(Qt::Key_Return);
        QTRY_COMPARE(scriptOf(u"one"_s).place->frame, 1);
        QTRY_COMPARE(bold(), u"main"_s);
        QCOMPARE(selected(), u"main"_s);
        QVERIFY(viewOf(u"main.c"_s)->hasMarker(3, IViewWithMarkers::CallerMarker));
        QVERIFY(!viewOf(u"main.c"_s)->hasMarker(3, IViewWithMarkers::CurrentLineMarker));
        QVERIFY(list()->hasFocus() || list() == m_mainWindow->focusWidget());
        scriptOf(u"one"_s).place->frame = 0;
        pause();
        QVERIFY(viewOf(u"main.c"_s)->hasMarker(3, IViewWithMarkers::CurrentLineMarker));
        QVERIFY(!viewOf(u"main.c"_s)->hasMarker(3, IViewWithMarkers::CallerMarker));
        QCOMPARE(selected(), u"blink"_s);
    }

    void doubleClickChoosesAFunction()
    {
        addStack();
        pause();
        const QPoint centre = list()->visualItemRect(list()->topLevelItem(2)).center();
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, centre);
        QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, centre);
        QTRY_COMPARE(scriptOf(u"one"_s).place->frame, 2);
    }

    void refusedChoiceReadsTheRowsAgain()
    {
        addStack();
        pause();
        scriptOf(u"one"_s).placeAccepted = false;
        scriptOf(u"one"_s).frames[1] = {frame(0, u"other"_s, u"main.c"_s, 7)};
        press(Qt::Key_Return);
        QTRY_COMPARE(pane()->text(), u"0 other main.c, 7\n"_s);
    }

    void threadsHaveRowsWithTheirFunctions()
    {
        addStack();
        StubScript &script = scriptOf(u"one"_s);
        script.threads = {{1, u"main"_s, {}, false}, {2, u"blinker"_s, u"waits"_s, false}, {3, {}, {}, true}};
        script.frames[2] = {frame(0, u"wait"_s, u"rtos.c"_s, 3), frame(1, u"blinker"_s, u"main.c"_s, 9)};
        script.place = StackPlace{2, 0};
        story();
        pause();
        QCOMPARE(pane()->text(), u"1 main\n2 blinker (waits)\n  0 wait rtos.c, 3\n  1 blinker main.c, 9\n3\n"_s);
        QCOMPARE(bold(), u"2 blinker wait"_s);
        QCOMPARE(selected(), u"wait"_s);
        QVERIFY(!story().contains(u"requestFrames(1,"_s)); // not before its row is opened
        list()->setCurrentItem(list()->topLevelItem(0));
        press(Qt::Key_Right);
        QVERIFY(pane()->text().startsWith(u"1 main\n  0 blink led.c, 12\n  1 main main.c, 7\n"_s));
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QTRY_COMPARE(script.place->thread, 1);
        QCOMPARE(script.place->frame, 1);
        QTRY_COMPARE(bold(), u"1 main main"_s);
        QVERIFY(list()->topLevelItem(1)->isExpanded()); // rows that are open stay open
        list()->setCurrentItem(list()->topLevelItem(1));
        press(Qt::Key_Return);
        QTRY_COMPARE(script.place->thread, 2);
        QCOMPARE(script.place->frame, 0);
    }

    void threadsComeAndGo()
    {
        addStack();
        pause();
        StubScript &script = scriptOf(u"one"_s);
        script.frames[2] = {frame(0, u"wait"_s, u"rtos.c"_s, 3)};
        script.threads = {{1, u"main"_s, {}, false}, {2, u"idle"_s, {}, false}};
        pause();
        QCOMPARE(pane()->text(),
                 u"1 main\n  0 blink led.c, 12\n  1 main main.c, 7\n  2 0x00008000 libc.so\n2 idle\n"_s);
        script.threads = {{2, u"idle"_s, {}, false}, {4, u"new"_s, {}, false}};
        script.place = StackPlace{2, 0};
        pause();
        QCOMPARE(pane()->text(), u"2 idle\n  0 wait rtos.c, 3\n4 new\n"_s);
        script.threads = {{2, u"idle"_s, {}, false}};
        pause();
        QCOMPARE(pane()->text(), u"0 wait rtos.c, 3\n"_s);
        script.threads.clear();
        pause();
        QCOMPARE(pane()->note(), u"The program has no threads."_s);
    }

    void longStacksAreReadInPortions()
    {
        addStack();
        StubScript &script = scriptOf(u"one"_s);
        script.frames[1].clear();
        for (int i = 0; i < 250; ++i)
            script.frames[1].append(frame(i, u"recurse"_s, u"main.c"_s, 7));
        pause();
        QCOMPARE(list()->topLevelItemCount(), 101);
        QCOMPARE(list()->topLevelItem(100)->text(0), u"Show more"_s);
        press(Qt::Key_End);
        press(Qt::Key_Return);
        QTRY_COMPARE(list()->topLevelItemCount(), 201);
        press(Qt::Key_End);
        press(Qt::Key_Return);
        QTRY_COMPARE(list()->topLevelItemCount(), 250);
        QCOMPARE(list()->topLevelItem(249)->text(2), u"249"_s);
        story();
        pause(); // reads as many as are shown
        QVERIFY(story().contains(u"requestFrames(1, 0, 250)"_s));
        QCOMPARE(list()->topLevelItemCount(), 250);
    }

    void failuresAreShown()
    {
        addStack();
        pause();
        StubScript &script = scriptOf(u"one"_s);
        script.failure = u"The target does not answer."_s;
        pause();
        QCOMPARE(pane()->note(), u"The target does not answer."_s);
        script.failure.clear();
        script.on[u"requestFrames"_s] = [&script] { script.failure = u"damaged"_s; };
        pause();
        QCOMPARE(list()->topLevelItem(0)->text(0), u"damaged"_s);
        press(Qt::Key_Return); // nothing to be chosen
        QCOMPARE(script.place->frame, 0);
    }

    void lateAnswersOfAnEarlierStopAreIgnored()
    {
        addStack();
        StubScript &script = scriptOf(u"one"_s);
        script.answersLater = true;
        pause();
        const auto early = std::exchange(script.answers, {});
        QCOMPARE(early.size(), 1);
        script.threads = {};
        pause();
        early.first()();
        QCOMPARE(script.answers.size(), 1); // the frames were not asked for
        script.answerAll();
        QCOMPARE(pane()->note(), u"The program has no threads."_s);
    }

    void answersAfterTheWorkspaceWasClosedAreIgnored()
    {
        addStack();
        scriptOf(u"one"_s).answersLater = true;
        pause();
        const auto answers = std::exchange(scriptOf(u"one"_s).answers, {});
        closeWorkspace();
        for (const auto &answer : answers)
            answer();
        QCOMPARE(pane()->note(), u"There is no program to be debugged."_s);
    }

    void functionOfAnotherProjectMakesItCurrent()
    {
        Project *one = addStack();
        Project *two = addStack(u"two"_s);
        m_activity->setState(StateRunning);
        report(one, IExecutionEnvironment::ProgramPaused);
        report(two, IExecutionEnvironment::ProgramPaused);
        QCOMPARE(m_activity->currentProject(), two);
        CallStackPane *first = dock()->findChild<CallStackPane *>(u"one/callStackView"_s);
        m_workspace->setCurrentProject(one);
        QTRY_VERIFY(first->isVisible() && !first->text().isEmpty());
        m_workspace->setCurrentProject(two);
        auto *rows = first->findChild<ListView *>();
        rows->setCurrentItem(rows->topLevelItem(1));
        QTest::keyClick(rows, Qt::Key_Return);
        QTRY_COMPARE(m_activity->currentProject(), one);
    }

    void environmentMayThrow()
    {
        addStack();
        StubScript &script = scriptOf(u"one"_s);
        script.on[u"requestThreads"_s] = throwError;
        expectException("ICallStack::requestThreads");
        pause();
        script.on.clear();
        pause();
        script.on[u"setCurrentPlace"_s] = throwError;
        expectException("ICallStack::setCurrentPlace");
        story();
        press(Qt::Key_Return);
        QString seen;
        QTRY_VERIFY((seen += story()).contains(u"requestThreads"_s)); // read again
    }

    void workspaceMayCloseWhileAFunctionIsChosen()
    {
        addStack();
        pause();
        scriptOf(u"one"_s).on[u"setCurrentPlace"_s] = [this] { closeWorkspace(); };
        press(Qt::Key_Return);
        QTRY_VERIFY(!m_activity->workspace());
        QTRY_COMPARE(pane()->note(), u"There is no program to be debugged."_s);
    }

    void stackIsCopiedAsText()
    {
        addStack();
        pause();
        m_mainWindow->findChild<QMenu *>(u"callStackMenu"_s)->actions().first()->trigger();
        QCOMPARE(QGuiApplication::clipboard()->text(), pane()->text());
    }
};

QTEST_MAIN(CallStackPaneTest)
#include "tst_callstackpane.moc"
