#include "registertable.h"
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_RegisterTable : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void registersAreSortedAndGrouped();
    void rawValuesAreSplitIntoWords();
};

void tst_RegisterTable::registersAreSortedAndGrouped()
{
    const QList<TargetRegister> registers =
        parseRegisterGroups(u" Name         Nr  Rel Offset    Size  Type            Groups\n"
                            " pc           15   15     60       4 *1              general,all,save,restore\n"
                            " r0            0    0      0       4 long            general,all,save,restore\n"
                            " ''           16   16     64       0 int0_t          general\n"
                            " d0           58   58     68       8 double          float,all,save,restore\n"
                            " fpscr        90   90    196       4 long            general,float,all,save,restore\n"
                            " xmm1         41   41    292      16 vec128          save,restore,sse\n"
                            " zmm1        240   85   3620      64 _vec512i        vector,all\n"
                            " mstatus     833   91    200       4 long            csr,all\n"
                            " wide        300   90    900      32 vec256          vector,all\n"
                            " inner       301   90    932       4 long            save,restore\n"
                            " al          152    0   2413       1 int8_t          \n"
                            "*1: Register type's name NULL.\n"_s);
    QStringList lines;
    for (const TargetRegister &entry : registers)
        lines.append(u"%1 %2 %3 %4 %5"_s.arg(entry.number)
                         .arg(entry.info.name)
                         .arg(entry.info.width)
                         .arg(entry.info.group)
                         .arg(entry.info.formats));
    QCOMPARE(
        lines.join(u'\n'),
        u"0 r0 32 General 31\n15 pc 32 General 31\n41 xmm1 128 Vector 4\n58 d0 64 Floating point 4\n90 fpscr 32 Floating point 4\n833 mstatus 32 System 31"_s);
}

void tst_RegisterTable::rawValuesAreSplitIntoWords()
{
    QCOMPARE(registerWords(u"0x00000008"_s), (QList<uint>{8}));
    QCOMPARE(registerWords(u"0x1122334455667788"_s), (QList<uint>{0x55667788, 0x11223344}));
    QCOMPARE(registerWords(u"0xaabb1122334455667788"_s), (QList<uint>{0x55667788, 0x11223344, 0xaabb}));
    QCOMPARE(registerWords(u"{v2_int64 = {0x1, 0x2}, uint128 = 0x00000000000000020000000000000001}"_s),
             (QList<uint>{1, 0, 2, 0}));
    QCOMPARE(registerWords(u"<unavailable>"_s), QList<uint>());
}

QTEST_APPLESS_MAIN(tst_RegisterTable)
#include "tst_registertable.moc"
