#include "regiontable.h"
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_RegionTable : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void addressHasTheFirstRegionThatContainsIt();
    void userRegionsAreReadAndInvalidOnesListed();
    void commonBoardsHaveRegions();
    void memoryTreeGivesRegionsOfTheFirstProcessor();
    void memoryAttributesGiveEnabledRegions();
    void processMapsGiveReadableMappings();
    void exampleOfTheManualIsValid();
};

namespace {
QString text(const RegionTable &table)
{
    static const QStringList kinds = {u"ram"_s, u"rom"_s, u"io"_s};
    QString lines;
    for (const TargetRegion &region : table.regions())
        lines += u"%1 %2+%3 %4\n"_s.arg(region.name, QString::number(region.start, 16),
                                        QString::number(region.length, 16), kinds[int(region.kind)]);
    return lines;
}

RegionTable small()
{
    return RegionTable({{u"a"_s, 0x100, 0x100, TargetRegion::Kind::Rom},
                        {u"b"_s, 0x200, 0x10, TargetRegion::Kind::Ram},
                        {u"c"_s, 0x300, 0x10, TargetRegion::Kind::Io}});
}
} // namespace

void tst_RegionTable::addressHasTheFirstRegionThatContainsIt()
{
    const RegionTable table = small();
    QCOMPARE(table.at(0xff), nullptr);
    QCOMPARE(table.at(0x100)->name, u"a"_s);
    QCOMPARE(table.at(0x1ff)->name, u"a"_s);
    QCOMPARE(table.at(0x200)->name, u"b"_s);
    QCOMPARE(table.at(0x210), nullptr);
    const RegionTable last({{u"top"_s, ~quint64(0) - 15, 16, TargetRegion::Kind::Ram}});
    QCOMPARE(last.at(~quint64(0))->name, u"top"_s);
}

void tst_RegionTable::userRegionsAreReadAndInvalidOnesListed()
{
    QStringList bad;
    QCOMPARE(
        text(parseRegions(u"Flash:0x08000000:1M:rom; RAM : 0x20000000 : 192K : RAM;Dev:1073741824:0x1000:io"_s, &bad)),
        u"Flash 8000000+100000 rom\nRAM 20000000+30000 ram\nDev 40000000+1000 io\n"_s);
    QCOMPARE(bad, QStringList());
    QVERIFY(parseRegions(u"a:b:c:d; ;x:0:4;y:0:0:ram;z:0:4:flash"_s, &bad).isEmpty());
    QCOMPARE(bad, (QStringList{u"a:b:c:d"_s, u"x:0:4"_s, u"y:0:0:ram"_s, u"z:0:4:flash"_s}));
}

void tst_RegionTable::commonBoardsHaveRegions()
{
    QCOMPARE(boardRegions(u"netduinoplus2"_s).at(0x08000000)->kind, TargetRegion::Kind::Rom);
    QCOMPARE(text(boardRegions(u"mps2-an500"_s)), text(boardRegions(u"mps2-an385"_s)));
    QVERIFY(boardRegions(u"unheard-of"_s).isEmpty());
}

void tst_RegionTable::memoryTreeGivesRegionsOfTheFirstProcessor()
{
    const QString tree =
        u"FlatView #0\r\n AS \"memory\", root: system\r\n"
        "  0000000000000000-00000000000000ff (prio 0, ram): wrong\r\n\r\n"
        "FlatView #1\r\n AS \"cpu-memory-0\", root: c\r\n Root memory region: c\r\n"
        "  0000000000000000-000000000003ffff (prio 0, rom): flash\r\n"
        "  0000000020000000-0000000020007fff (prio 0, ram): sram\r\n"
        "  0000000020008000-000000002000ffff (prio 0, ram): sram @0000000000008000\r\n"
        "  0000000040000000-0000000040000fff (prio -1000, i/o): timer\r\n\r\n"
        "FlatView #2\r\n AS \"cpu-memory-1\"\r\n  0000000000000000-000000000003ffff (prio 0, rom): flash\r\n"_s;
    QCOMPARE(text(parseMemoryTree(tree)), u"flash 0+40000 rom\nsram 20000000+10000 ram\ntimer 40000000+1000 io\n"_s);
    QVERIFY(parseMemoryTree(u"unknown command\n"_s).isEmpty());
}

void tst_RegionTable::memoryAttributesGiveEnabledRegions()
{
    QCOMPARE(text(parseMemoryAttributes(
                 u"Using memory regions provided by the target.\nNum Enb Low Addr   High Addr  Attrs\n"
                 "0   y  	0x00000000 0x00008000 flash blocksize 0x80 nocache \n"
                 "1   n  	0x00100000 0x00200000 rw nocache \n"
                 "2   y  	0x00800000 0x00800900 rw nocache \n"_s)),
             u"Flash 0x0 0+8000 rom\nRAM 0x800000 800000+900 ram\n"_s);
    QVERIFY(parseMemoryAttributes(u"There are no memory regions defined.\n"_s).isEmpty());
}

void tst_RegionTable::processMapsGiveReadableMappings()
{
    QCOMPARE(text(parseProcessMaps(u"00400000-00401000 r-xp 00000000 08:01 123 /home/me/my demo\n"
                                   "00600000-00602000 rw-p 00000000 00:00 0\n"
                                   "7ffe0000-7fff0000 ---p 00000000 00:00 0 [stack]\n"_s)),
             u"my demo 0x00400000 400000+1000 rom\nanonymous 0x00600000 600000+2000 ram\n"_s);
}

void tst_RegionTable::exampleOfTheManualIsValid()
{
    QFile page(u"" MANUAL "/memory.html"_s);
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QString example = QString::fromUtf8(page.readAll()).section(u"<pre>\n"_s, 1, 1).section(u"\n</pre>"_s, 0, 0);
    QStringList bad;
    QCOMPARE(parseRegions(example, &bad).regions().size(), 3);
    QCOMPARE(bad, QStringList());
}

QTEST_APPLESS_MAIN(tst_RegionTable)
#include "tst_regiontable.moc"
