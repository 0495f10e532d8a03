#include "memoryslice.h"
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
constexpr uint AllModes = IMemory::Byte | IMemory::Word16 | IMemory::Word24 | IMemory::Word32;

MemoryRegion region(uint low, uint high, uint modes)
{
    return {u"RAM"_s, 0, 0, 0, low, high, false, modes};
}
} // namespace

class TestMemorySlice : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void firstModePrefersBytesThenSmallWords_data()
    {
        QTest::addColumn<uint>("modes");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("all");
        QTest::newRow("all") << AllModes << u"Byte"_s << u"Byte Word16 Word24 Word32"_s;
        QTest::newRow("words") << 14u << u"Word16"_s << u"Word16 Word24 Word32"_s;
        QTest::newRow("32 before 24") << 12u << u"Word32"_s << u"Word24 Word32"_s;
        QTest::newRow("24 only") << 8u << u"Word24"_s << u"Word24"_s;
        QTest::newRow("none") << 0u << u"Unknown"_s << QString();
        QTest::newRow("an unknown one") << 16u << u"Unknown"_s << QString();
    }

    void firstModePrefersBytesThenSmallWords()
    {
        QFETCH(uint, modes);
        const MemoryRegion memory = region(0, 0xFF, modes);
        QTEST(memoryModeName(firstMemoryMode(memory)), "first");
        QTEST(memoryModeNames(memory).join(u' '), "all");
    }

    void namesOfModesAreReadInAnyCase()
    {
        QCOMPARE(memoryModeOfName(u"bYTe"_s), int(IMemory::Byte));
        QCOMPARE(memoryModeOfName(u"WORD16"_s), int(IMemory::Word16));
        QCOMPARE(memoryModeOfName(u"word24"_s), int(IMemory::Word24));
        QCOMPARE(memoryModeOfName(u"Word32"_s), int(IMemory::Word32));
        QCOMPARE(memoryModeOfName(u"Word"_s), 0);
        QCOMPARE(memoryModeOfName(u"Unknown"_s), 0);
        QCOMPARE(memoryModeOfName(QString()), 0);
    }

    void cellSizeCountsTheSmallestUnitOfTheRegion_data()
    {
        QTest::addColumn<uint>("modes");
        QTest::addColumn<QList<uint>>("sizes"); // of byte, 16, 24, 32 bits and no mode
        QTest::newRow("bytes") << AllModes << QList<uint>{1, 2, 3, 4, 1};
        QTest::newRow("bytes and 32 bits") << 5u << QList<uint>{1, 2, 3, 4, 1};
        QTest::newRow("16 and 32 bits") << 6u << QList<uint>{1, 1, 1, 2, 1};
        QTest::newRow("16 bits") << 2u << QList<uint>{1, 1, 1, 2, 1};
        QTest::newRow("24 bits") << 8u << QList<uint>{1, 1, 1, 1, 1};
        QTest::newRow("32 bits") << 4u << QList<uint>{1, 1, 1, 1, 1};
        QTest::newRow("none") << 0u << QList<uint>{1, 1, 1, 1, 1};
    }

    void cellSizeCountsTheSmallestUnitOfTheRegion()
    {
        QFETCH(uint, modes);
        QList<uint> sizes;
        for (const int mode : {int(IMemory::Byte), int(IMemory::Word16), int(IMemory::Word24), int(IMemory::Word32), 0})
            sizes.append(memoryCellSize(region(0, 0xFF, modes), mode));
        QTEST(sizes, "sizes");
    }

    void sliceIsClippedToTheRegion_data()
    {
        QTest::addColumn<qint64>("first");
        QTest::addColumn<qint64>("end");
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("slice"); // address, units, cells
        const qint64 most = std::numeric_limits<qint64>::max();
        const qint64 least = std::numeric_limits<qint64>::min();
        const int byte = IMemory::Byte;
        QTest::newRow("inside") << 0x120LL << 0x124LL << byte << u"120 4 4"_s;
        QTest::newRow("16 bits") << 0x120LL << 0x124LL << int(IMemory::Word16) << u"120 4 2"_s;
        QTest::newRow("24 bits") << 0x120LL << 0x125LL << int(IMemory::Word24) << u"120 5 1"_s;
        QTest::newRow("part of a word") << 0x120LL << 0x123LL << int(IMemory::Word32) << u"120 3 0"_s;
        QTest::newRow("empty") << 0x120LL << 0x120LL << byte << u"120 0 0"_s;
        QTest::newRow("end below") << 0x123LL << 0x121LL << byte << u"none"_s;
        QTest::newRow("end below, outside") << 3LL << 1LL << byte << u"none"_s;
        QTest::newRow("negative first") << -5LL << 0x102LL << byte << u"100 2 2"_s;
        QTest::newRow("both negative") << -5LL << -7LL << byte << u"100 0 0"_s;
        QTest::newRow("negative end") << 5LL << -1LL << byte << u"none"_s;
        QTest::newRow("everything") << least << most << byte << u"100 ff ff"_s;
        QTest::newRow("the highest address") << 0x1FFLL << 0x200LL << byte << u"1ff 0 0"_s;
        QTest::newRow("below the region") << 0x10LL << 0x20LL << byte << u"100 0 0"_s;
        QTest::newRow("above the region") << 0x300LL << 0x310LL << byte << u"1ff 0 0"_s;
        QTest::newRow("beyond 32 bits") << 0x100000110LL << most << byte << u"1ff 0 0"_s;
    }

    void sliceIsClippedToTheRegion()
    {
        QFETCH(qint64, first);
        QFETCH(qint64, end);
        QFETCH(int, mode);
        const std::optional<MemorySlice> slice = memorySlice(region(0x100, 0x1FF, AllModes), mode, first, end);
        const QString text = slice ? QString::number(slice->address, 16) + u' ' + QString::number(slice->units, 16)
                                         + u' ' + QString::number(slice->cells, 16)
                                   : u"none"_s;
        QTEST(text, "slice");
    }

    void sliceOfAllAddressesDoesNotOverflow()
    {
        const std::optional<MemorySlice> slice =
            memorySlice(region(0, 0xFFFFFFFF, AllModes), IMemory::Byte, 0, std::numeric_limits<qint64>::max());
        QVERIFY(slice);
        QCOMPARE(slice->address, 0u);
        QCOMPARE(slice->units, 0xFFFFFFFFu);
        QCOMPARE(slice->cells, 0xFFFFFFFFu);
    }

    void regionWithItsBoundsExchangedHasNoSlice()
    {
        const std::optional<MemorySlice> slice = memorySlice(region(0x200, 0x100, AllModes), IMemory::Byte, 0, 0x1000);
        QVERIFY(slice);
        QCOMPARE(slice->units, 0u);
    }

    void errorTexts_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("block");
        QTest::newRow("bad pointer") << 1 << u"Bad pointer"_s << u"Bad pointer returned for address 0xABCDEF01"_s;
        QTest::newRow("no memory") << 2 << u"No memory at address"_s << u"No memory at address 0xABCDEF01"_s;
        QTest::newRow("uninitialised") << 3 << u"Uninitialised memory at address"_s
                                       << u"Uninitialised memory at address 0xABCDEF01"_s;
        QTest::newRow("write to ROM") << 4 << u"Attempt to write to ROM"_s
                                      << u"Unknown memory error at address 0xABCDEF01"_s;
        QTest::newRow("unknown") << 5 << u"Unknown memory error"_s << u"Unknown memory error at address 0xABCDEF01"_s;
        QTest::newRow("negative") << -1 << u"Unknown memory error"_s << u"Unknown memory error at address 0xABCDEF01"_s;
    }

    void errorTexts()
    {
        QFETCH(int, status);
        QTEST(memoryErrorText(status), "word");
        QTEST(memoryBlockErrorText(status, 0xABCDEF01), "block");
    }

    void instructionsLoseTheirMarkup_data()
    {
        QTest::addColumn<QString>("richText");
        QTest::addColumn<QString>("plain");
        QTest::newRow("plain") << u"nop"_s << u"nop"_s;
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("tags") << u"<b>mov</b>&nbsp;<i>r0</i>, r1"_s << u"mov r0, r1"_s;
        QTest::newRow("blanks at the ends") << u"&nbsp; \tnop&nbsp;\n"_s << u"nop"_s;
        QTest::newRow("blanks inside of tags stay") << u"<b>&nbsp;nop </b>"_s << u" nop "_s;
        QTest::newRow("only a tag") << u"<br>"_s << QString();
        QTest::newRow("greater-than before a tag") << u"a > b<br>"_s << u"a > b"_s;
        QTest::newRow("nested") << u"<<b>>x"_s << u">x"_s;
        QTest::newRow("unbalanced") << u"<b>ldr</b> r0, <r1"_s << u"ldr r0, <r1"_s;
        QTest::newRow("other entities stay") << u"a &lt; b"_s << u"a &lt; b"_s;
    }

    void instructionsLoseTheirMarkup()
    {
        QFETCH(QString, richText);
        QTEST(plainInstruction(richText), "plain");
    }
};

QTEST_APPLESS_MAIN(TestMemorySlice)
#include "tst_memoryslice.moc"
