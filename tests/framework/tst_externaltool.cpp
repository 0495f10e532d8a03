#include "externaltool.h"
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <QTest>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// Starts real programs and compares the output that the user sees.
class ExternalToolTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<ExternalTool> m_tool;
    QString m_output;
    QStringList m_running;

    ExternalTool &tool(const QString &command, const QString &arguments = {}, const QString &initialDir = {})
    {
        m_tool = std::make_unique<ExternalTool>(
            ToolEntry{.name = u"name"_s, .command = command, .arguments = arguments, .initialDir = initialDir});
        connect(m_tool.get(), &ExternalTool::output, this, [this](const QString &text) { m_output += text; });
        connect(m_tool.get(), &ExternalTool::runningChanged, this,
                [this](bool running) { m_running << (running ? u"runs"_s : u"ended"_s); });
        return *m_tool;
    }

    /// A shell script, for programs that need blanks and quotes in their text.
    QString script(const QByteArray &text)
    {
        const QString path = m_directory->filePath(u"script"_s);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write("#!/bin/sh\n" + text + '\n') < 0)
            qWarning("Cannot write the script");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }

    bool ends() const
    {
        return QTest::qWaitFor([this] { return !m_tool->isRunning(); }, 20'000);
    }

    /// Whether the process ends while nothing but its end is waited for, so that no timer can stop it.
    [[nodiscard]] bool endsWithoutEvents() const
    {
        const int process = int(::syscall(SYS_pidfd_open, pid_t(m_tool->processId()), 0));
        pollfd end{process, POLLIN, 0};
        const bool ended = process < 0 ? errno == ESRCH : ::poll(&end, 1, 20'000) == 1;
        ::close(process);
        return ended;
    }

    /// What the program printed between the first and the last line.
    [[nodiscard]] QString printed() const { return m_output.section(u'\n', 1, -3); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_output.clear();
        m_running.clear();
    }
    void cleanup() { m_tool.reset(); }

    void macrosAreExpanded_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none") << u"-c all"_s << u"-c all"_s;
        QTest::newRow("one") << u"-f $(FilePath)"_s << u"-f /a/b.c"_s;
        QTest::newRow("twice") << u"$(FilePath)$(FilePath)"_s << u"/a/b.c/a/b.c"_s;
        QTest::newRow("empty value") << u"[$(ProjectDir)]"_s << u"[]"_s;
        QTest::newRow("unknown name stays") << u"$(Other)"_s << u"$(Other)"_s;
        QTest::newRow("other case stays") << u"$(filepath)"_s << u"$(filepath)"_s;
        QTest::newRow("not closed") << u"$(FilePath"_s << u"$(FilePath"_s;
        QTest::newRow("a value with a macro of a later name") << u"$(A)"_s << u"/a/b.c"_s;
        QTest::newRow("a value with a macro of an earlier name") << u"$(Z)"_s << u"$(A)"_s;
    }
    void macrosAreExpanded()
    {
        QFETCH(QString, text);
        const ExternalTool::Macros macros{
            {u"FilePath"_s, u"/a/b.c"_s}, {u"ProjectDir"_s, {}}, {u"A"_s, u"$(FilePath)"_s}, {u"Z"_s, u"$(A)"_s}};
        QTEST(expandMacros(text, macros), "expected");
    }

    void aRunIsReportedFromStartToEnd()
    {
        QVERIFY(tool(u"/bin/echo"_s, u"one  two"_s).execute({}));
        QVERIFY(ends());
        QCOMPARE(m_output, u"Running '/bin/echo one  two'...\none two\nProcess '/bin/echo' exited normally (0)\n"_s);
        QCOMPARE(m_running, (QStringList{u"runs"_s, u"ended"_s}));
    }

    void argumentsAreDividedAtBlanks_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("printed");
        QTest::newRow("no quoting") << u"\"a b\" 'c d'"_s << u"[\"a][b\"]['c][d']"_s;
        QTest::newRow("a value with a blank is two arguments") << u"$(ProjectDir)"_s << u"[/my][project]"_s;
        QTest::newRow("an empty value is no argument") << u"a $(FilePath) b"_s << u"[a][b]"_s;
        QTest::newRow("an unknown macro") << u"$(Unknown)"_s << u"[$(Unknown)]"_s;
        QTest::newRow("other white space does not divide") << u"a\tb"_s << u"[a\tb]"_s;
        QTest::newRow("blanks around") << u"  a  "_s << u"[a]"_s;
    }
    void argumentsAreDividedAtBlanks()
    {
        QFETCH(QString, arguments);
        tool(script("printf '[%s]' \"$@\""), arguments)
            .execute({{u"ProjectDir"_s, u"/my project"_s}, {u"FilePath"_s, {}}});
        QVERIFY(ends());
        QTEST(printed(), "printed");
    }

    void theFirstLineShowsTheExpandedArguments()
    {
        tool(u"/bin/true"_s, u"$(FileName) %1"_s).execute({{u"FileName"_s, u"a.tar"_s}});
        QVERIFY(ends());
        QCOMPARE(m_output.section(u'\n', 0, 0), u"Running '/bin/true a.tar %1'..."_s);
    }

    void macrosInTheCommandAreNotExpanded()
    {
        QVERIFY(!tool(u"$(FilePath)"_s).execute({{u"FilePath"_s, u"/bin/true"_s}}));
        QCOMPARE(m_output, u"Running '$(FilePath) '...\nCould not start process\n"_s);
    }

    void itRunsInTheInitialDirectory()
    {
        const QString path = QFileInfo(m_directory->path()).canonicalFilePath();
        tool(u"/bin/pwd"_s, {}, u"$(ProjectDir)"_s).execute({{u"ProjectDir"_s, path}});
        QVERIFY(ends());
        QCOMPARE(printed(), path);
        tool(u"/bin/pwd"_s).execute({});
        m_output.clear();
        QVERIFY(ends());
        QCOMPARE(m_output.section(u'\n', 0, 0), QDir::currentPath());
    }

    void aMissingDirectoryIsNamed()
    {
        QVERIFY(!tool(u"/bin/pwd"_s, {}, u"/no/such"_s).execute({}));
        QCOMPARE(m_output, u"Running '/bin/pwd '...\nThe directory '/no/such' does not exist\n"
                           "Could not start process\n"_s);
        QVERIFY(!m_tool->isRunning());
    }

    void failedStartIsReportedOnce_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("missing") << u"/no/such/program"_s;
        QTest::newRow("no program") << u"/etc/passwd"_s;
        QTest::newRow("a directory") << u"/"_s;
        QTest::newRow("empty") << QString();
    }
    void failedStartIsReportedOnce()
    {
        QFETCH(QString, command);
        QVERIFY(!tool(command).execute({}));
        QVERIFY(!m_tool->isRunning());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(m_output, u"Running '%1 '...\nCould not start process\n"_s.arg(command));
        QCOMPARE(m_running.value(m_running.size() - 1, u"ended"_s), u"ended"_s);
        m_tool->setEntry({.name = u"name"_s, .command = u"/bin/true"_s});
        QVERIFY(m_tool->execute({})); // a later start is possible
        QVERIFY(ends());
    }

    void toolCanBeStartedAgainWhenItsEndIsReported_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("it has ended") << u"/bin/true"_s;
        QTest::newRow("it could not be started") << u"/no/such/program"_s;
    }
    void toolCanBeStartedAgainWhenItsEndIsReported()
    {
        QFETCH(const QString, command);
        ExternalTool &first = tool(command);
        bool again = false;
        connect(&first, &ExternalTool::runningChanged, this, [&](bool running) {
            if (running || std::exchange(again, true))
                return;
            QVERIFY(!first.isRunning());
            first.setEntry({.name = u"name"_s, .command = u"/bin/echo"_s, .arguments = u"again"_s});
            first.execute({});
        });
        first.execute({});
        QTRY_VERIFY(m_output.contains(u"\nagain\n"_s));
        QVERIFY(ends());
    }

    void aSecondStartIsRefusedSilently()
    {
        QVERIFY(tool(u"/bin/sleep"_s, u"30"_s).execute({}));
        const QString output = m_output;
        QVERIFY(!m_tool->execute({}));
        QCOMPARE(m_output, output);
        m_tool->stop();
        QVERIFY(ends());
        QVERIFY(m_tool->execute({}));
        m_tool->stop();
        QVERIFY(ends());
    }

    void bothChannelsAreShownInTheirOrder()
    {
        tool(script("echo one\necho two >&2\necho three")).execute({});
        QVERIFY(ends());
        QCOMPARE(printed(), u"one\ntwo\nthree"_s);
    }

    void toolHasNoInput()
    {
        tool(u"/bin/cat"_s).execute({});
        QVERIFY(ends());
        QCOMPARE(m_output, u"Running '/bin/cat '...\nProcess '/bin/cat' exited normally (0)\n"_s);
    }

    void theExitStatusIsShown()
    {
        const QString command = script("exit 3");
        tool(command).execute({});
        QVERIFY(ends());
        QVERIFY(m_output.endsWith(u"\nProcess '%1' exited normally (3)\n"_s.arg(command)));
    }

    void aCrashIsReported()
    {
        const QString command = script("kill -SEGV $$");
        tool(command).execute({});
        QVERIFY(ends());
        QVERIFY(m_output.endsWith(u"\nProcess '%1' exited prematurely\n"_s.arg(command)));
    }

    void theLastLineOfTheOutputNeedsNoLineEnd()
    {
        tool(u"/bin/echo"_s, u"-n no end"_s).execute({});
        QVERIFY(ends());
        QCOMPARE(m_output, u"Running '/bin/echo -n no end'...\nno end\nProcess '/bin/echo' exited normally (0)\n"_s);
    }

    void aCharacterMayArriveInPieces()
    {
        const QString done = m_directory->filePath(u"go"_s);
        tool(script("printf 'x\\303'; while [ ! -e go ]; do sleep 0.01; done; printf '\\244y'"), {},
             m_directory->path())
            .execute({});
        QTRY_VERIFY(m_output.endsWith(u'x'));
        QVERIFY(QFile(done).open(QIODevice::WriteOnly));
        QVERIFY(ends());
        QCOMPARE(printed(), u"x\u00e4y"_s);
    }

    void zerosAndInvalidCharactersAreShown()
    {
        tool(script("printf 'a\\000b\\377c'")).execute({});
        QVERIFY(ends());
        QCOMPARE(printed(), u"a"_s + QChar(0) + u'b' + QChar(0xfffd) + u'c');
    }

    void megabytesArriveWholeInLinesOfLimitedLength()
    {
        tool(script("head -c 3000000 /dev/zero | tr '\\000' x; echo; echo end")).execute({});
        QVERIFY(ends());
        const QStringList lines = printed().split(u'\n');
        QCOMPARE(lines.size(), 301);
        for (qsizetype i = 0; i < 300; ++i)
            QCOMPARE(lines[i], QString(ExternalTool::LongestLine, u'x'));
        QCOMPARE(lines.last(), u"end"_s);
    }

    void aLineOfTheGreatestLengthIsNotDivided()
    {
        tool(script("head -c 10000 /dev/zero | tr '\\000' x; echo; echo end")).execute({});
        QVERIFY(ends());
        QCOMPARE(printed(), QString(ExternalTool::LongestLine, u'x') + u"\nend"_s);
    }

    void endlessOutputIsCutOff()
    {
        QVERIFY(tool(u"/usr/bin/yes"_s).execute({}));
        QTRY_VERIFY_WITH_TIMEOUT(m_output.endsWith(u"y\nFurther output of '/usr/bin/yes' is not shown\n"_s), 20'000);
        QCOMPARE(m_output.count(u'\n'), ExternalTool::MostLines + 2);
        const qsizetype size = m_output.size();
        for (int i = 0; i < 20; ++i) // it continues to write
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCOMPARE(m_output.size(), size);
        m_tool->stop();
        QVERIFY(ends());
        QVERIFY(m_output.endsWith(u"is not shown\nProcess '/usr/bin/yes' exited prematurely\n"_s));
    }

    void aNewRunShowsItsOutputAgain()
    {
        QVERIFY(tool(u"/usr/bin/yes"_s).execute({}));
        QTRY_VERIFY_WITH_TIMEOUT(m_output.endsWith(u"is not shown\n"_s), 20'000);
        m_tool->stop();
        QVERIFY(ends());
        m_tool->setEntry({.name = u"name"_s, .command = u"/bin/echo"_s, .arguments = u"again"_s});
        m_output.clear();
        QVERIFY(m_tool->execute({}));
        QVERIFY(ends());
        QCOMPARE(printed(), u"again"_s);
    }

    void stoppingALaterRunRequestsItAgain()
    {
        tool(script("trap 'echo bye; exit' TERM\necho ready\nwhile :; do sleep 0.1; done"));
        for (int run = 0; run < 2; ++run) {
            m_output.clear();
            QVERIFY(m_tool->execute({}));
            QTRY_VERIFY(m_output.contains(u"ready"_s));
            m_tool->stop();
            QVERIFY(ends());
            QVERIFY2(m_output.contains(u"bye"_s), qPrintable(m_output));
        }
    }

    void stoppingEndsTheProcess()
    {
        tool(u"/bin/sleep"_s, u"30"_s).execute({});
        m_tool->stop();
        QVERIFY(ends());
        QCOMPARE(m_output, u"Running '/bin/sleep 30'...\nProcess '/bin/sleep' exited prematurely\n"_s);
    }

    void stoppingEndsTheChildProcesses()
    {
        tool(script("sleep 30 &\necho $!\nwait")).execute({});
        QTRY_COMPARE(m_output.count(u'\n'), 2);
        const int child = m_output.section(u'\n', 1, 1).toInt();
        QVERIFY(child > 1);
        m_tool->stop();
        QVERIFY(ends());
        QTRY_VERIFY(::kill(child, 0) != 0 || isZombie(child));
    }

    void aProcessThatIgnoresTheRequestIsKilledTheSecondTime()
    {
        tool(script("trap '' TERM\necho ready\nwhile :; do sleep 0.1; done")).execute({});
        QTRY_VERIFY(m_output.contains(u"ready"_s));
        m_tool->stop();
        m_tool->stop();
        QVERIFY(endsWithoutEvents());
        QVERIFY(ends());
        QVERIFY(m_output.endsWith(u"exited prematurely\n"_s));
    }

    void aProcessThatIgnoresTheRequestIsKilledAfterAWhile()
    {
        tool(script("trap '' TERM\necho ready\nwhile :; do sleep 0.1; done")).execute({});
        QTRY_VERIFY(m_output.contains(u"ready"_s));
        m_tool->stop();
        QVERIFY(ends());
    }

    void aChildThatIgnoresTheRequestIsKilledAfterAWhile()
    {
        tool(script("sh -c 'trap \"\" TERM; echo $$; while :; do sleep 0.1; done' &\nwait")).execute({});
        QTRY_COMPARE(m_output.count(u'\n'), 2);
        const int child = m_output.section(u'\n', 1, 1).toInt();
        QVERIFY(child > 1);
        m_tool->stop();
        QVERIFY(ends());
        QVERIFY(::kill(child, 0) == 0 && !isZombie(child));
        QTRY_VERIFY(::kill(child, 0) != 0 || isZombie(child));
    }

    /// Process group 0 would be that of the program itself.
    void stoppingBeforeTheStartSignalsNobody()
    {
        static int signalled = 0;
        const auto before = std::signal(SIGTERM, [](int) { ++signalled; });
        ExternalTool &echo = tool(u"/bin/echo"_s);
        connect(&echo, &ExternalTool::output, &echo, &ExternalTool::stop, Qt::SingleShotConnection);
        QVERIFY(echo.execute({}));
        QVERIFY(ends());
        std::signal(SIGTERM, before);
        QCOMPARE(signalled, 0);
    }

    void stoppingWithoutAProcessDoesNothing()
    {
        tool(u"/bin/true"_s).stop();
        QCOMPARE(m_output, QString());
    }

    void processKeepsRunningAfterItsToolIsDeleted()
    {
        tool(script("echo ready\nwhile [ ! -e go ]; do echo more; sleep 0.01; done; echo x > done; sleep 30"), {},
             m_directory->path())
            .execute({});
        QTRY_VERIFY(m_output.contains(u"ready"_s));
        const auto process = pid_t(m_tool->processId());
        m_tool.reset();
        QVERIFY(QFile(m_directory->filePath(u"go"_s)).open(QIODevice::WriteOnly));
        QTRY_VERIFY(QFile::exists(m_directory->filePath(u"done"_s)));
        QCOMPARE(::kill(-process, SIGKILL), 0);
        QTRY_VERIFY(::kill(process, 0) != 0); // and is not left as a zombie
    }

    void entryChangedDuringARunDoesNotChangeItsReport()
    {
        tool(u"/bin/sleep"_s, u"30"_s).execute({});
        m_tool->setEntry({.name = u"other"_s, .command = u"/bin/other"_s});
        m_tool->stop();
        QVERIFY(ends());
        QVERIFY(m_output.endsWith(u"Process '/bin/sleep' exited prematurely\n"_s));
    }

private:
    static bool isZombie(int process)
    {
        QFile file(u"/proc/%1/stat"_s.arg(process));
        return file.open(QIODevice::ReadOnly) && file.readAll().contains(") Z ");
    }
};

QTEST_GUILESS_MAIN(ExternalToolTest)
#include "tst_externaltool.moc"
