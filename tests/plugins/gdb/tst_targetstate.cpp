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
    void followsEvents_data();
    void followsEvents();
    void tellsTheHost();
    void readsWhyAProgramStopped_data();
    void readsWhyAProgramStopped();
};

/// Each row is a phase, each column an event; a star stands for "at a breakpoint".
void tst_TargetState::followsEvents_data()
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

void tst_TargetState::followsEvents()
{
    QFETCH(int, phase);
    QFETCH(int, event);
    const TargetState next = nextState({Phase(phase), false}, Event(event));
    QTEST(int(next.phase), "next");
    QTEST(next.atBreakpoint, "atBreakpoint");
}

void tst_TargetState::tellsTheHost()
{
    QCOMPARE(programStatus({Phase::Absent, false}), IExecutionEnvironment::ProgramUnknown);
    QCOMPARE(programStatus({Phase::Stopped, false}), IExecutionEnvironment::ProgramPaused);
    QCOMPARE(programStatus({Phase::Stopped, true}), IExecutionEnvironment::ProgramBreakpointHit);
    QCOMPARE(programStatus({Phase::Running, false}), IExecutionEnvironment::ProgramRunning);
    QCOMPARE(programStatus({Phase::Ended, false}), IExecutionEnvironment::ProgramFinished);
    QCOMPARE(programStatus({Phase::Lost, false}), IExecutionEnvironment::ProgramUnknown);
}

void tst_TargetState::readsWhyAProgramStopped_data()
{
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<int>("event");
    QTest::addColumn<int>("breakpoint");
    QTest::addColumn<QString>("text");
    const QString none;
    QTest::newRow("breakpoint") << QByteArray(R"(*stopped,reason="breakpoint-hit",disp="keep",bkptno="3")")
                                << int(Event::BreakpointHit) << 3 << none;
    QTest::newRow("temporary breakpoint")
        << QByteArray(R"(*stopped,reason="breakpoint-hit",disp="del",bkptno="1")") << int(Event::Stopped) << 1 << none;
    QTest::newRow("step") << QByteArray(R"(*stopped,reason="end-stepping-range")") << int(Event::Stopped) << 0 << none;
    QTest::newRow("no reason") << QByteArray(R"(*stopped,frame={addr="0x0"})") << int(Event::Stopped) << 0 << none;
    QTest::newRow("pause") << QByteArray(
        R"(*stopped,reason="signal-received",signal-name="SIGINT",signal-meaning="Interrupt")")
                           << int(Event::Stopped) << 0 << none;
    QTest::newRow("pause in a simulator")
        << QByteArray(R"(*stopped,reason="signal-received",signal-name="SIGTRAP")") << int(Event::Stopped) << 0 << none;
    QTest::newRow("crash") << QByteArray(
        R"(*stopped,reason="signal-received",signal-name="SIGSEGV",signal-meaning="Segmentation fault")")
                           << int(Event::Stopped) << 0 << u"The program received SIGSEGV, Segmentation fault."_s;
    QTest::newRow("end") << QByteArray(R"(*stopped,reason="exited-normally")") << int(Event::Exited) << 0
                         << u"The program ended."_s;
    QTest::newRow("end with an octal code") << QByteArray(R"(*stopped,reason="exited",exit-code="036")")
                                            << int(Event::Exited) << 0 << u"The program ended with code 30."_s;
    QTest::newRow("killed") << QByteArray(R"(*stopped,reason="exited-signalled",signal-name="SIGKILL")")
                            << int(Event::Exited) << 0 << u"The program was ended by SIGKILL."_s;
    QTest::newRow("watchpoint") << QByteArray(
        R"(*stopped,reason="watchpoint-trigger",wpt={number="2",exp="ticks"},value={old="0",new="90"})")
                                << int(Event::BreakpointHit) << 2 << u"ticks was 0 and is 90."_s;
    QTest::newRow("read, reason behind") << QByteArray(
        R"(*stopped,hw-rwpt={number="2",exp="x"},reason="read-watchpoint-trigger",value={value="4"})")
                                         << int(Event::BreakpointHit) << 0 << u"x was read: 4."_s;
}

void tst_TargetState::readsWhyAProgramStopped()
{
    QFETCH(QByteArray, record);
    const StopReason reason = stopReason(parseMiRecord(record));
    QTEST(int(reason.event), "event");
    QTEST(reason.breakpoint, "breakpoint");
    QTEST(reason.text, "text");
}

QTEST_APPLESS_MAIN(tst_TargetState)
#include "tst_targetstate.moc"
