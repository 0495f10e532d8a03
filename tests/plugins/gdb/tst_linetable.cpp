#include "linetable.h"
#include "mirecord.h"
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_LineTable : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void linesAndAddressesAreFound();
    void linesOfDiscardedCodeAreRemoved_data();
    void linesOfDiscardedCodeAreRemoved();
};

void tst_LineTable::linesAndAddressesAreFound()
{
    LineTable table;
    table.add(
        u"/a.c"_s,
        parseMiRecord(
            R"(^done,lines=[{pc="0x10",line="3"},{pc="0x10",line="4"},{pc="0x18",line="6"},{pc="0x20",line="0"}])")
            .results[u"lines"]);
    table.add(u"/b.c"_s, parseMiRecord(R"(^done,lines=[{pc="0x20",line="9"},{pc="0x30",line="0"}])").results[u"lines"]);
    table.finish();
    QCOMPARE(table.at(0x0f), nullptr);
    QCOMPARE(table.at(0x10)->line, 4);
    QCOMPARE(table.at(0x1f)->line, 6);
    QCOMPARE(table.files().at(table.at(0x20)->file), u"/b.c"_s);
    QCOMPARE(table.at(0x30), nullptr);
    quint64 address = 0;
    QVERIFY(table.addressOf(u"/a.c"_s, 3, &address) && address == 0x10);
    QVERIFY(table.addressOf(u"/b.c"_s, 9, &address) && address == 0x20);
    QVERIFY(!table.addressOf(u"/a.c"_s, 5, &address));
    QVERIFY(!table.addressOf(u"/c.c"_s, 9, &address));
    QCOMPARE(table.starts(), (QList<quint64>{0x10, 0x18, 0x20, 0x30}));
}

void tst_LineTable::linesOfDiscardedCodeAreRemoved_data()
{
    QTest::addColumn<QList<quint64>>("functions");
    QTest::addColumn<bool>("dataAtZero");
    QTest::addColumn<QList<quint64>>("starts");
    const QList<quint64> all{0x0, 0x4, 0x8, 0x10, 0x20};
    QTest::newRow("vectors at 0") << QList<quint64>{0x10} << true << QList<quint64>{0x10, 0x20};
    QTest::newRow("no code of the file is left") << QList<quint64>{} << true << QList<quint64>{};
    QTest::newRow("code begins behind") << QList<quint64>{0x10} << false << QList<quint64>{0x10, 0x20};
    QTest::newRow("function at 0") << QList<quint64>{0x0, 0x10} << false << all;
    QTest::newRow("functions are not known") << QList<quint64>{} << false << all;
    QTest::newRow("functions of other files only") << QList<quint64>{0x40} << false << all;
}

void tst_LineTable::linesOfDiscardedCodeAreRemoved()
{
    QFETCH(QList<quint64>, functions);
    QFETCH(bool, dataAtZero);
    LineTable table;
    table.add(
        u"/a.c"_s,
        parseMiRecord(
            R"(^done,lines=[{pc="0x0",line="3"},{pc="0x4",line="4"},{pc="0x8",line="0"},{pc="0x10",line="9"},{pc="0x20",line="0"}])")
            .results[u"lines"]);
    table.finish(functions, dataAtZero);
    QTEST(table.starts(), "starts");
}

QTEST_APPLESS_MAIN(tst_LineTable)
#include "tst_linetable.moc"
