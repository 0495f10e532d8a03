#include "breakpointtext.h"
#include <QTest>

using namespace Qt::StringLiterals;

/// How places of breakpoints are written and read.
class BreakpointTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void placeIsFormattedAsText_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("text");
        QTest::newRow("file") << u"src/main.c"_s << 12 << u"src/main.c, 12"_s;
        QTest::newRow("odd name") << u"%1, %2.c"_s << 1 << u"%1, %2.c, 1"_s;
        QTest::newRow("address") << u"disassembler:"_s << 0x1AC1 << u"disassembler, 0x1ac0"_s;
        QTest::newRow("first address") << u"disassembler:"_s << 1 << u"disassembler, 0x0"_s;
        QTest::newRow("last address") << u"disassembler:"_s << 0 << u"disassembler, 0xffffffff"_s;
        QTest::newRow("address in a view") << u"disassembler:0x00001234:fw"_s << 17 << u"disassembler, 0x10"_s;
        QTest::newRow("somewhere in the name") << u"/x/disassembler:0x1:fw"_s << 17 << u"disassembler, 0x10"_s;
    }

    void placeIsFormattedAsText()
    {
        QFETCH(QString, file);
        QFETCH(int, line);
        QTEST(breakpointText({file, line}), "text");
    }

    void textIsParsedAsPlace_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("place"); // file|line, with a star for an address; empty for none
        QTest::newRow("file") << u"main.c, 12"_s << u"main.c|12"_s;
        QTest::newRow("no blank") << u"main.c,12"_s << u"main.c|12"_s;
        QTest::newRow("blanks before the line") << u"main.c, \t 12"_s << u"main.c|12"_s;
        QTest::newRow("blanks before the comma") << u"main.c , 12"_s << u"main.c |12"_s;
        QTest::newRow("the last comma counts") << u"a, 3, 12"_s << u"a, 3|12"_s;
        QTest::newRow("no file") << u", 12"_s << u"|12"_s;
        QTest::newRow("blank at the end") << u"main.c, 12 "_s << QString();
        QTest::newRow("line break at the end") << u"main.c, 12\n"_s << QString();
        QTest::newRow("no comma") << u"main.c 12"_s << QString();
        QTest::newRow("no line") << u"main.c,"_s << QString();
        QTest::newRow("line too large") << u"main.c, 2147483648"_s << QString();
        QTest::newRow("address") << u"disassembler, 0x1f"_s << u"*disassembler:|32"_s;
        QTest::newRow("address, capitals") << u"DISASSEMBLER,0X1F"_s << u"*disassembler:|32"_s;
        QTest::newRow("last address") << u"disassembler, 0xffffffff"_s << u"*disassembler:|0"_s;
        QTest::newRow("address too large") << u"disassembler, 0x100000000"_s << QString();
        QTest::newRow("no address") << u"disassembler, 0x"_s << QString();
        QTest::newRow("no digits of an address") << u"disassembler, 0xg"_s << QString();
        QTest::newRow("a decimal address is a line") << u"disassembler, 31"_s << u"disassembler|31"_s;
        QTest::newRow("a file called like addresses") << u"disassembler:, 5"_s << u"disassembler:|5"_s;
        QTest::newRow("a file of two lines") << u"a\nb.c, 5"_s << u"a\nb.c|5"_s;
        QTest::newRow("blanks before the address") << u"disassembler, \t0x1f"_s << u"*disassembler:|32"_s;
        QTest::newRow("line break after the address") << u"disassembler, 0x1f\n"_s << QString();
        QTest::newRow("negative line") << u"main.c, -1"_s << QString();
        QTest::newRow("nothing") << QString() << QString();
        QTest::newRow("something before") << u"a disassembler, 0x1f"_s << QString();
    }

    void textIsParsedAsPlace()
    {
        QFETCH(QString, text);
        const auto place = breakpointPlace(text);
        QString found;
        if (place)
            found = (place->isAddress ? u"*"_s : QString()) + place->location.file + u'|'
                    + QString::number(place->location.line);
        QTEST(found, "place");
    }
};

QTEST_GUILESS_MAIN(BreakpointTextTest)
#include "tst_breakpointtext.moc"
