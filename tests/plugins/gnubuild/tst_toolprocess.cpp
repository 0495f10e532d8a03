#include "toolprocess.h"
#include <csignal>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <unistd.h>
using namespace Qt::StringLiterals;

class TestToolProcess : public QObject
{
    Q_OBJECT
private:
    QStringList m_lines;
    QList<bool> m_ends;

    std::unique_ptr<ToolProcess> newProcess(int grace = 50)
    {
        auto process = std::make_unique<ToolProcess>(grace);
        connect(process.get(), &ToolProcess::line, this, [this](const QString &line) { m_lines += line; });
        connect(process.get(), &ToolProcess::finished, this, [this](bool success) { m_ends += success; });
        return process;
    }
    static void startShell(ToolProcess &process, const QString &script)
    {
        process.start({u"/bin/sh"_s, {u"-c"_s, script}, u"/"_s, QProcessEnvironment::systemEnvironment()});
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_lines.clear();
        m_ends.clear();
    }

    void outputIsEmittedByLine_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("both channels") << u"echo one; echo two >&2"_s << QStringList{u"one"_s, u"two"_s};
        QTest::newRow("no line end") << u"printf 'a\\nb'"_s << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("empty lines") << u"printf '\\n\\n'"_s << QStringList{u""_s, u""_s};
        QTest::newRow("carriage return") << u"printf 'a\\r\\n'"_s << QStringList{u"a"_s};
        QTest::newRow("pieces") << u"printf gr; printf '\\303'; printf '\\274n\\n'"_s << QStringList{u"grün"_s};
    }

    void outputIsEmittedByLine()
    {
        QFETCH(QString, script);
        const auto process = newProcess();
        startShell(*process, script);
        QTRY_COMPARE(m_ends, QList<bool>{true});
        QTEST(m_lines, "lines");
    }

    void linesAreEmittedBeforeTheEnd()
    {
        const auto process = newProcess();
        startShell(*process, u"echo one; exec sleep 1000"_s);
        QTRY_COMPARE(m_lines, QStringList{u"one"_s});
        QVERIFY(process->isRunning());
    }

    void outputWithoutLineEndIsSplit()
    {
        const auto process = newProcess();
        startShell(*process, u"head -c 1000000 /dev/zero | tr '\\\\0' x"_s);
        QTRY_COMPARE(m_ends, QList<bool>{true});
        QVERIFY(m_lines.size() > 1);
        QCOMPARE(m_lines.join(QString()).size(), 1000000);
    }

    /// Also if its end comes when the rest has been read already.
    void longestLineIsNotSplit()
    {
        const auto process = newProcess();
        const QString script = u"import fcntl, os, struct, termios\n"
                               "os.write(1, b'x' * 65536)\n"
                               "while struct.unpack('i', fcntl.ioctl(1, termios.FIONREAD, b'0000'))[0]:\n"
                               "    pass\n"
                               "os.write(1, b'\\n')\n"_s;
        process->start({u"/usr/bin/python3"_s, {u"-c"_s, script}, u"/"_s, QProcessEnvironment::systemEnvironment()});
        QTRY_COMPARE_WITH_TIMEOUT(m_ends, QList<bool>{true}, 20000);
        QCOMPARE(m_lines, QStringList(QString(65536, u'x')));
    }

    void exitCodeOtherThanZeroIsAFailure()
    {
        const auto process = newProcess();
        startShell(*process, u"exit 3"_s);
        QTRY_COMPARE(m_ends, QList<bool>{false});
    }

    void missingProgramIsAFailureWithAMessage()
    {
        const auto process = newProcess();
        process->start({u"/no/such/program"_s, {}, u"/"_s, {}});
        QTRY_COMPARE(m_ends, QList<bool>{false});
        QVERIFY(m_lines.value(0).startsWith(u"Cannot run '/no/such/program': "_s));
    }

    void missingDirectoryIsAFailure()
    {
        const auto process = newProcess();
        process->start({u"/bin/true"_s, {}, u"/no/such/directory"_s, {}});
        QTRY_COMPARE(m_ends, QList<bool>{false});
    }

    void stopEndsTheProgram_data()
    {
        QTest::addColumn<QString>("script");
        QTest::newRow("a program that obeys") << u"echo; exec sleep 1000"_s;
        QTest::newRow("a program that does not") << u"trap '' TERM; echo; while :; do sleep 1; done"_s;
        QTest::newRow("a program that waits for one that does not")
            << u"setsid sh -c \"trap '' TERM; echo; while :; do sleep 1; done\"; true"_s;
        QTest::newRow("a program that cleans up") << u"trap 'exit 0' TERM; echo; while :; do sleep 0.01; done"_s;
    }

    void stopEndsTheProgram()
    {
        QFETCH(QString, script);
        const auto process = newProcess();
        startShell(*process, script);
        QTRY_COMPARE(m_lines.size(), 1);
        process->stop();
        process->stop();
        QTRY_COMPARE(m_ends, QList<bool>{false});
        QVERIFY(!process->isRunning());
    }

    void programRunsAgainAfterAStop()
    {
        const auto process = newProcess();
        startShell(*process, u"exec sleep 1000"_s);
        process->stop();
        QTRY_COMPARE(m_ends, QList<bool>{false});
        startShell(*process, u"true"_s);
        QTRY_COMPARE(m_ends, (QList<bool>{false, true}));
    }

    void destructorEmitsNothing()
    {
        auto process = newProcess();
        startShell(*process, u"trap '' TERM; echo; while :; do sleep 1; done"_s);
        QTRY_COMPARE(m_lines.size(), 1);
        process.reset();
        QCoreApplication::processEvents();
        QCOMPARE(m_ends, QList<bool>());
    }

    /// The build tool waits for its children, and then writes what it has built.
    void destructorLetsTheProgramEndAfterItsChildren()
    {
        const QTemporaryDir directory;
        auto process = newProcess(1000);
        startShell(
            *process,
            u"trap : TERM; setsid sh -c \"trap '' TERM; echo; while :; do sleep 1; done\"; touch '%1/written'"_s.arg(
                directory.path()));
        QTRY_COMPARE(m_lines.size(), 1);
        process.reset();
        QVERIFY(QFile::exists(directory.filePath(u"written"_s)));
    }

    void destructorEndsChildrenThatStay()
    {
        auto process = newProcess();
        startShell(
            *process,
            u"trap 'exit 0' TERM; setsid sh -c \"trap '' TERM; echo \\$\\$; while :; do sleep 1; done\" & wait"_s);
        QTRY_COMPARE(m_lines.size(), 1);
        const auto child = pid_t(m_lines.first().toInt());
        QCOMPARE(::kill(child, 0), 0);
        process.reset();
        const auto hasEnded = [child] { // it may be left to be collected
            QFile file(u"/proc/%1/stat"_s.arg(child));
            return !file.open(QIODevice::ReadOnly) || file.readAll().contains(") Z ");
        };
        QTRY_VERIFY(hasEnded());
    }

    void onlyLeadersOfGroupsAreFound_data()
    {
        QTest::addColumn<bool>("leads");
        QTest::newRow("leader") << true;
        QTest::newRow("in our group") << false;
    }
    void onlyLeadersOfGroupsAreFound()
    {
        QFETCH(bool, leads);
        QProcess child;
        if (leads)
            child.setChildProcessModifier([] { ::setpgid(0, 0); });
        child.start(u"sleep"_s, {u"100"_s});
        QVERIFY(child.waitForStarted());
        QCOMPARE(childGroups(QCoreApplication::applicationPid()).contains(child.processId()), leads);
        child.kill();
        child.waitForFinished();
    }
};

QTEST_GUILESS_MAIN(TestToolProcess)
#include "tst_toolprocess.moc"
