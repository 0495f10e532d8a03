#include "debugdecisions.h"
#include <QTest>

using namespace Qt::StringLiterals;
using ProgramStatus = IExecutionEnvironment::ProgramStatus;

/// The decisions of debugging, without windows and plug-ins.
class DebugDecisionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void aStatusStandsForAState_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("state"); // -1 for none
        QTest::newRow("paused") << 0 << int(StatePaused);
        QTest::newRow("running") << 1 << int(StateRunning);
        QTest::newRow("sleeping") << 2 << int(StateRunning);
        QTest::newRow("unknown") << 3 << int(StateUnknown);
        QTest::newRow("finished") << 4 << int(StateFinished);
        QTest::newRow("breakpoint hit") << 5 << int(StatePaused);
        QTest::newRow("beyond") << 6 << -1;
        QTest::newRow("below") << -1 << -1;
    }

    void aStatusStandsForAState()
    {
        QFETCH(int, status);
        QFETCH(int, state);
        const std::optional<ActivityState> found = stateForStatus(ProgramStatus(status));
        QCOMPARE(found ? int(*found) : -1, state);
    }

    void aReportCountsInADebugSessionOnly_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("states"); // set by the report, in the states 0 to 7
        QTest::newRow("paused") << 0 << u"- - - 5 5 5 5 5"_s;
        QTest::newRow("running") << 1 << u"- - - 4 4 4 4 4"_s;
        QTest::newRow("sleeping") << 2 << u"- - - 4 4 4 4 4"_s;
        QTest::newRow("unknown") << 3 << u"- - - 7 7 7 7 7"_s;
        QTest::newRow("finished") << 4 << u"- - - 6 6 6 6 6"_s;
        QTest::newRow("breakpoint hit") << 5 << u"- - - 5 5 5 5 5"_s;
        QTest::newRow("no status") << 6 << u"- - - - - - - -"_s;
    }

    void aReportCountsInADebugSessionOnly()
    {
        QFETCH(int, status);
        QStringList states;
        for (int state = StateNoWorkspace; state <= StateUnknown; ++state) {
            const auto next = stateAfterReport(ActivityState(state), ProgramStatus(status));
            states += next ? QString::number(*next) : u"-"_s;
        }
        QTEST(states.join(u' '), "states");
    }

    void aHitConcernsSeveralProjectsOnly_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("projects");
        QTest::addColumn<bool>("current");
        QTest::addColumn<bool>("pauseAll");
        QTest::addColumn<QString>("reaction");
        QTest::newRow("one project") << 5 << 1 << true << true << QString();
        QTest::newRow("a stranger to the one project") << 5 << 1 << false << true << QString();
        QTest::newRow("no hit") << 0 << 2 << false << true << QString();
        QTest::newRow("current, others stay") << 5 << 2 << true << false << QString();
        QTest::newRow("current, others pause") << 5 << 2 << true << true << u"pause"_s;
        QTest::newRow("another, others stay") << 5 << 3 << false << false << u"switch"_s;
        QTest::newRow("another, others pause") << 5 << 3 << false << true << u"pause switch"_s;
    }

    void aHitConcernsSeveralProjectsOnly()
    {
        QFETCH(int, status);
        QFETCH(int, projects);
        QFETCH(bool, current);
        QFETCH(bool, pauseAll);
        const BreakpointReaction found = breakpointReaction(ProgramStatus(status), projects, current, pauseAll);
        QStringList reaction;
        if (found.pauseOthers)
            reaction += u"pause"_s;
        if (found.switchProject)
            reaction += u"switch"_s;
        QTEST(reaction.join(u' '), "reaction");
    }

    void commandsDependOnTheState()
    {
        QString stop;
        QString restart;
        for (int state = StateNoWorkspace; state <= StateUnknown; ++state) {
            stop += mayStop(ActivityState(state)) ? u'x' : u'-';
            restart += mayRestart(ActivityState(state)) ? u'x' : u'-';
        }
        QCOMPARE(stop, u"----xxxx"_s);
        QCOMPARE(restart, u"-x---xx-"_s);
    }

    void firstPossibleLeaderLeadsIfAllCanFollow_data()
    {
        using enum IMultiProcessorSync::Operation;
        constexpr int FollowRun = RunOperation << 16;
        constexpr int FollowPause = PauseOperation << 16;
        QTest::addColumn<QList<QPair<QString, QMap<QString, int>>>>("members"); // group, operations in each group
        QTest::addColumn<int>("operation");
        QTest::addColumn<int>("leader");
        using Members = QList<QPair<QString, QMap<QString, int>>>;
        const auto a = u"a"_s;
        const auto b = u"b"_s;

        QTest::newRow("no members") << Members{} << int(RunOperation) << -1;
        QTest::newRow("one that leads and follows")
            << Members{{a, {{a, RunOperation | FollowRun}}}} << int(RunOperation) << 0;
        QTest::newRow("a leader that cannot follow itself")
            << Members{{a, {{a, RunOperation}}}} << int(RunOperation) << -1;
        QTest::newRow("followers only") << Members{{a, {{a, FollowRun}}}, {a, {{a, FollowRun}}}} << int(RunOperation)
                                        << -1;
        QTest::newRow("the first of two leads")
            << Members{{a, {{a, RunOperation | FollowRun}}}, {a, {{a, RunOperation | FollowRun}}}} << int(RunOperation)
            << 0;
        QTest::newRow("one that cannot lead is passed over")
            << Members{{a, {{a, FollowRun}}}, {a, {{a, RunOperation | FollowRun}}}} << int(RunOperation) << 1;
        QTest::newRow("one that cannot follow spoils it")
            << Members{{a, {{a, RunOperation | FollowRun}}}, {a, {{a, RunOperation}}}} << int(RunOperation) << -1;
        QTest::newRow("no other leader is tried")
            << Members{{a, {{a, RunOperation}, {b, FollowRun}}}, {b, {{b, RunOperation | FollowRun}}}}
            << int(RunOperation) << -1;
        QTest::newRow("following counts in the leader's group")
            << Members{{a, {{a, RunOperation | FollowRun}}}, {b, {{b, FollowRun}}}} << int(RunOperation) << -1;
        QTest::newRow("a member of another group may follow")
            << Members{{a, {{a, RunOperation | FollowRun}}}, {b, {{a, FollowRun}}}} << int(RunOperation) << 0;
        QTest::newRow("leading counts in its own group")
            << Members{{a, {{a, FollowRun}, {b, RunOperation | FollowRun}}}} << int(RunOperation) << -1;
        QTest::newRow("each operation has bits of its own")
            << Members{{a, {{a, RunOperation | FollowPause}}}, {a, {{a, PauseOperation | FollowPause}}}}
            << int(PauseOperation) << 1;
        QTest::newRow("restart") << Members{{a, {{a, RestartOperation | RestartOperation << 16}}}}
                                 << int(RestartOperation) << 0;
        QTest::newRow("wake-up") << Members{{a, {{a, 0x80008}}}} << int(WakeupOperation) << 0;
        QTest::newRow("wake-up by another's bits") << Members{{a, {{a, 0x70007}}}} << int(WakeupOperation) << -1;
    }

    void firstPossibleLeaderLeadsIfAllCanFollow()
    {
        using Answers = QMap<QString, int>;
        using Members = QList<QPair<QString, Answers>>;
        QFETCH(const Members, members);
        QFETCH(int, operation);
        QList<SyncMember> asked;
        for (const auto &[group, answers] : members)
            asked.append({group, [answers = answers](const QString &of) { return answers.value(of); }});
        QTEST(syncLeader(asked, IMultiProcessorSync::Operation(operation)), "leader");
    }

    void followersAreQueriedForTheLeadersGroupOnly()
    {
        QStringList calls;
        const auto member = [&](const QString &name, const QString &group, int operations) {
            return SyncMember{group, [&calls, name, operations](const QString &of) {
                                  calls += name + u" in "_s + of;
                                  return operations;
                              }};
        };
        const QList<SyncMember> members{member(u"first"_s, u"a"_s, 0x10000), member(u"second"_s, u"b"_s, 0x10001),
                                        member(u"third"_s, u"c"_s, 0x10001)};
        QCOMPARE(syncLeader(members, IMultiProcessorSync::RunOperation), 1);
        QCOMPARE(calls,
                 (QStringList{u"first in a"_s, u"second in b"_s, u"first in b"_s, u"second in b"_s, u"third in b"_s}));
    }

    void aBreakpointIsFoundAtEachOfItsPlaces_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("state");
        QTest::newRow("first place") << u"main.c"_s << 7 << 1;
        QTest::newRow("second place") << u"inline.h"_s << 3 << 1;
        QTest::newRow("other line") << u"main.c"_s << 8 << 0;
        QTest::newRow("other file") << u"uart.c"_s << 7 << 0;
        QTest::newRow("the first record counts") << u"main.c"_s << 9 << 2;
        QTest::newRow("address") << u"disassembler:"_s << 0x101 << 3;
    }

    void aBreakpointIsFoundAtEachOfItsPlaces()
    {
        QFETCH(QString, file);
        QFETCH(int, line);
        const QList<BreakpointRecord> records{{{}, 1},
                                              {{{u"main.c"_s, 7}, {u"inline.h"_s, 3}}, 1},
                                              {{{u"main.c"_s, 9}}, 2},
                                              {{{u"main.c"_s, 9}}, 1},
                                              {{{u"disassembler:"_s, 0x101}}, 3}};
        QTEST(breakpointStateAt(records, {file, line}), "state");
    }

    void toggledStatesAreEnabledDisabledRemoved()
    {
        QList<int> states;
        for (int state = 0; state < 4; ++state)
            states += toggledBreakpoint(state);
        QCOMPARE(states, (QList<int>{1, 2, 0, 3}));
    }

    void markersOfSeveralBreakpointsAreCombined_data()
    {
        QTest::addColumn<QList<int>>("states"); // of the breakpoints on the line
        QTest::addColumn<int>("markers");
        QTest::newRow("enabled") << QList<int>{1} << 1;
        QTest::newRow("disabled") << QList<int>{2} << 2;
        QTest::newRow("removed") << QList<int>{0} << 0;
        QTest::newRow("several") << QList<int>{3} << 0;
        QTest::newRow("enabled twice") << QList<int>{1, 1} << 1;
        QTest::newRow("disabled twice") << QList<int>{2, 2} << 2;
        QTest::newRow("enabled, then disabled") << QList<int>{1, 2} << 4;
        QTest::newRow("disabled, then enabled") << QList<int>{2, 1} << 4;
        QTest::newRow("several leave others alone") << QList<int>{1, 3} << 1;
        QTest::newRow("mixed ones stay so") << QList<int>{1, 2, 1} << 4;
    }

    void markersOfSeveralBreakpointsAreCombined()
    {
        QFETCH(const QList<int>, states);
        int markers = 8; // the execution marker, which must not change
        for (int state : states) {
            const MarkerChange change = markerChange(markers, state);
            QCOMPARE(markers & change.clear, change.clear);
            markers = (markers & ~change.clear) | change.set;
        }
        QTEST(markers & ~8, "markers");
        QVERIFY(markers & 8);
    }

    /// The second marker of a kind may be drawn differently from the first.
    void aMarkerIsSetAgain() { QCOMPARE(markerChange(1, BreakpointEnabled), (MarkerChange{0, 1})); }

    void theToolTipListsTheProjects()
    {
        QCOMPARE(breakpointToolTip({}), QString());
        QCOMPARE(breakpointToolTip({{u"fw %1"_s, 0}, {u"boot"_s, 1}, {u"dsp"_s, 2}, {u"modem"_s, 3}}),
                 u"<b>Breakpoint status</b><br>Removed [fw %1]<br>Enabled [boot]<br>Disabled [dsp]<br>"
                 "Multiple [modem]<br>"_s);
    }
};

QTEST_GUILESS_MAIN(DebugDecisionsTest)
#include "tst_debugdecisions.moc"
