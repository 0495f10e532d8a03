#include "environmentkey.h"
#include "iexecutionenvironment.h"
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
/// Places in memory that stand for environments: these are never called.
IExecutionEnvironment *environment(int number)
{
    static char places[8];
    return reinterpret_cast<IExecutionEnvironment *>(&places[number]);
}
} // namespace

class EnvironmentKeyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void cleanup() { keepEnvironments({}); }

    void aKeyLeadsBackToItsEnvironment()
    {
        const uint first = environmentKey(environment(0));
        const uint second = environmentKey(environment(1));
        QVERIFY(first != 0);
        QVERIFY(second != 0);
        QVERIFY(first != second);
        QCOMPARE(environmentKey(environment(0)), first);
        QCOMPARE(environmentOfKey(first), environment(0));
        QCOMPARE(environmentOfKey(second), environment(1));
    }

    void unknownKeysLeadNowhere()
    {
        const uint last = environmentKey(environment(0));
        for (const uint key : {0u, last + 1, last + 0x80000000u, 0xffffffffu})
            QVERIFY(!environmentOfKey(key));
    }

    void whoIsNotKeptIsForgotten()
    {
        const uint first = environmentKey(environment(0));
        const uint second = environmentKey(environment(1));
        keepEnvironments({environment(1), environment(2)});
        QVERIFY(!environmentOfKey(first));
        QCOMPARE(environmentOfKey(second), environment(1));
        QCOMPARE(environmentKey(environment(1)), second);
    }

    void aKeyIsNeverGivenAgain()
    {
        QSet<uint> given;
        for (int i = 0; i < 100; ++i) {
            const uint key = environmentKey(environment(0)); // another one at the same place, each time
            QVERIFY(!given.contains(key));
            given.insert(key);
            keepEnvironments({});
            QVERIFY(!environmentOfKey(key));
        }
    }

    void beingKeptGivesNoKey()
    {
        const uint before = environmentKey(environment(0));
        keepEnvironments({environment(0), environment(1)});
        QCOMPARE(environmentKey(environment(2)), before + 1);
    }

    void aDisassemblyIsNamedByEightDigits()
    {
        const uint key = environmentKey(environment(0));
        const QString digits = u"%1"_s.arg(key, 8, 16, QChar(u'0'));
        QCOMPARE(disassemblyName(environment(0), u"fw"_s), u"disassembler:0x"_s + digits + u":fw"_s);
        QCOMPARE(disassemblyName(environment(0), {}), u"disassembler:0x"_s + digits + u':');
        QCOMPARE(disassemblyName(environment(0), u"fw"_s).indexOf(digits), 15);
    }

    void namesHoldAnyProcessor_data()
    {
        QTest::addColumn<QString>("processor");
        QTest::newRow("plain") << u"fw"_s;
        QTest::newRow("with places to fill") << u"%1 %2"_s;
        QTest::newRow("with colons") << u"a:b:0x12345678:"_s;
        QTest::newRow("none") << QString();
    }

    void namesHoldAnyProcessor()
    {
        QFETCH(QString, processor);
        const QString name = disassemblyName(environment(0), processor);
        QVERIFY(name.endsWith(u':' + processor));
        QVERIFY(isDisassemblyName(name));
        QCOMPARE(keyOfDisassembly(name), environmentKey(environment(0)));
        QCOMPARE(environmentOfKey(keyOfDisassembly(name)), environment(0));
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
};

QTEST_GUILESS_MAIN(EnvironmentKeyTest)
#include "tst_environmentkey.moc"
