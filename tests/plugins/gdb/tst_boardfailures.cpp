#include "boardfirmware.h"
#include "qemutarget.h"
#include <csignal>

using Env = IExecutionEnvironment;

/// Sessions on emulated boards whose processes end, hang or cannot be started.
class tst_BoardFailures : public QObject, private BoardFirmware
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void killedProcessIsReported_data();
    void killedProcessIsReported();
    void lockedUpProcessorEndsTheSessionWithAMessage();
    void hangingEmulatorMakesQueriesFailUntilItContinues();
    void unknownBoardOrMissingQemuIsReported();
};

void tst_BoardFailures::initTestCase()
{
    QVERIFY(build());
}

void tst_BoardFailures::init()
{
    QTest::failOnWarning(QRegularExpression(u".?"_s));
}

void tst_BoardFailures::cleanup()
{
    QTRY_COMPARE(ownChildren(), QStringList());
}

void tst_BoardFailures::killedProcessIsReported_data()
{
    QTest::addColumn<QString>("victim");
    QTest::addColumn<bool>("running");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("words");
    QTest::newRow("gdb, paused") << u"gdb"_s << false << int(Env::ProgramUnknown) << u"gdb has ended unexpectedly."_s;
    QTest::newRow("gdb, running") << u"gdb"_s << true << int(Env::ProgramUnknown) << u"gdb has ended unexpectedly."_s;
    QTest::newRow("QEMU, paused") << u"qemu"_s << false << int(Env::ProgramFinished)
                                  << u"'qemu-system-arm' was ended by a signal."_s;
    QTest::newRow("QEMU, running") << u"qemu"_s << true << int(Env::ProgramFinished)
                                   << u"'qemu-system-arm' was ended by a signal."_s;
}

void tst_BoardFailures::killedProcessIsReported()
{
    QFETCH(QString, victim);
    QFETCH(bool, running);
    QFETCH(int, status);
    QFETCH(QString, words);
    LiveSession session(option());
    QVERIFY(session.start());
    if (running) {
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramRunning));
    }
    const auto *target = static_cast<QemuTarget *>(session.env->session()->target());
    ::kill(pid_t(victim == u"gdb" ? session.env->session()->gdb()->processId() : target->processId()), SIGKILL);
    QVERIFY(session.waitFor(Env::ProgramStatus(status)));
    QTRY_VERIFY2(session.events.text.contains(words), qPrintable(session.events.text));
    uint value = 0;
    QCOMPARE(session.get<IMemory>()->read(0, IMemory::Byte, 0, &value), int(IMemory::NoMemory));
    session.env->pause();
    session.env->stepOver(u"firmware.c"_s);
    session.env->restart();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), atMain());
}

void tst_BoardFailures::lockedUpProcessorEndsTheSessionWithAMessage()
{
    LiveSession session(option(u";catchFaults=0"_s));
    QVERIFY(session.start());
    QCOMPARE(session.evaluate(u"command=6"_s), u"6"_s); // a fault in the fault handler locks up the processor
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramFinished));
    QTRY_VERIFY2(session.events.text.contains(u"Lockup"_s), qPrintable(session.events.text));
}

void tst_BoardFailures::hangingEmulatorMakesQueriesFailUntilItContinues()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const auto emulator = pid_t(static_cast<QemuTarget *>(session.env->session()->target())->processId());
    ::kill(emulator, SIGSTOP);
    session.env->session()->targetChanged();
    const QString first = session.evaluate(u"*(int *)0x20001000"_s);
    QVERIFY2(
        first.startsWith(u"error: gdb did not answer '-data-evaluate-expression \"*(int *)0x20001000\"' within "_s),
        qPrintable(first));
    QCOMPARE(session.evaluate(u"1"_s), u"error: gdb does not answer."_s); // at once
    ::kill(emulator, SIGCONT);
    QTRY_COMPARE(session.evaluate(u"1"_s), u"1"_s);
    session.env->stepOver(u"firmware.c"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
}

void tst_BoardFailures::unknownBoardOrMissingQemuIsReported()
{
    LiveSession session(u"qemu:nosuchboard;image="_s + m_image);
    QVERIFY(!session.env->start(false));
    QVERIFY2(session.events.serious.startsWith(u"'qemu-system-arm' ended at once: "_s),
             qPrintable(session.events.serious));
    LiveSession missing(option(u";qemu=/nowhere/qemu"_s));
    QVERIFY(!missing.env->start(false));
    QVERIFY2(missing.events.serious.startsWith(u"Cannot run '/nowhere/qemu': "_s), qPrintable(missing.events.serious));
}

QTEST_MAIN(tst_BoardFailures)
#include "tst_boardfailures.moc"
