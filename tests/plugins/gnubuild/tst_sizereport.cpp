#include "sizereport.h"
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
        QCOMPARE(readSections(Listing), (QList<SectionSize>{{u".vectors"_s, 0, 0xc0, true, false},
                                                            {u".text"_s, 0xc0, 0x3e8, true, false},
                                                            {u".data"_s, 0x20000000, 0x10, true, true},
                                                            {u".bss"_s, 0x20000010, 0x100, false, true}}));
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
};

QTEST_GUILESS_MAIN(TestSizeReport)
#include "tst_sizereport.moc"
