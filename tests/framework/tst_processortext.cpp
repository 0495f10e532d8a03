#include "processortext.h"
#include <QTest>

using namespace Qt::StringLiterals;

/// The texts of the list of processors.
class ProcessorTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stateFollowsTheLastReportAndForTheCurrentProjectTheProgram_data()
    {
        QTest::addColumn<int>("activity");
        QTest::addColumn<bool>("current");
        QTest::addColumn<int>("report");
        QTest::addColumn<QString>("text");
        constexpr int none = -1;
        QTest::newRow("no session") << int(StateIdle) << true << int(IExecutionEnvironment::ProgramRunning)
                                    << u"Not started"_s;
        QTest::newRow("no report") << int(StateRunning) << false << none << u"Starting"_s;
        QTest::newRow("initialising") << int(StateInitialising) << true << none << u"Starting"_s;
        QTest::newRow("other runs") << int(StatePaused) << false << int(IExecutionEnvironment::ProgramRunning)
                                    << u"Running"_s;
        QTest::newRow("other at a breakpoint")
            << int(StateRunning) << false << int(IExecutionEnvironment::ProgramBreakpointHit) << u"Paused"_s;
        QTest::newRow("other finished") << int(StateRunning) << false << int(IExecutionEnvironment::ProgramFinished)
                                        << u"Finished"_s;
        QTest::newRow("other unknown") << int(StateRunning) << false << int(IExecutionEnvironment::ProgramUnknown)
                                       << u"Unknown"_s;
        QTest::newRow("a number that is no status") << int(StateRunning) << false << 77 << u"Starting"_s;
        QTest::newRow("run command sent to the current processor")
            << int(StateRunning) << true << int(IExecutionEnvironment::ProgramPaused) << u"Running"_s;
        QTest::newRow("current sleeps") << int(StateRunning) << true << int(IExecutionEnvironment::ProgramSleeping)
                                        << u"Sleeping"_s;
        QTest::newRow("current paused after sleep")
            << int(StatePaused) << true << int(IExecutionEnvironment::ProgramSleeping) << u"Paused"_s;
    }

    void stateFollowsTheLastReportAndForTheCurrentProjectTheProgram()
    {
        QFETCH(int, activity);
        QFETCH(bool, current);
        QFETCH(int, report);
        const auto status = report < 0 ? std::nullopt : std::optional(IExecutionEnvironment::ProgramStatus(report));
        QTEST(processorStateText(processorState(ActivityState(activity), current, status)), "text");
    }

    void reasonIsTheTextOfTheEnvironmentOrOneForTheStatus()
    {
        QCOMPARE(stopReasonText(std::nullopt, u"old"_s), QString());
        QCOMPARE(stopReasonText(IExecutionEnvironment::ProgramPaused, u"SIGSEGV\nat 0"_s), u"SIGSEGV at 0"_s);
        QCOMPARE(stopReasonText(IExecutionEnvironment::ProgramPaused, {}), u"Pause or step"_s);
        QCOMPARE(stopReasonText(IExecutionEnvironment::ProgramBreakpointHit, {}), u"Breakpoint"_s);
        QCOMPARE(stopReasonText(IExecutionEnvironment::ProgramFinished, {}), u"End of the program"_s);
        QCOMPARE(stopReasonText(IExecutionEnvironment::ProgramUnknown, {}), QString());
    }

    void elapsedTimeHasHoursOnlyWhenNeeded()
    {
        QCOMPARE(elapsedText(-5), u"0:00"_s);
        QCOMPARE(elapsedText(59999), u"0:59"_s);
        QCOMPARE(elapsedText(60000), u"1:00"_s);
        QCOMPARE(elapsedText(3599000), u"59:59"_s);
        QCOMPARE(elapsedText(3600000), u"1:00:00"_s);
        QCOMPARE(elapsedText(qint64(90061) * 1000), u"25:01:01"_s);
    }
};

QTEST_MAIN(ProcessorTextTest)
#include "tst_processortext.moc"
