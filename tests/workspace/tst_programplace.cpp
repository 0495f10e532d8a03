#include "programplace.h"
#include <QTest>

using namespace Qt::StringLiterals;

class ProgramPlaceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void nameHoldsKeyAndProcessor()
    {
        QCOMPARE(disassemblyName(1u, u"fw"_s), u"disassembler:0x00000001:fw"_s);
        QCOMPARE(disassemblyName(0xfedcba98u, {}), u"disassembler:0xfedcba98:"_s);
    }

    void namesAreRead_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("disassembly");
        QTest::addColumn<uint>("key");
        QTest::newRow("small") << u"disassembler:0x00000001:fw"_s << true << 1u;
        QTest::newRow("large") << u"disassembler:0xfedcba98:fw"_s << true << 0xfedcba98u;
        QTest::newRow("upper case digits") << u"disassembler:0xFEDCBA98:fw"_s << true << 0xfedcba98u;
        QTest::newRow("without processor") << u"disassembler:0x00000010"_s << true << 0x10u;
        QTest::newRow("alone") << u"disassembler:"_s << true << 0u;
        QTest::newRow("no digits") << u"disassembler:0xfirmware:"_s << true << 0u;
        QTest::newRow("too few digits") << u"disassembler:0x12:fw"_s << true << 0u;
        QTest::newRow("without 0x") << u"disassembler:00000001:fw"_s << true << 0u;
        QTest::newRow("cut off") << u"disassembler"_s << false << 0u;
        QTest::newRow("upper case") << u"Disassembler:0x00000001:fw"_s << false << 0u;
        QTest::newRow("a file") << u"/src/disassembler:0x00000001:fw"_s << false << 0u;
        QTest::newRow("nothing") << QString() << false << 0u;
    }

    void namesAreRead()
    {
        QFETCH(QString, name);
        QTEST(isDisassemblyName(name), "disassembly");
        QTEST(keyOfDisassembly(name), "key");
    }

    void processorIsTheThirdPartOfTheName()
    {
        QCOMPARE(processorOfDisassembly(disassemblyName(1u, u"my fw"_s)), u"my fw"_s);
        QCOMPARE(processorOfDisassembly(u"disassembler:0x00000001:a:b"_s), u"a"_s);
        QCOMPARE(processorOfDisassembly(u"disassembler:0x00000001"_s), QString());
        QCOMPARE(processorOfDisassembly(u"/src/disassembler:0x00000001:fw"_s), QString());
    }

    void lineIsTheAddressPlusOne_data()
    {
        QTest::addColumn<uint>("address");
        QTest::addColumn<int>("line");
        QTest::newRow("first") << 0u << 1;
        QTest::newRow("small") << 0x1ac0u << 0x1ac1;
        QTest::newRow("last positive line") << 0x7ffffffeu << 0x7fffffff;
        QTest::newRow("first negative line") << 0x7fffffffu << int(0x80000000);
        QTest::newRow("last") << 0xffffffffu << 0;
    }

    void lineIsTheAddressPlusOne()
    {
        QFETCH(const uint, address);
        QFETCH(const int, line);
        QCOMPARE(lineOfAddress(address), line);
        QCOMPARE(addressOfLine(line), address);
        const ProgramPlace place = ProgramPlace::inDisassembly(address, 7);
        QCOMPARE(place.line(), line);
        QCOMPARE(place.address(), address);
    }

    void sourcePlaceHasFileAndLineOnly()
    {
        const ProgramPlace place = ProgramPlace::inSource(u"main.c"_s, 12);
        QVERIFY(!place.isDisassembly());
        QCOMPARE(place.fileName(), u"main.c"_s);
        QCOMPARE(place.line(), 12);
        QCOMPARE(place.address(), 0u);
        QCOMPARE(place.environmentKey(), 0u);
        QVERIFY(place.withoutEnvironment() == place);
    }

    void placesAreReadFromNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("document");   // file name of the place, if a document has the name
        QTest::addColumn<QString>("breakpoint"); // the same, if a breakpoint has it
        QTest::addColumn<uint>("key");
        QTest::newRow("source") << u"src/main.c"_s << u"src/main.c"_s << u"src/main.c"_s << 0u;
        QTest::newRow("no environment") << u"disassembler:"_s << u"disassembler:"_s << u"disassembler:"_s << 0u;
        QTest::newRow("processor is dropped")
            << u"disassembler:0x0000001f:fw"_s << u"disassembler:0x0000001f:"_s << u"disassembler:0x0000001f:"_s << 31u;
        QTest::newRow("no valid key") << u"disassembler:0x1:fw"_s << u"disassembler:"_s << u"disassembler:"_s << 0u;
        QTest::newRow("inside the name") << u"/x/disassembler:0x00000001:fw"_s << u"/x/disassembler:0x00000001:fw"_s
                                         << u"disassembler:0x00000001:"_s << 1u;
    }

    void placesAreReadFromNames()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, document);
        const ProgramPlace fromDocument = ProgramPlace::fromDocument(name, 5);
        QCOMPARE(fromDocument.fileName(), document);
        QCOMPARE(fromDocument.line(), 5);
        QCOMPARE(fromDocument.isDisassembly(), document.startsWith(u"disassembler:"_s));
        const ProgramPlace fromBreakpoint = ProgramPlace::fromBreakpoint(name, 5);
        QTEST(fromBreakpoint.fileName(), "breakpoint");
        QTEST(fromBreakpoint.environmentKey(), "key");
        QCOMPARE(fromBreakpoint.line(), 5);
    }

    void placesAreEqualIfAllPartsAre()
    {
        const ProgramPlace place = ProgramPlace::inDisassembly(0x10, 1);
        QVERIFY(place == ProgramPlace::fromDocument(u"disassembler:0x00000001:fw"_s, 0x11));
        QVERIFY(place != ProgramPlace::inDisassembly(0x10, 2));
        QVERIFY(place != ProgramPlace::inDisassembly(0x11, 1));
        QVERIFY(place != ProgramPlace::inSource(place.fileName(), place.line()));
        QVERIFY(ProgramPlace::inSource(u"a.c"_s, 1) != ProgramPlace::inSource(u"b.c"_s, 1));
        QVERIFY(ProgramPlace::inSource(u"a.c"_s, 1) != ProgramPlace::inSource(u"a.c"_s, 2));
    }

    void placeWithoutEnvironmentKeepsItsAddress()
    {
        const ProgramPlace place = ProgramPlace::inDisassembly(0x10, 1).withoutEnvironment();
        QVERIFY(place == ProgramPlace::inDisassembly(0x10));
        QCOMPARE(place.fileName(), u"disassembler:"_s);
        QCOMPARE(place.line(), 0x11);
    }
};

QTEST_APPLESS_MAIN(ProgramPlaceTest)
#include "tst_programplace.moc"
