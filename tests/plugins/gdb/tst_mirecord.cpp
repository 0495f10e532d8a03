#include "mirecord.h"
#include <QTest>

using namespace Qt::StringLiterals;

class tst_MiRecord : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void recordIsParsed_data();
    void recordIsParsed();
    void numbersAreRead();
    void tooDeepNestingIsKindOther();
    void pointersAreRead_data();
    void pointersAreRead();
    void quotedTextIsReadBackUnchanged_data();
    void quotedTextIsReadBackUnchanged();
};

namespace {
QString text(const MiValue &value);

QString members(const MiValue &value)
{
    QStringList parts;
    for (const MiValue::Member &member : value.members())
        parts.append((member.name.isEmpty() ? QString() : member.name + u'=') + text(member.value));
    return parts.join(u' ');
}

QString text(const MiValue &value)
{
    switch (value.kind()) {
    case MiValue::Kind::Tuple:
        return u'{' + members(value) + u'}';
    case MiValue::Kind::List:
        return u'[' + members(value) + u']';
    case MiValue::Kind::Text:
        return value.text();
    default:
        return u"-"_s;
    }
}

/// "kind token class results text", without empty parts.
QString text(const MiRecord &record)
{
    static const QStringList kinds = {u"other"_s,  u"prompt"_s,  u"result"_s, u"exec"_s, u"status"_s,
                                      u"notify"_s, u"console"_s, u"target"_s, u"log"_s};
    QStringList parts{kinds[int(record.kind)]};
    if (record.token >= 0)
        parts.append(QString::number(record.token));
    parts += {record.className, members(record.results), record.text};
    parts.removeAll(QString());
    return parts.join(u' ');
}
} // namespace

void tst_MiRecord::recordIsParsed_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("expected");
    QTest::newRow("prompt") << QByteArray("(gdb) \n") << u"prompt"_s;
    QTest::newRow("prompt without blank") << QByteArray("(gdb)") << u"prompt"_s;
    QTest::newRow("answer") << QByteArray("12^done\r\n") << u"result 12 done"_s;
    QTest::newRow("answer without token") << QByteArray("^running") << u"result running"_s;
    QTest::newRow("values") << QByteArray(R"(9^done,bkpt={number="1",thread-groups=["i1","i2"]},x="")")
                            << u"result 9 done bkpt={number=1 thread-groups=[i1 i2]} x="_s;
    QTest::newRow("list of named values") << QByteArray(R"(^done,stack=[frame={level="0"},frame={level="1"}])")
                                          << u"result done stack=[frame={level=0} frame={level=1}]"_s;
    QTest::newRow("empty list and tuple") << QByteArray("^done,a=[],b={}") << u"result done a=[] b={}"_s;
    QTest::newRow("stop whose reason is not first")
        << QByteArray(R"(*stopped,hw-awpt={number="2",exp="x"},reason="access-watchpoint-trigger")")
        << u"exec stopped hw-awpt={number=2 exp=x} reason=access-watchpoint-trigger"_s;
    QTest::newRow("stop without reason") << QByteArray(R"(*stopped,frame={addr="0x42"},stopped-threads="all")")
                                         << u"exec stopped frame={addr=0x42} stopped-threads=all"_s;
    QTest::newRow("progress") << QByteArray(R"(+download,{section=".text",total-size="10"})")
                              << u"status download {section=.text total-size=10}"_s;
    QTest::newRow("notice") << QByteArray(R"(=thread-group-exited,id="i1")") << u"notify thread-group-exited id=i1"_s;
    QTest::newRow("letters beyond ASCII") << QByteArray(R"(~"n\303\244t")") << u"console n\u00e4t"_s;
    QTest::newRow("escapes") << QByteArray(R"(&"a\"b\\c\td\033[0m")") << u"log a\"b\\c\td\033[0m"_s;
    QTest::newRow("target's output") << QByteArray(R"(@"hello\n")") << u"target hello\n"_s;
    QTest::newRow("a program's own line") << QByteArray("hello, world") << u"other hello, world"_s;
    QTest::newRow("a program's line that looks like one") << QByteArray("*stopped here") << u"other *stopped here"_s;
    QTest::newRow("cut off") << QByteArray(R"(^done,a={b="c)") << u"other ^done,a={b=\"c"_s;
    QTest::newRow("cut off in an escape") << QByteArray("~\"a\\") << u"other ~\"a\\"_s;
    QTest::newRow("too much") << QByteArray(R"(~"a"b)") << u"other ~\"a\"b"_s;
    QTest::newRow("comma without value") << QByteArray("^done,") << u"result done"_s;
    QTest::newRow("two commas") << QByteArray(R"(^done,a="1",,b="2")") << u"other ^done,a=\"1\",,b=\"2\""_s;
    QTest::newRow("no comma") << QByteArray(R"(^done,a={b="1"c="2"})") << u"other ^done,a={b=\"1\"c=\"2\"}"_s;
    QTest::newRow("empty") << QByteArray() << u"other"_s;
    QTest::newRow("token too large") << QByteArray("99999999999^done") << u"result done"_s;
}

void tst_MiRecord::recordIsParsed()
{
    QFETCH(QByteArray, line);
    QTEST(text(parseMiRecord(line)), "expected");
}

void tst_MiRecord::numbersAreRead()
{
    const MiValue results = parseMiRecord(R"(^done,a="0x0000000000400000",b="12",c="<MULTIPLE>")").results;
    QCOMPARE(results.address(u"a"), 0x400000u);
    QCOMPARE(results.number(u"b"), 12);
    QCOMPARE(results.address(u"c"), 0u);
    QCOMPARE(results.number(u"none", 5), 5);
    QVERIFY(results.contains(u"c") && !results.contains(u"d"));
    QCOMPARE(parseMiRecord(R"(7^error,msg="no")").errorText(), u"no"_s);
    QCOMPARE(parseMiRecord(R"(7^done,msg="no")").errorText(), QString());
}

void tst_MiRecord::tooDeepNestingIsKindOther()
{
    QCOMPARE(parseMiRecord("^done,a=" + QByteArray(60, '[') + QByteArray(60, ']')).kind, MiRecord::Kind::Result);
    QCOMPARE(parseMiRecord("^done,a=" + QByteArray(100000, '[')).kind, MiRecord::Kind::Other);
}

void tst_MiRecord::pointersAreRead_data()
{
    QTest::addColumn<QString>("printed");
    QTest::addColumn<quint64>("value");
    QTest::newRow("number") << u"5368709120"_s << Q_UINT64_C(5368709120);
    QTest::newRow("function") << u"(unsigned char (*)(unsigned char)) 0x90 <twice>"_s << Q_UINT64_C(0x90);
    QTest::newRow("variable") << u"(volatile unsigned char *) 0x800100 <count>"_s << Q_UINT64_C(0x800100);
    QTest::newRow("without a symbol") << u"(int *) 0x20000000"_s << Q_UINT64_C(0x20000000);
    QTest::newRow("without a type") << u"0x68 <__trampolines_start>"_s << Q_UINT64_C(0x68);
    QTest::newRow("C++") << u"(void (*)(std::map<int, int> &)) 0x1139 <f(std::map<int, int>&)>"_s << Q_UINT64_C(0x1139);
    QTest::newRow("no number") << u"<optimized out>"_s << Q_UINT64_C(0);
}

void tst_MiRecord::pointersAreRead()
{
    QFETCH(QString, printed);
    QTEST(pointerValue(printed), "value");
}

void tst_MiRecord::quotedTextIsReadBackUnchanged_data()
{
    QTest::addColumn<QString>("plain");
    for (const QString &plain :
         {u"main"_s, u"a b.elf"_s, u"say \"hi\""_s, u"C:\\x"_s, u"n\u00e4t"_s, u"a\nb"_s, QString(u""_s)})
        QTest::newRow(qPrintable(plain)) << plain;
}

void tst_MiRecord::quotedTextIsReadBackUnchanged()
{
    QFETCH(QString, plain);
    QCOMPARE(parseMiRecord("^done,x=" + miQuoted(plain)).results.text(u"x"), plain);
}

QTEST_APPLESS_MAIN(tst_MiRecord)
#include "tst_mirecord.moc"
