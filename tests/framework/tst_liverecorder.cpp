#include "livefixture.h"
#include "liverecorder.h"
#include <QJsonObject>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

class LiveRecorderTest : public QObject, private LiveFixture
{
    Q_OBJECT

private:
    std::unique_ptr<LiveRecorder> m_recorder;

    const LiveVariable &variable(int index) const { return m_recorder->variables().at(index); }
    /// "project:expression=value" of all variables, with "!" before a value that is old.
    QString text() const
    {
        QStringList texts;
        for (const LiveVariable &each : m_recorder->variables())
            texts.append(u"%1:%2=%3%4"_s.arg(each.project ? each.project->name() : u"?"_s, each.expression,
                                             each.state == LiveVariable::Readable ? QString() : u"!"_s, each.text));
        return texts.join(u' ');
    }
    /// The values of a series, "-" for a gap.
    QString recorded(int index) const
    {
        QStringList texts;
        for (const TimeSeries::Sample &sample : variable(index).series->samples())
            texts.append(sample.isGap() ? u"-"_s : QString::number(sample.value));
        return texts.join(u' ');
    }
    void record(const QString &value)
    {
        m_one->values[u"counter"_s] = value;
        m_recorder->record();
    }

private Q_SLOTS:
    void init()
    {
        setUp();
        m_recorder = std::make_unique<LiveRecorder>(*m_activity);
    }
    void cleanup()
    {
        m_recorder.reset();
        tearDown();
    }

    void variablesOfOneNameInTwoProcessorsAreTwo()
    {
        QCOMPARE(m_recorder->add(m_projectOne, u"counter"_s), 0);
        QCOMPARE(m_recorder->add(m_projectTwo, u"counter"_s), 1);
        QCOMPARE(m_recorder->add(m_projectOne, u" counter "_s), 0); // that is there already
        m_recorder->record();
        QCOMPARE(text(), u"one:counter=1 two:counter=200"_s);
        QVERIFY(variable(0).style != variable(1).style);
        record(u"2"_s);
        QCOMPARE(recorded(0), u"1 2"_s);
        QCOMPARE(recorded(1), u"200 200"_s);
    }

    void impossibleVariablesAreNotAdded()
    {
        QCOMPARE(m_recorder->add(nullptr, u"counter"_s), -1);
        QCOMPARE(m_recorder->add(m_projectOne, u"  "_s), -1);
        for (int i = 0; i < LiveRecorder::MostVariables; ++i)
            QCOMPARE(m_recorder->add(m_projectOne, u"v%1"_s.arg(i)), i);
        QCOMPARE(m_recorder->add(m_projectOne, u"more"_s), -1);
    }

    void removedVariableLeavesItsStyleToTheNext()
    {
        m_recorder->add(m_projectOne, u"a"_s);
        m_recorder->add(m_projectOne, u"b"_s);
        m_recorder->add(m_projectOne, u"c"_s);
        m_recorder->remove(1);
        m_recorder->remove(7);
        m_recorder->remove(-1);
        QCOMPARE(variable(1).expression, u"c"_s);
        QCOMPARE(variable(1).style, 2);
        m_recorder->add(m_projectOne, u"d"_s);
        QCOMPARE(variable(2).style, 1);
    }

    void variableIsPreparedOnce()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_recorder->record();
        m_recorder->record();
        m_recorder->readAll();
        QCOMPARE(m_one->prepared, QStringList{u"counter"_s});
    }

    void variableThatCannotBeReadIsPreparedAgainAfterAStop()
    {
        m_recorder->add(m_projectOne, u"local"_s);
        m_recorder->add(m_projectOne, u"counter"_s);
        for (int i = 0; i < 3; ++i)
            m_recorder->record();
        QCOMPARE(m_one->prepared.count(u"local"_s), 1);
        QCOMPARE(variable(0).state, LiveVariable::Unreadable);
        QVERIFY(variable(0).series->samples().isEmpty());
        m_one->values[u"local"_s] = u"5"_s;
        m_recorder->record();
        QCOMPARE(variable(0).state, LiveVariable::Unreadable);
        m_recorder->readAll();
        QCOMPARE(text(), u"one:local=5 one:counter=1"_s);
    }

    void addressesThatAreForgottenAreFoundAgain()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_recorder->record();
        m_one->known.clear(); // the program was loaded again
        record(u"3"_s);
        QCOMPARE(text(), u"one:counter=3"_s);
        QCOMPARE(recorded(0), u"1 3"_s);
    }

    void onlyProcessorsThatRunAreRecorded()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_recorder->add(m_projectTwo, u"counter"_s);
        m_recorder->record();
        m_one->status = IExecutionEnvironment::ProgramPaused;
        m_recorder->readAll(); // the value at the stop
        const int reads = m_one->reads;
        m_two->values[u"counter"_s] = u"201"_s;
        m_recorder->record();
        m_recorder->record();
        QCOMPARE(m_one->reads, reads);
        QCOMPARE(recorded(0), u"1 1 -"_s);
        QCOMPARE(recorded(1), u"200 200 201 201"_s);
        m_one->status = IExecutionEnvironment::ProgramSleeping;
        m_recorder->record();
        QCOMPARE(recorded(0), u"1 1 - 1"_s);
    }

    void clockStandsStillWhileNoProcessorRuns()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_recorder->record();
        QTRY_VERIFY((m_recorder->record(), m_recorder->time() >= 20));
        m_one->status = IExecutionEnvironment::ProgramPaused;
        m_recorder->record();
        const qint64 time = m_recorder->time();
        const QDeadlineTimer limit(30);
        while (!limit.hasExpired())
            m_recorder->record();
        QCOMPARE(m_recorder->time(), time);
    }

    void endedProcessorKeepsTheLastValueAndLeavesAGap()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_recorder->record();
        m_one->can = false;
        m_one->status = IExecutionEnvironment::ProgramFinished;
        m_recorder->record();
        QCOMPARE(text(), u"one:counter=!1"_s);
        QCOMPARE(variable(0).state, LiveVariable::NoSession);
        QCOMPARE(recorded(0), u"1 -"_s);
    }

    void environmentWithoutLiveMemoryIsNotSupported()
    {
        Project *silent = addProject(u"silent"_s, nullptr);
        m_recorder->add(silent, u"counter"_s);
        m_recorder->record();
        QCOMPARE(variable(0).state, LiveVariable::NotSupported);
    }

    void valuesThatAreNoNumbersAreGaps()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        record(u"1"_s);
        record(u"IDLE"_s);
        QCOMPARE(text(), u"one:counter=IDLE"_s);
        QCOMPARE(recorded(0), u"1 -"_s);
    }

    void removedProjectTakesItsVariablesWithIt()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_recorder->add(m_projectTwo, u"counter"_s);
        const QSignalSpy changes(m_recorder.get(), &LiveRecorder::variablesChanged);
        m_activity->workspace()->removeProject(m_projectOne);
        QCOMPARE(changes.size(), 1);
        m_recorder->record();
        QCOMPARE(text(), u"two:counter=200"_s);
    }

    void closedWorkspaceLeavesNothing()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_recorder->record();
        m_activity->closeWorkspace();
        QVERIFY(m_recorder->variables().isEmpty());
        QCOMPARE(m_recorder->time(), 0);
        m_recorder->record();
        m_recorder->readAll();
    }

    void clearedRecordingBeginsAgain()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_recorder->record();
        m_recorder->clearRecording();
        QCOMPARE(m_recorder->time(), 0);
        QCOMPARE(recorded(0), QString());
        record(u"4"_s);
        QCOMPARE(recorded(0), u"4"_s);
    }

    void sessionKeepsVariablesByProject()
    {
        m_recorder->add(m_projectTwo, u"counter"_s);
        m_recorder->add(m_projectOne, u"flag"_s, false);
        const QJsonArray stored = m_recorder->stored();
        m_activity->closeWorkspace();
        openWorkspace();
        m_recorder->restore(stored);
        m_recorder->record();
        QCOMPARE(text(), u"two:counter=200 one:flag=true"_s);
        QVERIFY(variable(0).plotted && !variable(1).plotted);
    }

    void foreignSessionIsIgnored()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_recorder->restore({7, u"text"_s, QJsonObject{{u"project"_s, u"gone.vnp"_s}, {u"expression"_s, u"x"_s}},
                             QJsonObject{{u"project"_s, m_projectOne->fileName()}}, QJsonArray{}});
        QVERIFY(m_recorder->variables().isEmpty());
    }

    void pluginMayThrow()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_recorder->add(m_projectTwo, u"counter"_s);
        m_one->onStatus = [] { throw std::runtime_error("boom"); };
        QTest::ignoreMessage(QtWarningMsg,
                             "IExecutionEnvironment::programStatus: an exception has left the plug-in (boom)");
        m_recorder->record();
        QCOMPARE(text(), u"one:counter=! two:counter=200"_s);
        m_one->onStatus = {};
        m_one->onRead = m_one->onPrepare = [] { throw std::runtime_error("boom"); };
        QTest::ignoreMessage(QtWarningMsg, "ILiveMemory::evaluateLive: an exception has left the plug-in (boom)");
        QTest::ignoreMessage(QtWarningMsg, "ILiveMemory::prepareLive: an exception has left the plug-in (boom)");
        m_recorder->record();
        QCOMPARE(variable(0).state, LiveVariable::Unreadable);
        QCOMPARE(recorded(1), u"200 200"_s);
    }

    void pluginMayRemoveTheProjectWhileItIsAsked()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_recorder->add(m_projectTwo, u"counter"_s);
        m_one->onRead = [this] { m_activity->workspace()->removeProject(m_projectOne); };
        m_recorder->record();
        QCOMPARE(m_recorder->variables().size(), 1);
        m_recorder->record();
        QCOMPARE(text(), u"two:counter=200"_s);
    }

    void pluginMayCloseTheWorkspaceWhileItIsAsked_data()
    {
        QTest::addColumn<int>("call");
        QTest::newRow("status") << 0;
        QTest::newRow("reading") << 1;
        QTest::newRow("preparing") << 2;
    }
    void pluginMayCloseTheWorkspaceWhileItIsAsked()
    {
        QFETCH(int, call);
        m_recorder->add(m_projectOne, u"counter"_s);
        const auto close = [this] {
            if (m_activity->workspace())
                m_activity->closeWorkspace();
        };
        (call == 0 ? m_one->onStatus : call == 1 ? m_one->onRead : m_one->onPrepare) = close;
        m_recorder->record();
        QVERIFY(m_recorder->variables().isEmpty());
        m_recorder->record();
    }

    void pluginMayDeleteTheRecorderWhileItIsAsked()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_one->onRead = [this] { m_recorder.reset(); };
        m_recorder->record();
        QVERIFY(!m_recorder);
    }

    void pluginMayAskForAReadingWhileItIsAsked()
    {
        m_recorder->add(m_projectOne, u"counter"_s);
        m_one->onRead = [this] { m_recorder->readAll(); };
        m_recorder->record();
        QCOMPARE(recorded(0), u"1"_s);
    }

    void numberOfAValue_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QString &expression, const QString &text, const QString &expected) {
            QTest::newRow(name) << expression << text << expected;
        };
        row("decimal", u"x"_s, u"-17"_s, u"-17"_s);
        row("fraction", u"x"_s, u"0.25"_s, u"0.25"_s);
        row("exponent", u"x"_s, u"1e-05"_s, u"1e-05"_s);
        row("character", u"x"_s, u"65 'A'"_s, u"65"_s);
        row("hexadecimal", u"x,x"_s, u"0x1f"_s, u"31"_s);
        row("binary", u"x,t"_s, u"101"_s, u"5"_s);
        row("binary with blanks", u"x , t "_s, u"101"_s, u"5"_s);
        row("octal", u"x,o"_s, u"017"_s, u"15"_s);
        row("decimal with a zero", u"x"_s, u"010"_s, u"10"_s);
        row("true", u"x"_s, u"true"_s, u"1"_s);
        row("false", u"x"_s, u"false"_s, u"0"_s);
        row("enumerator", u"x"_s, u"IDLE"_s, u"none"_s);
        row("structure", u"x"_s, u"{a = 1}"_s, u"none"_s);
        row("empty", u"x"_s, QString(), u"none"_s);
        row("bad hexadecimal", u"x"_s, u"0xzz"_s, u"none"_s);
        row("largest", u"x"_s, u"18446744073709551615"_s, u"1.84467e+19"_s);
    }
    void numberOfAValue()
    {
        QFETCH(QString, expression);
        QFETCH(QString, text);
        const std::optional<double> number = liveNumber(expression, text);
        QTEST(number ? QString::number(*number) : u"none"_s, "expected");
    }

    void fileHasALineForEachTime()
    {
        TimeSeries one;
        one.add(0, 1);
        one.add(100, 0.1);
        one.addGap(200);
        one.add(300, 4294967295);
        TimeSeries two;
        two.add(100, -5);
        two.add(100, -6);
        two.add(400, 7);
        QCOMPARE(liveCsv({{u"a: x"_s, one}, {u"b: \"y\", z"_s, two}, {u"c"_s, {}}}),
                 "\"Seconds\",\"a: x\",\"b: \"\"y\"\", z\",\"c\"\n"
                 "0.000,1,,\n0.100,0.1,-5,\n0.100,,-6,\n0.200,,,\n0.300,4294967295,,\n0.400,,7,\n");
        QCOMPARE(liveCsv({}), "\"Seconds\"\n");
    }
};

QTEST_MAIN(LiveRecorderTest)
#include "tst_liverecorder.moc"
