#include "builddescription.h"
#include <QTest>
using namespace Qt::StringLiterals;

class TestBuildDescription : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    /// Some extensions of assembler files are not known to the compiler.
    void languageOfAssemblerIsNamedInTheCommand()
    {
        BuildDescription description;
        SourceFile source;
        source.path = u"a.asm"_s;
        source.language = Language::Assembler;
        const QString words = u"-x assembler -c a.asm"_s;
        QVERIFY(description.compileCommand(source).join(u' ').contains(words));
        source.language = Language::C;
        QVERIFY(!description.compileCommand(source).contains(u"-x"_s));
    }

    void objectNamesNeedNoQuotes_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("object");
        QTest::newRow("in the project") << u"main.c"_s << u"b/obj/main.c.o"_s;
        QTest::newRow("in a directory") << u"src/x_1/main.c"_s << u"b/obj/src/x_1/main.c.o"_s;
        QTest::newRow("above") << u"../../lib/a.c"_s << u"b/obj/%up/%up/lib/a.c.o"_s;
        QTest::newRow("anywhere") << u"/usr/src/a.c"_s << u"b/obj/%root/usr/src/a.c.o"_s;
        QTest::newRow("above the root") << u"/../../a.c"_s << u"b/obj/%root/%up/%up/a.c.o"_s;
        QTest::newRow("strange letters") << u"a b$'\"%.c"_s << u"b/obj/a%20b%24%27%22%25.c.o"_s;
        QTest::newRow("non-ASCII") << u"ü.c"_s << u"b/obj/%c3%bc.c.o"_s;
        QTest::newRow("dots in a name") << u"a..c"_s << u"b/obj/a..c.o"_s;
    }

    void objectNamesNeedNoQuotes()
    {
        QFETCH(QString, source);
        QTEST(objectFileName(u"b"_s, source), "object");
    }

    void configurationNamesAreEncodedAsDirectories_data()
    {
        QTest::addColumn<QString>("configuration");
        QTest::addColumn<QString>("directory");
        QTest::newRow("plain") << u"Debug"_s << u"Debug"_s;
        QTest::newRow("blank") << u"My Debug"_s << u"My Debug"_s;
        QTest::newRow("slash") << u"a/b"_s << u"a%2Fb"_s;
        QTest::newRow("its code") << u"a%2Fb"_s << u"a%252Fb"_s;
        QTest::newRow("up") << u".."_s << u"%2E."_s;
        QTest::newRow("empty") << u""_s << u"%2E"_s;
    }

    void configurationNamesAreEncodedAsDirectories()
    {
        QFETCH(QString, configuration);
        QTEST(configurationDirectoryName(configuration), "directory");
    }

    void distccSlotsAreAddedUp_data()
    {
        QTest::addColumn<QString>("hosts");
        QTest::addColumn<int>("slots");
        QTest::newRow("none") << u""_s << 0;
        QTest::newRow("limits") << u"localhost/2 builder:3632/8,lzo"_s << 10;
        QTest::newRow("no limit") << u"a b/1"_s << 5;
        QTest::newRow("options") << u"--randomize a/3 +zeroconf"_s << 3;
    }

    void distccSlotsAreAddedUp()
    {
        QFETCH(QString, hosts);
        QTEST(distccSlots(hosts), "slots");
    }

    void cppSourceSelectsTheCppLinker()
    {
        BuildDescription description;
        description.prefix = u"x-"_s;
        description.sources = {{u"a.c"_s, Language::C, u"a.o"_s, {}}};
        QCOMPARE(description.linker(), u"x-gcc"_s);
        description.sources += {u"b.cpp"_s, Language::Cpp, u"b.o"_s, {}};
        QCOMPARE(description.linker(), u"x-g++"_s);
    }

    void imageIsNextToTheProgram()
    {
        BuildDescription description;
        description.output = u"build/fw.elf"_s;
        QCOMPARE(description.imageFileName(), QString());
        description.image = BuildDescription::Image::Hex;
        QCOMPARE(description.imageFileName(), u"build/fw.hex"_s);
        description.output = u"build/fw.v2"_s;
        description.image = BuildDescription::Image::Binary;
        QCOMPARE(description.imageFileName(), u"build/fw.v2.bin"_s);
        description.target = BuildDescription::Target::Library;
        QCOMPARE(description.imageFileName(), QString());
    }
};

QTEST_GUILESS_MAIN(TestBuildDescription)
#include "tst_builddescription.moc"
