#include "targetstate.h"
#include <QTest>

using namespace Qt::StringLiterals;
using Phase = TargetState::Phase;
using Event = TargetEvent;

class tst_TargetState : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void eventLeadsToNextState_data();
    void eventLeadsToNextState();
    void eventLeadsToNextRequest_data();
    void eventLeadsToNextRequest();
    void programStatusFollowsFromState();
    void stopReasonIsReadFromRecord_data();
    void stopReasonIsReadFromRecord();
};

/// Each row is a phase, each column an event. A star means "at a breakpoint".
void tst_TargetState::eventLeadsToNextState_data()
{
    static const QStringList phases = {u"absent"_s, u"stopped"_s, u"running"_s, u"ended"_s, u"lost"_s};
    static const QStringList events = {u"connected"_s, u"resumed"_s,   u"stopped"_s, u"breakpoint"_s,
                                       u"exited"_s,    u"link lost"_s, u"closed"_s};
    static const QStringList table = {
        u"stopped absent  absent  absent   absent absent absent"_s,
        u"stopped running stopped stopped* ended  lost   absent"_s,
        u"stopped running stopped stopped* ended  lost   absent"_s,
        u"stopped ended   ended   ended    ended  ended  absent"_s,
        u"stopped lost    lost    lost     lost   lost   absent"_s,
    };
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("event");
    QTest::addColumn<int>("next");
    QTest::addColumn<bool>("atBreakpoint");
    for (int phase = 0; phase < phases.size(); ++phase) {
        const QStringList row = table[phase].simplified().split(u' ');
        for (int event = 0; event < events.size(); ++event)
            QTest::addRow("%s, %s", qPrintable(phases[phase]), qPrintable(events[event]))
                << phase << event << int(phases.indexOf(QString(row[event]).remove(u'*'))) << row[event].endsWith(u'*');
    }
}

void tst_TargetState::eventLeadsToNextState()
{
    QFETCH(int, phase);
    QFETCH(int, event);
    const TargetState next = nextState({Phase(phase), false}, Event(event));
    QTEST(int(next.phase), "next");
    QTEST(next.atBreakpoint, "atBreakpoint");
}

/// Each row is a pause and each column an event, for a program that continues. The same holds for a step, whose motion
/// is lost where the request becomes empty: in the columns "paused" and "stopped" unless the pause is hidden.
void tst_TargetState::eventLeadsToNextRequest_data()
{
    static const QStringList pauses = {u"none"_s, u"user"_s, u"own"_s, u"hidden"_s};
    static const QStringList events = {u"step"_s,  u"user's pause"_s, u"own pause"_s,
                                       u"ended"_s, u"paused"_s,       u"stopped"_s};
    static const QStringList table = {
        u"none user own  none none   none"_s,
        u"none user user user none   none"_s,
        u"none user own  none hidden none"_s,
        u"none user own  none hidden none"_s,
    };
    QTest::addColumn<int>("pause");
    QTest::addColumn<int>("event");
    QTest::addColumn<int>("next");
    for (int pause = 0; pause < pauses.size(); ++pause) {
        const QStringList row = table[pause].simplified().split(u' ');
        for (int event = 0; event < events.size(); ++event)
            QTest::addRow("%s, %s", qPrintable(pauses[pause]), qPrintable(events[event]))
                << pause << event << int(pauses.indexOf(row[event]));
    }
}

void tst_TargetState::eventLeadsToNextRequest()
{
    using Motion = RunRequest::Motion;
    QFETCH(int, pause);
    QFETCH(int, event);
    QFETCH(int, next);
    const auto of = [](Motion motion, int number) { return RunRequest{motion, RunRequest::Pause(number)}; };
    const bool step = RunEvent(event) == RunEvent::StepStarted;
    const bool ends = RunEvent(event) == RunEvent::Stopped
                      || (RunEvent(event) == RunEvent::Paused && RunRequest::Pause(next) != RunRequest::Pause::Hidden);
    QVERIFY(nextRequest(of(Motion::Continue, pause), RunEvent(event))
            == of(step ? Motion::Step : Motion::Continue, next));
    QVERIFY(nextRequest(of(Motion::Step, pause), RunEvent(event)) == of(ends ? Motion::Continue : Motion::Step, next));
}

void tst_TargetState::programStatusFollowsFromState()
{
    QCOMPARE(programStatus({Phase::Absent, false}), IExecutionEnvironment::ProgramUnknown);
    QCOMPARE(programStatus({Phase::Stopped, false}), IExecutionEnvironment::ProgramPaused);
    QCOMPARE(programStatus({Phase::Stopped, true}), IExecutionEnvironment::ProgramBreakpointHit);
    QCOMPARE(programStatus({Phase::Running, false}), IExecutionEnvironment::ProgramRunning);
    QCOMPARE(programStatus({Phase::Ended, false}), IExecutionEnvironment::ProgramFinished);
    QCOMPARE(programStatus({Phase::Lost, false}), IExecutionEnvironment::ProgramUnknown);
}

void tst_TargetState::stopReasonIsReadFromRecord_data()
{
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<int>("event");
    QTest::addColumn<int>("breakpoint");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isPause");
    const QString none;
    QTest::newRow("breakpoint") << QByteArray(R"(*stopped,reason="breakpoint-hit",disp="keep",bkptno="3")")
                                << int(Event::BreakpointHit) << 3 << none << false;
    QTest::newRow("temporary breakpoint") << QByteArray(R"(*stopped,reason="breakpoint-hit",disp="del",bkptno="1")")
                                          << int(Event::Stopped) << 1 << none << false;
    QTest::newRow("step") << QByteArray(R"(*stopped,reason="end-stepping-range")") << int(Event::Stopped) << 0 << none
                          << false;
    QTest::newRow("no reason") << QByteArray(R"(*stopped,frame={addr="0x0"})") << int(Event::Stopped) << 0 << none
                               << true;
    QTest::newRow("pause") << QByteArray(
        R"(*stopped,reason="signal-received",signal-name="SIGINT",signal-meaning="Interrupt")")
                           << int(Event::Stopped) << 0 << none << true;
    QTest::newRow("pause in a simulator") << QByteArray(R"(*stopped,reason="signal-received",signal-name="SIGTRAP")")
                                          << int(Event::Stopped) << 0 << none << true;
    QTest::newRow("crash") << QByteArray(
        R"(*stopped,reason="signal-received",signal-name="SIGSEGV",signal-meaning="Segmentation fault")")
                           << int(Event::Stopped) << 0 << u"The program received SIGSEGV, Segmentation fault."_s
                           << true;
    QTest::newRow("end") << QByteArray(R"(*stopped,reason="exited-normally")") << int(Event::Exited) << 0
                         << u"The program ended."_s << false;
    QTest::newRow("end with an octal code") << QByteArray(R"(*stopped,reason="exited",exit-code="036")")
                                            << int(Event::Exited) << 0 << u"The program ended with code 30."_s << false;
    QTest::newRow("killed") << QByteArray(R"(*stopped,reason="exited-signalled",signal-name="SIGKILL")")
                            << int(Event::Exited) << 0 << u"The program was ended by SIGKILL."_s << false;
    QTest::newRow("watchpoint") << QByteArray(
        R"(*stopped,reason="watchpoint-trigger",wpt={number="2",exp="ticks"},value={old="0",new="90"})")
                                << int(Event::BreakpointHit) << 2 << u"ticks was 0 and is 90."_s << false;
    QTest::newRow("watchpoint of an expression's place")
        << QByteArray(
               R"(*stopped,reason="watchpoint-trigger",wpt={number="2",exp="-location a.b"},value={old="0",new="1"})")
        << int(Event::BreakpointHit) << 2 << u"a.b was 0 and is 1."_s << false;
    QTest::newRow("read watchpoint whose reason is not first")
        << QByteArray(R"(*stopped,hw-rwpt={number="2",exp="x"},reason="read-watchpoint-trigger",value={value="4"})")
        << int(Event::BreakpointHit) << 0 << u"x was read: 4."_s << false;
}

void tst_TargetState::stopReasonIsReadFromRecord()
{
    QFETCH(QByteArray, record);
    const StopReason reason = stopReason(parseMiRecord(record));
    QTEST(int(reason.event), "event");
    QTEST(reason.breakpoint, "breakpoint");
    QTEST(reason.text, "text");
    QTEST(reason.isPause, "isPause");
}

QTEST_APPLESS_MAIN(tst_TargetState)
#include "tst_targetstate.moc"
