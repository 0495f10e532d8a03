#include "commandline.h"
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
class Recorder : public CommandLineTarget
{
public:
    void startServer(quint16 port) override { calls.append(u"server %1"_s.arg(port)); }
    void openProject(const QString &path) override { calls.append(u"project "_s + path); }
    void openWorkspace(const QString &path) override { calls.append(u"workspace "_s + path); }
    void openNamed(const QString &path) override { calls.append(u"named "_s + path); }

    QStringList calls;
};
} // namespace

class CommandLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void argumentsAreHandledInOrder_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<bool>("good");
        QTest::addColumn<QString>("calls");
        QTest::newRow("none") << QString() << true << QString();
        QTest::newRow("project") << u"-p /a/b.vnp"_s << true << u"project /a/b.vnp"_s;
        QTest::newRow("project, other form") << u"/p /a/b.vnp"_s << true << u"project /a/b.vnp"_s;
        QTest::newRow("workspace") << u"-w /a/b.vnw"_s << true << u"workspace /a/b.vnw"_s;
        QTest::newRow("workspace, other form") << u"/w /a/b.vnw"_s << true << u"workspace /a/b.vnw"_s;
        QTest::newRow("server") << u"-r 4000"_s << true << u"server 4000"_s;
        QTest::newRow("server, other form") << u"/r 4000"_s << true << u"server 4000"_s;
        QTest::newRow("server, then workspace") << u"-r 4000 -w /b.vnw"_s << true << u"server 4000, workspace /b.vnw"_s;
        QTest::newRow("two servers") << u"-r 1 -r 2"_s << true << u"server 1, server 2"_s;
        QTest::newRow("the port is no number") << u"-r abc"_s << true << u"server 0"_s;
        QTest::newRow("the port is hexadecimal") << u"-r 0x10"_s << true << u"server 0"_s;
        QTest::newRow("the port has a leading zero") << u"-r 010"_s << true << u"server 10"_s;
        QTest::newRow("the port is too large") << u"-r 70000"_s << true << u"server 0"_s;
        QTest::newRow("the port is negative") << u"-r -1"_s << true << u"server 0"_s;
        QTest::newRow("port lacks") << u"-r"_s << false << QString();
        QTest::newRow("project lacks") << u"-p"_s << false << QString();
        QTest::newRow("project lacks, other form") << u"/p"_s << false << QString();
        QTest::newRow("workspace lacks") << u"-w"_s << false << QString();
        QTest::newRow("project lacks behind a server") << u"-r 1 -p"_s << false << u"server 1"_s;
        QTest::newRow("what the server ate is looked at again") << u"-r -p /f"_s << true << u"server 0, project /f"_s;
        QTest::newRow("also as a workspace") << u"-r -w /f"_s << true << u"server 0, workspace /f"_s;
        QTest::newRow("but not as a server") << u"-r -r 5"_s << true << u"server 0"_s;
        QTest::newRow("what the server ate lacks its argument") << u"-r -p"_s << false << u"server 0"_s;
        QTest::newRow("a project may be called like an option") << u"-p /p"_s << true << u"project /p"_s;
        QTest::newRow("nothing after a workspace") << u"-w /a -p /b"_s << true << u"workspace /a"_s;
        QTest::newRow("nothing after a project") << u"-p /a -r 5 -w"_s << true << u"project /a"_s;
        QTest::newRow("an existing file") << u"/etc/passwd"_s << true << u"named /etc/passwd"_s;
        QTest::newRow("an existing directory") << u"/etc"_s << true << u"named /etc"_s;
        QTest::newRow("several") << u"/etc/passwd nothing /etc"_s << true << u"named /etc/passwd, named /etc"_s;
        QTest::newRow("files before and after an option")
            << u"/etc/passwd -w /a /etc"_s << true << u"named /etc/passwd, workspace /a"_s;
        QTest::newRow("a port is not a file") << u"-r /etc/passwd"_s << true << u"server 0"_s;
        QTest::newRow("a bare name of nothing is skipped") << u"main.c"_s << true << QString();
        QTest::newRow("unknown options are skipped") << u"-x --help -p /a"_s << true << u"project /a"_s;
        QTest::newRow("upper case is unknown") << u"-P /a -R 5"_s << true << QString();
        QTest::newRow("an argument behind a blank only") << u"-p/a -r5"_s << true << QString();
    }

    void argumentsAreHandledInOrder()
    {
        QFETCH(QString, arguments);
        QFETCH(bool, good);
        Recorder recorder;
        const QStringList all = u"varnel "_s.append(arguments).split(u' ', Qt::SkipEmptyParts);
        QCOMPARE(walkCommandLine(all, recorder), good);
        QTEST(recorder.calls.join(u", "_s), "calls");
    }

    void programNameIsNotReadAsAnOption()
    {
        Recorder recorder;
        QVERIFY(walkCommandLine({u"-p"_s, u"/a"_s}, recorder));
        QVERIFY(walkCommandLine({}, recorder));
        QVERIFY(recorder.calls.isEmpty());
    }

    void pathsAreMadeAbsolute()
    {
        const QTemporaryDir directory;
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(directory.path()));
        Recorder recorder;
        walkCommandLine({u"varnel"_s, u"-p"_s, u"a/b.vnp"_s}, recorder);
        walkCommandLine({u"varnel"_s, u"-w"_s, u"b.vnw"_s}, recorder);
        const QString here = QDir::currentPath();
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(recorder.calls,
                 (QStringList{u"project "_s + here + u"/a/b.vnp"_s, u"workspace "_s + here + u"/b.vnw"_s}));
    }

    void anEmptyPathStaysEmpty()
    {
        Recorder recorder;
        QVERIFY(walkCommandLine({u"varnel"_s, u"-w"_s, QString()}, recorder));
        QCOMPARE(recorder.calls, QStringList{u"workspace "_s});
    }

    void relativeNamesAreMadeAbsolute()
    {
        const QTemporaryDir directory;
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(directory.path()));
        QVERIFY(QDir().mkdir(u"src"_s));
        Recorder recorder;
        walkCommandLine({u"varnel"_s, u"src"_s}, recorder);
        const QString here = QDir::currentPath();
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(recorder.calls, QStringList(u"named "_s + here + u"/src"_s));
    }

    void helpAndVersionArePrinted_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("start");
        QTest::newRow("nothing") << QString() << QString();
        QTest::newRow("help") << u"--help"_s << u"Usage: varnel [OPTION]"_s;
        QTest::newRow("version") << u"--version"_s << u"Varnel 2.9\n"_s;
        QTest::newRow("the first one counts") << u"--version --help"_s << u"Varnel 2.9\n"_s;
        QTest::newRow("behind a file") << u"main.c --version"_s << u"Varnel 2.9\n"_s;
        QTest::newRow("as the name of a project") << u"-p --help"_s << QString();
        QTest::newRow("behind a project") << u"-p a.vnp --help"_s << QString();
        QTest::newRow("behind a workspace") << u"/w a.vnw --version"_s << QString();
        QTest::newRow("as the port") << u"-r --help"_s << QString();
        QTest::newRow("behind a port") << u"-r 1 --version"_s << u"Varnel 2.9\n"_s;
        QTest::newRow("other forms are unknown") << u"-h /help --HELP"_s << QString();
    }
    void helpAndVersionArePrinted()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, start);
        const QStringList all = u"varnel "_s.append(arguments).split(u' ', Qt::SkipEmptyParts);
        const QString answer = commandLineAnswer(all, u"2.9"_s);
        QCOMPARE(answer.isNull(), start.isNull());
        QVERIFY(answer.startsWith(start));
        for (const QString &option : {u"  -w FILE"_s, u"  -p FILE"_s, u"  -r PORT"_s})
            QCOMPARE(answer.contains(option), start.startsWith(u"Usage"));
    }

    void usageTextIsExact()
    {
        QCOMPARE(commandLineUsage(), u"Incorrect options were specified.\n\nUsage: varnel [option]\nOptions:\n"
                                     "-p <project file>\\Varnel opens the specified project\n"_s);
        QCOMPARE(commandLineUsage().count(u'\\'), 1);
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "tst_commandline.moc"
