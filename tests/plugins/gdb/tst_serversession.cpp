#include "foreignboard.h"
#include <QTcpServer>

using Env = IExecutionEnvironment;

/// Sessions with debug servers at an address.
class tst_ServerSession : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void attachLeavesTheServerRunning();
    void targetWithoutAProgramIsAttachedTo();
    void gdbserverProgramRunsButCannotRestart();
    void endOfAGdbserverProgramIsReported_data();
    void endOfAGdbserverProgramIsReported();
    void refusedConnectionIsReported();
    void serverWithoutAnswerIsReported();
    void lostConnectionIsReported();

private:
    Programs m_programs;
    QString m_image;
};

void tst_ServerSession::initTestCase()
{
    m_image = m_programs.firmware(u"firmware.elf"_s);
    QVERIFY(!m_image.isEmpty());
}

void tst_ServerSession::init()
{
    QTest::failOnWarning(QRegularExpression(u".?"_s));
}

void tst_ServerSession::cleanup()
{
    QTRY_COMPARE(ownChildren(), QStringList());
}

void tst_ServerSession::attachLeavesTheServerRunning()
{
    ForeignBoard board(m_image);
    QTRY_VERIFY(board.isUp());
    LiveSession session(u"remote:%1;image=%2"_s.arg(board.address(), m_image));
    QVERIFY(session.env->canAttach());
    QVERIFY(session.start(true));
    QVERIFY2(session.location().startsWith(u"firmware.c, "_s), qPrintable(session.location()));
    session.env->stop();
    QVERIFY(board.isRunning());
    QVERIFY(session.start(false)); // loads the program
    const int start = Programs::lineOf(u"firmware.c"_s, u"UART_BAUDDIV = 16"_s) - 1;
    QCOMPARE(session.location(), u"firmware.c, %1"_s.arg(start));
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    session.env->stop();
    QVERIFY(board.isRunning());
}

/// There are no symbols, but instructions, registers and memory.
void tst_ServerSession::targetWithoutAProgramIsAttachedTo()
{
    ForeignBoard board(m_image);
    QTRY_VERIFY(board.isUp());
    LiveSession session(u"remote:%1"_s.arg(board.address()));
    QVERIFY(session.start(true));
    QCOMPARE(session.env->session()->program().file, QString());
    QVERIFY2(session.location().startsWith(u"disassembler:"_s), qPrintable(session.location()));
    QVERIFY(!session.evaluate(u"$pc"_s).startsWith(u"error"_s));
    QCOMPARE(session.events.serious, QString());
}

void tst_ServerSession::gdbserverProgramRunsButCannotRestart()
{
    const QString image = m_programs.native(u"served"_s);
    QTcpServer probe; // finds a free port
    QVERIFY(probe.listen(QHostAddress::LocalHost));
    const QString address = u"127.0.0.1:%1"_s.arg(probe.serverPort());
    probe.close();
    QProcess server;
    server.setProcessChannelMode(QProcess::MergedChannels);
    server.start(u"gdbserver"_s, {u"--once"_s, address, image});
    QTRY_VERIFY(server.peek(1000).contains("Listening"));
    LiveSession session(u"remote:%1;image=%2"_s.arg(address, image));
    QVERIFY(session.start());
    QCOMPARE(session.evaluate(u"origin"_s), u"{x = 3, y = 4}"_s);
    session.get<IBreakpoints>()->setBreakpoint(Programs::source(u"native.c"_s),
                                               Programs::lineOf(u"native.c"_s, u"return result"_s), BreakpointEnabled);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    session.env->restart();
    QVERIFY2(session.events.serious.contains(u"cannot start its program again"_s), qPrintable(session.events.serious));
    QCOMPARE(session.env->programStatus(), Env::ProgramBreakpointHit); // the session stays as it was
    QCOMPARE(session.evaluate(u"value"_s), u"0"_s);
    server.kill();
    QVERIFY(server.waitForFinished());
}

void tst_ServerSession::endOfAGdbserverProgramIsReported_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("words");
    QTest::newRow("exit code") << u"exit"_s << u"The program ended with code 7.\n"_s;
    QTest::newRow("signal") << u"crash"_s << u"The program was ended by SIGSEGV.\n"_s;
}

void tst_ServerSession::endOfAGdbserverProgramIsReported()
{
    QFETCH(QString, command);
    QFETCH(QString, words);
    const QString image = m_programs.native(u"served"_s);
    QTcpServer probe; // finds a free port
    QVERIFY(probe.listen(QHostAddress::LocalHost));
    const QString address = u"127.0.0.1:%1"_s.arg(probe.serverPort());
    probe.close();
    QProcess server;
    server.setProcessChannelMode(QProcess::MergedChannels);
    server.start(u"gdbserver"_s, {u"--once"_s, address, image, command});
    QTRY_VERIFY(server.peek(1000).contains("Listening"));
    LiveSession session(u"remote:%1;image=%2"_s.arg(address, image));
    QVERIFY(session.start());
    session.env->run();
    if (command == u"crash") {
        QVERIFY(session.waitFor(Env::ProgramPaused)); // with the signal
        session.env->run();
    }
    QVERIFY(session.waitFor(Env::ProgramFinished));
    QVERIFY2(session.events.text.endsWith(words), qPrintable(session.events.text));
    session.env->restart(); // no server is there now
    QVERIFY(session.waitFor(Env::ProgramUnknown));
    QVERIFY2(session.events.serious.contains(u"gdb cannot connect"_s), qPrintable(session.events.serious));
    QTRY_COMPARE(server.state(), QProcess::NotRunning);
}

void tst_ServerSession::refusedConnectionIsReported()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const quint16 port = server.serverPort();
    server.close();
    LiveSession session(u"remote:127.0.0.1:%1;image=%2"_s.arg(port).arg(m_image));
    QVERIFY(!session.env->start(true));
    QVERIFY2(session.events.serious.startsWith(u"gdb cannot connect to '127.0.0.1:%1': "_s.arg(port)),
             qPrintable(session.events.serious));
    QCOMPARE(session.env->programStatus(), Env::ProgramUnknown);
}

void tst_ServerSession::serverWithoutAnswerIsReported()
{
    QTcpServer server; // accepts the connection but does not answer, like a server that serves another debugger
    QVERIFY(server.listen(QHostAddress::LocalHost));
    LiveSession session(u"remote:127.0.0.1:%1;image=%2"_s.arg(server.serverPort()).arg(m_image));
    QVERIFY(!session.env->start(true));
    QVERIFY2(session.events.serious.contains(u"no other debugger on it?"_s), qPrintable(session.events.serious));
}

void tst_ServerSession::lostConnectionIsReported()
{
    ForeignBoard board(m_image);
    QTRY_VERIFY(board.isUp());
    LiveSession session(u"remote:%1;image=%2"_s.arg(board.address(), m_image));
    QVERIFY(session.start(true));
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    board.end();
    QVERIFY(session.waitFor(Env::ProgramUnknown));
    QVERIFY2(session.events.serious.contains(u"The connection to '%1' is lost."_s.arg(board.address())),
             qPrintable(session.events.serious));
}

QTEST_MAIN(tst_ServerSession)
#include "tst_serversession.moc"
