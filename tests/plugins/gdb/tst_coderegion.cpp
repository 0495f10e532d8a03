#include "memoryaccess.h"
#include <QTest>

using namespace Qt::StringLiterals;

class tst_CodeRegion : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void regionOfTheCodeIsFirstAndIdsStay()
    {
        MemoryAccess memory(nullptr, nullptr);
        const auto names = [&memory] {
            QString text;
            for (const MemoryRegion &region : memory.regions())
                text += region.name + QString::number(region.id) + u' ';
            return text;
        };
        memory.setCodeAddress(0x100); // there are no regions yet
        QCOMPARE(memory.codeRegion(), nullptr);
        QCOMPARE(names(), QString());
        using Kind = TargetRegion::Kind;
        const RegionTable table(
            {{u"a"_s, 0x100, 0x100, Kind::Rom}, {u"b"_s, 0x200, 0x10, Kind::Ram}, {u"c"_s, 0x300, 0x10, Kind::Ram}});
        memory.setTable(table);
        QCOMPARE(names(), u"a0 b1 c2 "_s);
        memory.setCodeAddress(0x308);
        QCOMPARE(names(), u"c2 a0 b1 "_s);
        QCOMPARE(memory.codeRegion()->name, u"c"_s);
        memory.setCodeAddress(0x900); // in no region
        QCOMPARE(names(), u"c2 a0 b1 "_s);
        memory.setCodeAddress(0x100);
        QCOMPARE(names(), u"a0 b1 c2 "_s);
        memory.setCodeAddress(0x200);
        memory.setTable(table);
        QCOMPARE(names(), u"a0 b1 c2 "_s);
    }
};

QTEST_APPLESS_MAIN(tst_CodeRegion)
#include "tst_coderegion.moc"
