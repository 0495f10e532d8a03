#include "boardfirmware.h"
#include "stackreplies.h"
#include "targetconsole.h"

using Env = IExecutionEnvironment;

/// Sessions with several cores or boards.
class tst_SeveralProcessors : public QObject, private BoardFirmware
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void twoCoresStopTogether();
    void twoBoardsRunAndPauseTogether();
};

void tst_SeveralProcessors::initTestCase()
{
    QVERIFY(build());
}

void tst_SeveralProcessors::init()
{
    QTest::failOnWarning(QRegularExpression(u".?"_s));
}

void tst_SeveralProcessors::cleanup()
{
    QTRY_COMPARE(ownChildren(), QStringList());
}

void tst_SeveralProcessors::twoCoresStopTogether()
{
    const QString first = m_programs.firmware(u"core0.elf"_s, u"core0.ld"_s, {u"-mcpu=cortex-m33"_s, u"-DCORE0"_s});
    const QString second = m_programs.firmware(u"core1.elf"_s, u"core1.ld"_s, {u"-mcpu=cortex-m33"_s, u"-DCORE1"_s});
    QVERIFY(!first.isEmpty() && !second.isEmpty());
    LiveSession session(u"qemu:mps2-an521;image=%1;secondImage=%2"_s.arg(first, second));
    QVERIFY(session.start());
    QCOMPARE(session.env->session()->frame().function, u"main"_s);
    session.get<IBreakpoints>()->setBreakpoint(file(), line(u"cores = cores + 1"_s), BreakpointEnabled);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.env->session()->threadId(), u"2"_s);
    QCOMPARE(session.location(), at(u"cores = cores + 1"_s));
    QVERIFY(selectFrame(session.get<ICallStack>().get(), 1, 0));
    QCOMPARE(session.env->session()->threadId(), u"1"_s);
    const QString function = session.env->session()->frame().function; // it may not be in its loop yet
    QVERIFY2(function == u"spin"_s || function == u"main"_s, qPrintable(function));
    QVERIFY(session.location() != at(u"cores = cores + 1"_s));
    session.env->restart();
    QVERIFY(session.waitFor(Env::ProgramPaused));
}

void tst_SeveralProcessors::twoBoardsRunAndPauseTogether()
{
    LiveSession first(option(u";group=pair"_s));
    LiveSession second(option(u";group=pair"_s));
    LiveSession otherGroup(option());
    const auto leader = first.get<IMultiProcessorSync>();
    QCOMPARE(leader->groupId(), u"pair"_s);
    QCOMPARE(leader->supportedOperations(u"pair"_s), 0x000F000F);
    QCOMPARE(second.get<IMultiProcessorSync>()->supportedOperations(u"pair"_s), 0x000F000F);
    QCOMPARE(second.get<IMultiProcessorSync>()->supportedOperations(u"other"_s), 0);
    QCOMPARE(otherGroup.get<IMultiProcessorSync>()->supportedOperations(QString()), 0);
    QVERIFY(first.start() && second.start() && otherGroup.start());
    for (int round = 0; round < 3; ++round) {
        leader->syncRun();
        QVERIFY(first.waitFor(Env::ProgramRunning) && second.waitFor(Env::ProgramRunning));
        leader->syncPause();
        QVERIFY(first.waitFor(Env::ProgramPaused) && second.waitFor(Env::ProgramPaused));
    }
    const QList<QWidget *> widgets = second.get<IDockExtension>()->widgets();
    auto *console = static_cast<TargetConsole *>(widgets[0]);
    console->append("from the run before");
    leader->syncRestart();
    QVERIFY(first.waitFor(Env::ProgramPaused) && second.waitFor(Env::ProgramPaused));
    QCOMPARE(second.location(), atMain());
    QCOMPARE(console->text(), QString());
    qDeleteAll(widgets);
    QCOMPARE(otherGroup.env->programStatus(), Env::ProgramPaused);
}

QTEST_MAIN(tst_SeveralProcessors)
#include "tst_severalprocessors.moc"
