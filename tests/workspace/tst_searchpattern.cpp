#include "boxanswers.h"
#include "searchpattern.h"
#include <thread>

using namespace Qt::StringLiterals;

class SearchPatternTest : public QObject
{
    Q_OBJECT

private:
    static const inline std::atomic<bool> Running = true;

    static qsizetype find(const QString &expression, const QString &text, qsizetype from = 0)
    {
        return SearchPattern(expression, true, true).find({text}, from, Running);
    }

private Q_SLOTS:
    void init() { failOnWarnings(); }

    void firstMatchIsFound_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("regExp");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("expected");
        QTest::newRow("text") << u"b"_s << false << u"abab"_s << 0 << 1;
        QTest::newRow("text, from a match") << u"b"_s << false << u"abab"_s << 1 << 1;
        QTest::newRow("text, after a match") << u"b"_s << false << u"abab"_s << 2 << 3;
        QTest::newRow("text, none") << u"b"_s << false << u"abab"_s << 4 << -1;
        QTest::newRow("empty text") << QString() << false << u"ab"_s << 2 << 2;
        QTest::newRow("after the end") << QString() << false << u"ab"_s << 3 << -1;
        QTest::newRow("long text without") << u"b"_s << false << QString(10'000, u'a') << 0 << -1;
        QTest::newRow("expression") << u"b."_s << true << u"abab"_s << 0 << 1;
        QTest::newRow("expression, far") << u"b"_s << true << QString(10'000, u'a') + u'b' << 0 << 10'000;
        QTest::newRow("expression, at the end") << u"$"_s << true << QString(100, u'a') << 0 << 100;
        QTest::newRow("a match longer than a stretch")
            << u"xa*b"_s << true << u'x' + QString(1000, u'a') + u'b' << 0 << 0;
        QTest::newRow("beyond 16 bits") << u"^.{40}b"_s << true << u"😀"_s.repeated(40) + u'b' << 0 << 0;
        QTest::newRow("beyond 16 bits, far") << u"b"_s << true << u'x' + u"😀"_s.repeated(400) + u'b' << 0 << 801;
        QTest::newRow("leftmost") << u"bc|ab"_s << true << u"abc"_s << 0 << 0;
        QTest::newRow("empty match") << u"x*"_s << true << u"ab"_s << 1 << 1;
        QTest::newRow("no lower bound") << u"xa{,2}b"_s << true << u"xaaab xab"_s << 0 << 6;
        QTest::newRow("no lower bound, of a group") << u"^(ab){,1}c"_s << true << u"c"_s << 0 << 0;
        QTest::newRow("braces without a number") << u"a{,}"_s << true << u"a{,}"_s << 0 << 0;
        QTest::newRow("braces without a number, far") << u"a{,}"_s << true << u"x a{,}"_s << 0 << 2;
        QTest::newRow("braces with a name") << u"f{x1}"_s << true << u"f{x1}"_s << 0 << 0;
        QTest::newRow("escaped backslash before a bound") << u"^\\\\{,2}x"_s << true << u"\\\\x"_s << 0 << 0;
    }

    void firstMatchIsFound()
    {
        QFETCH(QString, pattern);
        QFETCH(bool, regExp);
        QFETCH(QString, text);
        QFETCH(int, from);
        QFETCH(int, expected);
        QCOMPARE(SearchPattern(pattern, true, regExp).find({text}, from, Running), expected);
    }

    void invalidExpressionNeverMatches_data()
    {
        QTest::addColumn<QString>("pattern");
        for (const QString &pattern : {u"("_s, u")"_s, u"[a"_s, u"*"_s, u"a{2,1}"_s, u"\\"_s, u"(?<n"_s})
            QTest::newRow(qPrintable(pattern)) << pattern;
    }

    void invalidExpressionNeverMatches()
    {
        QFETCH(QString, pattern);
        const SearchPattern search(pattern, true, true);
        QVERIFY(!search.isValid());
        QCOMPARE(search.find({pattern + u"a"_s}, 0, Running), -1);
    }

    void everyTextIsAValidPattern()
    {
        for (const QString &text : {u"("_s, u"[a"_s, u"\\"_s, u"{,2}"_s, QString()}) {
            const SearchPattern search(text, false, false);
            QVERIFY(search.isValid());
            QCOMPARE(search.find({u"x"_s + text}, 1, Running), 1);
        }
    }

    void matchHasItsLength()
    {
        const auto always = [] { return true; };
        const SearchPattern::Match match = SearchPattern(u"b+"_s, true, true).find({u"abbb"_s}, 0, 4, always);
        QCOMPARE(match.position, 1);
        QCOMPARE(match.length, 3);
        QCOMPARE(SearchPattern(u"b"_s, true, true).find({u"aab"_s}, 0, 2, always).position,
                 -1); // begins behind the end
    }

    void replacementIsExpanded_data()
    {
        QTest::addColumn<QString>("replacement");
        QTest::addColumn<QString>("expected");
        QTest::newRow("plain") << u"x"_s << u"x"_s;
        QTest::newRow("groups") << u"\\2-\\1"_s << u"2-ab"_s;
        QTest::newRow("the whole match") << u"<\\0>"_s << u"<ab2>"_s;
        QTest::newRow("a group that did not match") << u"[\\3]"_s << u"[]"_s;
        QTest::newRow("no such group") << u"[\\9]"_s << u"[]"_s;
        QTest::newRow("line end, tab, backslash") << u"\\n\\t\\\\"_s << u"\n\t\\"_s;
        QTest::newRow("another sign") << u"\\+\\:"_s << u"+:"_s;
        QTest::newRow("a backslash at the end") << u"x\\"_s << u"x\\"_s;
    }

    void replacementIsExpanded()
    {
        QFETCH(QString, replacement);
        QTEST(SearchPattern(u"([a-z]+)(\\d)(x)?"_s, true, true).expanded(u"- ab2"_s, 2, replacement), "expected");
    }

    void endsOfAPartDoNotMatchEndsOfTheText()
    {
        const SearchPattern ends(u"^a|a$"_s, true, true);
        QCOMPARE(ends.find({u"aba"_s, true, true}, 0, Running), 0);
        QCOMPARE(ends.find({u"aba"_s, false, true}, 0, Running), 2);
        QCOMPARE(ends.find({u"aba"_s, true, false}, 1, Running), -1);
        QCOMPARE(ends.find({u"aba"_s, false, false}, 0, Running), -1);
    }

    void expressionWithTooManyStepsDoesNotMatch_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::newRow("nested repetition") << u"(a+)+[^a]x"_s;
        QTest::newRow("repeated alternatives") << u"(a|aa)+[^a]"_s;
        QTest::newRow("many counted ones") << u"(a{1,3}){1,30}[^a]"_s;
        QTest::newRow("recursion") << u"(a(?1)*)+[^a]"_s;
        QTest::newRow("more than the stack holds") << u"(a|\\n)*+[^a]|(b|.)*c"_s;
    }

    void expressionWithTooManyStepsDoesNotMatch()
    {
        QFETCH(QString, pattern);
        QVERIFY(SearchPattern(pattern, true, true).isValid());
        QCOMPARE(find(pattern, QString(2 << 20, u'a')), -1);
    }

    void longSearchCanBeInterrupted()
    {
        std::atomic<bool> running = true;
        const SearchPattern search(u"\\w.*b"_s, true, true); // takes hours
        qsizetype found = 0;
        std::thread worker([&] { found = search.find({QString(4 << 20, u'a')}, 0, running); });
        running = false;
        worker.join();
        QCOMPARE(found, -1);
    }
};

QTEST_APPLESS_MAIN(SearchPatternTest)
#include "tst_searchpattern.moc"
