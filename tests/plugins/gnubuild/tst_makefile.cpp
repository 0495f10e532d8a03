// Makefiles: their text, and what GNU make builds by them.
#include "buildfixture.h"
#include "makefile.h"
#include <filesystem>
using namespace Qt::StringLiterals;

namespace {

const QByteArray MainSource = "#include \"answer.h\"\nint main(void) { return answer() - 42; }\n";
const QByteArray AnswerSource = "#include \"answer.h\"\nint answer(void) { return ANSWER; }\n";
const QByteArray AnswerHeader = "#define ANSWER 42\nint answer(void);\n";

void addSample(BuildFixture &fixture)
{
    fixture.add(u"src/main.c"_s, MainSource);
    fixture.add(u"src/answer.c"_s, AnswerSource);
    fixture.write(u"src/answer.h"_s, AnswerHeader);
}

/// A project whose Makefiles are written and used.
struct MakeFixture : BuildFixture
{
    using BuildFixture::BuildFixture;

    /// The paths of the written files, the first of which is for make() below.
    QStringList generate()
    {
        QStringList paths;
        events->text.clear();
        for (const GeneratedFile &generated : environment->makefiles()) {
            QFile file(generated.path);
            if (file.open(QIODevice::WriteOnly) && file.write(generated.text.toUtf8()) > 0)
                paths += generated.path;
        }
        return paths;
    }

    /// Whether make succeeds with @p arguments, and has no two recipes for one target.
    bool make(const QStringList &arguments = {})
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setWorkingDirectory(directory.path());
        process.start(u"make"_s, QStringList(u"LC_ALL=C"_s) + arguments);
        const bool ended = process.waitForFinished(120000);
        output = QString::fromUtf8(process.readAll());
        return ended && process.exitCode() == 0 && !output.contains(u": warning: overriding"_s);
    }

    /// The sources that the last make has compiled.
    QStringList compiled() const
    {
        QStringList names;
        for (const QString &line : output.split(u'\n')) {
            const qsizetype source = line.indexOf(u" -c "_s);
            if (source >= 0 && line.contains(u" -o "_s))
                names += line.sliced(source + 4).section(u" -o "_s, 0, 0);
        }
        names.sort();
        return names;
    }

    bool runs(const QString &program) const { return QProcess::execute(path(program), {}) == 0; }

    QString output; ///< of the last make
};

/// The names of all files below @p directory.
QStringList filesIn(const QString &directory)
{
    QStringList names;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(directory.toStdString())) {
        if (entry.is_regular_file())
            names += QString::fromStdString(entry.path()).sliced(directory.size() + 1);
    }
    names.sort();
    return names;
}

} // namespace

class TestMakefile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void cleanup() { QCOMPARE(aliveInterfaces(), 0); }

    // Text

    void namesAreEscaped()
    {
        QCOMPARE(makeTarget(u"a b$c#d%e"_s), u"a\\ b$$c\\#d\\%e"_s);
        QCOMPARE(makePrerequisite(u"a b$c#d%e"_s), u"a\\ b$$c\\#d%e"_s);
        QCOMPARE(makeValue(u"-DX='$ #'"_s), u"-DX='$$ $(hash)'"_s);
    }

    void namesThatMakeCannotHandleAreFound_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("possible");
        for (const QString &name : {u"src/a b.c"_s, u"a+b-c_d.c"_s, u"$x#y%z.c"_s, u"ä (copy).c"_s, u"a~b"_s, u"a,b"_s})
            QTest::newRow(qPrintable(name)) << name << true;
        for (const QString &name :
             {u""_s, u"a*b"_s, u"a?"_s, u"[a]"_s, u"a:b"_s, u"a;b"_s, u"a=b"_s, u"a|b"_s, u"a\\b"_s, u"a&b"_s,
              u"it's"_s, u"\"a\""_s, u"a\nb"_s, u"a\tb"_s, u"~a"_s, u" a"_s, u"a "_s, u"lib(x)"_s})
            QTest::newRow(qPrintable(name)) << name << false;
    }

    void namesThatMakeCannotHandleAreFound()
    {
        QFETCH(QString, name);
        QFETCH(bool, possible);
        QCOMPARE(isPossibleMakeName(name), possible);
    }

    void firstLineNamesTheProject()
    {
        BuildFixture fixture;
        addSample(fixture);
        const QList<GeneratedFile> files = fixture.environment->makefiles();
        QCOMPARE(files.size(), 1);
        QCOMPARE(files[0].path, fixture.path(u"Makefile"_s));
        QCOMPARE(
            files[0].text.section(u'\n', 0, 0),
            u"# Makefile of the project 'demo', written by the command \"Generate Makefile\" from the project's options."_s);
        QCOMPARE(fixture.events->text, QString());
        QCOMPARE(fixture.environment->makefiles().value(0).text, files[0].text);
    }

    // Builds

    void makeBuildsTheProgramOnce()
    {
        MakeFixture fixture;
        addSample(fixture);
        QCOMPARE(fixture.generate().size(), 1);
        QVERIFY2(fixture.make(), qPrintable(fixture.output));
        QCOMPARE(fixture.compiled(), (QStringList{u"src/answer.c"_s, u"src/main.c"_s}));
        QVERIFY(fixture.runs(u"build/Debug/demo"_s));
        QVERIFY(fixture.make());
        QCOMPARE(fixture.output, u"make: Nothing to be done for 'all'.\n"_s);
    }

    void parallelAndDryRunsWork()
    {
        MakeFixture fixture;
        addSample(fixture);
        fixture.generate();
        QVERIFY2(fixture.make({u"-n"_s}), qPrintable(fixture.output));
        QCOMPARE(fixture.compiled().size(), 2);
        QVERIFY(!fixture.exists(u"build"_s));
        QVERIFY2(fixture.make({u"-j4"_s}), qPrintable(fixture.output));
        QVERIFY(fixture.runs(u"build/Debug/demo"_s));
    }

    void changedFilesAreCompiledAgain()
    {
        MakeFixture fixture;
        addSample(fixture);
        fixture.generate();
        QVERIFY(fixture.make());
        fixture.write(u"src/answer.h"_s, "#define ANSWER 43\nint answer(void);\n");
        QVERIFY(fixture.make());
        QCOMPARE(fixture.compiled(), (QStringList{u"src/answer.c"_s, u"src/main.c"_s}));
        fixture.write(u"src/answer.c"_s, "int answer(void) { return 42; }\n");
        QVERIFY(fixture.make());
        QCOMPARE(fixture.compiled(), QStringList{u"src/answer.c"_s});
        QVERIFY(fixture.runs(u"build/Debug/demo"_s));
        fixture.write(u"src/main.c"_s, "int answer(void);\nint main(void) { return answer() - 42; }\n");
        QFile::remove(fixture.path(u"src/answer.h"_s)); // nothing includes it any more
        QVERIFY2(fixture.make(), qPrintable(fixture.output));
    }

    void newOptionsBuildAgain()
    {
        MakeFixture fixture;
        addSample(fixture);
        fixture.generate();
        QVERIFY(fixture.make());
        fixture.project->set(PropertyKey::Defines, u"EXTRA"_s);
        fixture.generate();
        QVERIFY(fixture.make());
        QCOMPARE(fixture.compiled().size(), 2);
    }

    /// The dependencies of the objects that ninja has made are known to ninja only.
    void ninjaAndMakeCanBeUsedInTurn()
    {
        MakeFixture fixture;
        addSample(fixture);
        fixture.generate();
        QVERIFY(fixture.build());
        QVERIFY(fixture.make());
        fixture.write(u"src/answer.h"_s, "#define ANSWER 43\nint answer(void);\n");
        QVERIFY(fixture.make());
        QCOMPARE(fixture.compiled().size(), 2);
        QVERIFY(!fixture.runs(u"build/Debug/demo"_s));
        fixture.write(u"src/answer.h"_s, AnswerHeader);
        QVERIFY(fixture.build());
        QVERIFY(fixture.runs(u"build/Debug/demo"_s));
        fixture.write(u"src/answer.h"_s, "#define ANSWER 43\nint answer(void);\n");
        QVERIFY(fixture.make());
        QVERIFY(!fixture.runs(u"build/Debug/demo"_s));
    }

    void configurationsHaveTargetsOfTheirOwn()
    {
        MakeFixture fixture;
        addSample(fixture);
        fixture.project->set(PropertyKey::Optimisation, u"2"_s, u"Release"_s);
        fixture.generate();
        QVERIFY(fixture.make({u"Release"_s}));
        QVERIFY(fixture.exists(u"build/Release/demo"_s));
        QVERIFY(!fixture.exists(u"build/Debug"_s));
        QVERIFY(fixture.output.contains(u" -O2 "_s));
        QVERIFY(fixture.make());
        QVERIFY(fixture.exists(u"build/Debug/demo"_s));
        QVERIFY(fixture.make({u"clean-Debug"_s}));
        QVERIFY(fixture.exists(u"build/Release/demo"_s));
        QVERIFY(!fixture.exists(u"build/Debug/demo"_s));
    }

    void configurationsWithSimilarNamesHaveOptionsOfTheirOwn()
    {
        MakeFixture fixture;
        addSample(fixture);
        fixture.project->set(PropertyKey::Optimisation, u"2"_s, u"fast-1"_s);
        fixture.project->set(PropertyKey::Optimisation, u"3"_s, u"fast1"_s);
        fixture.project->set(PropertyKey::Optimisation, u"s"_s, u"fast_1"_s);
        fixture.generate();
        for (const auto &[name, option] : {std::pair(u"fast-1"_s, u" -O2 "_s), std::pair(u"fast1"_s, u" -O3 "_s),
                                           std::pair(u"fast_1"_s, u" -Os "_s)}) {
            QVERIFY(fixture.make({name}));
            QVERIFY2(fixture.output.contains(option), qPrintable(fixture.output));
            QVERIFY(fixture.exists(u"build/%1/demo"_s.arg(name)));
        }
    }

    void cleanRemovesOnlyWhatWasBuilt()
    {
        MakeFixture fixture;
        addSample(fixture);
        fixture.project->set(PropertyKey::PostBuild, u"true"_s);
        fixture.project->set(PropertyKey::OutputName, u"../outside"_s);
        fixture.generate();
        fixture.write(u"build/Debug/notes"_s, "");
        QVERIFY2(fixture.make(), qPrintable(fixture.output));
        QVERIFY(fixture.make({u"clean"_s}));
        QCOMPARE(filesIn(fixture.path(u"build"_s)), (QStringList{u"Debug/notes"_s, u"outside"_s}));
    }

    void oddNamesAreBuilt()
    {
        MakeFixture fixture;
        fixture.add(u"my main.c"_s,
                    "#include \"a b/x#y.h\"\nint other(void);\nint main(void) { return other() - X; }\n");
        fixture.write(u"a b/x#y.h"_s, "#define X 1\n");
        fixture.add(u"a$b%c (copy).c"_s, "int other(void) { return sizeof NAME == 5; }\n");
        fixture.project->set(PropertyKey::OutputName, u"my $prog#1"_s);
        fixture.project->store.values = {{u"Fast & 50%"_s, {}},
                                         {u"Debug 50%"_s, fixture.project->store.values[u"Debug"_s]}};
        fixture.project->set(PropertyKey::Defines, u"NAME=\"a $#\""_s, u"Debug 50%"_s);
        fixture.project->set(PropertyKey::PostBuild, u"echo \"$OUTPUT\" '#' $$ > post.txt"_s, u"Debug 50%"_s);
        fixture.generate();
        QVERIFY2(
            fixture.events->text.startsWith(u"The configuration 'Fast & 50%' of the project 'demo' is left out.\n"_s),
            qPrintable(fixture.events->text));
        QVERIFY2(fixture.make(), qPrintable(fixture.output));
        QVERIFY(fixture.runs(u"build/Debug 50%25/my $prog#1"_s));
        QVERIFY(fixture.read(u"post.txt"_s).startsWith("build/Debug 50%25/my $prog#1 # "));
        QVERIFY2(fixture.make({u"Debug 50%"_s}), qPrintable(fixture.output));
        QCOMPARE(fixture.compiled(), QStringList());
        fixture.write(u"a b/x#y.h"_s, "#define X 2\n");
        QVERIFY(fixture.make());
        QCOMPARE(fixture.compiled(), QStringList{u"'my main.c'"_s});
        QVERIFY(fixture.make({u"clean"_s}));
        QVERIFY(!fixture.exists(u"build/Debug 50%25/my $prog#1"_s));
    }

    void manyFilesAreLinked() // their names together are longer than an argument can be
    {
        constexpr int count = 600;
        MakeFixture fixture;
        fixture.project->set(PropertyKey::ToolPrefix, fixture.path(u"bin/"_s)); // a compiler that only creates files
        fixture.write(u"bin/gcc"_s, "#!/bin/sh\nwhile [ \"$1\" != -o ]; do shift; done\n: > \"$2\"\n", true);
        for (int i = 0; i < count; ++i)
            fixture.add(u"%1/%2.s"_s.arg(QString(220, u'd')).arg(i), {});
        fixture.generate();
        QVERIFY2(fixture.make({u"-j4"_s, u"-s"_s}), qPrintable(fixture.output.right(2000)));
        QVERIFY(fixture.exists(u"build/Debug/demo"_s));
        QVERIFY(fixture.read(u"build/Debug/make.rsp"_s).size() > 131072);
        QVERIFY(fixture.make({u"clean"_s, u"-s"_s}));
        QCOMPARE(filesIn(fixture.path(u"build"_s)), QStringList());
    }

    void commandsBeforeAndAfterTheBuildRun()
    {
        MakeFixture fixture;
        fixture.project->addFile(u"made.c"_s); // by the command
        fixture.project->set(
            PropertyKey::PreBuild,
            u"test -e made.c || echo 'int main(void) { return 0; }' > made.c; echo $CONFIGURATION >> pre.txt"_s);
        fixture.project->set(PropertyKey::PostBuild, u"echo $BUILD_DIRECTORY $OUTPUT >> post.txt"_s);
        fixture.generate();
        QVERIFY2(fixture.make(), qPrintable(fixture.output));
        QVERIFY(fixture.make());
        QCOMPARE(fixture.read(u"pre.txt"_s), "Debug\nDebug\n");
        QCOMPARE(fixture.read(u"post.txt"_s), "build/Debug build/Debug/demo\n");
    }

    void failedCommandFailsTheBuild()
    {
        MakeFixture fixture;
        addSample(fixture);
        fixture.project->set(PropertyKey::PostBuild, u"false"_s);
        fixture.generate();
        QVERIFY(!fixture.make());
        QVERIFY(!fixture.make()); // it is run again
        fixture.project->set(PropertyKey::PreBuild, u"exit 3"_s);
        fixture.generate();
        QVERIFY(!fixture.make());
        QVERIFY2(fixture.output.contains(u"Error 3"_s), qPrintable(fixture.output));
    }

    void launcherAndDistccHostsAreUsed()
    {
        MakeFixture fixture;
        addSample(fixture);
        fixture.write(u"bin/ccache"_s, "#!/bin/sh\necho launched for \"$DISTCC_HOSTS\"\nexec \"$@\"\n", true);
        fixture.project->set(PropertyKey::Launcher, u"both"_s);
        fixture.project->set(PropertyKey::DistccHosts, u"localhost/2 other"_s);
        fixture.generate();
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", fixture.path(u"bin:"_s).toUtf8() + path);
        const bool built = fixture.make();
        qputenv("PATH", path);
        QVERIFY2(built, qPrintable(fixture.output));
        QCOMPARE(fixture.output.count(u"launched for localhost/2 other\n"_s), 2);
    }

    void assemblerIsBuilt()
    {
        MakeFixture fixture;
        fixture.add(u"main.c"_s, "int a(void);\nint b(void);\nint main(void) { return a() + b(); }\n");
        fixture.add(u"a.S"_s, "#define ZERO 0\n.globl a\na: mov $ZERO, %eax\n ret\n");
        fixture.add(u"b.asm"_s, ".globl b\nb: mov $0, %eax\n ret\n");
        fixture.generate();
        QVERIFY2(fixture.make(), qPrintable(fixture.output));
        QVERIFY(fixture.runs(u"build/Debug/demo"_s));
        QVERIFY(fixture.make());
        QCOMPARE(fixture.compiled(), QStringList());
    }

    void imagesAreTheSameAsThoseOfNinja()
    {
        MakeFixture fixture(u"avr-"_s);
        fixture.add(u"main.c"_s, "__attribute__((section(\".eeprom\"))) char table[2] = {1, 2};\n"
                                 "int main(void) { return table[0]; }\n");
        fixture.project->set(PropertyKey::Machine, u"-mmcu=atmega328p"_s);
        fixture.project->set(PropertyKey::Image, u"ihex"_s);
        fixture.project->set(PropertyKey::RemoveUnused, u"false"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        const QStringList names = {u"build/Debug/demo.elf"_s, u"build/Debug/demo.hex"_s, u"build/Debug/demo.eep"_s};
        QList<QByteArray> expected;
        for (const QString &name : names)
            expected += fixture.read(name);
        QVERIFY(fixture.clean());
        fixture.generate();
        QVERIFY2(fixture.make(), qPrintable(fixture.output));
        for (int i = 0; i < names.size(); ++i) {
            QVERIFY2(!expected[i].isEmpty(), qPrintable(names[i]));
            QCOMPARE(fixture.read(names[i]), expected[i]);
        }
        QVERIFY(fixture.make({u"clean"_s}));
        QVERIFY(!fixture.exists(u"build/Debug/demo.elf.map"_s));
    }

    void librariesOfOtherProjectsAreBuiltFirst()
    {
        MakeFixture program;
        MakeFixture low({}, u"low"_s);
        MakeFixture high({}, u"high"_s);
        for (MakeFixture *library : {&low, &high})
            library->project->set(PropertyKey::TargetType, u"library"_s);
        low.add(u"low.c"_s, "int low(void) { return 21; }\n");
        high.add(u"high.c"_s, "int low(void);\nint high(void) { return 2 * low(); }\n");
        high.project->set(PropertyKey::UsedProjects, u"low"_s);
        program.add(u"main.c"_s, "int high(void);\nint main(void) { return high() - 42; }\n");
        program.project->set(PropertyKey::UsedProjects, u"high"_s);
        const QStringList paths = program.generate();
        QCOMPARE(paths, (QStringList{program.path(u"Makefile"_s), low.path(u"Makefile"_s), high.path(u"Makefile"_s)}));
        QVERIFY(!program.read(u"Makefile"_s).contains(low.directory.path().toUtf8())); // all paths are relative
        QVERIFY2(program.make({u"-j4"_s}), qPrintable(program.output));
        QVERIFY(program.runs(u"build/Debug/demo"_s));
        low.write(u"low.c"_s, "int low(void) { return 20; }\n");
        QVERIFY(program.make({u"only-Debug"_s}));
        QVERIFY(program.runs(u"build/Debug/demo"_s));
        QVERIFY(program.make({u"Debug"_s}));
        QVERIFY(!program.runs(u"build/Debug/demo"_s));
    }

    void projectsThatUseEachOtherAreBuilt()
    {
        MakeFixture one({}, u"one"_s);
        MakeFixture two({}, u"two"_s);
        MakeFixture program;
        for (MakeFixture *library : {&one, &two})
            library->project->set(PropertyKey::TargetType, u"library"_s);
        one.project->set(PropertyKey::UsedProjects, u"two"_s);
        two.project->set(PropertyKey::UsedProjects, u"one"_s);
        program.project->set(PropertyKey::UsedProjects, u"one"_s);
        one.add(u"one.c"_s, "int two(void);\nint one(void) { return two() - 1; }\nint base(void) { return 1; }\n");
        two.add(u"two.c"_s, "int base(void);\nint two(void) { return base(); }\n");
        program.add(u"main.c"_s, "int one(void);\nint main(void) { return one(); }\n");
        QCOMPARE(program.generate().size(), 3);
        QVERIFY2(program.make(), qPrintable(program.output));
        QVERIFY(program.runs(u"build/Debug/demo"_s));
    }

    void projectsInOneDirectoryHaveFilesOfTheirOwn()
    {
        MakeFixture fixture;
        addSample(fixture);
        fixture.write(u"demo.vnp"_s, "");
        fixture.write(u"other.vnp"_s, "");
        QCOMPARE(fixture.generate(), QStringList{fixture.path(u"demo.mk"_s)});
        QVERIFY2(fixture.make({u"-f"_s, u"demo.mk"_s}), qPrintable(fixture.output));
        QVERIFY(fixture.runs(u"build/demo/Debug/demo"_s));
    }

    void impossibleConfigurationsAreLeftOut_data()
    {
        QTest::addColumn<QString>("configuration");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("reason");
        const auto name = [](const char *row, const QString &configuration) {
            QTest::newRow(row) << configuration << QString() << QString()
                               << u"A Makefile cannot have a target with the name '%1'. Rename the configuration."_s
                                      .arg(configuration);
        };
        name("all", u"all"_s);
        name("clean", u"clean"_s);
        name("target of another configuration", u"clean-Debug"_s);
        name("Makefile", u"Makefile"_s);
        name("source", u"main.c"_s);
        name("point", u".PHONY"_s);
        name("dash", u"-k"_s);
        name("slash", u"a/b"_s);
        const auto option = [](const char *row, const QString &key, const QString &value, const QString &reason) {
            QTest::newRow(row) << u"Release"_s << key << value << reason;
        };
        option("output", PropertyKey::OutputName, u"a:b"_s,
               u"The name 'build/Release/a:b' has a character that make does not support."_s);
        option("command", PropertyKey::PreBuild, u"true\nfalse"_s,
               u"An option has a line break, which make does not support: true\nfalse"_s);
        option("quote", PropertyKey::Flags, u"-DX='a"_s, u"A quote is not closed in the option \"-DX='a\"."_s);
        option("library", PropertyKey::UsedProjects, u"none"_s, u"The workspace has no library project 'none'."_s);
    }

    void impossibleConfigurationsAreLeftOut()
    {
        QFETCH(QString, configuration);
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(QString, reason);
        MakeFixture fixture;
        fixture.add(u"main.c"_s, "int main(void) { return 0; }\n");
        fixture.project->store.values[configuration];
        if (!key.isEmpty())
            fixture.project->set(key, value, configuration);
        QCOMPARE(fixture.generate().size(), 1);
        QVERIFY2(fixture.events->text.contains(
                     u"The configuration '%1' of the project 'demo' is left out.\n"_s.arg(configuration)),
                 qPrintable(fixture.events->text));
        QVERIFY2(fixture.events->text.contains(reason + u'\n'), qPrintable(fixture.events->text));
        QVERIFY2(fixture.make(), qPrintable(fixture.output));
        QVERIFY(fixture.runs(u"build/Debug/demo"_s));
    }

    void projectWithoutSourcesHasNoMakefile()
    {
        MakeFixture fixture;
        QVERIFY(fixture.generate().isEmpty());
        QVERIFY(fixture.events->text.contains(
            u"The project has no file that is compiled in the configuration 'Debug'.\n"_s));
    }
};

QTEST_GUILESS_MAIN(TestMakefile)
#include "tst_makefile.moc"
