#include "memorylayout.h"
#include <QTest>

using namespace Qt::StringLiterals;

class MemoryLayoutTest : public QObject
{
    Q_OBJECT

private:
    static MemoryRegion64 region(uint modes, quint64 low = 0, quint64 high = 0xFFFF)
    {
        return {u"RAM"_s, 1, low, high, false, modes};
    }
    static void expect(const char *message) { QTest::ignoreMessage(QtWarningMsg, message); }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void eachWidthHasAMode()
    {
        QCOMPARE(memoryMode(1), 1);
        QCOMPARE(memoryMode(2), 2);
        QCOMPARE(memoryMode(3), 8);
        QCOMPARE(memoryMode(4), 4);
    }

    void unknownWidthIsLoggedAndTakenAsBytes()
    {
        for (const int width : {-1, 0, 5}) {
            expect("Undefined memory width");
            QCOMPARE(memoryMode(width), int(IMemory::Byte));
        }
    }

    void widestSupportedWidthIsChosen()
    {
        QCOMPARE(widestWidth(region(1 | 2 | 8 | 4)), 4);
        QCOMPARE(widestWidth(region(1 | 2 | 8)), 3);
        QCOMPARE(widestWidth(region(1 | 2)), 2);
        QCOMPARE(widestWidth(region(1)), 1);
        expect("Unsupported memory mode");
        QCOMPARE(widestWidth(region(0)), 1);
        QVERIFY(!supportsWidth(region(0), 1));
        QVERIFY(!supportsWidth(region(~0U), 0));
        QVERIFY(!supportsWidth(region(~0U), 5));
    }

    void stepCountsTheSmallestUnitsOfTheRegion_data()
    {
        QTest::addColumn<uint>("modes");
        QTest::addColumn<int>("width");
        QTest::addColumn<uint>("step");
        QTest::newRow("bytes") << 15U << 1 << 1U;
        QTest::newRow("16 bits of bytes") << 15U << 2 << 2U;
        QTest::newRow("24 bits of bytes") << 15U << 3 << 3U;
        QTest::newRow("32 bits of bytes") << 15U << 4 << 4U;
        QTest::newRow("16 bits alone") << 2U << 2 << 1U;
        QTest::newRow("24 bits alone") << 8U << 3 << 1U;
        QTest::newRow("24 bits beside 16") << 10U << 3 << 1U;
        QTest::newRow("32 bits of 16") << 6U << 4 << 2U;
        QTest::newRow("32 bits alone") << 4U << 4 << 1U;
        QTest::newRow("32 bits beside 24") << 12U << 4 << 1U;
    }
    void stepCountsTheSmallestUnitsOfTheRegion()
    {
        QFETCH(uint, modes);
        QFETCH(int, width);
        QFETCH(uint, step);
        QCOMPARE(memoryStep(region(modes), width), step);
    }

    void stepOfAnUnsupportedWidthIsLoggedAndOne()
    {
        for (const int width : {1, 4, 0, 7}) {
            expect("Unsupported memory mode");
            QCOMPARE(memoryStep(region(IMemory::Word16), width), 1U);
        }
    }

    void valuesAreMaskedToTheWidth()
    {
        QCOMPARE(maskedWord(0x12345678, 1), 0x78U);
        QCOMPARE(maskedWord(0x12345678, 2), 0x5678U);
        QCOMPARE(maskedWord(0x12345678, 3), 0x345678U);
        QCOMPARE(maskedWord(0x12345678, 4), 0x12345678U);
    }

    void columnsAreTheLargestPowerOfTwoThatFits_data()
    {
        QTest::addColumn<int>("characters");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("columns");
        QTest::newRow("16 bytes") << 3 + 8 + 64 << 1 << 16;
        QTest::newRow("a character less") << 3 + 8 + 63 << 1 << 8;
        QTest::newRow("almost 32 bytes") << 3 + 8 + 127 << 1 << 16;
        QTest::newRow("one byte") << 3 + 8 + 4 << 1 << 1;
        QTest::newRow("three bytes") << 3 + 8 + 12 << 1 << 2;
        QTest::newRow("8 words of 16 bits") << 3 + 8 + 40 << 2 << 8;
        QTest::newRow("7 words of 16 bits") << 3 + 8 + 39 << 2 << 4;
        QTest::newRow("4 words of 24 bits") << 3 + 8 + 28 << 3 << 4;
        QTest::newRow("2 words of 32 bits") << 3 + 8 + 18 << 4 << 2;
        QTest::newRow("no room") << 5 << 4 << 1;
        QTest::newRow("nothing") << 0 << 1 << 1;
    }
    void columnsAreTheLargestPowerOfTwoThatFits()
    {
        QFETCH(int, characters);
        QFETCH(int, width);
        QTEST(memoryColumns(characters, 8, width), "columns");
    }

    void editRangeIsTheWordsOfALine()
    {
        const auto range = [](int columns, int width) {
            const MemoryEditRange range = memoryEditRange(8, columns, width);
            return std::pair(range.first, range.last);
        };
        QCOMPARE(range(16, 1), std::pair(9, 9 + 16 * 3 - 2));
        QCOMPARE(range(8, 2), std::pair(9, 9 + 8 * 5 - 2));
        QCOMPARE(range(4, 3), std::pair(9, 9 + 4 * 7 - 2));
        QCOMPARE(range(1, 4), std::pair(9, 9 + 7));
        expect("MemoryWindow::editRange: unsupported memory mode");
        QVERIFY(!memoryEditRange(8, 4, 5).contains(9));
    }

    void aTypedTextIsANumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<quint64>("value");
        QTest::newRow("zero") << u"0"_s << quint64(0);
        QTest::newRow("hexadecimal") << u"0x100"_s << quint64(256);
        QTest::newRow("upper case") << u"0XFf"_s << quint64(255);
        QTest::newRow("octal") << u"0100"_s << quint64(64);
        QTest::newRow("decimal") << u"100"_s << quint64(100);
        QTest::newRow("digits without a base") << u"ff"_s << quint64(0);
        QTest::newRow("no octal digit") << u"09"_s << quint64(0);
        QTest::newRow("prefix alone") << u"0x"_s << quint64(0);
        QTest::newRow("nothing") << QString() << quint64(0);
        QTest::newRow("blanks before it") << u" \t0x10"_s << quint64(16);
        QTest::newRow("x at the wrong place") << u"1x2"_s << quint64(0);
        QTest::newRow("two prefixes") << u"0x0x1"_s << quint64(0);
        QTest::newRow("the last address") << u"0xFFFFFFFF"_s << quint64(0xFFFFFFFF);
        QTest::newRow("beyond 32 bits") << u"0x100000000"_s << quint64(0x100000000);
        QTest::newRow("far beyond 32 bits") << u"0x123456789A"_s << quint64(0x123456789A);
        QTest::newRow("the last one of 64 bits") << u"0xffffffffffffffff"_s << ~quint64(0);
        QTest::newRow("decimal") << u"18446744073709551614"_s << ~quint64(1);
        QTest::newRow("beyond 64 bits") << u"0x10000000000000000"_s << ~quint64(0);
        QTest::newRow("decimal beyond 64 bits") << u"99999999999999999999"_s << ~quint64(0);
    }
    void aTypedTextIsANumber()
    {
        QFETCH(QString, text);
        QTEST(typedMemoryAddress(text), "value");
    }

    void addressesAreMovedIntoTheRegion()
    {
        const MemoryRegion64 ram = region(1, 0x100, 0x1FF);
        QCOMPARE(addressInRegion(0, ram, 16), quint64(0x100));
        QCOMPARE(addressInRegion(0x100, ram, 16), quint64(0x100));
        QCOMPARE(addressInRegion(0x10F, ram, 16), quint64(0x100)); // in the first line
        QCOMPARE(addressInRegion(0x110, ram, 16), quint64(0x110));
        QCOMPARE(addressInRegion(0x1FF, ram, 16), quint64(0x1FF));
        QCOMPARE(addressInRegion(0x200, ram, 16), quint64(0x1FF));
        QCOMPARE(addressInRegion(~quint64(0), ram, 16), quint64(0x1FF));
        QCOMPARE(addressInRegion(0x80, region(1, 0x100, 0x50), 16), quint64(0x100)); // ends before it starts
    }

    void narrowRegionsBecomeWideOnes()
    {
        const MemoryRegion64 wide = wideRegion({u"Flash"_s, 7, 0, 0, 0x100, 0xffffffff, true, 5});
        QCOMPARE(wide.name, u"Flash"_s);
        QCOMPARE(wide.id, 7);
        QCOMPARE(wide.lowAddress, quint64(0x100));
        QCOMPARE(wide.highAddress, quint64(0xffffffff));
        QVERIFY(wide.readOnly);
        QCOMPARE(wide.modes, 5u);
        QVERIFY(isNarrow(wide));
        QVERIFY(!isNarrow(region(1, 0, 0x100000000)));
    }

    void linesShowAddressWordsAndCharacters()
    {
        MemoryLine line{0x1A0, {{0, 0x41}, {0, 0x1F}, {3, 0x7F}, {2, 0x42}, {0, 0x80}, {0, 0x20}}};
        QCOMPARE(memoryLineText(line, 4, 1), u"01A0 41 1F 7F ?? 80 20 A.\x7F"
                                             "B. "_s);
        line.cells = {{0, 0xAB}, {1, 0}, {4, 7}};
        QCOMPARE(memoryLineText(line, 8, 2), u"000001A0 00AB ???? ????"_s);
        line.cells = {{3, 0xABCDE}};
        QCOMPARE(memoryLineText(line, 1, 3), u"0 0ABCDE"_s);
        QCOMPARE(memoryLineText({0xFFFFFFF0, {{0, 0xFFFFFFFF}}}, 8, 4), u"FFFFFFF0 FFFFFFFF"_s);
        QCOMPARE(memoryLineText({0, {}}, 2, 4), u"00"_s);
    }

    void addressesAreShownWithAllDigits()
    {
        QCOMPARE(addressDigits(region(1, 0, 0xFFF)), 3);
        QCOMPARE(addressDigits(region(1, 0, 0xFFFFFFFF)), 8);
        QCOMPARE(addressDigits(region(1, 0, 0)), 1);
        QCOMPARE(addressDigits(region(1, 0, 0x7fffffffffff)), 12);
        QCOMPARE(memoryAddressText(0xAB, 4), u"0x00AB"_s);
        QCOMPARE(memoryAddressText(0x7ffffffde010, 12), u"0x7FFFFFFDE010"_s);
        QCOMPARE(memoryAddressText(0xFFFFFFFF, 8), u"0xFFFFFFFF"_s);
    }

    void cacheAnswersOnlyForWhatWasRead()
    {
        const MemoryCache cache{7, IMemory::Word16, 0x100, {{1, 0}, {2, 3}, {3, 2}}};
        const auto text = [&](int region, int mode, quint64 address) {
            const MemoryCell cell = cache.cell(region, mode, address, 2);
            return u"%1 %2"_s.arg(cell.status).arg(cell.value);
        };
        QCOMPARE(text(7, IMemory::Word16, 0x100), u"0 1"_s);
        QCOMPARE(text(7, IMemory::Word16, 0x102), u"3 2"_s);
        QCOMPARE(text(7, IMemory::Word16, 0x104), u"2 3"_s);
        const QString nothing = u"2 0"_s;
        QCOMPARE(text(7, IMemory::Word16, 0x106), nothing);
        QCOMPARE(text(7, IMemory::Word16, 0xFE), nothing);
        QCOMPARE(text(7, IMemory::Word16, 0x101), nothing); // between two words
        QCOMPARE(text(7, IMemory::Word16, 0x100000100), nothing);
        QCOMPARE(text(7, IMemory::Byte, 0x100), nothing);
        QCOMPARE(text(8, IMemory::Word16, 0x100), nothing);
    }
};

QTEST_MAIN(MemoryLayoutTest)
#include "tst_memorylayout.moc"
