// The examples: the format of their project files, and builds and runs of copies.
#include "fakeproject.h"
#include "gnubuild.h"
#include "iprojectimpl.h"
#include "project.h"
#include "projectfile.h"
#include "projectworkspace.h"
#include <filesystem>
#include <QRegularExpression>
#include <QTest>
using namespace Qt::StringLiterals;

namespace {

const QString Examples = QStringLiteral(VARNEL_SOURCE_DIR) + u"/examples"_s;

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A project of the copy and its build environment.
struct Example
{
    explicit Example(const QString &path) : events(new RecordingEvents)
    {
        project.load(path);
        environment.reset(
            new GnuBuild(*findToolChain(project.buildEnvironment()), std::make_shared<QList<GnuProject *>>()));
        environment->initialise(events.get(), project.buildEnvironmentOption());
        const auto interface = queryInterface<IProject>(new IProjectImpl(&project));
        environment->setProject(interface.get());
    }

    Project project{QString(), QString()};
    InterfacePtr<RecordingEvents> events;
    InterfacePtr<GnuBuild> environment;

    bool build(const QStringList &configurations = {QStringLiteral("Debug")})
    {
        events->text.clear();
        environment->build(configurations, false);
        return QTest::qWaitFor([this] { return !events->ends.isEmpty(); }, 120000) && events->ends.takeFirst();
    }
};

} // namespace

class TestExamples : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_directory;
    QString m_copy = m_directory.filePath(u"examples"_s);

    static void eachProject()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : {u"calculator"_s, u"thermostat"_s, u"morse"_s, u"tasks"_s, u"words"_s})
            QTest::newRow(qPrintable(name)) << name + u'/' + name + u".vnp"_s;
    }

    /// Reads the output of a program until it contains @p text; false after 60 s.
    static bool writes(QProcess &program, const QByteArray &text, QByteArray *output)
    {
        return QTest::qWaitFor(
            [&] {
                *output += program.readAll();
                return output->contains(text);
            },
            60000);
    }

    /// The contents of the programs and images of all configurations.
    static QMap<QString, QByteArray> programsIn(const QDir &directory)
    {
        QMap<QString, QByteArray> programs;
        for (const QString &configuration : {u"Debug"_s, u"Release"_s}) {
            const QDir outputs(directory.filePath(u"build/"_s + configuration));
            for (const QFileInfo &file : outputs.entryInfoList(QDir::Files)) {
                if (file.suffix().isEmpty() || QStringList{u"elf"_s, u"hex"_s, u"bin"_s}.contains(file.suffix()))
                    programs.insert(configuration + u'/' + file.fileName(), bytesOf(file.filePath()));
            }
        }
        return programs;
    }

private Q_SLOTS:
    void initTestCase()
    {
        std::filesystem::copy(Examples.toStdString(), m_copy.toStdString(), std::filesystem::copy_options::recursive);
    }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void savedProjectsAreUnchanged_data() { eachProject(); }

    void savedProjectsAreUnchanged()
    {
        QFETCH(QString, name);
        Example example(m_copy + u'/' + name);
        QVERIFY(example.project.openedOK());
        QVERIFY(!example.project.isModified()); // setProject() adds no properties
        for (const ProjectFile *file : example.project.files({}, nullptr))
            QVERIFY2(QFileInfo::exists(example.project.absolutePath(file->path())), qPrintable(file->path()));
        QVERIFY(example.project.save());
        QCOMPARE(bytesOf(m_copy + u'/' + name), bytesOf(Examples + u'/' + name));
    }

    void savedWorkspacesAreUnchanged_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("projects");
        QTest::newRow("two processors") << u"twoprocessors.vnw"_s << 2;
        QTest::newRow("thermostat") << u"thermostat/thermostat.vnw"_s << 1;
        QTest::newRow("calculator") << u"calculator/calculator.vnw"_s << 1;
        QTest::newRow("tasks") << u"tasks/tasks.vnw"_s << 1;
        QTest::newRow("words") << u"words/words.vnw"_s << 1;
    }

    void savedWorkspacesAreUnchanged()
    {
        QFETCH(QString, name);
        QFETCH(int, projects);
        ProjectWorkspace workspace{QString()};
        QVERIFY(workspace.load(m_copy + u'/' + name));
        QCOMPARE(workspace.count(), projects);
        for (int i = 0; i < projects; ++i)
            QVERIFY(workspace.project(i)->openedOK());
        QVERIFY(workspace.save());
        QCOMPARE(bytesOf(m_copy + u'/' + name), bytesOf(Examples + u'/' + name));
    }

    void examplesBuildWithoutWarnings_data() { eachProject(); }

    void examplesBuildWithoutWarnings()
    {
        QFETCH(QString, name);
        std::filesystem::remove_all(QFileInfo(m_copy + u'/' + name).dir().filePath(u"build"_s).toStdString());
        Example example(m_copy + u'/' + name);
        const QStringList configurations = {u"Debug"_s, u"Release"_s};
        QVERIFY2(example.build(configurations), qPrintable(example.events->text));
        QVERIFY2(!example.events->text.contains(u"arning"_s), qPrintable(example.events->text));
        for (const QString &configuration : configurations)
            QVERIFY(example.environment->isUpToDate(configuration));
        QVERIFY(example.build(configurations));
        QVERIFY(!example.events->text.contains(u"Compiling"_s));
    }

    void makeBuildsTheSamePrograms_data() { eachProject(); }

    void makeBuildsTheSamePrograms()
    {
        QFETCH(QString, name);
        const QDir directory = QFileInfo(m_copy + u'/' + name).dir();
        Example example(m_copy + u'/' + name);
        QVERIFY2(example.build({u"Debug"_s, u"Release"_s}), qPrintable(example.events->text));
        const QMap<QString, QByteArray> expected = programsIn(directory);
        QVERIFY(expected.size() >= 2);
        std::filesystem::remove_all(directory.filePath(u"build"_s).toStdString());
        const QList<GeneratedFile> files = example.environment->makefiles();
        QCOMPARE(files.size(), 1);
        QFile makefile(files[0].path);
        QVERIFY(makefile.open(QIODevice::WriteOnly));
        makefile.write(files[0].text.toUtf8());
        makefile.close();
        QCOMPARE(QProcess::execute(u"make"_s, {u"-s"_s, u"-j2"_s, u"-C"_s, directory.path()}), 0);
        QCOMPARE(programsIn(directory).keys(), expected.keys());
        QVERIFY(programsIn(directory) == expected);
        QVERIFY(makefile.remove());
    }

    void changedHeaderCompilesItsIncluders()
    {
        Example example(m_copy + u"/thermostat/thermostat.vnp"_s);
        QVERIFY(example.build());
        QFile header(m_copy + u"/thermostat/room.h"_s);
        QVERIFY(header.open(QIODevice::Append));
        header.write("/* edited */\n");
        header.close();
        QVERIFY(example.build());
        QCOMPARE(example.events->text.count(u"Compiling "_s), 2);
        QVERIFY(example.events->text.contains(u"Compiling main.c\n"_s));
        QVERIFY(example.events->text.contains(u"Compiling room.c\n"_s));
    }

    void calculatorEvaluatesExpressions()
    {
        Example example(m_copy + u"/calculator/calculator.vnp"_s);
        QVERIFY(example.build({u"Debug"_s}));
        QProcess program;
        program.start(m_copy + u"/calculator/build/Debug/calculator"_s,
                      {u"x=2^3^2"_s, u"-(x - 500) / 4 * 2"_s, u"1 / 0"_s, u"(1"_s});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.readAll(),
                 "x=2^3^2 = 512\n-(x - 500) / 4 * 2 = -6\n1 / 0: division by zero\n(1: ')' is missing\n");
        QCOMPARE(program.exitCode(), 2);
    }

    void filesOfTheBoardPageBuildAProgram()
    {
        const QString page =
            QString::fromUtf8(bytesOf(QStringLiteral(VARNEL_SOURCE_DIR) + u"/docs/your-own-board.md"_s));
        static const QRegularExpression block(uR"(as `([a-z.]+)`[^`]*(?:`[^`\n]+`[^`]*)*?```[a-z]+\n(.*?)```)"_s,
                                              QRegularExpression::DotMatchesEverythingOption);
        const QString directory = m_directory.filePath(u"board"_s);
        QVERIFY(QDir().mkpath(directory));
        QStringList names;
        for (const auto &match : block.globalMatch(page)) {
            QFile file(directory + u'/' + match.captured(1));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(match.captured(2).toUtf8());
            names += match.captured(1);
        }
        QCOMPARE(names, (QStringList{u"board.ld"_s, u"startup.c"_s, u"main.c"_s, u"board.vnp"_s}));
        Example example(directory + u"/board.vnp"_s);
        QVERIFY(example.project.openedOK());
        QVERIFY2(example.build(), qPrintable(example.events->text));
        QVERIFY2(!example.events->text.contains(u"arning"_s), qPrintable(example.events->text));
        QVERIFY2(example.events->text.contains(u"\nflash: "_s), qPrintable(example.events->text)); // its use
        QVERIFY(bytesOf(directory + u"/build/Debug/board.elf"_s).startsWith("\177ELF"));
    }

    void firmwareRunsOnTheBoard_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("thermostat") << u"thermostat"_s
                                    << QByteArray("thermostat\nroom 15.3 target 21.0 power 100.0 %\n");
        QTest::newRow("morse") << u"morse"_s << QByteArray("morse\n-.-. --.-");
        QTest::newRow("tasks") << u"tasks"_s << QByteArray("tasks\nchanges 1\nchanges 2\nchanges 3\n");
        QTest::newRow("words") << u"words"_s << QByteArray(" 3. regulator     81.8 %\n 4. thermometer  100.0 %\n");
    }

    void firmwareRunsOnTheBoard()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, expected);
        Example example(m_copy + u"/%1/%1.vnp"_s.arg(name));
        QVERIFY(example.build());
        QProcess board;
        board.setProcessChannelMode(QProcess::MergedChannels);
        board.start(u"qemu-system-arm"_s,
                    {u"-M"_s, u"mps2-an385"_s, u"-display"_s, u"none"_s, u"-monitor"_s, u"none"_s, u"-serial"_s,
                     u"stdio"_s, u"-kernel"_s, m_copy + u"/%1/build/Debug/%1.elf"_s.arg(name)});
        QByteArray output;
        const bool wrote = writes(board, expected, &output);
        board.kill();
        board.waitForFinished();
        QVERIFY2(wrote, output.constData());
    }
};

QTEST_GUILESS_MAIN(TestExamples)
#include "tst_examples.moc"
