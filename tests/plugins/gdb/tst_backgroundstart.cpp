#include "fakegdb.h"
#include "foreignboard.h"
#include <QElapsedTimer>
#include <QTcpServer>

using Env = IExecutionEnvironment;

namespace {
class RecordedProgress : public IStartProgress
{
public:
    QStringList steps;
    QList<int> percents; ///< those that are known
    QList<bool> results;
    QString reason;
    std::function<void()> act; ///< called for each step
    int references = 0;

    QRESULT queryInterface(const QUuid &, QUnknownInterface **out) override
    {
        *out = nullptr;
        return QE_NOINTERFACE;
    }
    unsigned long addRef() override { return ulong(++references); }
    unsigned long release() override { return ulong(--references); }
    void progress(const QString &step, int percent) override
    {
        if (steps.isEmpty() || steps.last() != step)
            steps.append(step);
        if (percent >= 0)
            percents.append(percent);
        if (act)
            act();
    }
    void finished(bool success, const QString &text) override
    {
        results.append(success);
        reason = text;
    }
};

/// Passes on what gdb sends to a board, slowly.
class SlowProbe
{
public:
    SlowProbe(const QString &socket, int bytesPerSecond)
    {
        m_process.start(u"python3"_s, {Programs::source(u"throttle.py"_s), socket, QString::number(bytesPerSecond)});
        if (m_process.waitForReadyRead())
            m_port = QString::fromLatin1(m_process.readLine().trimmed());
    }
    ~SlowProbe()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(SlowProbe)

    QString address() const { return u"127.0.0.1:"_s + m_port; }

private:
    QProcess m_process;
    QString m_port;
};
} // namespace

/// Starts and restarts during which the event loop runs.
class BackgroundStartTest : public QObject
{
    Q_OBJECT

private:
    Programs m_programs;
    QString m_native;
    QString m_image;

    QString board(const QString &image, const QString &more = {}) const
    {
        return u"qemu:mps2-an385;image="_s + image + more;
    }
    static InterfacePtr<IProgressiveStart> starter(const LiveSession &session)
    {
        return session.get<IProgressiveStart>();
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_native = m_programs.native(u"demo"_s);
        m_image = m_programs.firmware(u"firmware.elf"_s);
        QVERIFY(!m_native.isEmpty() && !m_image.isEmpty());
    }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void cleanup() { QTRY_COMPARE(ownChildren(), QStringList()); }

    void sessionStartsWhileTheEventLoopRuns_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<QStringList>("steps");
        QTest::newRow("native") << u"native:"_s + m_native
                                << QStringList{u"Reading the symbols of 'demo'..."_s, u"Starting 'demo'..."_s,
                                               u"Connecting to 'demo'..."_s, u"Running to 'main'..."_s};
        QTest::newRow("board") << board(m_image)
                               << QStringList{u"Reading the symbols of 'firmware.elf'..."_s,
                                              u"Starting 'mps2-an385'..."_s, u"Connecting to 'mps2-an385'..."_s,
                                              u"Running to 'main'..."_s};
    }
    void sessionStartsWhileTheEventLoopRuns()
    {
        QFETCH(QString, option);
        LiveSession session(option);
        RecordedProgress progress;
        int events = 0;
        QTimer ticks;
        connect(&ticks, &QTimer::timeout, this, [&events] { ++events; });
        ticks.start(1);
        starter(session)->startInBackground(false, &progress);
        QVERIFY(progress.results.isEmpty()); // it has returned before the end
        QVERIFY(session.waitFor(Env::ProgramPaused));
        QCOMPARE(progress.results, QList<bool>{true});
        QTEST(progress.steps, "steps");
        QVERIFY(events > 3);
        QCOMPARE(progress.references, 0);
        QVERIFY(!session.location().isEmpty());
    }

    void downloadShowsItsProgressAndLastsLongerThanTheLimit()
    {
        const QString image = m_programs.firmware(u"large.elf"_s, u"mps2.ld"_s, {u"-DFILLER=60000"_s});
        QVERIFY(!image.isEmpty());
        ForeignBoard target(m_image);
        QTRY_VERIFY(target.isUp());
        const SlowProbe probe(target.address(), 150000);
        LiveSession session(u"remote:%1;timeLimit=1;image=%2"_s.arg(probe.address(), image));
        RecordedProgress progress;
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
        timer.start(10);
        QElapsedTimer time;
        time.start();
        starter(session)->startInBackground(false, &progress);
        QVERIFY(session.waitFor(Env::ProgramPaused, 60000));
        QVERIFY(time.elapsed() > 1000);
        QCOMPARE(session.events.serious, QString());
        QCOMPARE(progress.results, QList<bool>{true});
        QVERIFY(progress.steps.contains(u"Loading 'large.elf'..."_s));
        QVERIFY(progress.percents.size() > 3);
        QVERIFY(std::is_sorted(progress.percents.begin(), progress.percents.end()));
        QVERIFY(progress.percents.first() < progress.percents.last());
        QVERIFY(progress.percents.last() > 90);
        QVERIFY(ticks > 100); // the event loop ran
        QCOMPARE(session.evaluate(u"filler[0]"_s).left(1), u"1"_s);
        session.env->stop();
    }

    /// Each access to a target behind a slow probe lasts long.
    void eventLoopRunsWhileTheTargetIsRead()
    {
        const auto slowly = [](const QString &command, const QString &results) {
            return FakeGdb::Answer{command, {u"SLEEP 0.1"_s, u"TOKEN^done"_s + results}};
        };
        const QString word = u",memory=[{begin=\"0\",offset=\"0\",end=\"4\",contents=\"00000000\"}]"_s;
        const FakeGdb gdb({slowly(u"-data-evaluate-expression \"(unsigned int)$xpsr"_s, u",value=\"1\""_s),
                           slowly(u"-data-read-memory-bytes"_s, word),
                           slowly(u"-interpreter-exec console \"info mem"_s, {}),
                           slowly(u"-interpreter-exec console \"maint print"_s, {})});
        int ticks = 0;
        QMap<QString, int> asked; // the ticks before each question, by its token
        QStringList blocked;
        QStringList slow;
        LiveSession session(u"remote:host:1;runTo=;image=%1;gdb=%2"_s.arg(m_image, gdb.path()));
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
        timer.start(1);
        connect(session.env->session()->gdb(), &MiConnection::dialogue, &timer, [&](const QString &line, bool fromUs) {
            const QString token = line.section(fromUs ? u'-' : u'^', 0, 0);
            if (fromUs
                && (line.contains(u"xpsr"_s) || line.contains(u"read-memory"_s) || line.contains(u"info mem"_s)
                    || line.contains(u"maint print"_s))) {
                slow += line.sliced(token.size());
                asked.insert(token, ticks);
            } else if (asked.contains(token) && asked.take(token) == ticks) {
                blocked += slow.last();
            }
        });
        RecordedProgress progress;
        starter(session)->startInBackground(false, &progress);
        QVERIFY(session.waitFor(Env::ProgramPaused));
        QCOMPARE(blocked, QStringList());
        for (const char *question :
             {"-data-evaluate-expression \"(unsigned int)$xpsr\"", "-data-read-memory-bytes 0xe000ed08 4",
              "-data-read-memory-bytes 0xe0002000 4", "-interpreter-exec console \"info mem\"",
              "-interpreter-exec console \"maint print register-groups\""})
            QVERIFY2(slow.contains(QLatin1String(question)), question);
    }

    void startCanBeCancelledWhileTheTargetIsRead_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("before the start of the program") << u"-data-read-memory-bytes 0xe000ed08"_s;
        QTest::newRow("behind it") << u"-interpreter-exec console \"info mem"_s;
    }
    void startCanBeCancelledWhileTheTargetIsRead()
    {
        QFETCH(QString, command);
        const FakeGdb gdb({{u"-data-evaluate-expression \"(unsigned int)$xpsr"_s, {u"TOKEN^done,value=\"1\""_s}},
                           {command, {u"SLEEP 0.3"_s, u"TOKEN^done"_s}}});
        bool isAsked = false;
        LiveSession session(u"remote:host:1;image=%1;runTo=;gdb=%2"_s.arg(m_image, gdb.path()));
        connect(session.env->session()->gdb(), &MiConnection::dialogue, this,
                [&](const QString &line, bool fromUs) { isAsked = isAsked || (fromUs && line.contains(command)); });
        RecordedProgress progress;
        starter(session)->startInBackground(false, &progress);
        QTRY_VERIFY(isAsked);
        QVERIFY(progress.results.isEmpty());
        starter(session)->cancelStart();
        QCOMPARE(progress.results, QList<bool>{false});
        QCOMPARE(session.env->programStatus(), Env::ProgramUnknown);
        QCOMPARE(session.events.text, u"The start was cancelled.\n"_s);
    }

    void downloadCanBeCancelled()
    {
        const QString image = m_programs.firmware(u"large.elf"_s, u"mps2.ld"_s, {u"-DFILLER=500000"_s});
        QVERIFY(!image.isEmpty());
        ForeignBoard target(m_image);
        QTRY_VERIFY(target.isUp());
        const SlowProbe probe(target.address(), 25000);
        LiveSession session(u"remote:%1;image=%2"_s.arg(probe.address(), image));
        RecordedProgress progress;
        starter(session)->startInBackground(false, &progress);
        QTRY_VERIFY_WITH_TIMEOUT(!progress.percents.isEmpty(), 30000);
        QCOMPARE(session.evaluate(u"1"_s), u"error: no program is being debugged"_s); // queries do not disturb
        starter(session)->cancelStart();
        QCOMPARE(progress.results, QList<bool>{false});
        session.env->stop();
        QCOMPARE(session.events.serious, QString());
        QCOMPARE(session.events.text, u"The start was cancelled.\n"_s);
        QVERIFY(target.isRunning());
    }

    void silentServerCanBeCancelled()
    {
        QTcpServer server; // accepts the connection but does not answer
        QVERIFY(server.listen(QHostAddress::LocalHost));
        LiveSession session(u"remote:127.0.0.1:%1;image=%2"_s.arg(server.serverPort()).arg(m_image));
        RecordedProgress progress;
        starter(session)->startInBackground(true, &progress);
        QTRY_VERIFY(server.hasPendingConnections());
        starter(session)->cancelStart();
        QCOMPARE(progress.results, QList<bool>{false});
        QCOMPARE(session.env->programStatus(), Env::ProgramUnknown);
        QVERIFY(session.events.statuses.isEmpty());
    }

    void firmwareThatHangsBeforeMainIsPaused()
    {
        const QString image = m_programs.firmware(u"hang.elf"_s, u"mps2.ld"_s, {u"-DHANG"_s});
        LiveSession session(board(image, u";timeLimit=1"_s));
        RecordedProgress progress;
        starter(session)->startInBackground(false, &progress);
        QVERIFY(session.waitFor(Env::ProgramPaused));
        QCOMPARE(progress.results, QList<bool>{true});
        QVERIFY2(session.events.text.contains(u"'main' was not reached within 1 s"_s), qPrintable(session.events.text));
        QCOMPARE(session.location(), u"startup.c, %1"_s.arg(Programs::lineOf(u"startup.c"_s, u"#ifdef HANG"_s) + 1));
    }

    void waitForMainCanBeCancelled()
    {
        const QString image = m_programs.firmware(u"hang.elf"_s, u"mps2.ld"_s, {u"-DHANG"_s});
        LiveSession session(board(image, u";timeLimit=1000"_s));
        RecordedProgress progress;
        starter(session)->startInBackground(false, &progress);
        QTRY_COMPARE(progress.steps.value(progress.steps.size() - 1), u"Running to 'main'..."_s);
        session.env->stop(); // includes it
        QCOMPARE(progress.results, QList<bool>{false});
        QVERIFY(session.events.statuses.isEmpty());
    }

    void outputBeforeMainIsASignOfLife()
    {
        const FakeGdb gdb(
            {{u"-exec-run"_s,
              FakeGdb::running()
                  + QStringList{u"@\"a\""_s, u"SLEEP 0.7"_s, u"@\"b\""_s, u"SLEEP 0.7"_s, u"@\"c\""_s,
                                FakeGdb::stop(u"reason=\"breakpoint-hit\",disp=\"del\",bkptno=\"1\""_s)}}});
        LiveSession session(u"native:%1;timeLimit=1;gdb=%2"_s.arg(m_native, gdb.path()));
        QVERIFY(session.start());
        QCOMPARE(session.events.text, QString());
    }

    void restartRunsInTheBackground()
    {
        LiveSession session(board(m_image));
        QVERIFY(session.start());
        int events = 0;
        QTimer ticks;
        connect(&ticks, &QTimer::timeout, this, [&events] { ++events; });
        ticks.start(1);
        session.env->restart();
        QCOMPARE(session.events.statuses, QList<LiveSession::Status>{Env::ProgramRunning});
        session.env->restart(); // ignored
        session.env->stepOver(u"firmware.c"_s);
        QVERIFY(session.waitFor(Env::ProgramPaused));
        QVERIFY(events > 3);
        QVERIFY(session.events.infos.contains(u"Running to 'main'..."_s));
        QCOMPARE(session.location(),
                 u"firmware.c, %1"_s.arg(Programs::lineOf(u"firmware.c"_s, u"UART_BAUDDIV = 16"_s) - 1));
        QCOMPARE(session.events.serious, QString());
    }

    void runDuringARestartFollowsIt()
    {
        LiveSession session(board(m_image));
        QVERIFY(session.start());
        const int line = Programs::lineOf(u"firmware.c"_s, u"return result"_s);
        session.get<IBreakpoints>()->setBreakpoint(Programs::source(u"firmware.c"_s), line, BreakpointEnabled);
        session.env->restart();
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
        QCOMPARE(session.location(), u"firmware.c, %1"_s.arg(line));
    }

    void stopCancelsARestart()
    {
        const QString image = m_programs.firmware(u"hang.elf"_s, u"mps2.ld"_s, {u"-DHANG"_s});
        LiveSession session(board(image, u";timeLimit=1"_s));
        QVERIFY(session.start());
        session.env->restart();
        QVERIFY(session.waitFor(Env::ProgramRunning));
        session.env->stop();
        QTest::qWait(0);
        QVERIFY(session.events.statuses.isEmpty());
        QCOMPARE(session.env->programStatus(), Env::ProgramUnknown);
    }

    void releaseDuringAStartReleasesAllReferences()
    {
        LiveSession session(board(m_image));
        RecordedProgress progress;
        starter(session)->startInBackground(false, &progress);
        std::exchange(session.env, nullptr)->release();
        QCOMPARE(progress.results, QList<bool>{false});
        QCOMPARE(progress.references, 0);
        QCOMPARE(session.project.references, 0);
        QCOMPARE(session.events.references, 0);
    }

    void breakpointRemovedDuringAStartIsRemovedFromGdb()
    {
        const QString image = m_programs.firmware(u"hang.elf"_s, u"mps2.ld"_s, {u"-DHANG"_s});
        const int line = Programs::lineOf(u"firmware.c"_s, u"return result"_s);
        const QString file = Programs::source(u"firmware.c"_s);
        LiveSession session(board(image, u";timeLimit=1"_s));
        const auto breakpoints = session.get<IBreakpoints>();
        QCOMPARE(breakpoints->setBreakpoint(file, line, BreakpointEnabled), 0);
        RecordedProgress progress;
        starter(session)->startInBackground(false, &progress);
        QTRY_VERIFY(progress.steps.contains(u"Running to 'main'..."_s)); // gdb has the breakpoint
        QVERIFY(progress.results.isEmpty());
        QCOMPARE(breakpoints->setBreakpoint(file, line, BreakpointRemoved), 0);
        QVERIFY(session.waitFor(Env::ProgramPaused));
        QString known;
        QVERIFY(session.env->session()->gdb()->askConsole(u"info breakpoints"_s, &known).isDone());
        QVERIFY2(!known.contains(u"firmware.c"_s), qPrintable(known));
    }

    void emulatorHasEndedWhenTheSessionHas()
    {
        LiveSession session(board(m_image));
        QVERIFY(session.start());
        QVERIFY(!ownChildren().isEmpty());
        session.env->stop();
        QCOMPARE(ownChildren(), QStringList());
    }

    void hostMayReleaseTheEnvironmentInAReportOfTheStart()
    {
        LiveSession session(board(m_image));
        RecordedProgress progress;
        progress.act = [&] {
            if (GdbEnvironment *environment = std::exchange(session.env, nullptr)) {
                QVERIFY(!BackgroundTask::canPause()); // scripts run here
                environment->release();
            }
        };
        starter(session)->startInBackground(false, &progress);
        QTRY_COMPARE(progress.results, QList<bool>{false});
        QTRY_COMPARE(session.project.references, 0);
        QCOMPARE(progress.references, 0);
        QCOMPARE(session.events.references, 0);
    }

    void breakpointsCanBeChangedDuringAStart()
    {
        LiveSession session(board(m_image));
        RecordedProgress progress;
        starter(session)->startInBackground(false, &progress);
        const int line = Programs::lineOf(u"firmware.c"_s, u"return result"_s);
        const auto breakpoints = session.get<IBreakpoints>();
        QCOMPARE(breakpoints->setBreakpoint(Programs::source(u"firmware.c"_s), line, BreakpointEnabled), 0);
        QVERIFY(session.waitFor(Env::ProgramPaused));
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
        QCOMPARE(session.location(), u"firmware.c, %1"_s.arg(line));
    }
};

QTEST_MAIN(BackgroundStartTest)
#include "tst_backgroundstart.moc"
