#include "fakeopenocd.h"
#include "foreignboard.h"
#include "targetconsole.h"
#include <QLineEdit>
#include <QSignalSpy>
#include <QTcpServer>

using Env = IExecutionEnvironment;

namespace {
const QString Ready = u"ready: 0123456789abcdefghijklmnopqrstuvwxyz\n"_s;
const QString Regions = u"Flash:0:4M:rom;RAM:0x20000000:4M:ram;Devices:0x40000000:64K:io"_s;
} // namespace

/// Sessions in which OpenOCD reads the memory of a running program. There is no hardware: either an emulated board runs
/// the program, of which a stand-in for OpenOCD reads the memory; or OpenOCD itself has a simulated chip, which
/// executes nothing.
class OpenOcdSessionTest : public QObject
{
    Q_OBJECT
private:
    Programs m_programs;
    QString m_text; ///< the program that exchanges text
    QString m_firmware;

    /// A board, its memory, and a session that attaches to it.
    struct Chip
    {
        Chip(const QString &image, const QString &more)
            : board(image, {u"-qtest"_s, u"unix:"_s + server.qtest(), u"-qtest-log"_s, u"none"_s})
            , session(u"remote:%1;image=%2;tclPort=%3"_s.arg(board.address(), image).arg(server.port()) + more,
                      {{u"gdbRegions"_s, Regions}})
        {}
        bool attach()
        {
            [&] { QTRY_VERIFY(board.isUp()); }();
            return session.start(true);
        }
        bool run()
        {
            session.env->run();
            return session.waitFor(Env::ProgramRunning);
        }

        FakeOpenOcd server{FakeOpenOcd::Memory::Board};
        ForeignBoard board;
        LiveSession session;
    };

    /// A chip behind a simulated probe, and a session that starts OpenOCD for it.
    struct SimulatedChip
    {
        SimulatedChip(const QString &more, const QString &regions)
        {
            probe.start(u"python3"_s, {Programs::source(u"fakeprobe.py"_s)});
            while (!probe.canReadLine() && probe.waitForReadyRead()) {
            }
            QFile board(directory.filePath(u"chip.cfg"_s));
            if (board.open(QIODevice::WriteOnly))
                board.write("adapter driver remote_bitbang\nremote_bitbang host localhost\nremote_bitbang port "
                            + probe.readLine().trimmed()
                            + "\ntelnet_port disabled\njtag newtap chip cpu -irlen 4 -expected-id 0x4ba00477\n"
                              "dap create chip.dap -chain-position chip.cpu\n"
                              "target create chip.cpu cortex_m -dap chip.dap\n");
            const QString server = u"openocd -c \"gdb_port $(Port)\" -f \"%1\""_s.arg(board.fileName());
            session = std::make_unique<LiveSession>(
                u"remote:127.0.0.1:$(Port);runTo="_s + more,
                QMap<QString, QString>{{u"gdbServer"_s, server}, {u"gdbRegions"_s, regions}});
        }
        ~SimulatedChip()
        {
            session.reset();
            probe.kill();
            probe.waitForFinished();
        }
        Q_DISABLE_COPY_MOVE(SimulatedChip)

        uint word(quint64 address) const
        {
            QByteArray bytes;
            bool isRead = false; // a busy computer may need several attempts
            [&] { QTRY_VERIFY(isRead || (isRead = target()->readDirectly(address, 4, &bytes))); }();
            return memoryCellValue(bytes, false);
        }

        Target *target() const { return session->env->session()->target(); }

        QTemporaryDir directory;
        QProcess probe;
        std::unique_ptr<LiveSession> session;
    };

    static std::unique_ptr<TargetConsole> console(const LiveSession &session)
    {
        const QList<QWidget *> widgets = session.get<IDockExtension>()->widgets();
        return std::unique_ptr<TargetConsole>(qobject_cast<TargetConsole *>(widgets.first()));
    }
    /// A session that starts OpenOCD with its dummy interface, which reads ones everywhere.
    [[nodiscard]] std::unique_ptr<LiveSession> dummySession(const QByteArray &more) const
    {
        QFile board(m_programs.directory() + u"/dummy.cfg"_s);
        if (!board.open(QIODevice::WriteOnly))
            return {};
        board.write("adapter driver dummy\nadapter speed 1000\ntelnet_port disabled\n" + more
                    + "jtag newtap test tap -irlen 4 -expected-id 0\n"
                      "target create test.cpu arm7tdmi -chain-position test.tap\n");
        const QString server = u"openocd -c \"gdb_port $(Port)\" -f \"%1\""_s.arg(board.fileName());
        return std::make_unique<LiveSession>(u"remote:127.0.0.1:$(Port);runTo=;resetCommand=poll;image="_s + m_firmware,
                                             QMap<QString, QString>{{u"gdbServer"_s, server}});
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_text = m_programs.rtt(u"rtt.elf"_s);
        m_firmware = m_programs.firmware(u"firmware.elf"_s);
        QVERIFY(!m_text.isEmpty() && !m_firmware.isEmpty());
    }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void cleanup() { QTRY_COMPARE(ownChildren(), QStringList()); }

    void textIsExchangedWhileTheProgramRuns()
    {
        Chip chip(m_text, u";rtt=1"_s);
        const auto window = console(chip.session);
        QVERIFY(chip.attach());
        QVERIFY(chip.run());
        const QSignalSpy dialogue(chip.session.env->session()->gdb(), &MiConnection::dialogue);
        QTRY_COMPARE(window->text(), Ready);
        auto *input = window->findChild<QLineEdit *>();
        QTest::keyClicks(input, u"hello"_s);
        QTest::keyClick(input, Qt::Key_Return);
        QTRY_COMPARE(window->text(), Ready + u"hello\nhello!"_s);
        for (const QList<QVariant> &line : dialogue)
            QVERIFY2(!line[1].toBool(), qPrintable(line[0].toString())); // the program was not disturbed
        QVERIFY(!chip.session.events.statuses.contains(Env::ProgramPaused));
    }

    void textIsExchangedWhileThisIsSlow()
    {
        Chip chip(m_text, u";rtt=1"_s);
        chip.server.delay(20);
        const auto window = console(chip.session);
        QVERIFY(chip.attach());
        QVERIFY(chip.run());
        QTRY_COMPARE_WITH_TIMEOUT(window->text(), Ready, 20000);
    }

    void variablesAndMemoryOfARunningProgramAreRead()
    {
        Chip chip(m_firmware, {});
        QVERIFY(chip.attach());
        const auto live = chip.session.get<ILiveMemory>();
        QVERIFY(live->canReadLive());
        QVERIFY(live->prepareLive(u"loops"_s));
        uint address = 0;
        QVERIFY(chip.session.get<ISourceMapping>()->symbolAddress(u"loops"_s, address));
        QVERIFY(chip.run());
        const QSignalSpy dialogue(chip.session.env->session()->gdb(), &MiConnection::dialogue);
        QString before;
        QTRY_VERIFY(live->evaluateLive(u"loops"_s, before));
        QString after;
        QTRY_VERIFY(live->evaluateLive(u"loops"_s, after) && after != before);
        MemoryBlock block;
        const auto isRead = [&](int region, uint from, int count) { // a busy computer may need several attempts
            return live->readLive(region, IMemory::Word32, from, count, block)
                   && block.first().status == IMemory::Success;
        };
        QTRY_VERIFY(isRead(1, address & ~uint(255), 64));
        QCOMPARE(block.size(), 64);
        QTRY_VERIFY(isRead(2, 0x40000004, 1)); // a device, in one access
        QVERIFY(chip.server.commands().endsWith(u"< read_memory 0x40000004 32 1\n"_s));
        for (const QList<QVariant> &line : dialogue)
            QVERIFY2(!line[1].toBool(), qPrintable(line[0].toString()));
        QVERIFY(!chip.session.events.statuses.contains(Env::ProgramPaused));
    }

    void memoryOfARunningProgramIsWritten()
    {
        Chip chip(m_firmware, {});
        QVERIFY(chip.attach());
        uint address = 0;
        QVERIFY(chip.session.get<ISourceMapping>()->symbolAddress(u"origin"_s, address));
        QVERIFY(chip.run());
        const auto memory = chip.session.get<IMemory>();
        QTRY_COMPARE(memory->write(1, IMemory::Word32, address, 77, true), int(IMemory::Success));
        uint value = 0;
        QTRY_COMPARE(memory->read(1, IMemory::Word32, address, &value), int(IMemory::Success));
        QCOMPARE(value, 77u);
        chip.session.env->pause();
        QVERIFY(chip.session.waitFor(Env::ProgramPaused));
        QCOMPARE(chip.session.evaluate(u"origin.x"_s), u"77"_s);
    }

    void lostServerLeavesTheSession()
    {
        Chip chip(m_firmware, {});
        QVERIFY(chip.attach());
        QVERIFY(chip.run());
        const auto live = chip.session.get<ILiveMemory>();
        QVERIFY(live->canReadLive());
        chip.server.end();
        QTRY_VERIFY(!live->canReadLive());
        QVERIFY2(chip.session.events.text.contains(u"no connection to the Tcl port"_s),
                 qPrintable(chip.session.events.text));
        chip.session.env->pause();
        QVERIFY(chip.session.waitFor(Env::ProgramPaused));
        QVERIFY(!chip.session.location().isEmpty());
    }

    void refusedPortIsReported()
    {
        QTcpServer probe;
        QVERIFY(probe.listen(QHostAddress::LocalHost));
        const quint16 port = probe.serverPort();
        probe.close();
        ForeignBoard board(m_firmware);
        QTRY_VERIFY(board.isUp());
        LiveSession session(u"remote:%1;image=%2;tclPort=%3"_s.arg(board.address(), m_firmware).arg(port),
                            {{u"gdbRegions"_s, Regions}});
        QVERIFY(session.start(true));
        QTRY_VERIFY2(session.events.text.contains(
                         u"The memory is not read while the program runs, because there is no connection to the Tcl "
                         "port %1 of OpenOCD: "_s.arg(port)),
                     qPrintable(session.events.text));
        QVERIFY(!session.get<ILiveMemory>()->canReadLive());
        QCOMPARE(session.events.serious, QString());
    }

    void otherServersAreNotAskedForMemory()
    {
        ForeignBoard board(m_firmware);
        QTRY_VERIFY(board.isUp());
        LiveSession session(u"remote:%1;image=%2"_s.arg(board.address(), m_firmware), {{u"gdbRegions"_s, Regions}});
        QVERIFY(session.start(true));
        QVERIFY(!session.get<ILiveMemory>()->canReadLive());
    }

    void openOcdReadsAChipWithoutHaltingIt()
    {
        constexpr quint64 counter = 0x20000000;
        constexpr quint64 halts = 0x20000004;
        SimulatedChip chip(u";image="_s + m_firmware, Regions);
        QVERIFY(chip.session->start());
        chip.session->env->run();
        QVERIFY(chip.session->waitFor(Env::ProgramRunning));
        const uint before = chip.word(halts);
        const uint start = chip.word(counter);
        QTRY_VERIFY(chip.word(counter) > start);
        const auto live = chip.session->get<ILiveMemory>();
        QVERIFY(live->canReadLive());
        QVERIFY(live->prepareLive(u"loops"_s));
        QString value;
        QTRY_VERIFY(live->evaluateLive(u"loops"_s, value));
        MemoryBlock block;
        const auto isRead = [&] {
            return live->readLive(1, IMemory::Word32, uint(counter), 8, block)
                   && block.first().status == IMemory::Success;
        };
        for (int i = 0; i < 20; ++i)
            QTRY_VERIFY(isRead());
        QCOMPARE(chip.word(halts), before);
        QVERIFY(before > 0); // the halts of the start were counted
        QVERIFY(!chip.session->events.statuses.contains(Env::ProgramPaused));
        QVERIFY2(!chip.session->events.text.contains(u"\n0x"_s), qPrintable(chip.session->events.text));
        chip.session->env->pause();
        QVERIFY(chip.session->waitFor(Env::ProgramPaused));
        QCOMPARE(chip.word(halts), before + 1);
        const uint paused = chip.word(counter);
        QCOMPARE(chip.word(counter), paused);
    }

    /// The test does what a program would do with its memory.
    void textOfAChipIsShownWhileItRuns()
    {
        constexpr uint block = 0x20000100;
        constexpr uint buffer = 0x20000200;
        SimulatedChip chip(u";rtt=1"_s, u"RAM:0x20000000:1K:ram"_s);
        const auto window = console(*chip.session);
        QVERIFY(chip.session->start(true));
        chip.session->env->run();
        QVERIFY(chip.session->waitFor(Env::ProgramRunning));
        const auto write = [&](quint64 address, const QByteArray &bytes) {
            bool isWritten = false;
            QTRY_VERIFY(isWritten || (isWritten = chip.target()->writeDirectly(address, bytes)));
        };
        write(buffer, "hello");
        QByteArray words;
        for (const uint word : {1u, 0u, 0u, buffer, 16u, 5u, 0u, 0u}) // one buffer, with five letters
            words += memoryCellBytes(word, 4, false);
        write(block + 16, words);
        write(block, QByteArray("SEGGER RTT").leftJustified(16, '\0'));
        QTRY_COMPARE_WITH_TIMEOUT(window->text(), u"hello"_s, 20000);
        QTRY_COMPARE(chip.word(block + 40), 5u); // read
        QCOMPARE(chip.word(0x20000004), 1u);     // halted once, by the start
    }

    void openOcdThatTheSessionStartsReadsMemory()
    {
        const auto session = dummySession({});
        QVERIFY(session && session->start());
        const auto live = session->get<ILiveMemory>();
        QVERIFY(live->canReadLive());
        Target *target = session->env->session()->target();
        QByteArray bytes;
        for (const int length : {1, 2, 4, 7}) {
            QTRY_VERIFY(target->readDirectly(0x20000000, length, &bytes));
            QCOMPARE(bytes, QByteArray(length, '\xff'));
        }
        QTRY_VERIFY(target->writeDirectly(0x20000000, "\1\2\3\4"));
        session->env->restart();
        QVERIFY(session->waitFor(Env::ProgramPaused));
        QTRY_VERIFY(target->readDirectly(0x20000000, 4, &bytes));
        QVERIFY(!session->events.text.contains(u"Tcl port"_s));
    }

    void openOcdWithoutThatPortIsReported()
    {
        const auto session = dummySession("tcl_port disabled\n");
        QVERIFY(session && session->start());
        QTRY_VERIFY2(session->events.text.contains(u"no connection to the Tcl port"_s),
                     qPrintable(session->events.text));
        QVERIFY(!session->get<ILiveMemory>()->canReadLive());
        QCOMPARE(session->events.serious, QString());
    }
};

QTEST_MAIN(OpenOcdSessionTest)
#include "tst_openocdsession.moc"
