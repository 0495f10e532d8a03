#include "builddescription.h"
#include "ninjafile.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
using namespace Qt::StringLiterals;

namespace {
BuildDescription sample()
{
    BuildDescription description;
    description.project = u"demo"_s;
    description.directory = u"/work/demo"_s;
    description.configuration = u"Debug"_s;
    description.buildDirectory = u"build"_s;
    description.configurationDirectory = u"build/Debug"_s;
    description.output = u"build/Debug/demo.elf"_s;
    description.prefix = u"arm-none-eabi-"_s;
    description.flags.c = {u"-mcpu=cortex-m3"_s, u"-DNAME=\"a $b\""_s};
    description.sources = {{u"main.c"_s, Language::C, u"build/Debug/obj/main.c.o"_s, {}},
                           {u"a b.c"_s, Language::C, u"build/Debug/obj/a%20b.c.o"_s, QStringList{u"-O2"_s}}};
    return description;
}

QString textOf(const BuildDescription &description)
{
    return QString::fromUtf8(ninjaFile(description));
}
} // namespace

class TestNinjaFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void wholeFileHasThisText()
    {
        BuildDescription description = sample();
        description.makesMap = true;
        description.linkFlags = {u"-T"_s, u"my board.ld"_s};
        description.linkInputs = {u"my board.ld"_s};
        description.libraries = {u"-lm"_s};
        QCOMPARE(textOf(description).section(u'\n', 1), QString::fromUtf8(R"(ninja_required_version = 1.10
builddir = build/Debug

c_flags = -mcpu=cortex-m3 '-DNAME="a $$b"'

rule c
  command = arm-none-eabi-gcc $c_flags -MMD -MF $out.d -c $in -o $out$and_then
  description = Compiling $in
  depfile = $out.d
  deps = gcc

rule link
  command = arm-none-eabi-gcc -T 'my board.ld' -Xlinker -Map=$out.map -o $out @$out.rsp -lm
  description = Linking $out
  rspfile = $out.rsp
  rspfile_content = $in

build build/Debug/obj/main.c.o: c main.c
build build/Debug/obj/a%20b.c.o: c a$ b.c
  c_flags = -O2

build build/Debug/demo.elf | build/Debug/demo.elf.map: link build/Debug/obj/main.c.o build/Debug/obj/a%20b.c.o | my$ board.ld

default build/Debug/demo.elf
)"));
    }

    void onlyUsedRulesAreWritten()
    {
        BuildDescription description = sample();
        QVERIFY(!textOf(description).contains(u"rule cxx"_s));
        description.sources += {u"x.cpp"_s, Language::Cpp, u"x.o"_s, {}};
        description.sources += {u"y.s"_s, Language::Assembler, u"y.o"_s, {}};
        description.sources += {u"z.S"_s, Language::PreprocessedAssembler, u"z.o"_s, {}};
        const QString text = textOf(description);
        for (const QString &rule : {u"rule c\n"_s, u"rule cxx\n"_s, u"rule as\n"_s, u"rule cpp_as\n"_s})
            QVERIFY2(text.contains(rule), qPrintable(rule));
    }

    void assemblerWithoutPreprocessorHasNoLauncherOrDependencies()
    {
        BuildDescription description = sample();
        description.launcher = {u"ccache"_s};
        description.sources = {{u"y.s"_s, Language::Assembler, u"y.o"_s, {}}};
        QVERIFY(textOf(description).contains(u"command = arm-none-eabi-gcc $as_flags -x assembler -c $in"_s));
        QVERIFY(!textOf(description).contains(u"depfile"_s));
    }

    void launcherIsUsedForCompilersOnly()
    {
        BuildDescription description = sample();
        description.launcher = {u"ccache"_s};
        QCOMPARE(textOf(description).count(u"ccache arm-none-eabi-gcc"_s), 1);
    }

    void librariesImagesAndPostBuildHaveRules()
    {
        BuildDescription description = sample();
        description.target = BuildDescription::Target::Library;
        description.makesMap = true;
        QVERIFY(textOf(description).contains(u"command = rm -f $out && arm-none-eabi-ar rcs $out @$out.rsp\n"_s));
        QVERIFY(!textOf(description).contains(u"map"_s));
        description.target = BuildDescription::Target::Program;
        description.image = BuildDescription::Image::Binary;
        description.postBuild = u"sign \"$OUTPUT\""_s;
        const QString text = textOf(description);
        QVERIFY(text.contains(u"build build/Debug/demo.bin: image build/Debug/demo.elf\n"_s));
        QVERIFY(text.contains(u"sh -c 'sign \"$$OUTPUT\"' && touch $out\n"_s));
        QVERIFY(
            text.contains(u"build build/Debug/postbuild.stamp: post build/Debug/demo.elf build/Debug/demo.bin\n"_s));
        QVERIFY(text.endsWith(u"default build/Debug/demo.elf build/Debug/demo.bin build/Debug/postbuild.stamp\n"_s));
    }

    void eepromHasAFileOfItsOwn()
    {
        BuildDescription description = sample();
        description.makesEeprom = true;
        QVERIFY(!textOf(description).contains(u".eep"_s)); // without a load image
        description.image = BuildDescription::Image::Hex;
        const QString text = textOf(description);
        QVERIFY2(text.contains(
                     u"objcopy -O ihex -R .eeprom -R .fuse -R .lock -R .signature -R .user_signatures $in $out\n"_s),
                 qPrintable(text));
        QVERIFY(text.contains(u"build build/Debug/demo.eep: eeprom build/Debug/demo.elf\n"_s));
        QVERIFY(text.endsWith(u"default build/Debug/demo.elf build/Debug/demo.hex build/Debug/demo.eep\n"_s));
    }

    void unreadableSourceIsRemovedFromItsDependencies()
    {
        BuildDescription description = sample();
        description.sources = {{u"it's.c"_s, Language::C, u"its.o"_s, {}}};
        QVERIFY(textOf(description).contains(u"and_then = $ && sed -i 's|it'\\''s\\.c||' its.o.d\n"_s));
    }

    void pathsAndValuesAreEscaped()
    {
        QCOMPARE(ninjaPath(u"a b:c$d"_s), u"a$ b$:c$$d"_s);
        QCOMPARE(ninjaValue(u"a b:c$d"_s), u"a b:c$$d"_s);
        QVERIFY(isPossibleNinjaPath(u"a 'b\"ü"_s));
        QVERIFY(!isPossibleNinjaPath(u"a|b"_s));
        QVERIFY(isPossibleNinjaValue(u"a|b"_s));
        QVERIFY(!isPossibleNinjaValue(u"a\nb"_s));
    }

    void databaseHasCommandsWithoutLauncher()
    {
        BuildDescription description = sample();
        description.launcher = {u"ccache"_s};
        const QJsonArray entries = QJsonDocument::fromJson(compilationDatabase(description)).array();
        QCOMPARE(entries.size(), 2);
        QCOMPARE(entries[1].toObject(),
                 (QJsonObject{{u"directory"_s, u"/work/demo"_s},
                              {u"file"_s, u"a b.c"_s},
                              {u"output"_s, u"build/Debug/obj/a%20b.c.o"_s},
                              {u"arguments"_s, QJsonArray{u"arm-none-eabi-gcc"_s, u"-O2"_s, u"-c"_s, u"a b.c"_s,
                                                          u"-o"_s, u"build/Debug/obj/a%20b.c.o"_s}}}));
    }
};

QTEST_GUILESS_MAIN(TestNinjaFile)
#include "tst_ninjafile.moc"
