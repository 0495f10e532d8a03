#include "lookuppattern.h"
#include <QTest>
using namespace Qt::StringLiterals;

class TestLookupPattern : public QObject
{
    Q_OBJECT
private:
    /// "file, line" as found, "-" if nothing was found.
    static QString found(const LookupPattern &pattern, const QString &text)
    {
        const std::optional<LookupPlace> place = pattern.find(text);
        return place ? u"%1, %2"_s.arg(place->file).arg(place->line) : u"-"_s;
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void placesAreFound_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("greedy");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QString &pattern, bool greedy, bool valid, const QString &text,
                            const QString &expected) {
            QTest::newRow(name) << pattern << greedy << valid << text << expected;
        };
        const QString usual = uR"((file)\((line)\))"_s;
        row("file ahead of line", usual, false, true, u"a.c(12)"_s, u"a.c, 12"_s);
        row("line ahead of file", u"(line): (file)"_s, true, true, u"12: a.c"_s, u"a.c, 12"_s);
        row("a file at the end is complete also without greed", u"(line): (file)"_s, false, true, u"12: a.c"_s,
            u"a.c, 12"_s);
        row("a line at the end is complete also without greed", u"(file):(line)"_s, false, true, u"a.c:12: error"_s,
            u"a.c, 12"_s);
        row("a file between others", u"error in (file) at line (line)\\."_s, false, true,
            u"error in dir/a b.c at line 3."_s, u"dir/a b.c, 3"_s);
        row("short without greed", u"(file):(line):"_s, false, true, u"a.c:1:2: x:3:"_s, u"a.c, 1"_s);
        row("long with greed", u"(file):(line):"_s, true, true, u"a.c:1:2: x:3:"_s, u"a.c:1:2: x, 3"_s);
        row("parts of the pattern are short too", u"<.*>(file):(line):"_s, false, true, u"<1> <2>a.c:4:"_s,
            u"<2>a.c, 4"_s);
        row("parts of the pattern with greed", u"<.*>(file):(line):"_s, true, true, u"<1> <2>a.c:4:"_s, u"a.c, 4"_s);
        row("white space around is dropped", usual, false, true, u"  a.c (12)"_s, u"a.c, 12"_s);
        row("case counts", u"At (file):(line):"_s, false, true, u"at a.c:1:"_s, u"-"_s);
        row("a match must be at the start of the text", u"(file):(line):"_s, false, true, u":1:"_s, u"-"_s);
        row("a later match is ignored", uR"(in (file)\((line)\))"_s, false, true, u"note in a.c(12)"_s, u"-"_s);
        row("no place", usual, false, true, u"Build finished"_s, u"-"_s);
        row("an empty text", usual, false, true, u""_s, u"-"_s);
        row("a line number that is too large", usual, false, true, u"a.c(99999999999)"_s, u"a.c, 0"_s);
        row("the largest line number", usual, false, true, u"a.c(2147483647)"_s, u"a.c, 2147483647"_s);
        row("an invalid expression finds nothing", u"[(file):(line)"_s, false, true, u"a.c:12"_s, u"-"_s);
        row("empty pattern", u""_s, false, false, u"a.c(12)"_s, u"a.c, 12"_s);
        row("empty pattern is never greedy", u""_s, true, false, u"a.c(12) b.c(13)"_s, u"a.c, 12"_s);
        row("no file", u"(line)"_s, false, false, u"a.c(12)"_s, u"a.c, 12"_s);
        row("no line", u"(file)"_s, false, false, u"a.c(12)"_s, u"a.c, 12"_s);
        row("two files", u"(file)(file):(line)"_s, false, false, u"a.c(12)"_s, u"a.c, 12"_s);
        row("two lines", u"(file):(line):(line)"_s, false, false, u"a.c(12)"_s, u"a.c, 12"_s);
        row("leading space without a pattern", u""_s, false, false, u" a.c(12)"_s, u"a.c, 12"_s);
        row("no later start is tried", u""_s, false, false, u"note: a.c(12)"_s, u"note: a.c, 12"_s);
        row("names of any language", usual, false, true, u"Zähler Ω.c(5)"_s, u"Zähler Ω.c, 5"_s);
    }
    void placesAreFound()
    {
        QFETCH(QString, pattern);
        QFETCH(bool, greedy);
        QFETCH(bool, valid);
        QFETCH(QString, text);
        QFETCH(QString, expected);
        LookupPattern lookup;
        lookup.set(u"(line) (file)"_s, true); // independent of the previous pattern
        QCOMPARE(lookup.set(pattern, greedy), valid);
        QCOMPARE(found(lookup, text), expected);
    }

    void defaultPatternFindsFileAndLine() { QCOMPARE(found(LookupPattern(), u"a.c(12)"_s), u"a.c, 12"_s); }
};

QTEST_APPLESS_MAIN(TestLookupPattern)
#include "tst_lookuppattern.moc"
