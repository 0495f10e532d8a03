#include "rowpainter.h"
#include "rowtext.h"
#include <QTest>

using namespace Qt::StringLiterals;

class RowTextTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void markupBecomesTextAndFormats_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("simple");
        const auto row = [](const char *name, const QString &line, const QString &text, const QString &shown,
                            bool simple) { QTest::newRow(name) << line << text << shown << simple; };
        row("empty", {}, {}, {}, true);
        row("plain", u"a = b;\n"_s, u"a = b;\n"_s, u"a = b;"_s, true);
        row("blanks stay", u"  a   b  \n"_s, u"  a   b  \n"_s, u"  a   b  "_s, true);
        row("bold", u"a <b>bold</b> c\n"_s, u"a bold c\n"_s, u"a bold c"_s, false);
        row("blanks stay in markup", u"  <b> a</b>  b"_s, u"   a  b"_s, u"   a  b"_s, false);
        row("entities", u"&lt;main+4&gt;&nbsp;&amp;x"_s, u"<main+4> &x"_s, u"<main+4> &x"_s, true);
        row("unknown tag is dropped", u"a<table><td>b</td>c"_s, u"abc"_s, u"abc"_s, true);
        row("block tags are dropped", u"<p>a</p><br><h1>b</h1>"_s, u"ab"_s, u"ab"_s, true);
        row("picture is dropped", u"a<img src=\"/dev/zero\">b"_s, u"ab"_s, u"ab"_s, true);
        row("less without greater", u"if (a < b)\n"_s, u"if (a < b)\n"_s, u"if (a < b)"_s, true);
        row("nearest greater ends a tag", u"a <x <b> c> d"_s, u"a  c> d"_s, u"a  c> d"_s, true);
        row("ampersand alone", u"a && b &c\n"_s, u"a && b &c\n"_s, u"a && b &c"_s, true);
        row("tabs", u"\ta\tbc\n"_s, u"\ta\tbc\n"_s, u"        a       bc"_s, false);
        row("control characters", QString(QChar(0)) + u"\x1b[m\r"_s, QString(QChar(0)) + u"\x1b[m\r"_s, u"··[m·"_s,
            false);
        row("other characters", u"Größe: 10 µm"_s, u"Größe: 10 µm"_s, u"Größe: 10 µm"_s, false);
        row("upper case tag", u"<B>x</B>"_s, u"x"_s, u"x"_s, false);
    }

    void markupBecomesTextAndFormats()
    {
        QFETCH(QString, line);
        const RowText row = rowText(line);
        QTEST(row.text, "text");
        QTEST(row.shown, "shown");
        QTEST(row.isSimple, "simple");
        QCOMPARE(row.length(), row.text.size() - (line.endsWith(u'\n') ? 1 : 0));
    }

    void coloursAreReadQuicklyWithTheSameResult_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("an instruction") << u"<font color=\"#0000ff\">00008000</font>&nbsp;bl 0x8200 &lt;f&gt;"_s;
        QTest::newRow("several colours")
            << u"<font color=\"#006000\">a</font>&amp;&quot;<font color=\"#808080\"> ;&nbsp;b</font>c"_s;
        QTest::newRow("equal neighbours") << u"<font color=\"#ff0000\">a</font><font color=\"#FF0000\">b</font>"_s;
        QTest::newRow("nothing in a colour") << u"a<font color=\"#ff0000\"></font>b"_s;
        QTest::newRow("letters") << u"<font color=\"#ff0000\">Größe</font>  µ"_s;
        QTest::newRow("no end") << u"a<font color=\"#ff0000\">b"_s;
        QTest::newRow("one in another") << u"<font color=\"#ff0000\">a<font color=\"#00ff00\">b</font></font>"_s;
        QTest::newRow("end alone") << u"a</font>b"_s;
        QTest::newRow("other name") << u"&eacute;&nbsp;"_s;
        QTest::newRow("other tag") << u"&lt;<b>a</b>"_s;
        QTest::newRow("control character") << u"&lt;\t\x01"_s;
    }

    void coloursAreReadQuicklyWithTheSameResult()
    {
        QFETCH(QString, line);
        const RowText row = rowText(line);
        const RowText other = rowText(line + u"<i></i>"_s); // a tag that is read as rich text
        QCOMPARE(row.text, other.text);
        QCOMPARE(row.shown, other.shown);
        QCOMPARE(row.formats, other.formats);
    }

    void formatsChangeCharactersOnly()
    {
        const RowText row = rowText(u"a<b>b</b><font color=\"#ff0000\" size=\"7\">c</font><u><i>d</i></u>"_s);
        QCOMPARE(row.shown, u"abcd"_s);
        QCOMPARE(row.formats.size(), 3);
        QCOMPARE(row.formats[0].start, 1);
        QCOMPARE(row.formats[0].format.fontWeight(), int(QFont::Bold));
        QCOMPARE(row.formats[1].format.foreground().color(), QColor(Qt::red));
        QVERIFY(!row.formats[1].format.hasProperty(QTextFormat::FontSizeAdjustment));
        QVERIFY(row.formats[2].format.fontUnderline() && row.formats[2].format.fontItalic());
    }

    void deeplyNestedMarkupIsRead()
    {
        const RowText row = rowText(u"<table><tr><td>"_s.repeated(60) + u"x"_s);
        QCOMPARE(row.shown, u"x"_s);
    }

    void tabExtendsToTheNextStopInShownColumns()
    {
        const RowText row = rowText(u"a\tb\n"_s);
        QCOMPARE(row.shownColumn(0), 0);
        QCOMPARE(row.shownColumn(1), 1);
        QCOMPARE(row.shownColumn(2), 8);
        QCOMPARE(row.shownColumn(3), 9);
        QCOMPARE(row.shownColumn(5), 11);
        QCOMPARE(row.textColumn(0), 0);
        QCOMPARE(row.textColumn(1), 1);
        QCOMPARE(row.textColumn(7), 1);
        QCOMPARE(row.textColumn(8), 2);
        QCOMPARE(row.textColumn(11), 5);
    }

    void columnsAndPixelsAgree_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("plain") << u"some plain text"_s;
        QTest::newRow("tabs") << u"\tsome\ttabs"_s;
        QTest::newRow("markup") << u"some <b>bold</b> <i>text</i>"_s;
        QTest::newRow("letters") << u"Größe äöü"_s;
        QTest::newRow("empty") << QString();
    }

    void columnsAndPixelsAgree()
    {
        QFETCH(QString, line);
        RowPainter painter;
        painter.setFont(QFont(u"DejaVu Sans Mono"_s, 10));
        const int length = painter.row(line).length();
        for (int column = 0; column < length + 3; ++column)
            QCOMPARE(painter.columnAt(line, painter.xOf(line, column) + 1), column);
        QCOMPARE(painter.columnAt(line, -5), 0);
        QCOMPARE(painter.width(line), painter.xOf(line, length));
    }

    void everyCharacterIsAsWideAsZero()
    {
        RowPainter painter;
        painter.setFont(QFont(u"DejaVu Sans Mono"_s, 11));
        const QString line = u"<b>mmmm</b>iiii"_s;
        QCOMPARE(painter.xOf(line, 8), 8 * painter.charWidth());
    }

    void columnsOfMarkup_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("plain");  ///< for each column of the line
        QTest::addColumn<QString>("markup"); ///< for each column of the plain text
        QTest::newRow("none") << u"ab"_s << u"012"_s << u"0 1 2"_s;
        QTest::newRow("empty") << QString() << u"0"_s << u"0"_s;
        QTest::newRow("tags") << u"a<b>c</b>d"_s << u"01111222223"_s << u"0 1 5 10"_s;
        QTest::newRow("name of a character") << u"a&lt;b"_s << u"0111123"_s << u"0 1 5 6"_s;
        QTest::newRow("no tag") << u"1 < 2"_s << u"012345"_s << u"0 1 2 3 4 5"_s;
    }

    void columnsOfMarkup()
    {
        QFETCH(QString, line);
        QFETCH(QString, plain);
        QFETCH(QString, markup);
        QString found;
        for (int column = 0; column <= line.size(); ++column)
            found += QString::number(plainColumn(line, column));
        QCOMPARE(found, plain);
        QStringList columns;
        for (int column = 0; column <= plainText(line).size(); ++column)
            columns += QString::number(markupColumn(line, column));
        QCOMPARE(columns.join(u' '), markup);
    }

    void courierIsHigherByItsDescent()
    {
        QFont font(u"Courier"_s, 10);
        const QFontMetrics metrics(font);
        RowPainter painter;
        painter.setFont(font);
        QCOMPARE(painter.lineHeight(), metrics.lineSpacing() + metrics.descent());
        font.setFamily(u"DejaVu Sans Mono"_s);
        painter.setFont(font);
        QCOMPARE(painter.lineHeight(), QFontMetrics(font).lineSpacing());
        QCOMPARE(painter.charWidth(), QFontMetrics(font).horizontalAdvance(u'0'));
    }

    void coloursAreMadeReadable()
    {
        QCOMPARE(readableOn(Qt::white, QColor(0, 0, 255)), QColor(0, 0, 255));
        const QColor onDark = readableOn(QColor(0x1e, 0x1f, 0x22), QColor(0, 0, 255));
        QVERIFY(onDark.lightness() > QColor(0, 0, 255).lightness());
        QVERIFY(readableOn(Qt::black, QColor(Qt::black)).lightness() > 100);
        QVERIFY(readableOn(Qt::white, QColor(Qt::white)).lightness() < 150);
    }
};

QTEST_MAIN(RowTextTest)
#include "tst_rowtext.moc"
