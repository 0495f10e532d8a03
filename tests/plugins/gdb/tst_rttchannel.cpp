#include "foreignboard.h"
#include "targetconsole.h"
#include <QLineEdit>
#include <QSignalSpy>

using Env = IExecutionEnvironment;

namespace {
const QString Ready = u"ready: 0123456789abcdefghijklmnopqrstuvwxyz\n"_s;
}

/// Text that a program exchanges with the target console through its memory.
class RttChannelTest : public QObject
{
    Q_OBJECT
private:
    Programs m_programs;
    QString m_image;

    [[nodiscard]] QString option(const QString &more = u";rtt=1"_s) const
    {
        return u"qemu:mps2-an385;image="_s + m_image + more;
    }
    /// The target console of a session.
    static std::unique_ptr<TargetConsole> console(const LiveSession &session)
    {
        const QList<QWidget *> widgets = session.get<IDockExtension>()->widgets();
        return std::unique_ptr<TargetConsole>(qobject_cast<TargetConsole *>(widgets.first()));
    }
    static void enter(const TargetConsole &console, const QString &text)
    {
        auto *input = console.findChild<QLineEdit *>();
        QTest::keyClicks(input, text);
        QTest::keyClick(input, Qt::Key_Return);
    }
    /// The commands that were sent to gdb.
    static QStringList sent(const QSignalSpy &dialogue)
    {
        QStringList lines;
        for (const QList<QVariant> &line : dialogue) {
            if (line[1].toBool())
                lines.append(line[0].toString());
        }
        return lines;
    }
    static bool run(LiveSession &session)
    {
        session.env->run();
        return session.waitFor(Env::ProgramRunning);
    }
    static bool pause(LiveSession &session)
    {
        session.env->pause();
        return session.waitFor(Env::ProgramPaused);
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_image = m_programs.rtt(u"rtt.elf"_s);
        QVERIFY(!m_image.isEmpty());
    }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void cleanup() { QTRY_COMPARE(ownChildren(), QStringList()); }

    void textIsExchangedWhileTheBoardRuns()
    {
        LiveSession session(option());
        const auto window = console(session);
        QVERIFY(session.start());
        QVERIFY(run(session));
        const QSignalSpy dialogue(session.env->session()->gdb(), &MiConnection::dialogue);
        QTRY_COMPARE(window->text(), Ready);
        enter(*window, u"hello, target, over the end"_s);
        QTRY_COMPARE(window->text(), Ready + u"hello, target, over the end\nhello, target, over the end!"_s);
        QCOMPARE(sent(dialogue), QStringList()); // the program was not disturbed
        QVERIFY(!session.events.statuses.contains(Env::ProgramPaused));
        QCOMPARE(session.events.text, closedConsole());
    }

    /// The window then does not send it to the serial port as well.
    void inputIsTakenOnlyIfThereIsABufferForIt()
    {
        LiveSession session(option({}));
        QVERIFY(session.start());
        RttChannel channel(session.env->session());
        QByteArray output;
        connect(&channel, &RttChannel::output, this, [&output](const QByteArray &bytes) { output += bytes; });
        channel.begin(true, boardRegions(u"mps2-an385"_s));
        QVERIFY(!channel.write("early\n"));
        QVERIFY(run(session));
        QTRY_COMPARE(QString::fromUtf8(output), Ready);
        QVERIFY(channel.write("now\n"));
        QTRY_VERIFY2(output.endsWith("now!"), output.constData());
        session.env->stop();
        QVERIFY(!channel.write("late\n"));
    }

    void textIsReadAgainAfterARestart()
    {
        LiveSession session(option());
        const auto window = console(session);
        QVERIFY(session.start());
        for (int i = 0; i < 2; ++i) {
            QVERIFY(run(session));
            QTRY_COMPARE(window->text(), Ready);
            session.env->restart();
            QVERIFY(session.waitFor(Env::ProgramPaused));
            QCOMPARE(window->text(), QString());
        }
    }

    void programThatResetsItselfIsFoundAgain()
    {
        LiveSession session(option());
        const auto window = console(session);
        QVERIFY(session.start());
        QVERIFY(run(session));
        QTRY_COMPARE(window->text(), Ready);
        QVERIFY(pause(session));
        QCOMPARE(session.evaluate(u"block.identifier[0]=0"_s), u"0 '\\000'"_s);
        QCOMPARE(session.evaluate(u"$pc=(unsigned)reset"_s).isEmpty(), false);
        QVERIFY(run(session));
        QTRY_COMPARE(window->text(), Ready + Ready);
    }

    void hostileValuesAreNotUsed_data()
    {
        QTest::addColumn<QString>("damage");
        QTest::addColumn<QString>("repair");
        QTest::addColumn<bool>("reported");
        const auto row = [](const char *name, const QString &field, const QString &bad, const QString &good,
                            bool reported = true) {
            QTest::newRow(name) << field + u'=' + bad << field + u'=' + good << reported;
        };
        row("size", u"block.buffers[0].size"_s, u"0xffffffff"_s, u"16"_s);
        row("no size", u"block.buffers[0].size"_s, u"0"_s, u"16"_s);
        row("a device", u"block.buffers[0].start"_s, u"(char*)0x40004000"_s, u"up"_s);
        row("no memory", u"block.buffers[0].start"_s, u"(char*)0x60000000"_s, u"up"_s);
        row("over the end of memory", u"block.buffers[0].start"_s, u"(char*)0x203ffff8"_s, u"up"_s);
        row("write offset", u"block.buffers[0].write"_s, u"16"_s, u"0"_s);
        row("read offset", u"block.buffers[0].read"_s, u"0x80000000"_s, u"0"_s);
        row("input", u"block.buffers[2].start"_s, u"(char*)0x40004000"_s, u"down"_s);
        row("input offset", u"block.buffers[2].read"_s, u"8"_s, u"0"_s);
        row("number of buffers", u"block.ups"_s, u"-1"_s, u"2"_s, false);
    }
    void hostileValuesAreNotUsed()
    {
        QFETCH(QString, damage);
        QFETCH(QString, repair);
        QFETCH(bool, reported);
        LiveSession session(option());
        const auto window = console(session);
        QVERIFY(session.start());
        const auto breakpoints = session.get<IBreakpoints>();
        const int line = Programs::lineOf(u"rtt.c"_s, u"const char *text ="_s);
        QCOMPARE(breakpoints->setBreakpoint(Programs::source(u"rtt.c"_s), line, BreakpointEnabled), 0);
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
        QCOMPARE(breakpoints->setBreakpoint(Programs::source(u"rtt.c"_s), line, BreakpointRemoved), 0);
        QVERIFY(!session.evaluate(damage).startsWith(u"error"_s));
        const QSignalSpy output(session.env->session(), &GdbSession::output);
        if (reported)
            QTRY_VERIFY(session.events.text.contains(u"has invalid values and is not used.\n"_s));
        else
            QTest::qWait(200); // RAM is searched meanwhile
        QCOMPARE(session.events.text.count(u"invalid values"_s), qsizetype(reported));
        QCOMPARE(output.size(), 0);
        enter(*window, u"x"_s); // to the serial port
        QVERIFY(!session.evaluate(repair).startsWith(u"error"_s));
        QVERIFY(run(session));
        QTRY_COMPARE(window->text(), u"x\n"_s + Ready);
    }

    void invalidValuesAreReportedOnce()
    {
        LiveSession session(option({}));
        QVERIFY(session.start());
        session.env->runTo(Programs::source(u"rtt.c"_s), Programs::lineOf(u"rtt.c"_s, u"const char *text ="_s));
        QVERIFY(session.waitFor(Env::ProgramPaused));
        QVERIFY(!session.evaluate(u"block.buffers[0].size=0"_s).startsWith(u"error"_s));
        RttChannel channel(session.env->session());
        const QSignalSpy messages(&channel, &RttChannel::message);
        channel.begin(true, boardRegions(u"mps2-an385"_s));
        QTRY_COMPARE(messages.size(), 1);
        session.env->session()->targetChanged(); // it searches again
        QTest::qWait(700);
        QCOMPARE(messages.size(), 1);
    }

    void nothingIsReadUnlessItIsWanted()
    {
        LiveSession session(option(QString()));
        const auto window = console(session);
        QVERIFY(session.start());
        QVERIFY(run(session));
        QTest::qWait(300);
        QCOMPARE(window->text(), QString());
        QVERIFY(pause(session));
        QCOMPARE(session.evaluate(u"block.buffers[0].read"_s), u"0"_s); // untouched
        QCOMPARE(session.evaluate(u"block.buffers[0].write"_s), u"15"_s);
    }

    void remoteProgramIsReadWhileItIsPaused()
    {
        ForeignBoard board(m_image);
        QTRY_VERIFY(board.isUp());
        LiveSession session(u"remote:%1;rtt=1;image=%2"_s.arg(board.address(), m_image));
        const auto window = console(session);
        QVERIFY(session.start());
        QString expected = Ready.first(15); // what the buffer has room for
        for (; expected.size() < Ready.size(); expected = Ready.first(std::min(expected.size() + 15, Ready.size()))) {
            QVERIFY(run(session));
            QTest::qWait(50);
            QVERIFY(pause(session));
            QTRY_COMPARE(window->text(), expected);
        }
        QVERIFY(run(session));
        QTest::qWait(50);
        QVERIFY(pause(session));
        QTRY_COMPARE(window->text(), Ready);
        enter(*window, u"hello"_s);
        QTRY_COMPARE(session.evaluate(u"block.buffers[2].write"_s), u"6"_s);
        QSignalSpy dialogue(session.env->session()->gdb(), &MiConnection::dialogue);
        do { // what is read before there is nothing more to be done
            dialogue.clear();
            QTest::qWait(200);
        } while (!dialogue.isEmpty());
        QTest::qWait(200);
        QCOMPARE(sent(dialogue), QStringList());
        QVERIFY(run(session));
        QTest::qWait(50);
        QVERIFY(pause(session));
        QTRY_COMPARE(window->text(), Ready + u"hello\nhello!"_s);
    }

    void attachedProgramWithoutSymbolsIsRead()
    {
        ForeignBoard board(m_image);
        QTRY_VERIFY(board.isUp());
        LiveSession session(u"remote:%1;rtt=1"_s.arg(board.address()),
                            {{u"gdbRegions"_s, u"Flash:0:4M:rom;RAM:0x20000000:8K:ram"_s}});
        const auto window = console(session);
        QTest::qWait(200); // the program fills the buffer
        QVERIFY(session.start(true));
        QTRY_COMPARE(window->text(), Ready.first(15));
    }

    void bufferForInputWithoutMemoryIsNotUsed()
    {
        LiveSession session(option());
        const auto window = console(session);
        QVERIFY(session.start());
        session.env->runTo(Programs::source(u"rtt.c"_s), Programs::lineOf(u"rtt.c"_s, u"const char *text ="_s));
        QVERIFY(session.waitFor(Env::ProgramPaused));
        QVERIFY(!session.evaluate(u"block.buffers[2].size=0"_s).startsWith(u"error"_s));
        QVERIFY(run(session));
        QTRY_COMPARE(window->text(), Ready);
        enter(*window, u"x"_s); // to the serial port
        QTest::qWait(100);
        QCOMPARE(window->text(), Ready + u"x\n"_s);
        QVERIFY(pause(session));
        QCOMPARE(session.evaluate(u"block.buffers[2].write"_s), u"0"_s);
    }

    void inputThatIsNotReadWaits()
    {
        LiveSession session(option());
        const auto window = console(session);
        QVERIFY(session.start());
        QVERIFY(run(session));
        QTRY_COMPARE(window->text(), Ready);
        QVERIFY(pause(session));
        enter(*window, u"0123456789"_s);
        QTRY_COMPARE(session.evaluate(u"(block.buffers[2].write + 1 - block.buffers[2].read) % 8"_s), u"0"_s); // full
        QVERIFY(run(session));
        QTRY_COMPARE(window->text(), Ready + u"0123456789\n0123456789!"_s);
    }
};

QTEST_MAIN(RttChannelTest)
#include "tst_rttchannel.moc"
