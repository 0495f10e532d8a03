#include "environmentkey.h"
#include "iexecutionenvironment.h"
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
/// Addresses that represent environments, which are never called.
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

    void keyIsResolvedToItsEnvironment()
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

    void unknownKeyIsResolvedToNull()
    {
        const uint last = environmentKey(environment(0));
        for (const uint key : {0u, last + 1, last + 0x80000000u, 0xffffffffu})
            QVERIFY(!environmentOfKey(key));
    }

    void environmentThatIsNotKeptIsRemoved()
    {
        const uint first = environmentKey(environment(0));
        const uint second = environmentKey(environment(1));
        keepEnvironments({environment(1), environment(2)});
        QVERIFY(!environmentOfKey(first));
        QCOMPARE(environmentOfKey(second), environment(1));
        QCOMPARE(environmentKey(environment(1)), second);
    }

    void keyIsNeverUsedAgain()
    {
        QSet<uint> given;
        for (int i = 0; i < 100; ++i) {
            const uint key = environmentKey(environment(0)); // a new environment at the same address each time
            QVERIFY(!given.contains(key));
            given.insert(key);
            keepEnvironments({});
            QVERIFY(!environmentOfKey(key));
        }
    }

    void keepingAssignsNoKey()
    {
        const uint before = environmentKey(environment(0));
        keepEnvironments({environment(0), environment(1)});
        QCOMPARE(environmentKey(environment(2)), before + 1);
    }

    void disassemblyNameHasEightDigits()
    {
        const uint key = environmentKey(environment(0));
        const QString digits = u"%1"_s.arg(key, 8, 16, QChar(u'0'));
        QCOMPARE(disassemblyName(environment(0), u"fw"_s), u"disassembler:0x"_s + digits + u":fw"_s);
        QCOMPARE(disassemblyName(environment(0), {}), u"disassembler:0x"_s + digits + u':');
        QCOMPARE(disassemblyName(environment(0), u"fw"_s).indexOf(digits), 15);
    }

    void nameMayContainAnyProcessor_data()
    {
        QTest::addColumn<QString>("processor");
        QTest::newRow("plain") << u"fw"_s;
        QTest::newRow("with place markers") << u"%1 %2"_s;
        QTest::newRow("with colons") << u"a:b:0x12345678:"_s;
        QTest::newRow("none") << QString();
    }

    void nameMayContainAnyProcessor()
    {
        QFETCH(QString, processor);
        const QString name = disassemblyName(environment(0), processor);
        QVERIFY(name.endsWith(u':' + processor));
        QVERIFY(isDisassemblyName(name));
        QCOMPARE(keyOfDisassembly(name), environmentKey(environment(0)));
        QCOMPARE(environmentOfKey(keyOfDisassembly(name)), environment(0));
    }
};

QTEST_GUILESS_MAIN(EnvironmentKeyTest)
#include "tst_environmentkey.moc"
