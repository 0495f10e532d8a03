#include "commandwords.h"
#include <QTest>

using namespace Qt::StringLiterals;

class CommandWordsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void wordsAreSeparatedByWhiteSpace()
    {
        CommandWords words(u" \tONE two\t\u00a0three\r\n");
        QCOMPARE(words.word(), u"ONE"_s);
        QCOMPARE(words.word(), u"two"_s);
        QCOMPARE(words.word(), u"three"_s);
        QCOMPARE(words.word(), QString());
        QCOMPARE(words.word(), QString());
    }

    void quotedNamesMayContainBlanks_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("next");
        QTest::newRow("plain") << u"edit text"_s << u"edit"_s << u"text"_s;
        QTest::newRow("quoted word") << u"\"edit\" text"_s << u"edit"_s << u"text"_s;
        QTest::newRow("quoted words") << u"\"my  big\tbutton\" text"_s << u"my big button"_s << u"text"_s;
        QTest::newRow("no closing quote") << u"\"my button text"_s << u"my button text"_s << QString();
        QTest::newRow("a quote within") << u"\"my b\"utton x\" text"_s << u"my button x"_s << u"text"_s;
        QTest::newRow("a quote alone closes itself") << u"\" my button\" text"_s << QString() << u"my"_s;
        QTest::newRow("quotes after the start") << u"my\" button"_s << u"my\""_s << u"button"_s;
        QTest::newRow("nothing") << u"  "_s << QString() << QString();
    }

    void quotedNamesMayContainBlanks()
    {
        QFETCH(QString, line);
        CommandWords words(line);
        QTEST(words.name(), "name");
        QTEST(words.word(), "next");
    }

    void numbersAreDecimal_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<std::optional<int>>("number");
        QTest::newRow("number") << u" 12 "_s << std::optional(12);
        QTest::newRow("negative") << u"-3"_s << std::optional(-3);
        QTest::newRow("leading zeros") << u"010"_s << std::optional(10);
        QTest::newRow("largest") << u"2147483647"_s << std::optional(2147483647);
        QTest::newRow("too large") << u"2147483648"_s << std::optional<int>();
        QTest::newRow("hexadecimal") << u"0x10"_s << std::optional<int>();
        QTest::newRow("fraction") << u"1.5"_s << std::optional<int>();
        QTest::newRow("word") << u"ten"_s << std::optional<int>();
        QTest::newRow("nothing") << QString() << std::optional<int>();
    }

    void numbersAreDecimal()
    {
        QFETCH(QString, line);
        QTEST(CommandWords(line).number(), "number");
    }

    void restKeepsItsBlanks_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("rest");
        QTest::newRow("one blank is dropped") << u"x   two  blanks \n"_s << u"  two  blanks "_s;
        QTest::newRow("line end of two") << u"x abc\r\n"_s << u"abc"_s;
        QTest::newRow("text of a Return key") << u"x \r\r\n"_s << u"\r"_s;
        QTest::newRow("no line end") << u"x abc"_s << u"abc"_s;
        QTest::newRow("empty") << u"x \n"_s << QString();
        QTest::newRow("no rest") << u"x\n"_s << QString();
        QTest::newRow("no word") << QString() << QString();
    }

    void restKeepsItsBlanks()
    {
        QFETCH(QString, line);
        CommandWords words(line);
        const QString word = words.word();
        QTEST(words.rest(), "rest");
        QCOMPARE(words.word(), QString());
    }
};

QTEST_MAIN(CommandWordsTest)
#include "tst_commandwords.moc"
