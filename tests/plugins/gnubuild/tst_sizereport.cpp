#include "sizereport.h"
#include <QBuffer>
#include <QTest>
using namespace Qt::StringLiterals;

namespace {
const QString Listing =
    u"\nbuild/fw.elf:     file format elf32-littlearm\n\nSections:\n"
    "Idx Name               Size      VMA       LMA       File off  Algn  Flags\n"
    "  0 .vectors           000000c0  00000000  00000000  00010000  2**2  CONTENTS, ALLOC, LOAD, READONLY, DATA\n"
    "  1 .text              000003e8  000000c0  000000c0  000100c0  2**2  CONTENTS, ALLOC, LOAD, READONLY, CODE\n"
    "  2 .data              00000010  20000000  000004a8  00020000  2**2  CONTENTS, ALLOC, LOAD, DATA\n"
    "  3 .bss               00000100  20000010  20000010  00020010  2**2  ALLOC\n"
    "  4 .empty             00000000  20000110  20000110  00020010  2**0  ALLOC\n"
    " 10 .debug_info        00002000  00000000  00000000  00020010  2**0  CONTENTS, READONLY, DEBUGGING, OCTETS\n"_s;
}

class TestSizeReport : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void sectionsWithMemoryAreRead()
    {
        QCOMPARE(readSections(Listing), (QList<SectionSize>{{u".vectors"_s, 0, 0, 0xc0, true, false},
                                                            {u".text"_s, 0xc0, 0xc0, 0x3e8, true, false},
                                                            {u".data"_s, 0x20000000, 0x4a8, 0x10, true, true},
                                                            {u".bss"_s, 0x20000010, 0x20000010, 0x100, false, true}}));
        QCOMPARE(readSections(u"objdump: 'x': No such file\n"_s), QList<SectionSize>());
    }

    void reportAddsUpFlashAndRam()
    {
        QCOMPARE(sizeReport(readSections(Listing)), u"Section                   Address      Bytes  Memory\n"
                                                    ".vectors               0x00000000        192  flash\n"
                                                    ".text                  0x000000c0       1000  flash\n"
                                                    ".data                  0x20000000         16  flash, RAM\n"
                                                    ".bss                   0x20000010        256  RAM\n"
                                                    "Flash: 1208 bytes, RAM: 272 bytes\n"_s);
    }

    void regionsOfAMapAreRead()
    {
        QBuffer map;
        map.setData("Archive member included\n\nx 0x1 0x2\n\nMemory Configuration\n\n"
                    "Name             Origin             Length             Attributes\n"
                    "FLASH            0x0000000000000000 0x0000000000001000 xr\n"
                    "RAM              0x0000000020000000 0x0000000000000400 xrw\n"
                    "CCM              0x0000000010000000 0x0000000000000400 xrw\n"
                    "*default*        0x0000000000000000 0xffffffffffffffff\n\n"
                    "Linker script and memory map\n\n.text 0x0000000000000000 0x100\n");
        QVERIFY(map.open(QIODevice::ReadOnly));
        const QList<MemorySize> regions = readRegions(map);
        QCOMPARE(regions, (QList<MemorySize>{
                              {u"FLASH"_s, 0, 0x1000}, {u"RAM"_s, 0x20000000, 0x400}, {u"CCM"_s, 0x10000000, 0x400}}));
        // the initial values of .data are in flash, too; a region without contents is not shown
        QCOMPARE(usageLine(readSections(Listing), regions),
                 u"FLASH: 1208 of 4096 bytes (29.5 %), RAM: 272 of 1024 bytes (26.6 %)"_s);
        QVERIFY(sizeReport(readSections(Listing), regions)
                    .endsWith(u"FLASH: 1208 of 4096 bytes (29.5 %)\nRAM: 272 of 1024 bytes (26.6 %)\n"_s));
        QCOMPARE(usageLine(readSections(Listing), {}), u"Flash: 1208 bytes, RAM: 272 bytes"_s);
    }

    void eepromAndFusesAreNotFlash()
    {
        const QList<SectionSize> sections = readSections(
            u"  1 .text   00000010  00000000  00000000  000000d4  2**1  CONTENTS, ALLOC, LOAD, READONLY, CODE\n"
            "  2 .eeprom 00000005  00810000  00810000  0000019a  2**0  CONTENTS, ALLOC, LOAD, DATA\n"
            "  3 .fuse   00000003  00820000  00820000  0000019f  2**0  CONTENTS, ALLOC, LOAD, DATA\n"
            "  4 .lock   00000001  00830000  00830000  000001a2  2**0  CONTENTS, ALLOC, LOAD, DATA\n"_s);
        const QString report = sizeReport(sections);
        QVERIFY2(report.endsWith(u"Flash: 16 bytes, RAM: 0 bytes\n"_s), qPrintable(report));
        QVERIFY2(report.contains(u"          5  EEPROM\n"_s) && report.contains(u"          3  fuses\n"_s),
                 qPrintable(report));
    }
};

QTEST_GUILESS_MAIN(TestSizeReport)
#include "tst_sizereport.moc"
