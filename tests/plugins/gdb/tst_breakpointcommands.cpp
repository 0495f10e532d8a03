#include "breakpointcommands.h"
#include <QTest>

using namespace Qt::StringLiterals;

/// The commands of gdb for breakpoints with conditions and so on.
class BreakpointCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bracesInATextAreExpressions_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QStringList>("expressions");
        QTest::newRow("plain") << u"plain"_s << QStringList();
        QTest::newRow("i is {i}, {a.b[2]}!") << u"i is %s, %s!"_s << QStringList{u"i"_s, u"a.b[2]"_s};
        QTest::newRow("{ i }") << u"%s"_s << QStringList{u"i"_s};
        QTest::newRow("100 % of {i}") << u"100 %% of %s"_s << QStringList{u"i"_s};
        QTest::newRow("{} { } open { and }") << u"{} { } open %s"_s << QStringList{u"and"_s};
        QTest::newRow("{a{b}c}") << u"{a%sc}"_s << QStringList{u"b"_s};
        QTest::newRow("two\nlines") << u"two lines"_s << QStringList();
    }
    void bracesInATextAreExpressions()
    {
        QFETCH(QString, format);
        QFETCH(QStringList, expressions);
        const LogFormat log = logFormat(QString::fromLatin1(QTest::currentDataTag()));
        QCOMPARE(log.format, u"breakpoint> "_s + format + u'\n');
        QCOMPARE(log.expressions, expressions);
    }

    void commandHasTheOptionsThatAreSet()
    {
        BreakpointDetails details;
        QCOMPARE(insertCommand(details, true, "*0x10"), "-break-insert *0x10");
        QCOMPARE(insertCommand(details, false, "*0x10"), "-break-insert -d *0x10");
        details.condition = u"a == \"b\""_s;
        details.hitCount = 5;
        details.thread = 2;
        details.temporary = true;
        QCOMPARE(insertCommand(details, true, "*0x10"), "-break-insert -t -c \"a == \\\"b\\\"\" -i 4 -p 2 *0x10");
        details = {};
        details.logText = u"i {i}"_s;
        details.hitCount = 1;
        QCOMPARE(insertCommand(details, true, "*0x10"),
                 "-dprintf-insert *0x10 \"breakpoint> i %s\\n\" \"($varnel_text0 = $_as_string(i), $varnel_text0)\"");
    }

    void dataCommandsDependOnTheAccess()
    {
        DataBreakpoint point;
        point.expression = u"counter\n+ 1"_s;
        QCOMPARE(watchCommand(point), u"watch -l counter + 1"_s);
        point.access = DataBreakpoint::Read;
        QCOMPARE(watchCommand(point), u"rwatch -l counter + 1"_s);
        point.access = DataBreakpoint::ReadWrite;
        QCOMPARE(watchCommand(point), u"awatch -l counter + 1"_s);
        point = {};
        point.address = 0x20000010;
        QCOMPARE(watchCommand(point), u"watch *(unsigned char *) 0x20000010"_s);
        point.size = 4;
        QCOMPARE(watchCommand(point), u"watch *(unsigned int *) 0x20000010"_s);
    }

    void refusedNumbersAreFound()
    {
        QCOMPARE(refusedBreakpoints(u"Warning:\nCannot insert breakpoint 2.\nCannot access memory at address 0x0\n"
                                    "Cannot insert hardware breakpoint 13.\n"_s),
                 (QList<int>{2, 13}));
        QCOMPARE(refusedBreakpoints(u"Could not insert hardware watchpoint 4."_s), QList<int>{4});
        QCOMPARE(refusedBreakpoints(u"Cannot execute this command"_s), QList<int>());
    }
};

QTEST_APPLESS_MAIN(BreakpointCommandsTest)
#include "tst_breakpointcommands.moc"
