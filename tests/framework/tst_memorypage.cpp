#include "memorypage.h"
#include <limits>
#include <QTest>

using namespace Qt::StringLiterals;

class MemoryPageTest : public QObject
{
    Q_OBJECT

private:
    /// A page of 16-bit words in a region of bytes: two rows of four words, read from its start.
    static MemoryPage page(quint64 low = 0x1000, quint64 high = 0x10FF)
    {
        MemoryPage page;
        page.setRegion({u"RAM"_s, 7, low, high, false, IMemory::Byte | IMemory::Word16}, 2);
        page.setAddress(low);
        page.setSize(2, 30);
        MemoryCache cache = page.request();
        for (uint i = 0; i < 8; ++i)
            cache.block.append({0xA000 + i, IMemory::Success});
        page.setCache(cache);
        page.buildLines();
        return page;
    }

    static QString changes(const MemoryPage &page)
    {
        QStringList texts;
        for (const MemoryPage::Change &change : page.changes())
            texts.append(u"%1=%2"_s.arg(change.address, 0, 16).arg(change.value, 0, 16));
        return texts.join(u' ');
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void linesHaveTheWordsThatWereRead()
    {
        const MemoryPage shown = page();
        QCOMPARE(shown.columns(), 4);
        QCOMPARE(shown.cellsToRead(), 8);
        QCOMPARE(shown.lines().size(), 2);
        QCOMPARE(shown.lines()[1].address, quint64(0x1008));
        QCOMPARE(shown.lines()[1].cells[2].value, 0xA006u);
    }

    void wordsOutsideTheCacheHaveNoMemory()
    {
        MemoryPage shown = page();
        shown.setAddress(0x1008);
        shown.buildLines();
        QCOMPARE(shown.lines()[0].cells[0].value, 0xA004u);
        QCOMPARE(shown.lines()[1].cells[0].status, int(IMemory::NoMemory));
        shown.setWidth(1);
        shown.buildLines();
        QCOMPARE(shown.lines()[0].cells[0].status, int(IMemory::NoMemory));
    }

    void addressIsAlignedToWords()
    {
        MemoryPage shown = page();
        shown.setAddress(0x1003);
        QCOMPARE(shown.address(), quint64(0x1002));
    }

    void digitOfAWordIsReplaced()
    {
        MemoryPage shown = page(); // "1000 A000 A001 ..."
        QCOMPARE(shown.setDigit(0, 11, 0xF), 10);
        QCOMPARE(shown.setDigit(1, 8, 0xE), 5);
        QCOMPARE(changes(shown), u"1002=af01 1008=a00e"_s);
        shown.buildLines();
        QCOMPARE(changes(shown), QString());
    }

    void placeWithoutDigitIsNotReplaced()
    {
        MemoryPage shown = page();
        const QList<std::pair<int, int>> places{{0, 9}, {0, 4}, {0, 25}, {-1, 5}, {2, 5}};
        for (const auto &[line, index] : places)
            QCOMPARE(shown.setDigit(line, index, 1), -1);
        QCOMPARE(changes(shown), QString());
    }

    void scrollUnitIsALine()
    {
        MemoryPage shown = page();
        QCOMPARE(shown.lastUnit(), 31);
        QCOMPARE(shown.unitsPerPage(), 2);
        QCOMPARE(shown.addressOfUnit(3), quint64(0x1018));
        shown.setAddress(0x1018);
        QCOMPARE(shown.unit(), 3);
        QCOMPARE(shown.addressOfUnit(99), quint64(0x10FF));
        QCOMPARE(shown.addressOfUnit(-1), quint64(0x1000));
    }

    void scrollUnitIsSeveralLinesInALargeRegion()
    {
        MemoryPage shown = page(0, 0xFFFFFFFF);
        shown.setWidth(1);
        shown.setSize(2, 0); // one byte in a line
        QCOMPARE(shown.lastUnit(), int(0xFFFFFFFF / 3));
        QCOMPARE(shown.addressOfUnit(1), quint64(3));
        QCOMPARE(shown.unitsPerPage(), 1);
    }

    void regionAtTheEndOf64BitsIsShownToItsEnd()
    {
        MemoryPage shown = page(0xFFFFFFFFFFFFFFF0, 0xFFFFFFFFFFFFFFFF);
        shown.setSize(9, 40); // lines of four words
        QCOMPARE(shown.cellsToRead(), 8);
        shown.buildLines();
        QCOMPARE(shown.lines().size(), 2);
        QCOMPARE(shown.lines()[1].address, quint64(0xFFFFFFFFFFFFFFF8));
        QCOMPARE(shown.lastUnit(), 1);
        shown.setAddress(0xFFFFFFFFFFFFFFFE);
        QCOMPARE(shown.cellsToRead(), 1);
    }

    void scrollBarReachesAllOf64Bits()
    {
        MemoryPage shown = page(0, 0xFFFFFFFFFFFFFFFF);
        shown.setWidth(1);
        shown.setSize(2, 0); // one byte in a line
        QVERIFY(shown.lastUnit() > 0);
        QVERIFY(shown.addressOfUnit(shown.lastUnit()) > 0xFFFFFFFE00000000);
        QCOMPARE(shown.addressOfUnit(std::numeric_limits<int>::max()), quint64(0xFFFFFFFFFFFFFFFF));
        QCOMPARE(shown.unitsPerPage(), 1);
    }

    void narrowRegionIsReadToTheEndOf32Bits()
    {
        MemoryPage shown = page(0xFFFFFFF0, 0xFFFFFFFF);
        shown.setSize(9, 40);
        QCOMPARE(shown.cellsToRead(), 8);
    }

    void clearedPageHasNothingToReadOrScroll()
    {
        MemoryPage shown = page();
        shown.clear();
        QVERIFY(shown.lines().isEmpty());
        QCOMPARE(shown.lastUnit(), 0);
        QCOMPARE(shown.unit(), 0);
    }
};

QTEST_MAIN(MemoryPageTest)
#include "tst_memorypage.moc"
