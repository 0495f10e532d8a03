#include "debugfixture.h"
#include "debugoffers.h"
#include "inextstatement.h"
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const auto NoStatement = u"message Cannot display next statment.||No corresponding source file found."_s;
const auto Hit = u"message A breakpoint has been hit in project 'one'.||The current project will be switched."_s;
} // namespace

/// Reports of processors, and the display of next statements and breakpoints.
class DebugControlViewsTest : public QObject, protected DebugFixture
{
    Q_OBJECT

private:
    void status(const Project *project, const QString &text, int position)
    {
        m_control->statusInfo(text, position, project->executionInterface());
    }

    static BreakpointRecord breakpoint(const QString &file, int line, int state) { return {{{file, line}}, state}; }

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    // Reports

    void aReportSetsTheStateInASessionOnly_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("states"); // after the report, in the states 1 to 7
        QTest::newRow("paused") << 0 << u"1 2 5 5 5 5 5"_s;
        QTest::newRow("running") << 1 << u"1 2 4 4 4 4 4"_s;
        QTest::newRow("sleeping") << 2 << u"1 2 4 4 4 4 4"_s;
        QTest::newRow("unknown") << 3 << u"1 2 7 7 7 7 7"_s;
        QTest::newRow("finished") << 4 << u"1 2 6 6 6 6 6"_s;
        QTest::newRow("breakpoint hit") << 5 << u"1 2 5 5 5 5 5"_s;
        QTest::newRow("no status") << 6 << u"1 2 3 4 5 6 7"_s;
    }

    void aReportSetsTheStateInASessionOnly()
    {
        QFETCH(int, status);
        const Project *project = addProcessor(u"fw"_s);
        QStringList states;
        for (int state = StateIdle; state <= StateUnknown; ++state) {
            be(ActivityState(state));
            report(project, status);
            states += QString::number(m_activity->state());
            QCOMPARE(story().contains(u"fire onBreakpointHit"_s), status == 5); // in any state
        }
        QTEST(states.join(u' '), "states");
    }

    void scriptEventOfAHitIsFiredAfterTheStateChange()
    {
        const Project *project = addProcessor(u"fw"_s);
        be(StateRunning);
        report(project, 5);
        QCOMPARE(effects(), u"state 5\nfire onBreakpointHit"_s);
    }

    void reportOfAnotherProjectIsUsedWhenItBecomesCurrent_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("state"); // when its project becomes current
        QTest::newRow("paused") << 0 << 5;
        QTest::newRow("running") << 1 << 4;
        QTest::newRow("sleeping") << 2 << 4;
        QTest::newRow("unknown") << 3 << 7;
        QTest::newRow("finished") << 4 << 6;
        QTest::newRow("no status") << 6 << 7;
    }

    void reportOfAnotherProjectIsUsedWhenItBecomesCurrent()
    {
        QFETCH(int, status);
        const Project *one = addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        be(StateUnknown);
        report(one, status);
        QCOMPARE(story(), QString());
        m_workspace->setCurrentProject(0);
        QTEST(int(m_activity->state()), "state");
        QVERIFY(effects().endsWith(u"fire onCurrentProjectChanged"_s));
    }

    void reportsWithoutAProjectOrAnEnvironmentFailAnAssertion()
    {
        const Project *project = addProcessor(u"fw"_s);
        expectAssert(u"currentProject() && environment"_s);
        m_control->programStatusChanged(IExecutionEnvironment::ProgramPaused, nullptr);
        expectAssert(u"currentProject() && environment"_s);
        m_control->statusInfo(u"text"_s, 0, nullptr);
        const auto environment = shareInterface(project->executionInterface());
        dropWorkspace();
        expectAssert(u"currentProject() && environment"_s);
        m_control->programStatusChanged(IExecutionEnvironment::ProgramBreakpointHit, environment.get());
        expectAssert(u"currentProject() && environment"_s);
        m_control->statusInfo(u"text"_s, 0, environment.get());
        QCOMPARE(story(), QString());
    }

    void hitInAnotherProjectShowsAMessageAndMakesItCurrent()
    {
        const Project *one = addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        addProcessor(u"three"_s);
        be(StateRunning);
        expectBox();
        report(one, 5);
        QCOMPARE(effects(), u"two.pause()\n"
                            "three.pause()\n"_s
                                + Hit
                                + u"\nstate 5\n"
                                  "fire onCurrentProjectChanged\n"
                                  "state 5\n"
                                  "fire onBreakpointHit"_s);
        QCOMPARE(m_workspace->currentProject(), one);
    }

    void hitPausesTheOthersIfTheOptionIsSet_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<bool>("pauses");
        QTest::newRow("leave them") << 0 << false;
        QTest::newRow("pause them") << 1 << true;
        QTest::newRow("ask, which is not supported") << 2 << false;
    }

    void hitPausesTheOthersIfTheOptionIsSet()
    {
        QFETCH(int, action);
        QFETCH(bool, pauses);
        addProcessor(u"one"_s);
        const Project *two = addProcessor(u"two"_s);
        m_control->options().setAction(BreakpointEvent, DebugAction(action));
        be(StateRunning);
        report(two, 5);
        QCOMPARE(effects(), (pauses ? u"one.pause()\n"_s : QString()) + u"state 5\nfire onBreakpointHit"_s);
    }

    void hitOutsideASessionAlsoShowsTheMessage()
    {
        const Project *one = addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        expectBox();
        report(one, 5);
        QVERIFY(effects().startsWith(u"two.pause()\n"_s + Hit));
    }

    void otherProcessorsPauseAfterOneHasFailedToPause()
    {
        addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        const Project *three = addProcessor(u"three"_s);
        scriptOf(u"one"_s).on[u"pause"_s] = throwError;
        be(StateRunning);
        expectException("IExecutionEnvironment::pause");
        report(three, 5);
        QVERIFY(effects().startsWith(u"one.pause()\ntwo.pause()\nstate 5"_s));
    }

    // Texts of processors in the status bar

    void statusTextIsShownWhenItsProcessorIsCurrent()
    {
        const Project *one = addProcessor(u"one"_s);
        const Project *two = addProcessor(u"two"_s);
        status(two, u"0x100"_s, 0);
        status(two, u"8 MHz"_s, 3);
        status(two, u"nowhere"_s, 9);
        QCOMPARE(story(), u"status '0x100' at 0\nstatus '8 MHz' at 3\nstatus 'nowhere' at 9"_s);
        status(one, u"first"_s, 1);
        status(one, u"last"_s, 2);
        QCOMPARE(story(), QString());
        m_workspace->setCurrentProject(0);
        QCOMPARE(story(), u"one.programStatus()\nstatus 'last' at 2\nfire onCurrentProjectChanged"_s);
        m_workspace->setCurrentProject(1);
        QCOMPARE(story(), u"two.programStatus()\nstatus 'nowhere' at 9\nfire onCurrentProjectChanged"_s);
    }

    // Another project

    void programStatusIsCalledAndItsResultIgnored()
    {
        addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        scriptOf(u"one"_s).programStatus = IExecutionEnvironment::ProgramFinished;
        be(StateRunning);
        m_workspace->setCurrentProject(0);
        QCOMPARE(story(), u"one.programStatus()\nfire onCurrentProjectChanged"_s);
        QCOMPARE(m_activity->state(), StateRunning);
        scriptOf(u"two"_s).on[u"programStatus"_s] = throwError;
        expectException("IExecutionEnvironment::programStatus");
        m_workspace->setCurrentProject(1);
        story();
    }

    void newCurrentProjectShowsItsNextStatement()
    {
        addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        scriptOf(u"one"_s).location = {u"main.c"_s, 3};
        MarkedView *view = open(u"main.c"_s);
        be(StatePaused);
        m_control->refreshExecutionMarker();
        QCOMPARE(view->marks(), u"7=8"_s);
        QSignalSpy registers(m_control.get(), &DebugControl::updateRegisterWindow);
        QSignalSpy data(m_control.get(), &DebugControl::updateDataWindows);
        m_workspace->setCurrentProject(0);
        QCOMPARE(view->marks(), u"3=8"_s);
        QCOMPARE(view->cursor, 3);
        QCOMPARE(registers.size(), 1);
        QCOMPARE(data.size(), 1);
        be(StateRunning);
        m_workspace->setCurrentProject(1);
        QCOMPARE(view->marks(), u"3=8"_s); // the last position of the program
        story();
    }

    void removingTheLastProjectOnlyFiresTheEvent()
    {
        const Project *project = addProcessor(u"fw"_s);
        be(StateIdle);
        m_workspace->removeProject(project);
        QCOMPARE(story(), u"fire onCurrentProjectChanged"_s);
    }

    /// Otherwise nothing could end the session: all commands need an environment.
    void removingTheLastProcessorEndsTheSession()
    {
        (void)addProject(u"library"_s, {}, {});
        const Project *project = addProcessor(u"fw"_s);
        be(StatePaused);
        m_workspace->removeProject(project);
        QCOMPARE(m_activity->state(), StateIdle);
        QVERIFY2(effects().startsWith(u"fw.stop()\nstate 1\nfire onStopped\n"_s), qPrintable(story()));
    }

    void removingOneProcessorStopsItOnly()
    {
        const Project *one = addProcessor(u"one"_s);
        Project *two = addProcessor(u"two"_s);
        m_workspace->setCurrentProject(two);
        be(StatePaused);
        m_workspace->removeProject(one);
        QCOMPARE(effects(), u"one.stop()"_s);
        QCOMPARE(m_activity->state(), StatePaused);
    }

    // The display in a state

    void thePausedStateUpdatesEveryWindow()
    {
        addProcessor(u"fw"_s);
        MarkedView *view = open(u"main.c"_s);
        QSignalSpy registers(m_control.get(), &DebugControl::updateRegisterWindow);
        QSignalSpy data(m_control.get(), &DebugControl::updateDataWindows);
        QString order;
        connect(m_control.get(), &DebugControl::updateRegisterWindow, this, [&] { order += u"registers "_s; });
        connect(m_control.get(), &DebugControl::updateDataWindows, this, [&] { order += u"data"_s; });
        m_activity->setState(StateRunning);
        m_activity->setState(StatePaused);
        m_activity->setState(StatePaused);
        m_activity->setState(StateFinished);
        QCOMPARE(registers.size(), 2);
        QCOMPARE(order, u"registers dataregisters data"_s);
        QCOMPARE(view->marks(), u"7=8"_s);
        story();
    }

    void endOfASessionRemovesTheExecutionMarker_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<bool>("clears");
        for (const int from : {3, 4, 5, 6, 7})
            QTest::addRow("%d to idle", from) << from << 1 << true;
        QTest::newRow("to building") << 4 << 2 << false;
        QTest::newRow("to no workspace") << 4 << 0 << false;
        QTest::newRow("between sessions") << 1 << 1 << false;
    }

    void endOfASessionRemovesTheExecutionMarker()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(bool, clears);
        addProcessor(u"fw"_s);
        open(u"notes.blank"_s);
        MarkedView *view = open(u"main.c"_s);
        be(ActivityState(from));
        view->clearMarkers(IViewWithMarkers::CurrentLineMarker);
        view->setMarker(2, IViewWithMarkers::EnabledBreakpointMarker | IViewWithMarkers::CurrentLineMarker, true,
                        false);
        m_activity->setState(ActivityState(to));
        QCOMPARE(view->marks(), clears ? u"2=1"_s : u"2=9"_s);
        story();
    }

    void markerOfTheLastStopDisappearsWhenTheProgramIsNotPaused_data()
    {
        QTest::addColumn<int>("state");
        QTest::newRow("running") << int(StateRunning);
        QTest::newRow("finished") << int(StateFinished);
        QTest::newRow("unknown") << int(StateUnknown);
    }

    void markerOfTheLastStopDisappearsWhenTheProgramIsNotPaused()
    {
        QFETCH(int, state);
        addProcessor(u"fw"_s);
        MarkedView *view = open(u"main.c"_s);
        be(StatePaused);
        m_activity->setState(ActivityState(state));
        QCOMPARE(view->marks(), u"7=8"_s); // a step would show it again at once
        QTRY_COMPARE(view->marks(), QString());
        m_activity->setState(StatePaused);
        QCOMPARE(view->marks(), u"7=8"_s);
        story();
    }

    void markerStaysDuringAStep()
    {
        addProcessor(u"fw"_s);
        MarkedView *view = open(u"main.c"_s);
        be(StatePaused);
        auto *timer = m_control->findChild<QTimer *>(u"markerTimer"_s);
        QVERIFY(timer);
        const QSignalSpy cleared(timer, &QTimer::timeout);
        m_activity->setState(StateRunning);
        QVERIFY(timer->isActive());
        m_activity->setState(StatePaused);
        QVERIFY(!timer->isActive());
        QCOMPARE(cleared.size(), 0);
        QCOMPARE(view->marks(), u"7=8"_s);
        story();
    }

    void locationIsRequestedOncePerStop()
    {
        const Project *project = addProcessor(u"fw"_s);
        MarkedView *view = open(u"main.c"_s);
        open(u"other.c"_s);
        be(StateRunning);
        report(project, IExecutionEnvironment::ProgramPaused);
        QCOMPARE(story().count(u"fw.currentLocation()"_s), 1);
        m_control->fileOpened();
        QCOMPARE(view->marks(), u"7=8"_s);
        QVERIFY(!story().contains(u"currentLocation"_s));
        scriptOf(u"fw"_s).location = {u"main.c"_s, 9};
        report(project, IExecutionEnvironment::ProgramPaused);
        m_control->fileOpened();
        QCOMPARE(view->marks(), u"9=8"_s);
        QCOMPARE(story().count(u"fw.currentLocation()"_s), 1);
        scriptOf(u"fw"_s).location = {u"main.c"_s, 11};
        m_control->updateDebugWindows(DebugControl::RegisterWindow); // a script has written the program counter
        m_control->fileOpened();
        QCOMPARE(view->marks(), u"11=8"_s);
    }

    void partsAreUpdatedOneByOne()
    {
        addProcessor(u"fw"_s);
        QSignalSpy registers(m_control.get(), &DebugControl::updateRegisterWindow);
        QSignalSpy data(m_control.get(), &DebugControl::updateDataWindows);
        m_control->updateDebugWindows(1);
        QCOMPARE(QPoint(int(registers.size()), int(data.size())), QPoint(0, 1));
        m_control->updateDebugWindows(2);
        QCOMPARE(QPoint(int(registers.size()), int(data.size())), QPoint(1, 1));
        QCOMPARE(story(), QString());
        m_control->updateDebugWindows(4);
        QCOMPARE(QPoint(int(registers.size()), int(data.size())), QPoint(1, 1));
        QCOMPARE(story(), u"fw.currentLocation()\nopenFile main.c"_s);
    }

    // The next statement

    void theNextStatementsFileIsOpenedAndItsBreakpointsMarked()
    {
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        scriptOf(u"fw"_s).breakpoints = {breakpoint(u"main.c"_s, 2, 1)};
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        QCOMPARE(front(), u"main.c"_s);
        QCOMPARE(viewOf(u"main.c"_s)->marks(), u"2=1 7=8"_s);
        QCOMPARE(viewOf(u"main.c"_s)->cursor, 7);
        story();
    }

    /// The user goes on with the text that was compiled.
    void nextStatementIsNotShownAgainAfterACompilation()
    {
        addProcessor(u"fw"_s);
        be(StatePaused);
        QCOMPARE(front(), u"main.c"_s);
        open(u"other.c"_s);
        be(StateBuilding);
        be(StatePaused);
        QCOMPARE(front(), u"other.c"_s);
        be(StateRunning);
        be(StatePaused);
        QCOMPARE(front(), u"main.c"_s);
        story();
    }

    void theNextStatementsFileComesToTheFront()
    {
        addProcessor(u"fw"_s);
        MarkedView *view = open(u"main.c"_s);
        open(u"other.c"_s)->cursor = 5;
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        QCOMPARE(front(), u"main.c"_s);
        QCOMPARE(view->cursor, 7);
        QCOMPARE(viewOf(u"other.c"_s)->cursor, 5);
        story();
    }

    void locationMayHaveADetourInItsPath_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("through a directory") << u"src/../main.c"_s;
        QTest::newRow("with dots") << u"./main.c"_s;
    }

    void locationMayHaveADetourInItsPath()
    {
        QFETCH(QString, file);
        addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).location = {file, 7};
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        QCOMPARE(front(), u"main.c"_s);
        QCOMPARE(viewOf(u"main.c"_s)->cursor, 7);
        story();
    }

    void aViewWithoutLinesIsOnlyBroughtToTheFront()
    {
        addProcessor(u"fw"_s);
        writeFile(path(u"data.blank"_s), "x");
        scriptOf(u"fw"_s).location = {u"data.blank"_s, 1};
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        QCOMPARE(front(), u"data.blank"_s);
        story();
    }

    void withoutSourceTheDisassemblyIsShown_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("unknown place") << QString();
        QTest::newRow("no such file") << u"gone.c"_s;
        QTest::newRow("a directory") << u"."_s;
        QTest::newRow("in the disassembly") << u"disassembler:"_s;
    }

    void withoutSourceTheDisassemblyIsShown()
    {
        QFETCH(QString, file);
        const Project *project = addProcessor(u"fw"_s, {IDisassembly::Iid});
        scriptOf(u"fw"_s).location = {file, 12};
        scriptOf(u"fw"_s).locationsFrom[disassemblyOf(project)] = {disassemblyOf(project), 0x101};
        open(u"other.c"_s);
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        QCOMPARE(front(), disassemblyOf(project));
        QCOMPARE(viewOf(disassemblyOf(project))->cursor, 0x101);
        QCOMPARE(viewOf(disassemblyOf(project))->marks(), u"257=8"_s);
        QCOMPARE(viewOf(u"other.c"_s)->cursor, 1);
        story();
    }

    void locationInTheDisassemblyInFrontStaysInIt()
    {
        const Project *project = addProcessor(u"fw"_s, {IDisassembly::Iid});
        scriptOf(u"fw"_s).locationsFrom[disassemblyOf(project)] = {disassemblyOf(project), 0x101};
        open(disassemblyOf(project));
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        QCOMPARE(front(), disassemblyOf(project));
        QCOMPARE(viewOf(disassemblyOf(project))->cursor, 0x101);
        QVERIFY(!story().contains(u"openFile"_s));
    }

    void disassemblyOfAnotherProcessorIsNotUsed()
    {
        const Project *other = addProcessor(u"other"_s, {IDisassembly::Iid});
        addProcessor(u"fw"_s, {IDisassembly::Iid});
        scriptOf(u"fw"_s).locationsFrom[disassemblyOf(other)] = {disassemblyOf(other), 0x101};
        open(disassemblyOf(other))->cursor = 3;
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        QCOMPARE(front(), u"main.c"_s);
        QCOMPARE(viewOf(disassemblyOf(other))->cursor, 3);
        story();
    }

    void withNeitherSourceNorDisassemblyAMessageIsShown_data()
    {
        QTest::addColumn<QString>("inFront");
        QTest::addColumn<QString>("file");
        QTest::newRow("nothing open") << QString() << QString();
        QTest::newRow("unknown place") << u"other.c"_s << QString();
        QTest::newRow("no such file") << u"other.c"_s << u"gone.c"_s;
        QTest::newRow("a place in a disassembly that is not offered") << u"other.c"_s << u"disassembler:"_s;
        QTest::newRow("another processor's disassembly in front") << u"foreign"_s << u"gone.c"_s;
    }

    void withNeitherSourceNorDisassemblyAMessageIsShown()
    {
        QFETCH(QString, inFront);
        QFETCH(QString, file);
        const Project *other = addProcessor(u"other"_s, {IDisassembly::Iid});
        addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).location = {file, 12};
        scriptOf(u"fw"_s).locationsFrom[disassemblyOf(other)] = {u"gone.c"_s, 12};
        const QString name = inFront == u"foreign"_s ? disassemblyOf(other) : inFront;
        if (!name.isEmpty())
            open(name)->cursor = 3;
        expectBox();
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        QVERIFY(story().contains(NoStatement));
        if (!name.isEmpty())
            QCOMPARE(viewOf(name)->cursor, 3);
    }

    void unopenableDisassemblyCountsAsMissing()
    {
        addProcessor(u"fw"_s, {IDisassembly::Iid});
        scriptOf(u"fw"_s).location = {};
        m_template->refuses = "disassembler:";
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Workspace::openDocument: No template found"_s));
        open(u"main.c"_s)->cursor = 3;
        expectBox();
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        QCOMPARE(viewOf(u"main.c"_s)->cursor, 3);
        story();
    }

    void unopenableSourceShowsTheDisassembly()
    {
        const Project *project = addProcessor(u"fw"_s, {IDisassembly::Iid});
        scriptOf(u"fw"_s).locationsFrom[disassemblyOf(project)] = {disassemblyOf(project), 0x101};
        m_template->refuses = "main.c";
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Workspace::openDocument: No template found"_s));
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        QCOMPARE(front(), disassemblyOf(project));
        story();
    }

    void locationUnknownToTheDisassemblyShowsAMessage()
    {
        const Project *project = addProcessor(u"fw"_s, {IDisassembly::Iid});
        scriptOf(u"fw"_s).location = {};
        expectBox();
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        QCOMPARE(front(), disassemblyOf(project));
        QVERIFY(story().contains(NoStatement));
    }

    void exceptionInCurrentLocationCountsAsNoLocation()
    {
        addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).on[u"currentLocation"_s] = throwError;
        expectException("IExecutionEnvironment::currentLocation");
        expectBox();
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        story();
    }

    void projectWithoutEnvironmentShowsNoStatement()
    {
        addProject(u"fw"_s, {}, {});
        story();
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        dropWorkspace();
        m_control->updateDebugWindows(DebugControl::NextStatementPart);
        QCOMPARE(story(), QString());
    }

    // "Show next statement"

    void showNextInTheMarkedSourceOpensNoOtherView()
    {
        addProcessor(u"fw"_s);
        MarkedView *view = open(u"main.c"_s);
        m_control->refreshExecutionMarker();
        view->cursor = 2;
        m_control->debugShowNext();
        QCOMPARE(view->cursor, 7);
        QCOMPARE(m_views->views().size(), 1);
        story();
    }

    void showNextInTheDisassemblyOpensTheSource()
    {
        const Project *project = addProcessor(u"fw"_s, {IDisassembly::Iid});
        scriptOf(u"fw"_s).locationsFrom[disassemblyOf(project)] = {disassemblyOf(project), 0x101};
        open(disassemblyOf(project));
        m_control->refreshExecutionMarker();
        m_control->debugShowNext();
        QCOMPARE(front(), u"main.c"_s);
        QCOMPARE(viewOf(u"main.c"_s)->cursor, 7);
        QCOMPARE(viewOf(u"main.c"_s)->marks(), u"7=8"_s);
        story();
    }

    void showNextInAnUnmarkedDisassemblyStaysInIt()
    {
        const Project *project = addProcessor(u"fw"_s, {IDisassembly::Iid});
        scriptOf(u"fw"_s).locationsFrom[disassemblyOf(project)] = {disassemblyOf(project), 0x101};
        open(disassemblyOf(project));
        m_control->debugShowNext();
        QCOMPARE(front(), disassemblyOf(project));
        QCOMPARE(viewOf(disassemblyOf(project))->cursor, 0x101);
        story();
    }

    void showNextWithAMissingSourceStaysInTheDisassembly()
    {
        const Project *project = addProcessor(u"fw"_s, {IDisassembly::Iid});
        scriptOf(u"fw"_s).location = {u"gone.c"_s, 1};
        scriptOf(u"fw"_s).locationsFrom[disassemblyOf(project)] = {disassemblyOf(project), 0x101};
        open(disassemblyOf(project));
        m_control->refreshExecutionMarker();
        m_control->debugShowNext();
        QCOMPARE(front(), disassemblyOf(project));
        story();
    }

    void showNextAlwaysUpdatesAllWindows()
    {
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        QSignalSpy registers(m_control.get(), &DebugControl::updateRegisterWindow);
        m_control->debugShowNext(); // nothing is open
        QCOMPARE(registers.size(), 1);
        QVERIFY(story().contains(u"fw.breakpoints()"_s));
        dropWorkspace();
        m_control->debugShowNext();
        QCOMPARE(registers.size(), 2);
    }

    // "Run to cursor"

    void runningToTheCursorOfADisassemblyNamesItsAddress()
    {
        const Project *project = addProcessor(u"fw"_s, {IDisassembly::Iid});
        open(disassemblyOf(project));
        be(StateFinished);
        m_line = 0x101;
        m_control->debugRunToCursor();
        QCOMPARE(effects(), u"state 4\nfw.runTo(%1, 257)"_s.arg(disassemblyOf(project)));
    }

    void runningToTheCursorOfAnotherProcessorsDisassemblyIsImpossible()
    {
        const Project *other = addProcessor(u"dsp"_s, {IDisassembly::Iid});
        addProcessor(u"fw"_s, {IDisassembly::Iid, INextStatement::Iid});
        be(StatePaused); // shows the source of the current processor
        open(disassemblyOf(other));
        story();
        QVERIFY(!hasProgramLines(*m_activity, m_views->currentView()));
        m_control->debugRunToCursor();
        m_control->debugSetNext();
        QCOMPARE(effects(), QString());
        m_workspace->setCurrentProject(m_workspace->project(0));
        open(disassemblyOf(other));
        QVERIFY(hasProgramLines(*m_activity, m_views->currentView()));
        story();
    }

    // "Set next statement"

    void setNextStatementMovesThePausedProgramToTheCursor()
    {
        addProcessor(u"fw"_s, {INextStatement::Iid});
        open(u"main.c"_s);
        m_line = 5;
        m_control->debugSetNext();
        QCOMPARE(story(), QString()); // the program is not paused
        be(StatePaused);
        m_control->debugSetNext();
        QCOMPARE(effects(), u"fw.setNextStatement(main.c, 5)"_s);
    }

    void failedSetNextStatementShowsAMessage()
    {
        addProcessor(u"fw"_s, {INextStatement::Iid});
        scriptOf(u"fw"_s).nextStatementResult = false;
        open(u"main.c"_s);
        be(StatePaused);
        expectBox();
        m_control->debugSetNext();
        QVERIFY(story().contains(u"message The next statement cannot be set here."_s));
    }

    void setNextStatementWithoutTheInterfaceShowsAMessage()
    {
        addProcessor(u"fw"_s);
        open(u"main.c"_s);
        be(StatePaused);
        expectBox();
        m_control->debugSetNext();
        QVERIFY(story().contains(u"The execution environment does not support it."_s));
    }

    // Disassembly

    void theDisassemblyIsNamedAfterItsProcessor()
    {
        const Project *project = addProcessor(u"fw"_s, {IDisassembly::Iid, IBreakpoints::Iid});
        scriptOf(u"fw"_s).location = {u"disassembler:"_s, 1};
        scriptOf(u"fw"_s).locationsFrom[disassemblyOf(project)] = {disassemblyOf(project), 9};
        scriptOf(u"fw"_s).breakpoints = {breakpoint(u"disassembler:"_s, 5, 2)};
        m_control->debugViewDisassembly();
        QVERIFY(QRegularExpression(u"^disassembler:0x[0-9a-f]{8}:fw$"_s).match(front()).hasMatch());
        QCOMPARE(front(), disassemblyOf(project));
        QCOMPARE(viewOf(front())->marks(), u"5=2 9=8"_s);
        m_control->debugViewDisassembly();
        QCOMPARE(m_views->views().size(), 1);
        story();
    }

    void disassemblyOpensWhereThePausedProgramIs()
    {
        const Project *project = addProcessor(u"fw"_s, {IDisassembly::Iid});
        scriptOf(u"fw"_s).locationsFrom[disassemblyOf(project)] = {disassemblyOf(project), 9};
        be(StateRunning);
        m_control->debugViewDisassembly();
        QCOMPARE(viewOf(front())->cursor, 1); // the place of a running program is not known
        viewOf(front())->close();
        be(StatePaused);
        open(u"main.c"_s);
        m_control->debugViewDisassembly();
        QCOMPARE(front(), disassemblyOf(project));
        QCOMPARE(viewOf(front())->cursor, 9);
        viewOf(front())->cursor = 5;
        m_control->debugViewDisassembly(); // an open one stays as it is
        QCOMPARE(viewOf(front())->cursor, 5);
        story();
    }

    void disassembliesAreRefreshedAtEachStopAndAfterWritesToMemory()
    {
        const Project *one = addProcessor(u"one"_s, {IDisassembly::Iid});
        const Project *two = addProcessor(u"two"_s, {IDisassembly::Iid});
        const QList<MarkedView *> views{open(disassemblyOf(one)), open(disassemblyOf(two))};
        const MarkedView *source = open(u"main.c"_s);
        const auto updates = [&] {
            return u"%1 %2 %3"_s.arg(views[0]->updates).arg(views[1]->updates).arg(source->updates);
        };
        be(StateRunning);
        QCOMPARE(updates(), u"0 0 0"_s);
        be(StatePaused);
        QCOMPARE(updates(), u"1 1 0"_s);
        report(two, IExecutionEnvironment::ProgramPaused); // after a step, or when the program was loaded again
        QCOMPARE(updates(), u"2 2 0"_s);
        m_control->memoryWritten();
        QCOMPARE(updates(), u"3 3 0"_s);
        m_control->updateDebugWindows(DebugControl::RegisterWindow);
        QCOMPARE(updates(), u"3 3 0"_s);
        be(StateIdle); // there is no session any more
        QCOMPARE(updates(), u"4 4 0"_s);
        story();
    }

    void disassemblyIsNotOpenedIfNotOffered()
    {
        addProcessor(u"fw"_s);
        m_control->debugViewDisassembly();
        QVERIFY(m_views->views().isEmpty());
        QCOMPARE(story(), QString());
    }

    void disassemblyClosesWithItsEnvironment()
    {
        const Project *one = addProcessor(u"one"_s, {IDisassembly::Iid});
        const Project *two = addProcessor(u"two"_s, {IDisassembly::Iid});
        const QString first = disassemblyOf(one);
        const QString second = disassemblyOf(two);
        open(first);
        open(u"main.c"_s);
        open(second);
        m_workspace->removeProject(one);
        QVERIFY(!viewOf(first));
        QVERIFY(viewOf(second));
        closeWorkspace();
        QVERIFY(!viewOf(second));
        story();
    }

    // Markers follow events

    void anOpenedFileIsMarked()
    {
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        scriptOf(u"fw"_s).breakpoints = {breakpoint(u"main.c"_s, 2, 1)};
        MarkedView *view = open(u"main.c"_s);
        be(StateRunning);
        m_control->fileOpened();
        QCOMPARE(view->marks(), u"2=1"_s);
        be(StatePaused);
        m_control->fileOpened();
        QCOMPARE(view->marks(), u"2=1 7=8"_s);
        be(StateIdle);
        dropWorkspace();
        m_control->fileOpened();
        QCOMPARE(view->marks(), u"2=1"_s); // markers stay until a workspace is opened
        story();
    }

    void changedBreakpointsAreMarked()
    {
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        MarkedView *view = open(u"main.c"_s);
        scriptOf(u"fw"_s).breakpoints = {breakpoint(u"main.c"_s, 2, 2)};
        m_control->breakpointsChanged();
        QCOMPARE(view->marks(), u"2=2"_s);
        scriptOf(u"fw"_s).breakpoints = {};
        m_control->breakpointsChanged();
        QCOMPARE(view->marks(), QString());
        story();
    }

    void theCurrentProjectsBreakpointsLookDifferent()
    {
        for (const QString &name : {u"one"_s, u"two"_s})
            addProcessor(name, {IBreakpoints::Iid});
        scriptOf(u"one"_s).breakpoints = {breakpoint(u"main.c"_s, 2, 1), breakpoint(u"main.c"_s, 3, 1)};
        scriptOf(u"two"_s).breakpoints = {breakpoint(u"main.c"_s, 3, 1), breakpoint(u"main.c"_s, 4, 1)};
        MarkedView *view = open(u"main.c"_s);
        m_control->refreshBreakpointMarkers();
        QCOMPARE(view->marks(), u"2=1* 3=1 4=1"_s);
        m_workspace->setCurrentProject(0);
        QCOMPARE(view->marks(), u"2=1 3=1 4=1*"_s);
        story();
    }

    // Toggling breakpoints

    void toggledStatesAreEnabledDisabledRemoved_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<int>("next");
        QTest::newRow("none") << -1 << 1;
        QTest::newRow("removed") << 0 << 1;
        QTest::newRow("enabled") << 1 << 2;
        QTest::newRow("disabled") << 2 << 0;
        QTest::newRow("several") << 3 << 3;
    }

    void toggledStatesAreEnabledDisabledRemoved()
    {
        QFETCH(int, state);
        QFETCH(int, next);
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        if (state >= 0)
            scriptOf(u"fw"_s).breakpoints = {breakpoint(path(u"main.c"_s), 4, state)};
        MarkedView *view = open(u"main.c"_s);
        Q_EMIT view->toggleBreakpoint(4);
        QCOMPARE(story(), u"fw.breakpoints()\nfw.setBreakpoint(main.c, 4, %1)"_s.arg(next));
    }

    void thePluginGetsTheFullPath()
    {
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        open(u"main.c"_s);
        m_control->toggleBreakpoint(4);
        QCOMPARE(m_stub->takeCalls().last(), u"fw.setBreakpoint(%1, 4, 1)"_s.arg(path(u"main.c"_s)));
    }

    void theCommandTakesTheCursorsLine()
    {
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        m_control->debugToggleBreakpoint(); // nothing is open
        open(u"notes.blank"_s);
        m_control->debugToggleBreakpoint(); // a view without margin
        QCOMPARE(story(), QString());
        open(u"main.c"_s)->cursor = 3;
        m_control->debugToggleBreakpoint();
        QVERIFY(story().endsWith(u"fw.setBreakpoint(main.c, 3, 1)"_s));
    }

    void theFirstProjectWithTheFileGetsIt()
    {
        addProcessor(u"one"_s, {IBreakpoints::Iid}, u"main.c"_s);
        addProcessor(u"two"_s, {IBreakpoints::Iid}, u"main.c"_s);
        addProcessor(u"three"_s, {IBreakpoints::Iid});
        open(u"main.c"_s);
        m_control->toggleBreakpoint(1);
        QVERIFY(story().endsWith(u"one.setBreakpoint(main.c, 1, 1)"_s));
        m_workspace->setCurrentProject(1); // the current project is listed first
        story();
        m_control->toggleBreakpoint(1);
        QVERIFY(story().endsWith(u"two.setBreakpoint(main.c, 1, 1)"_s));
        open(u"other.c"_s);
        m_control->toggleBreakpoint(1);
        QVERIFY(story().endsWith(u"two.setBreakpoint(other.c, 1, 1)"_s)); // in no project
    }

    void inADisassemblyItsProcessorGetsIt()
    {
        const Project *one = addProcessor(u"one"_s, {IBreakpoints::Iid, IDisassembly::Iid});
        addProcessor(u"two"_s, {IBreakpoints::Iid});
        scriptOf(u"one"_s).breakpoints = {breakpoint(u"disassembler:"_s, 0x101, 1)};
        open(disassemblyOf(one));
        m_control->toggleBreakpoint(0x101);
        QVERIFY(story().endsWith(u"one.setBreakpoint(disassembler:, 257, 2)"_s));
    }

    void documentWithoutBreakpointsShowsAMessage_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("a file") << u"main.c"_s;
        QTest::newRow("a disassembly of no environment") << u"disassembler:0xffffffff:fw"_s;
        QTest::newRow("a disassembly without number") << u"disassembler:"_s;
    }

    void documentWithoutBreakpointsShowsAMessage()
    {
        QFETCH(QString, file);
        addProcessor(u"fw"_s, file == u"main.c"_s ? QSet<QUuid>{} : QSet<QUuid>{IBreakpoints::Iid});
        open(file);
        m_message.clear();
        expectBox();
        m_control->toggleBreakpoint(1);
        QCOMPARE(story(), u"message The breakpoint cannot be set.||Breakpoints are not supported in this file."_s);
        QCOMPARE(m_message, file == u"main.c"_s
                                ? u"The execution environment of the project 'fw' does not support breakpoints."_s
                                : QString());
    }

    void aProjectWithoutProcessorHasNoBreakpoints()
    {
        addProject(u"fw"_s, {}, {});
        open(u"main.c"_s);
        story();
        expectBox();
        m_control->toggleBreakpoint(1);
        QCOMPARE(m_message, u"The project 'fw' has no execution environment that could set breakpoints."_s);
        m_workspace->removeProject(m_workspace->currentProject());
        expectBox();
        m_control->toggleBreakpoint(1);
        QCOMPARE(story().count(u"Breakpoints are not supported in this file."_s), 2);
    }

    void breakpointsCannotBeToggledWhileTheProgramRuns_data()
    {
        QTest::addColumn<int>("state");
        for (int state = StateIdle; state <= StateUnknown; ++state)
            QTest::addRow("%d", state) << state;
    }

    void breakpointsCannotBeToggledWhileTheProgramRuns()
    {
        QFETCH(int, state);
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        open(u"main.c"_s);
        be(ActivityState(state));
        if (state == StateRunning)
            expectBox();
        m_control->toggleBreakpoint(1);
        QCOMPARE(story(),
                 state == StateRunning
                     ? u"message Breakpoints cannot be modified while the processor is running.||Please pause the "
                       "processor and try again."_s
                     : u"fw.breakpoints()\nfw.setBreakpoint(main.c, 1, 1)"_s);
    }

    void withoutAWorkspaceOrADocumentNothingToggles()
    {
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        m_control->toggleBreakpoint(1);
        open(u"main.c"_s);
        dropWorkspace();
        be(StateRunning);
        m_control->toggleBreakpoint(1);
        QCOMPARE(story(), QString());
    }

    void refusedBreakpointShowsAMessage_data()
    {
        QTest::addColumn<bool>("throws");
        QTest::newRow("returns an error") << false;
        QTest::newRow("thrown") << true;
    }

    void refusedBreakpointShowsAMessage()
    {
        QFETCH(bool, throws);
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        scriptOf(u"fw"_s).setBreakpointResult = -1;
        if (throws) {
            scriptOf(u"fw"_s).on[u"setBreakpoint"_s] = throwError;
            expectException("IBreakpoints::setBreakpoint");
        }
        open(u"main.c"_s);
        expectBox();
        m_control->toggleBreakpoint(1);
        QVERIFY(story().endsWith(u"message The breakpoint could not be modified."_s));
    }

    void breakpointsThatCannotBeListedCountAsNone()
    {
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        scriptOf(u"fw"_s).on[u"breakpoints"_s] = throwError;
        open(u"main.c"_s);
        expectException("IBreakpoints::breakpoints");
        m_control->toggleBreakpoint(1);
        QVERIFY(story().endsWith(u"fw.setBreakpoint(main.c, 1, 1)"_s));
    }

    // The dialog and tool tips

    void theDialogNeedsAWorkspace()
    {
        dropWorkspace();
        expectBox();
        m_control->debugBreakpoints();
        QCOMPARE(story(), u"message Cannot edit breakpoints.||Open a project that supports breakpoints first."_s);
    }

    void markersAreRefreshedAfterTheDialog_data()
    {
        QTest::addColumn<bool>("accepts");
        QTest::newRow("accepted") << true;
        QTest::newRow("closed") << false;
    }

    void markersAreRefreshedAfterTheDialog()
    {
        QFETCH(bool, accepts);
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        MarkedView *view = open(u"main.c"_s);
        m_answers->meet([&](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"breakpointDialog"_s);
            scriptOf(u"fw"_s).breakpoints = {breakpoint(u"main.c"_s, 2, 1)};
            dialog->done(accepts);
        });
        m_control->debugBreakpoints();
        QCOMPARE(view->marks(), u"2=1"_s);
        story();
    }

    void workspaceMayCloseWhileTheDialogIsOpen()
    {
        addProcessor(u"fw"_s, {IBreakpoints::Iid});
        open(u"main.c"_s);
        m_answers->meet([&](QDialog *dialog) {
            closeWorkspace();
            dialog->reject();
        });
        m_control->debugBreakpoints();
        QCOMPARE(m_stub->objectCount(), 0);
        story();
    }

    void toolTipsNeedAWorkspaceWithSeveralProjects()
    {
        addProcessor(u"one"_s, {IBreakpoints::Iid});
        scriptOf(u"one"_s).breakpoints = {breakpoint(u"main.c"_s, 2, 1)};
        QCOMPARE(m_control->breakpointToolTip(path(u"main.c"_s), 2), QString());
        addProcessor(u"two"_s, {IBreakpoints::Iid});
        m_workspace->setCurrentProject(0);
        QCOMPARE(m_control->breakpointToolTip(path(u"main.c"_s), 2),
                 u"<b>Breakpoint status</b><br>Enabled [one]<br>"_s);
        dropWorkspace();
        QCOMPARE(m_control->breakpointToolTip(path(u"main.c"_s), 2), QString());
        story();
    }

    // Deleted environments

    void reportsAreRemovedWithTheirEnvironment()
    {
        const Project *one = addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        status(one, u"text"_s, 0);
        report(one, 4);
        const uint key = environmentKey(one->executionInterface());
        m_workspace->removeProject(one);
        QVERIFY(!environmentOfKey(key));
        const Project *next = addProcessor(u"one"_s); // possibly at the same address
        QVERIFY(environmentKey(next->executionInterface()) != key);
        QCOMPARE(m_activity->state(), StateIdle);
        story();
    }
};

QTEST_MAIN(DebugControlViewsTest)
#include "tst_debugcontrolviews.moc"
