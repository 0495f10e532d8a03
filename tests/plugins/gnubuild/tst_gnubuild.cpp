#include "buildfixture.h"
#include "lookuppattern.h"
#include <netinet/in.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTranslator>
#include <sys/socket.h>
#include <unistd.h>
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

/// The processes in @p pids, one per line, that have not ended.
QByteArrayList running(const QByteArray &pids)
{
    QByteArrayList result;
    for (const QByteArray &pid : pids.trimmed().split('\n')) {
        QFile file(u"/proc/%1/stat"_s.arg(QLatin1StringView(pid)));
        if (file.open(QIODevice::ReadOnly) && !file.readAll().contains(") Z "))
            result += pid;
    }
    return result;
}

int run(const QString &program)
{
    return QProcess::execute(program, {});
}
} // namespace

class TestGnuBuild : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void cleanup() { QCOMPARE(aliveInterfaces(), 0); }

    // Building

    void buildCompilesAndLinksAProgram()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QCOMPARE(fixture.actions(),
                 (QStringList{u"Compiling src/answer.c"_s, u"Compiling src/main.c"_s, u"Linking build/Debug/demo"_s}));
        QCOMPARE(run(fixture.path(u"build/Debug/demo"_s)), 0);
    }

    void stepsAreNamedInTheLanguageOfTheProgram()
    {
        class Translator : public QTranslator
        {
        public:
            QString translate(const char *context, const char *text, const char *, int) const override
            {
                const bool isStep = QByteArray(context) == "BuildRun" && QByteArray(text).endsWith("ing %1");
                return isStep ? u"new: %1"_s : QString();
            }
            [[nodiscard]] bool isEmpty() const override { return false; }
        };
        BuildFixture fixture;
        addSample(fixture);
        Translator translator;
        QCoreApplication::installTranslator(&translator);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QCOMPARE(fixture.actions(),
                 (QStringList{u"new: build/Debug/demo"_s, u"new: src/answer.c"_s, u"new: src/main.c"_s}));
        fixture.events->text.clear();
        QVERIFY(fixture.build());
        QVERIFY2(fixture.actions().isEmpty(), qPrintable(fixture.events->text));
        QCoreApplication::removeTranslator(&translator);
        fixture.events->text.clear();
        QVERIFY(fixture.build()); // in another language nothing is built again
        QVERIFY2(fixture.actions().isEmpty(), qPrintable(fixture.events->text));
    }

    void endIsReportedOnce()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.environment->build({u"Debug"_s}, false);
        QVERIFY(fixture.events->ends.isEmpty()); // not before build() returns
        QVERIFY(fixture.wait());
        QCoreApplication::processEvents();
        QVERIFY(fixture.events->ends.isEmpty());
    }

    void buildOfNoConfigurationSucceeds()
    {
        BuildFixture fixture;
        QVERIFY(fixture.build({}));
        QVERIFY(fixture.clean({}));
    }

    void secondBuildDoesNothing()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY(fixture.build());
        const QDateTime written = fixture.timeOf(u"build/Debug/build.ninja"_s);
        QVERIFY(fixture.build());
        QCOMPARE(fixture.actions(), QStringList());
        QVERIFY(fixture.events->text.contains(u"Everything is up to date.\n"_s));
        QCOMPARE(fixture.timeOf(u"build/Debug/build.ninja"_s), written);
    }

    void editedFilesAreCompiledAgain()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY(fixture.build());
        fixture.write(u"src/answer.c"_s, AnswerSource + "/* edited */\n");
        QVERIFY(fixture.build());
        QCOMPARE(fixture.actions(), (QStringList{u"Compiling src/answer.c"_s, u"Linking build/Debug/demo"_s}));
        fixture.write(u"src/answer.h"_s, AnswerHeader + "/* edited */\n");
        QVERIFY(fixture.build());
        QCOMPARE(fixture.actions().size(), 3);
    }

    void changedOptionsCompileAgain()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY(fixture.build());
        fixture.project->root.files[1]->store.values[u"Debug"_s][PropertyKey::FileFlags] = u"-DEXTRA"_s;
        QVERIFY(fixture.build());
        QCOMPARE(fixture.actions(), (QStringList{u"Compiling src/answer.c"_s, u"Linking build/Debug/demo"_s}));
        fixture.project->set(PropertyKey::Optimisation, u"2"_s);
        QVERIFY(fixture.build());
        QCOMPARE(fixture.actions().size(), 3);
    }

    void rebuildCompilesEverything()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY(fixture.build());
        QVERIFY(fixture.build({u"Debug"_s}, true));
        QCOMPARE(fixture.actions().size(), 3);
    }

    void onlyFilesOfTheProjectAreCompiled()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.write(u"src/stray.c"_s, "this is no C\n");
        fixture.add(u"src/excluded.c"_s, "nor this\n")->store.values[u"Debug"_s][PropertyKey::Exclude] = u"1"_s;
        fixture.add(u"notes.txt"_s, "nor this\n");
        QVERIFY(fixture.build());
        QCOMPARE(fixture.actions().size(), 3);
    }

    void objectOfARemovedFileIsDeleted()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.add(u"src/gone.c"_s, "int gone;\n");
        QVERIFY(fixture.build());
        QVERIFY(fixture.exists(u"build/Debug/obj/src/gone.c.o"_s));
        fixture.project->root.files.pop_back();
        QVERIFY(fixture.build());
        QVERIFY(!fixture.exists(u"build/Debug/obj/src/gone.c.o"_s));
        QCOMPARE(fixture.actions(), QStringList(u"Linking build/Debug/demo"_s));
    }

    void filesInFoldersAreCompiledOnce()
    {
        BuildFixture fixture;
        FakeFolderData *folder = fixture.project->addFolder(u"Sources"_s);
        fixture.write(u"main.c"_s, "int main(void) { return 0; }\n");
        fixture.project->addFile(u"main.c"_s, *folder);
        fixture.project->addFile(u"main.c"_s); // a second time
        QVERIFY(fixture.build());
        QCOMPARE(fixture.actions(), (QStringList{u"Compiling main.c"_s, u"Linking build/Debug/demo"_s}));
    }

    void programOfSeveralLanguagesIsLinked()
    {
        BuildFixture fixture;
        fixture.add(u"main.cpp"_s, "#include <string>\nextern \"C\" int one(), two();\n"
                                   "int main() { return std::string(3, 'x').size() - one() - two(); }\n");
        fixture.add(u"one.s"_s, ".globl one\none:\n movl $1, %eax\n ret\n.section .note.GNU-stack\n");
        fixture.add(u"two.S"_s, "#define RESULT 2\n.globl two\ntwo:\n movl $RESULT, %eax\n ret\n"
                                ".section .note.GNU-stack\n");
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QCOMPARE(run(fixture.path(u"build/Debug/demo"_s)), 0);
    }

    void eachToolChainBuildsAProgram_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("machine");
        QTest::newRow("Arm") << u"arm-none-eabi-"_s << u"-mcpu=cortex-m3 -mthumb"_s;
        QTest::newRow("AVR") << u"avr-"_s << u"-mmcu=atmega328p"_s;
        QTest::newRow("RISC-V") << u"riscv64-unknown-elf-"_s << u"-march=rv32imac -mabi=ilp32"_s;
    }

    void eachToolChainBuildsAProgram()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, machine);
        BuildFixture fixture(prefix);
        fixture.add(u"main.c"_s,
                    "int value = 7;\nint unused(void) { return value; }\nvoid _start(void) { for (;;) ++value; }\n");
        fixture.project->set(PropertyKey::Machine, machine);
        fixture.project->set(PropertyKey::LinkFlags, u"-nostdlib -nostartfiles -Wl,-e,_start"_s);
        fixture.project->set(PropertyKey::Image, u"ihex"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QVERIFY(fixture.read(u"build/Debug/demo.elf"_s).startsWith("\177ELF"));
        QVERIFY(fixture.read(u"build/Debug/demo.hex"_s).startsWith(':'));
        QVERIFY(fixture.read(u"build/Debug/demo.elf.map"_s).contains(".text"));
        QVERIFY(fixture.environment->isUpToDate(u"Debug"_s));
    }

    void libraryIsBuilt()
    {
        BuildFixture fixture;
        fixture.add(u"a.c"_s, "int a;\n");
        fixture.project->set(PropertyKey::TargetType, u"library"_s);
        QVERIFY(fixture.build());
        QVERIFY(fixture.read(u"build/Debug/libdemo.a"_s).startsWith("!<arch>"));
    }

    void toolPrefixWithDirectoryIsUsed()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.write(u"tools/my-gcc"_s, "#!/bin/sh\necho mine >&2\nexec gcc \"$@\"\n", true);
        fixture.project->set(PropertyKey::ToolPrefix, u"tools/my-"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QCOMPARE(fixture.events->text.count(u"mine\n"_s), 3);
    }

    void configurationsAreBuiltInOrder()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.project->set(PropertyKey::Optimisation, u"2"_s, u"Release"_s);
        QVERIFY(fixture.build({u"Release"_s, u"Debug"_s}));
        QVERIFY(fixture.events->text.indexOf(u"configuration 'Release'"_s)
                < fixture.events->text.indexOf(u"configuration 'Debug'"_s));
        QCOMPARE(run(fixture.path(u"build/Release/demo"_s)), 0);
        QCOMPARE(run(fixture.path(u"build/Debug/demo"_s)), 0);
    }

    void errorInOneConfigurationDoesNotStopTheOthers()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.project->set(PropertyKey::Flags, u"-include nosuch.h"_s, u"Broken"_s);
        QVERIFY(!fixture.build({u"Broken"_s, u"Debug"_s}));
        QVERIFY(fixture.exists(u"build/Debug/demo"_s));
    }

    void cleanRemovesOutputs()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY(fixture.clean()); // nothing is there yet
        QCOMPARE(fixture.events->text, u"Done.\n"_s);
        QVERIFY(fixture.build());
        QVERIFY(fixture.clean());
        QVERIFY2(fixture.events->text.contains(u"Files removed: "_s), qPrintable(fixture.events->text));
        QVERIFY(fixture.clean());
        QVERIFY(!fixture.events->text.contains(u"Files removed"_s)); // nothing is there any more
        QVERIFY(!fixture.exists(u"build/Debug/demo"_s));
        QVERIFY(!fixture.exists(u"build/Debug/obj/src/main.c.o"_s));
        QVERIFY(!fixture.environment->isUpToDate(u"Debug"_s));
    }

    void projectsInOneDirectoryKeepEachOthersResults()
    {
        BuildFixture first({}, u"first"_s);
        first.write(u"first.vnp"_s, "<project/>");
        first.write(u"second.vnp"_s, "<project/>");
        first.add(u"a.c"_s, "int main(void) { return 0; }\n");
        const InterfacePtr<FakeProject> second(new FakeProject(u"second"_s, first.directory.path()));
        second->addFile(u"b.c"_s);
        first.write(u"b.c"_s, "int main(void) { return 0; }\n");
        const InterfacePtr<RecordingEvents> events(new RecordingEvents);
        const InterfacePtr<GnuBuild> other(new GnuBuild(BuildFixture::toolChainOf({}), BuildFixture::projects()));
        other->initialise(events.get(), {});
        other->setProject(second.get());
        other->setQueryInterface(nullptr);
        for (int round = 0; round < 2; ++round) {
            QVERIFY2(first.build(), qPrintable(first.events->text));
            other->build({u"Debug"_s}, false);
            QTRY_COMPARE_WITH_TIMEOUT(events->ends, (QList<bool>(round + 1, true)), 60000);
            QVERIFY(first.exists(u"build/first/Debug/first"_s));
            QVERIFY(first.exists(u"build/second/Debug/second"_s));
            first.project->set(PropertyKey::Flags, u"-DX"_s); // the next build looks for old files
            second->set(PropertyKey::Flags, u"-DX"_s);
        }
        QVERIFY(first.exists(u"build/first/compile_commands.json"_s));
    }

    void projectsWithOneBuildDirectoryAreRefused()
    {
        BuildFixture first({}, u"first"_s);
        BuildFixture second({}, u"second"_s);
        first.add(u"a.c"_s, "int main(void) { return 0; }\n");
        second.add(u"a.c"_s, "int main(void) { return 0; }\n");
        QVERIFY(first.build());
        second.project->set(PropertyKey::BuildDirectory, first.path(u"build"_s));
        QVERIFY(!second.build());
        QVERIFY2(second.events->text.contains(
                     u"The projects 'second' and 'first' both build in the directory '%1'. Give one "
                     "of them another build directory.\n"_s.arg(first.path(u"build/Debug"_s))),
                 qPrintable(second.events->text));
        second.project->set(PropertyKey::BuildDirectory, u"build"_s);
        second.project->set(PropertyKey::OutputName, first.path(u"build/Debug/first"_s));
        QVERIFY(!second.build());
        QVERIFY2(
            second.events->text.contains(u"The projects 'second' and 'first' both build the file '%1'. Give one of "
                                         "them another output name.\n"_s.arg(first.path(u"build/Debug/first"_s))),
            qPrintable(second.events->text));
        QVERIFY(first.exists(u"build/Debug/first"_s));
    }

    void filesOutsideTheConfigurationsDirectoryAreKept()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.project->set(PropertyKey::OutputName, u"../../tool"_s);
        QVERIFY(fixture.build());
        QVERIFY(fixture.exists(u"tool"_s));
        QVERIFY(fixture.clean());
        QVERIFY(fixture.exists(u"tool"_s));
        QVERIFY(!fixture.exists(u"build/Debug/obj/src/main.c.o"_s));
        QVERIFY2(fixture.events->text.contains(
                     u"'tool' is not removed, because it is not in the directory 'build/Debug'."_s),
                 qPrintable(fixture.events->text));
        fixture.project->set(PropertyKey::OutputName, u"demo"_s); // the old name is stale now
        QVERIFY(fixture.build());
        QVERIFY(fixture.exists(u"tool"_s));
        fixture.project->set(PropertyKey::OutputName, u"other"_s);
        QVERIFY(fixture.build());
        QVERIFY(!fixture.exists(u"build/Debug/demo"_s));
    }

    void fileThatCannotBeRemovedIsReported()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY(fixture.build());
        const QString outputs = fixture.path(u"build/Debug"_s);
        const QFile::Permissions all = QFile::permissions(outputs);
        const auto read = QFile::Permissions(0x5555); // and execute, for everybody
        for (const QString &path :
             {fixture.directory.path(), fixture.path(u"build"_s), fixture.path(u"build/Debug/build.ninja"_s)})
            QVERIFY(QFile::setPermissions(path, QFile::permissions(path) | read));
        QVERIFY(QFile::setPermissions(outputs, read));
        const uid_t user = geteuid();
        const bool common = user != 0 || seteuid(65534) == 0; // the administrator may remove all files
        const bool cleaned = common && fixture.clean();
        const bool back = seteuid(user) == 0;
        QVERIFY(QFile::setPermissions(outputs, all));
        QVERIFY(common && back);
        QVERIFY2(cleaned, qPrintable(fixture.events->text));
        QVERIFY2(fixture.events->text.contains(u"'build/Debug/demo' cannot be removed.\n"_s),
                 qPrintable(fixture.events->text));
        QVERIFY(fixture.exists(u"build/Debug/demo"_s));
    }

    void commandDuringABuildIsRefused()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.environment->build({u"Debug"_s}, false);
        fixture.environment->clean({u"Debug"_s});
        fixture.environment->compile(u"src/main.c"_s, u"Debug"_s);
        fixture.environment->buildForDebug(u"Debug"_s);
        fixture.environment->build({u"Debug"_s}, true);
        QVERIFY(fixture.wait());
        QCOMPARE(fixture.events->text.count(u"The last command has not ended yet. The new one is not carried out.\n"_s),
                 4);
        QCOMPARE(fixture.actions().size(), 3);
        QVERIFY(fixture.exists(u"build/Debug/demo"_s));
        QVERIFY(fixture.events->ends.isEmpty());
    }

    void compileRunsTheCommandBeforeABuild()
    {
        BuildFixture fixture;
        fixture.add(u"main.c"_s, "#include \"generated.h\"\nint main(void) { return VALUE; }\n");
        fixture.project->set(PropertyKey::PreBuild, u"echo '#define VALUE 0' > generated.h"_s);
        QVERIFY2(fixture.compile(u"main.c"_s), qPrintable(fixture.events->text));
        QCOMPARE(fixture.actions(), QStringList(u"Compiling main.c"_s));
        fixture.project->set(PropertyKey::PreBuild, u"exit 3"_s);
        QVERIFY(!fixture.compile(u"main.c"_s));
    }

    void buildThatCannotBeginCountsNoErrors()
    {
        BuildFixture fixture;
        QVERIFY(!fixture.build());
        QVERIFY2(fixture.events->text.endsWith(u"\nFailed.\n"_s), qPrintable(fixture.events->text));
    }

    void namesWithALeadingDashAreBuilt()
    {
        BuildFixture fixture;
        fixture.add(u"-O3.c"_s, "int main(void) { return 0; }\n");
        fixture.project->set(PropertyKey::BuildDirectory, u"-b"_s);
        fixture.project->set(PropertyKey::OutputName, u"-x"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QCOMPARE(run(fixture.path(u"-b/Debug/-x"_s)), 0);
        QVERIFY(fixture.environment->isUpToDate(u"Debug"_s));
        QVERIFY(fixture.clean());
        QVERIFY(!fixture.exists(u"-b/Debug/-x"_s));
    }

    void eepromAndFusesStayOutOfTheLoadImage()
    {
        BuildFixture fixture(u"avr-"_s);
        fixture.add(u"main.c"_s, "__attribute__((section(\".eeprom\"))) char table[2] = {1, 2};\n"
                                 "__attribute__((section(\".fuse\"))) char fuses[1] = {3};\n"
                                 "int main(void) { return table[0] + fuses[0]; }\n");
        fixture.project->set(PropertyKey::Machine, u"-mmcu=atmega328p"_s);
        fixture.project->set(PropertyKey::Image, u"ihex"_s);
        fixture.project->set(PropertyKey::RemoveUnused, u"false"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QVERIFY(!fixture.read(u"build/Debug/demo.hex"_s).contains(":02000004008")); // an address above the flash
        QVERIFY(fixture.read(u"build/Debug/demo.eep"_s).startsWith(":020000000102FB"));
        const QByteArray elf = fixture.read(u"build/Debug/demo.elf"_s);
        QVERIFY(elf.contains(".debug_info") && !elf.contains(".stab"));
    }

    void useOfMemoryIsShownAfterALink()
    {
        BuildFixture fixture(u"arm-none-eabi-"_s);
        fixture.add(u"main.c"_s, "int data[4] = {1}; int bss[8];\nvoid _start(void) { data[0] = bss[0]; }\n");
        fixture.write(u"x.ld"_s,
                      "ENTRY(_start)\n"
                      "MEMORY { FLASH (rx) : ORIGIN = 0, LENGTH = 1K  RAM (rw) : ORIGIN = 0x20000000, LENGTH = 480 }\n"
                      "SECTIONS { .text : { *(.text*) } > FLASH .data : { *(.data*) } > RAM AT> FLASH "
                      ".bss : { *(.bss*) } > RAM /DISCARD/ : { *(.ARM*) } }\n");
        fixture.project->set(PropertyKey::LinkFlags, u"-nostdlib"_s);
        fixture.project->set(PropertyKey::LinkerScript, u"x.ld"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QVERIFY2(fixture.events->text.contains(u", RAM: 48 of 480 bytes (10.0 %)\n"_s),
                 qPrintable(fixture.events->text));
        QVERIFY(fixture.events->text.contains(u"\nFLASH: "_s));
        QVERIFY(fixture.build());
        QVERIFY(!fixture.events->text.contains(u"RAM:"_s)); // nothing was linked
    }

    void compileIgnoresUpToDateObjects()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY(fixture.build());
        for (const QString &name : {u"src/main.c"_s, fixture.path(u"src/main.c"_s)}) {
            QVERIFY(fixture.compile(name));
            QCOMPARE(fixture.actions(), QStringList(u"Compiling src/main.c"_s));
        }
        QVERIFY(!fixture.compile(u"src/other.c"_s));
        QVERIFY(
            fixture.events->text.contains(u"The file 'src/other.c' is not compiled in the configuration 'Debug'.\n"_s));
    }

    void canCompileDependsOnTheExtension()
    {
        const BuildFixture fixture;
        QVERIFY(fixture.environment->canCompile(u"a.c"_s, u"Debug"_s));
        QVERIFY(!fixture.environment->canCompile(u"a.h"_s, u"Debug"_s));
        QVERIFY(!fixture.environment->canCompile({}, u"Debug"_s));
    }

    void editsAndOptionsMakeOutOfDate()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY(!fixture.environment->isUpToDate(u"Debug"_s));
        QVERIFY(fixture.build());
        QVERIFY(fixture.environment->isUpToDate(u"Debug"_s));
        fixture.write(u"src/answer.h"_s, AnswerHeader);
        QVERIFY(!fixture.environment->isUpToDate(u"Debug"_s));
        QVERIFY(fixture.build());
        fixture.project->set(PropertyKey::Defines, u"MORE"_s);
        QVERIFY(!fixture.environment->isUpToDate(u"Debug"_s));
    }

    void specialCharactersInNamesWork()
    {
        BuildFixture fixture({}, u"my $HOME 'demo'"_s);
        fixture.add(u"source files/main$x.c"_s,
                    "#include \"its.h\"\n#include \"h ü.h\"\n"
                    "int a(void), b(void), c(void);\n"
                    "int main(void) { return a() + b() + c() + IT + (TEXT[1] != '\"'); }\n");
        fixture.write(u"source files/its.h"_s, "#define IT 0\n");
        fixture.write(u"include dir/h ü.h"_s, "\n");
        fixture.add(u"grüße/a:b.c"_s, "int a(void) { return 0; }\n");
        fixture.add(u"quote\"s/it's #1 50%.c"_s, "int b(void) { return 0; }\n");
        fixture.add(u"src/c.c"_s, "int c(void) { return 0; }\n");
        fixture.project->set(PropertyKey::Includes, u"include dir;nowhere"_s);
        fixture.project->set(PropertyKey::Defines, u"TEXT=\"a\\\"b $HOME c\";X='y'"_s);
        fixture.project->set(PropertyKey::Defines, u"TEXT=\"a\\\"b $HOME c\";X='y'"_s, u"De bug/$1"_s);
        fixture.project->set(PropertyKey::Includes, u"include dir"_s, u"De bug/$1"_s);
        for (const QString &configuration : {u"Debug"_s, u"De bug/$1"_s}) {
            QVERIFY2(fixture.build({configuration}), qPrintable(fixture.events->text));
            QVERIFY(fixture.environment->isUpToDate(configuration));
            const QString directory = configuration == u"Debug" ? u"Debug"_s : u"De bug%2F$1"_s;
            QCOMPARE(run(fixture.path(u"build/"_s + directory + u"/my $HOME 'demo'"_s)), 0);
        }
        fixture.write(u"source files/its.h"_s, "#define IT 0 // edited\n");
        fixture.write(u"include dir/h ü.h"_s, "// edited\n");
        QVERIFY(fixture.build());
        QCOMPARE(fixture.actions().size(), 2);
    }

    // Commands and the compilation database

    void commandsBeforeAndAfterABuildRun()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.project->set(PropertyKey::PreBuild, u"echo before $CONFIGURATION; touch generated.h"_s);
        fixture.project->set(PropertyKey::PostBuild, u"cp \"$OUTPUT\" 'a copy' && echo after"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QVERIFY(fixture.events->text.contains(u"before Debug\n"_s));
        QVERIFY(fixture.exists(u"generated.h"_s));
        QCOMPARE(run(fixture.path(u"a copy"_s)), 0);
        QVERIFY(fixture.build());
        QVERIFY(fixture.events->text.contains(u"before Debug\n"_s)); // each time
        QVERIFY(!fixture.events->text.contains(u"after"_s));         // only when the program is new
        fixture.project->set(PropertyKey::PreBuild, u"echo sorry; false"_s);
        QVERIFY(!fixture.build());
        QVERIFY(fixture.events->text.contains(u"sorry\n"_s));
        QVERIFY(!fixture.events->text.contains(u"up to date"_s));
    }

    void commandBeforeABuildCanGenerateSources()
    {
        BuildFixture fixture;
        fixture.project->addFile(u"made.c"_s);
        fixture.project->set(PropertyKey::PreBuild, u"echo 'int main(void) { return 0; }' > made.c"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
    }

    void compilationDatabaseIsWritten()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY(fixture.build());
        const QJsonArray entries = QJsonDocument::fromJson(fixture.read(u"build/compile_commands.json"_s)).array();
        QCOMPARE(entries.size(), 2);
        const QJsonObject first = entries[0].toObject();
        QCOMPARE(first.value(u"file"_s).toString(), u"src/main.c"_s);
        QStringList words = first.value(u"arguments"_s).toVariant().toStringList();
        QProcess compiler;
        compiler.setWorkingDirectory(first.value(u"directory"_s).toString());
        compiler.start(words.takeFirst(), words);
        QVERIFY(compiler.waitForFinished());
        QCOMPARE(compiler.exitCode(), 0);
    }

    void databaseFollowsTheCurrentConfiguration()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.project->set(PropertyKey::Defines, u"RELEASED"_s, u"Release"_s);
        QVERIFY(fixture.build());
        QVERIFY(fixture.build({u"Release"_s}));
        QVERIFY(!fixture.read(u"build/compile_commands.json"_s).contains("RELEASED"));
        fixture.project->current = u"Release"_s;
        QVERIFY(fixture.build({u"Release"_s}));
        QVERIFY(fixture.read(u"build/compile_commands.json"_s).contains("RELEASED"));
    }

    void openingAProjectDoesNotChangeIt()
    {
        InterfacePtr<FakeProject> project(new FakeProject(u"demo"_s, u"/nowhere"_s));
        const InterfacePtr<GnuBuild> environment(new GnuBuild(toolChains().first(), BuildFixture::projects()));
        environment->setProject(project.get());
        QCOMPARE(project->store.values, (QMap<QString, QMap<QString, QString>>{{u"Debug"_s, {}}}));
        QVERIFY(environment->propertyDefinitions().contains(u"buildMatch"_s)); // with the default pattern
    }

    void showCommandsOptionShowsCommands()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.project->set(PropertyKey::ShowCommands, u"1"_s);
        QVERIFY(fixture.build());
        QVERIFY(fixture.events->text.contains(u"gcc -O0 -g2 -Wall -MMD -MF build/Debug/obj/src/main.c.o.d -c "_s));
    }

    // Errors

    void errorIsReportedWithAbsolutePath()
    {
        BuildFixture fixture;
        fixture.add(u"src/bad.c"_s, "int a;\nvoid f(void) { a = b; }\n");
        QVERIFY(!fixture.build());
        QVERIFY(fixture.events->text.contains(u"\n"_s + fixture.path(u"src/bad.c"_s) + u":2:20: error: "_s));
        QVERIFY(fixture.events->text.endsWith(u"Failed. Errors: 1, warnings: 0\n"_s));
    }

    void errorPatternFindsTheSourceOfMessages_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("places");
        for (const QString &prefix : {u""_s, u"arm-none-eabi-"_s, u"avr-"_s}) {
            const auto row = [&](const char *name, const QString &file, const QByteArray &text,
                                 const QStringList &places) {
                QTest::newRow(qPrintable(prefix + QLatin1StringView(name))) << prefix << file << text << places;
            };
            row("compiler", u"src/a b.c"_s, "int f(void)\n{\n    return nosuch;\n}\n", {u"src/a b.c:3"_s});
            row("header", u"src/a.c"_s, "\n#include \"bad.h\"\n", {u"src/a.c:2"_s, u"src/bad.h:1"_s});
            row("assembler", u"src/a.s"_s, "\n\n nosuch r1\n", {u"src/a.s:3"_s});
            row("linker", u"src/a.c"_s, "int nosuch(void);\nint main(void)\n{\n    return nosuch();\n}\n",
                {u"src/a.c:4"_s});
        }
    }

    void errorPatternFindsTheSourceOfMessages()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, file);
        QFETCH(QByteArray, text);
        QFETCH(QStringList, places);
        BuildFixture fixture(prefix);
        fixture.add(file, text);
        fixture.write(u"src/bad.h"_s, "int f(void) { return nosuch; }\n");
        fixture.project->set(PropertyKey::LinkFlags, prefix.isEmpty() ? u""_s : u"-nostdlib -Wl,-e,main"_s);
        QVERIFY(!fixture.build());
        LookupPattern pattern;
        QVERIFY(pattern.set(propertyDefaults(propertyPages(toolChains().first())).value(PropertyKey::Match), false));
        QStringList found;
        for (const QString &line : fixture.events->text.split(u'\n')) {
            if (const auto place = pattern.find(line))
                found += place->file + u':' + QString::number(place->line);
        }
        for (const QString &place : places)
            QVERIFY2(found.contains(fixture.path(place)), qPrintable(fixture.events->text));
    }

    void keepGoingOptionContinuesAfterErrors()
    {
        BuildFixture fixture;
        fixture.project->set(PropertyKey::Jobs, u"1"_s);
        fixture.add(u"a.c"_s, "int a(void) { return nosuch; }\n");
        fixture.add(u"b.c"_s, "int b(void) { return nosuch; }\n");
        QVERIFY(!fixture.build());
        QCOMPARE(fixture.actions().size(), 1);
        fixture.project->set(PropertyKey::KeepGoing, u"1"_s);
        QVERIFY(!fixture.build());
        QCOMPARE(fixture.actions().size(), 2);
    }

    void invalidSettingIsReported_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("compiler") << PropertyKey::ToolPrefix << u"nosuch-"_s
                                  << u"The program 'nosuch-gcc' was not found. Install the tool chain, or set the "
                                     "option \"Tool prefix\".\n"_s;
        QTest::newRow("compiler by path")
            << PropertyKey::ToolPrefix << u"/no/such/"_s << u"The program '/no/such/gcc' was not found."_s;
        QTest::newRow("linker script") << PropertyKey::LinkerScript << u"no.ld"_s
                                       << u"The file 'no.ld' does not exist.\n"_s;
        QTest::newRow("library file") << PropertyKey::Libraries << u"./libx.a"_s
                                      << u"The file './libx.a' does not exist.\n"_s;
        QTest::newRow("library project") << PropertyKey::UsedProjects << u"other"_s
                                         << u"The workspace has no library project 'other'.\n"_s;
        QTest::newRow("quote") << PropertyKey::Flags << u"-DX='a"_s
                               << u"A quote is not closed in the option \"-DX='a\".\n"_s;
        QTest::newRow("line break") << PropertyKey::Flags << u"-DX='a\nb'"_s
                                    << u"An option has a line break, which ninja does not support: "_s;
        QTest::newRow("name") << PropertyKey::OutputName << u"a\nb"_s
                              << u"The name 'build/Debug/a\nb' has a character that ninja does not support.\n"_s;
        QTest::newRow("build directory") << PropertyKey::BuildDirectory << u"/proc/nowhere"_s
                                         << u"Cannot write '/proc/nowhere/Debug/build.ninja': "_s;
        QTest::newRow("output in a file's place")
            << PropertyKey::BuildDirectory << u"main.c"_s << u"main.c/Debug/build.ninja': "_s;
    }

    void invalidSettingIsReported()
    {
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(QString, expected);
        BuildFixture fixture;
        fixture.add(u"main.c"_s, "int main(void) { return 0; }\n");
        fixture.project->set(key, value);
        QVERIFY(!fixture.build());
        QVERIFY2(fixture.events->text.contains(expected), qPrintable(fixture.events->text));
        QVERIFY(!fixture.environment->isUpToDate(u"Debug"_s));
    }

    void missingNinjaIsReported()
    {
        BuildFixture fixture;
        addSample(fixture);
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", "/nowhere");
        const bool built = fixture.build();
        const bool ready = fixture.environment->initialise(fixture.events.get(), {});
        qputenv("PATH", path);
        QVERIFY(!built);
        QVERIFY(!ready);
        QVERIFY(fixture.events->text.contains(u"The program 'ninja' was not found. Builds need it; install it.\n"_s));
    }

    void missingLauncherIsReported()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.project->set(PropertyKey::Launcher, u"ccache"_s);
        const QByteArray path = qgetenv("PATH");
        fixture.write(u"bin/ninja"_s, "", true); // all but the launcher
        fixture.write(u"bin/gcc"_s, "", true);
        qputenv("PATH", fixture.path(u"bin"_s).toUtf8());
        const bool built = fixture.build();
        qputenv("PATH", path);
        QVERIFY(!built);
        QCOMPARE(
            fixture.events->text,
            u"Project 'demo', configuration 'Debug'\nThe program 'ccache' was not found. Install it, or change the "
            "option \"Compiler launcher\".\nFailed.\n"_s);
    }

    void namesAreShownWithoutTheQuotesOfTheShell()
    {
        BuildFixture fixture;
        fixture.add(u"it's $1.c"_s, "int main(void) { return 0; }\n");
        QVERIFY(fixture.build());
        QVERIFY2(fixture.events->text.contains(u"] Compiling it's $1.c\n"_s), qPrintable(fixture.events->text));
    }

    void progressIsShownWhateverTheUserHasSet()
    {
        BuildFixture fixture;
        addSample(fixture);
        qputenv("NINJA_STATUS", "<%s> ");
        const bool built = fixture.build();
        qunsetenv("NINJA_STATUS");
        QVERIFY(built);
        QVERIFY2(fixture.events->text.contains(u"[3/3] Linking build/Debug/demo\n"_s),
                 qPrintable(fixture.events->text));
    }

    void sizesAreNotShownDuringABuild()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY(fixture.build());
        const ExtensionCommand command = fixture.environment->commands().first();
        QVERIFY(command.enabled);
        fixture.environment->build({u"Debug"_s}, true);
        QVERIFY(!fixture.environment->commands().first().enabled);
        fixture.events->text.clear();
        fixture.environment->execute(command.id);
        QCOMPARE(fixture.events->text, QString());
        QVERIFY(fixture.wait());
    }

    void missingSourceIsReported()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY(fixture.build());
        QFile::remove(fixture.path(u"src/answer.c"_s));
        QVERIFY(!fixture.build());
        QVERIFY(fixture.events->text.contains(u"The file 'src/answer.c' does not exist.\n"_s));
        QVERIFY(!fixture.environment->isUpToDate(u"Debug"_s));
    }

    void sharedOutputOfConfigurationsIsRefused()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.project->set(PropertyKey::OutputName, u"../bin/x"_s);
        fixture.project->set(PropertyKey::OutputName, u"../bin/x"_s, u"Release"_s);
        QVERIFY(!fixture.build());
        QVERIFY(fixture.events->text.contains(
            u"The configurations 'Debug' and 'Release' both build the file 'build/bin/x'. Give one of them another "
            "output name.\n"_s));
    }

    void projectWithoutSourcesIsReported()
    {
        BuildFixture fixture;
        QVERIFY(!fixture.build());
        QVERIFY(fixture.events->text.contains(u"no file that is compiled in the configuration 'Debug'"_s));
    }

    // Stopping

    void stopEndsTheCompilers()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.write(u"tools/gcc"_s, "#!/bin/sh\necho $$ >> pids\nexec sleep 1000\n", true);
        fixture.project->set(PropertyKey::ToolPrefix, u"tools/"_s);
        fixture.project->set(PropertyKey::Jobs, u"2"_s);
        fixture.environment->build({u"Debug"_s, u"Debug"_s}, false);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.read(u"pids"_s).count('\n'), 2, 20000);
        fixture.environment->stop();
        QVERIFY(!fixture.wait());
        QVERIFY(fixture.events->text.endsWith(u"Stopped.\n"_s));
        QCOMPARE(fixture.events->text.count(u"Project 'demo'"_s), 1); // the second build was not started
        QTRY_COMPARE(running(fixture.read(u"pids"_s)), QByteArrayList());
    }

    void stopKillsACompilerThatIgnoresSignals()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.write(u"tools/gcc"_s, "#!/bin/sh\ntrap '' TERM INT\necho $$ >> pids\nwhile :; do sleep 1; done\n",
                      true);
        fixture.project->set(PropertyKey::ToolPrefix, u"tools/"_s);
        fixture.project->set(PropertyKey::Jobs, u"2"_s);
        fixture.environment->build({u"Debug"_s}, false);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.read(u"pids"_s).count('\n'), 2, 20000);
        fixture.environment->stop();
        QVERIFY(!fixture.wait());
        QTRY_COMPARE(running(fixture.read(u"pids"_s)), QByteArrayList());
    }

    void stopRightAfterTheStartEndsTheBuild()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.environment->build({u"Debug"_s}, false);
        fixture.environment->stop();
        QVERIFY(!fixture.wait());
        fixture.environment->stop(); // nothing runs
        QVERIFY(fixture.build());
    }

    void releaseDuringABuildEmitsNothing()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.write(u"tools/gcc"_s, "#!/bin/sh\necho $$ >> pids\nexec sleep 1000\n", true);
        fixture.project->set(PropertyKey::ToolPrefix, u"tools/"_s);
        fixture.environment->build({u"Debug"_s}, false);
        QTRY_VERIFY_WITH_TIMEOUT(fixture.read(u"pids"_s).contains('\n'), 20000);
        fixture.environment.reset();
        QCoreApplication::processEvents();
        QVERIFY(fixture.events->ends.isEmpty());
        QTRY_COMPARE(running(fixture.read(u"pids"_s)), QByteArrayList());
    }

    // Debugging

    void buildForDebugBuilds()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.environment->buildForDebug(u"Debug"_s);
        QVERIFY(fixture.wait());
        QVERIFY(fixture.exists(u"build/Debug/demo"_s));
    }

    void declinedBuildIsNotRunForDebugging()
    {
        BuildFixture fixture;
        addSample(fixture);
        QVERIFY(fixture.build());
        fixture.write(u"src/main.c"_s, "broken\n");
        QVERIFY(!fixture.environment->isUpToDate(u"Debug"_s)); // the user declines the build that the host offers
        fixture.events->text.clear();
        fixture.environment->buildForDebug(u"Debug"_s);
        QVERIFY(fixture.wait());
        QCOMPARE(fixture.events->text, u"'build/Debug/demo' is used as it is, older than its sources.\nDone.\n"_s);
        fixture.environment->buildForDebug(u"Debug"_s); // the next session
        QVERIFY(!fixture.wait());
    }

    // Other commands

    void sizesCommandShowsSections()
    {
        BuildFixture fixture(u"arm-none-eabi-"_s);
        fixture.add(u"main.c"_s, "int data[4] = {1}; int bss[8];\nvoid _start(void) { data[0] = bss[0]; }\n");
        fixture.project->set(PropertyKey::LinkFlags, u"-nostdlib"_s);
        QVERIFY(!fixture.environment->commands().first().enabled);
        QVERIFY(fixture.build());
        const ExtensionCommand command = fixture.environment->commands().first();
        QVERIFY(command.enabled);
        QCOMPARE(command.text, u"Show Sizes"_s);
        QCOMPARE(command.whatsThis,
                 u"Shows on the page \"Build\" how much flash and RAM the sections of the program take."_s);
        fixture.events->text.clear();
        fixture.environment->execute(command.id);
        QCOMPARE(fixture.events->text, u"Sizes of 'build/Debug/demo.elf':\n"_s);
        QTRY_VERIFY_WITH_TIMEOUT(fixture.events->text.contains(u"Flash: "_s), 20000);
        QVERIFY(fixture.events->text.contains(u".bss"_s));
        QVERIFY(fixture.events->text.contains(u", RAM: 48 bytes\n"_s));
        QVERIFY(fixture.events->ends.isEmpty());
    }

    void populateAddsNewFiles()
    {
        BuildFixture fixture;
        addSample(fixture);
        fixture.write(u"src/new.c"_s, "");
        fixture.write(u"src/readme.txt"_s, "");
        fixture.write(u"build/old.c"_s, "");
        fixture.write(u".hidden/x.c"_s, "");
        fixture.write(u"other/other.vnp"_s, "<project/>");
        fixture.write(u"other/x.c"_s, "");
        fixture.environment->populate(u"Debug"_s);
        QCOMPARE(fixture.project->paths(),
                 (QStringList{u"src/main.c"_s, u"src/answer.c"_s, u"src/answer.h"_s, u"src/new.c"_s}));
        QCOMPARE(fixture.events->text, u"Files added to the project 'demo': 2\n"_s);
        fixture.environment->populate(u"Debug"_s);
        QCOMPARE(fixture.project->paths().size(), 4);
    }

    void usedLibraryProjectsAreBuiltAndLinked()
    {
        BuildFixture library({}, u"maths"_s);
        library.add(u"answer.c"_s, "int answer(void) { return 42; }\n");
        library.project->set(PropertyKey::TargetType, u"library"_s);
        BuildFixture fixture;
        fixture.add(u"main.c"_s, "int answer(void);\nint main(void) { return answer() - 42; }\n");
        fixture.project->set(PropertyKey::UsedProjects, u"maths"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QCOMPARE(run(fixture.path(u"build/Debug/demo"_s)), 0);
        QVERIFY(fixture.environment->isUpToDate(u"Debug"_s));
        library.write(u"answer.c"_s, "int answer(void) { return 43; }\n");
        QVERIFY(!fixture.environment->isUpToDate(u"Debug"_s));
        QVERIFY(fixture.build());
        QCOMPARE(run(fixture.path(u"build/Debug/demo"_s)), 1);
        library.write(u"answer.c"_s, "broken\n");
        QVERIFY(!fixture.build());
        QVERIFY(!fixture.events->text.contains(u"Project 'demo'"_s));
        library.environment.reset(); // the project leaves the workspace
        fixture.events->text.clear();
        fixture.environment->workspaceChanged();
        QCOMPARE(fixture.events->text, u"The project 'demo' needs the library project 'maths' in the workspace.\n"_s);
    }

    void librariesOfLibrariesAreBuiltAndLinked()
    {
        BuildFixture base({}, u"base"_s);
        base.add(u"base.c"_s, "int base(void) { return 40; }\n");
        BuildFixture top({}, u"top"_s);
        top.add(u"top.c"_s, "int base(void);\nint top(void) { return base() + 2; }\n");
        for (BuildFixture *each : {&base, &top})
            each->project->set(PropertyKey::TargetType, u"library"_s);
        top.project->set(PropertyKey::UsedProjects, u"base"_s);
        BuildFixture fixture;
        fixture.add(u"main.c"_s, "int top(void);\nint main(void) { return top() - 42; }\n");
        fixture.project->set(PropertyKey::UsedProjects, u"top"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QCOMPARE(run(fixture.path(u"build/Debug/demo"_s)), 0);
        fixture.project->set(PropertyKey::Flags, u"-DX"_s, u"Release"_s);
        fixture.project->set(PropertyKey::UsedProjects, u"top"_s, u"Release"_s);
        QVERIFY(!fixture.build({u"Release"_s}));
        QVERIFY2(fixture.events->text.contains(u"The project 'top' has no configuration 'Release'.\n"_s),
                 qPrintable(fixture.events->text));
    }

    void programIsLinkedWithWhatItsLibrariesNeed()
    {
        BuildFixture library({}, u"maths"_s);
        library.write(u"vendor/extra.c"_s, "int extra(void) { return 40; }\n");
        const QString object = library.path(u"vendor/extra.o"_s);
        QCOMPARE(QProcess::execute(u"gcc"_s, {u"-c"_s, library.path(u"vendor/extra.c"_s), u"-o"_s, object}), 0);
        QCOMPARE(QProcess::execute(u"ar"_s, {u"rcs"_s, library.path(u"vendor/libextra.a"_s), object}), 0);
        library.add(u"answer.c"_s, "int extra(void);\nint answer(void) { return extra() + 2; }\n");
        library.project->set(PropertyKey::TargetType, u"library"_s);
        library.project->set(PropertyKey::Libraries, u"extra"_s);
        library.project->set(PropertyKey::LibraryDirectories, u"vendor"_s);
        BuildFixture fixture;
        fixture.add(u"main.c"_s, "int answer(void);\nint main(void) { return answer() - 42; }\n");
        fixture.project->set(PropertyKey::UsedProjects, u"maths"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QCOMPARE(run(fixture.path(u"build/Debug/demo"_s)), 0);
    }

    void projectsThatUseEachOtherAreBuiltOnce()
    {
        BuildFixture first({}, u"first"_s);
        BuildFixture second({}, u"second"_s);
        first.add(u"a.c"_s, "int a;\n");
        second.add(u"b.c"_s, "int b;\n");
        for (BuildFixture *each : {&first, &second})
            each->project->set(PropertyKey::TargetType, u"library"_s);
        first.project->set(PropertyKey::UsedProjects, u"second"_s);
        second.project->set(PropertyKey::UsedProjects, u"first"_s);
        QVERIFY(first.build());
        QVERIFY(second.exists(u"build/Debug/libsecond.a"_s));
    }

    // Launchers

    void ccacheReturnsCachedObjects()
    {
        BuildFixture fixture;
        addSample(fixture);
        qputenv("CCACHE_DIR", fixture.path(u"cache"_s).toUtf8());
        qunsetenv("CCACHE_DISABLE"); // may be set in the environment of the test
        fixture.project->set(PropertyKey::Launcher, u"ccache"_s);
        QVERIFY2(fixture.build(), qPrintable(fixture.events->text));
        QVERIFY(fixture.build({u"Debug"_s}, true));
        QProcess statistics;
        statistics.start(u"ccache"_s, {u"--print-stats"_s});
        QVERIFY(statistics.waitForFinished());
        qunsetenv("CCACHE_DIR");
        const QString text = QString::fromUtf8(statistics.readAll());
        QVERIFY2(text.contains(u"direct_cache_hit\t2\n"_s), qPrintable(text));
        QVERIFY2(text.contains(u"cache_miss\t2\n"_s), qPrintable(text));
    }

    void distccSendsFilesToItsHosts_data()
    {
        QTest::addColumn<QString>("launcher");
        QTest::newRow("distcc") << u"distcc"_s;
        QTest::newRow("ccache, then distcc") << u"both"_s;
    }

    void distccSendsFilesToItsHosts()
    {
        QFETCH(QString, launcher);
        BuildFixture fixture;
        addSample(fixture);
        QFile(fixture.path({})).setPermissions(QFile::Permissions(0x7777)); // the daemon drops its rights
        fixture.write(u"log"_s, "");
        QFile(fixture.path(u"log"_s)).setPermissions(QFile::Permissions(0x6666));
        ToolProcess daemon;
        const QString port = QString::number(freePort());
        const QStringList arguments = {u"--no-detach"_s, u"--daemon"_s,
                                       u"--allow"_s,     u"127.0.0.1"_s,
                                       u"--listen"_s,    u"127.0.0.1"_s,
                                       u"--port"_s,      port,
                                       u"--jobs"_s,      u"2"_s,
                                       u"--log-level"_s, u"info"_s,
                                       u"--log-file"_s,  fixture.path(u"log"_s),
                                       u"--user"_s,      u"nobody"_s};
        daemon.start({u"distccd"_s, arguments, u"/"_s, QProcessEnvironment::systemEnvironment()});
        QTRY_VERIFY_WITH_TIMEOUT(fixture.read(u"log"_s).contains("listening"), 20000);
        QDir(fixture.path({})).mkdir(u"distcc"_s);
        qputenv("DISTCC_FALLBACK", "0");
        qputenv("DISTCC_DIR", fixture.path(u"distcc"_s).toUtf8());
        qputenv("CCACHE_DIR", fixture.path(u"cache"_s).toUtf8());
        qunsetenv("CCACHE_DISABLE"); // may be set in the environment of the test
        fixture.project->set(PropertyKey::Launcher, launcher);
        fixture.project->set(PropertyKey::DistccHosts, u"127.0.0.1:%1/2"_s.arg(port));
        const bool built = fixture.build();
        for (const char *name : {"DISTCC_FALLBACK", "DISTCC_DIR", "CCACHE_DIR"})
            qunsetenv(name);
        QVERIFY2(built, qPrintable(fixture.events->text));
        QTRY_COMPARE_WITH_TIMEOUT(fixture.read(u"log"_s).count("COMPILE_OK"), 2, 20000);
        QCOMPARE(run(fixture.path(u"build/Debug/demo"_s)), 0);
    }

    // Size

    void projectWithManyFilesIsBuilt()
    {
        BuildFixture fixture;
        for (int i = 0; i < 2000; ++i)
            fixture.add(u"src/module%1/file%2.c"_s.arg(i / 50).arg(i), "int x;\n");
        QVERIFY(!fixture.environment->isUpToDate(u"Debug"_s));
        fixture.environment->build({u"Debug"_s}, false);
        QTRY_VERIFY_WITH_TIMEOUT(fixture.events->text.contains(u"[1/2001] "_s), 20000);
        fixture.environment->stop();
        QVERIFY(!fixture.wait());
        QCOMPARE(fixture.read(u"build/Debug/build.ninja"_s).count("\nbuild "), 2001);
        QVERIFY(!fixture.environment->isUpToDate(u"Debug"_s));
    }

private:
    static int freePort()
    {
        const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        ::bind(socket, reinterpret_cast<sockaddr *>(&address), size);
        ::getsockname(socket, reinterpret_cast<sockaddr *>(&address), &size);
        ::close(socket);
        return ntohs(address.sin_port);
    }
};

QTEST_GUILESS_MAIN(TestGnuBuild)
#include "tst_gnubuild.moc"
