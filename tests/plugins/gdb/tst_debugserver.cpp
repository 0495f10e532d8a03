#include "debugserver.h"
#include "livesession.h"
#include <csignal>
#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTcpServer>

using Env = IExecutionEnvironment;

namespace {
const auto Served = u"remote:127.0.0.1:$(Port);server=gdbserver --once 127.0.0.1:$(Port) \"$(Program)\""_s;

/// The process ids of the children whose command line contains a text.
QStringList childrenWith(const QString &text)
{
    QStringList children = ownChildren();
    children.removeIf([&](const QString &pid) { return !commandLine(pid).contains(text); });
    return children;
}
} // namespace

/// Servers that are started and ended with the session.
class tst_DebugServer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void cleanup() { QTRY_COMPARE(ownChildren(), QStringList()); }
    void serverIsStartedAndEndedWithTheSession();
    void restartStartsTheServerAgain();
    void simulatorRunsTheProgram();
    void openOcdLoadsTheProgram();
    void childrenOfTheServerEndWithIt();
    void endOfTheServerFinishesTheProgram();
    void failuresAreReported_data();
    void failuresAreReported();
    void takenAddressIsReported();
    void waitCanBeStopped();
    void sessionEndedDuringTheWaitReportsNothing();
    void coloursAreRemoved_data();
    void coloursAreRemoved();
    void numbersAreRemoved_data();
    void numbersAreRemoved();

private:
    Programs m_programs;
    QString m_image;
};

void tst_DebugServer::initTestCase()
{
    m_image = m_programs.native(u"two words"_s);
    QVERIFY(!m_image.isEmpty());
}

void tst_DebugServer::serverIsStartedAndEndedWithTheSession()
{
    LiveSession session(Served + u";image="_s + m_image);
    QVERIFY(session.start());
    QCOMPARE(session.evaluate(u"origin"_s), u"{x = 3, y = 4}"_s);
    QCOMPARE(childrenWith(u"gdbserver"_s).size(), 1);
    QVERIFY2(session.events.text.contains(u"Listening on port"_s), qPrintable(session.events.text)); // standard error
    session.env->stop();
    QTRY_VERIFY(childrenWith(u"gdbserver"_s).isEmpty());
    QVERIFY(session.start()); // with another port
    QCOMPARE(session.evaluate(u"origin"_s), u"{x = 3, y = 4}"_s);
}

void tst_DebugServer::restartStartsTheServerAgain()
{
    LiveSession session(Served + u";image="_s + m_image);
    QVERIFY(session.start());
    const QString first = childrenWith(u"gdbserver"_s).value(0);
    session.env->restart();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.evaluate(u"origin"_s), u"{x = 3, y = 4}"_s);
    QVERIFY(childrenWith(u"gdbserver"_s).value(0) != first);
    QVERIFY(session.events.serious.isEmpty());
}

void tst_DebugServer::simulatorRunsTheProgram()
{
    const QString image = m_programs.avr(u"avr.elf"_s);
    QVERIFY(!image.isEmpty());
    LiveSession session(u"remote:127.0.0.1:1234;server=simavr -m atmega328p -f 16000000 -g $(Program);image="_s
                        + image);
    QVERIFY(session.start());
    QCOMPARE(session.location(), u"avr.c, %1"_s.arg(Programs::lineOf(u"avr.c"_s, u"UCSR0B ="_s)));
    session.env->run();
    QTRY_VERIFY2(session.events.text.contains(u"started"_s), qPrintable(session.events.text));
    QVERIFY(!session.events.text.contains(u'\x1b'));
    session.env->pause();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    session.env->restart();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), u"avr.c, %1"_s.arg(Programs::lineOf(u"avr.c"_s, u"UCSR0B ="_s)));
    session.env->stop();
}

/// Its dummy probe has no processor: all that is read has the value 0 or -1, and a resumed program does not stop.
void tst_DebugServer::openOcdLoadsTheProgram()
{
    const QString image = m_programs.firmware(u"firmware.elf"_s);
    QFile board(m_programs.directory() + u"/dummy.cfg"_s);
    QVERIFY(board.open(QIODevice::WriteOnly));
    board.write("adapter driver dummy\nadapter speed 1000\ntcl_port disabled\ntelnet_port disabled\n"
                "jtag newtap test tap -irlen 4 -expected-id 0\n"
                "target create test.cpu arm7tdmi -chain-position test.tap\n");
    board.close();
    LiveSession session(u"remote:127.0.0.1:$(Port);runTo=;resetCommand=poll;image="_s + image,
                        {{u"gdbServer"_s, u"openocd -c \"gdb_port $(Port)\" -f \"%1\""_s.arg(board.fileName())}});
    QVERIFY(session.start());
    QVERIFY2(session.events.text.contains(u"Open On-Chip Debugger"_s), qPrintable(session.events.text)); // its output
    QCOMPARE(session.events.serious, QString());
    QCOMPARE(childrenWith(u"openocd"_s).size(), 1);
    session.env->restart(); // by the reset command
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(childrenWith(u"openocd"_s).size(), 1);
    session.env->stop();
    QTRY_VERIFY(childrenWith(u"openocd"_s).isEmpty());
}

void tst_DebugServer::childrenOfTheServerEndWithIt()
{
    const QString wrapper = u"sh -c \"sleep 1000 & echo child $! >&2 && exec gdbserver --once 127.0.0.1:$(Port) "
                            "'$(Program)'\""_s;
    LiveSession session(u"remote:127.0.0.1:$(Port);image="_s + m_image, {{u"gdbServer"_s, wrapper}});
    QVERIFY(session.start());
    const int child = session.events.text.section(u"child "_s, 1).section(u'\n', 0, 0).toInt();
    QVERIFY(child > 0 && kill(child, 0) == 0);
    session.env->stop();
    QTRY_VERIFY(commandLine(QString::number(child)).isEmpty()); // it may stay a zombie where no process collects it
}

void tst_DebugServer::endOfTheServerFinishesTheProgram()
{
    LiveSession session(Served + u";image="_s + m_image);
    QVERIFY(session.start());
    kill(childrenWith(u"gdbserver"_s).value(0).toInt(), SIGKILL);
    QVERIFY(session.waitFor(Env::ProgramFinished));
    QVERIFY2(session.events.serious.contains(u"'gdbserver' has ended: "_s), qPrintable(session.events.serious));
    session.env->restart();
    QVERIFY(session.waitFor(Env::ProgramPaused));
}

void tst_DebugServer::failuresAreReported_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("message");
    QTest::newRow("not installed") << u"no-such-openocd -f board.cfg"_s << u"Cannot run 'no-such-openocd': "_s;
    QTest::newRow("ends early") << u"sh -c \"echo no probe was found >&2\""_s
                                << u"'sh' ended before gdb was connected: no probe was found"_s;
    QTest::newRow("opens no port") << u"sleep 1000"_s << u"'sleep' does not accept gdb at '127.0.0.1:"_s;
}

void tst_DebugServer::failuresAreReported()
{
    QFETCH(QString, server);
    QFETCH(QString, message);
    LiveSession session(u"remote:127.0.0.1:$(Port);timeLimit=1;image="_s + m_image, {{u"gdbServer"_s, server}});
    QVERIFY(!session.env->start(false));
    QVERIFY2(session.events.serious.startsWith(message), qPrintable(session.events.serious));
    QCOMPARE(session.env->programStatus(), Env::ProgramUnknown);
}

void tst_DebugServer::takenAddressIsReported()
{
    QTcpServer other;
    QVERIFY(other.listen(QHostAddress::LocalHost));
    const QString address = u"127.0.0.1:%1"_s.arg(other.serverPort());
    LiveSession session(u"remote:%1;server=sleep 1000;image=%2"_s.arg(address, m_image));
    QVERIFY(!session.env->start(false));
    QCOMPARE(session.events.serious,
             u"'sleep' cannot be started: another program uses its address '%1' already.\n"_s.arg(address));
}

void tst_DebugServer::waitCanBeStopped()
{
    LiveSession session(u"remote:127.0.0.1:$(Port);timeLimit=1000;server=sleep 1000;image="_s + m_image);
    QTimer look;
    QString label;
    connect(&look, &QTimer::timeout, this, [&] {
        auto *dialog = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        label = dialog->labelText();
        QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
    });
    look.start(1);
    QVERIFY(!session.env->start(false));
    QCOMPARE(label, u"Waiting for 'sleep'..."_s);
    QCOMPARE(session.events.serious, u"The wait for 'sleep' was stopped.\n"_s);
}

void tst_DebugServer::sessionEndedDuringTheWaitReportsNothing()
{
    LiveSession session(u"remote:127.0.0.1:$(Port);timeLimit=1000;server=sleep 1000;image="_s + m_image);
    QTimer::singleShot(200, this, [&] { session.env->stop(); });
    QVERIFY(!session.env->start(false));
    QCOMPARE(session.events.serious, QString());
}

void tst_DebugServer::coloursAreRemoved_data()
{
    QTest::addColumn<QList<QByteArray>>("blocks");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("none") << QList<QByteArray>{"a\nb"} << QByteArray("a\nb");
    QTest::newRow("colour and end") << QList<QByteArray>{"\x1b[32mstarted.\x1b[0m\n"} << QByteArray("started.\n");
    QTest::newRow("divided") << QList<QByteArray>{"a\x1b[3", "2mb", "\x1b", "[0mc"} << QByteArray("abc");
    QTest::newRow("other sequence") << QList<QByteArray>{"\x1b[2Kx"} << QByteArray("[2Kx");
}

void tst_DebugServer::coloursAreRemoved()
{
    QFETCH(QList<QByteArray>, blocks);
    QByteArray result;
    QByteArray incomplete;
    for (const QByteArray &block : blocks)
        result += withoutColours(block, &incomplete);
    QTEST(result, "text");
}

void tst_DebugServer::numbersAreRemoved_data()
{
    QTest::addColumn<QStringList>("blocks");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << QStringList{u"a\nb"_s} << u"a\nb"_s;
    QTest::newRow("one and several") << QStringList{u"a\n0x1f\n0x0 0x12\nb\n"_s} << u"a\nb\n"_s;
    QTest::newRow("divided") << QStringList{u"a\n0"_s, u"x1"_s, u"f 0x"_s, u"2\nb\n"_s} << u"a\nb\n"_s;
    QTest::newRow("begins like one") << QStringList{u"0x2"_s, u"0 is no memory\n"_s} << u"0x20 is no memory\n"_s;
    QTest::newRow("another number") << QStringList{u"0"_s, u" retries\n12\n"_s} << u"0 retries\n12\n"_s;
    QTest::newRow("of a terminal") << QStringList{u"0x1f 0x2\r\nb\r\n"_s} << u"b\r\n"_s;
    QTest::newRow("end of a line") << QStringList{u"at "_s, u"0x20\n0x21\n"_s, u"b: "_s, u"0x22"_s, u"\n"_s}
                                   << u"at 0x20\nb: 0x22\n"_s;
    QTest::newRow("empty lines") << QStringList{u"\n\n"_s} << u"\n\n"_s;
}

void tst_DebugServer::numbersAreRemoved()
{
    QFETCH(QStringList, blocks);
    QString result;
    OpenLine line;
    for (const QString &block : blocks)
        result += withoutNumbers(block, &line);
    QTEST(result, "text");
}

QTEST_MAIN(tst_DebugServer)
#include "tst_debugserver.moc"
