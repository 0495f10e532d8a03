#include "matchcounter.h"
#include "textpattern.h"
#include "textsearch.h"
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

class TestTextSearch : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void matchesAreFound_data()
    {
        QTest::addColumn<QString>("text"); // "|" separates paragraphs
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("caseSensitive");
        QTest::addColumn<bool>("wholeWord");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("forward");
        QTest::addColumn<int>("backward");
        const auto row = [](const char *name, const QString &text, const QString &pattern, bool caseSensitive,
                            bool wholeWord, int from, int forward, int backward) {
            QTest::newRow(name) << text << pattern << caseSensitive << wholeWord << from << forward << backward;
        };
        row("plain", u"xab|ab"_s, u"ab"_s, true, false, 0, 1, -1);
        row("from a match", u"xab|ab"_s, u"ab"_s, true, false, 1, 1, 1);
        row("from after it", u"xab|ab"_s, u"ab"_s, true, false, 2, 4, 1);
        row("from the end", u"xab|ab"_s, u"ab"_s, true, false, 6, -1, 4);
        row("case counts", u"AB|ab"_s, u"ab"_s, true, false, 0, 3, -1);
        row("case is ignored", u"AB|ab"_s, u"aB"_s, false, false, 0, 0, 0);
        row("no match over the end of a paragraph", u"a|b"_s, u"a|b"_s, true, false, 0, -1, -1);
        row("nothing", u"ab"_s, u""_s, true, false, 0, -1, -1);
        row("whole word", u"ab_ |ab.|xab"_s, u"ab"_s, true, true, 0, 5, -1);
        row("whole word backward", u"(ab)|abx|xab"_s, u"ab"_s, true, true, 11, -1, 1);
        row("digit after", u"ab1|ab"_s, u"ab"_s, true, true, 0, 4, -1);
        row("letter before", u"éab|ab"_s, u"ab"_s, true, true, 0, 4, -1);
        row("no whole word in any line", u"xa|xb"_s, u"ab"_s, true, true, 5, -1, -1);
        row("rejected match ends the search of its line", u"abab ab"_s, u"ab"_s, true, true, 0, -1, -1);
        row("rejected match, next line", u"abab ab|ab"_s, u"ab"_s, true, true, 0, 8, -1);
        row("rejected match backward", u"ab|ab abab"_s, u"ab"_s, true, true, 10, -1, 0);
    }
    void matchesAreFound()
    {
        QFETCH(QString, text);
        QFETCH(QString, pattern);
        QFETCH(const bool, caseSensitive);
        QFETCH(const bool, wholeWord);
        QFETCH(const int, from);
        text.replace(u'|', QChar::ParagraphSeparator);
        pattern.replace(u'|', QChar::ParagraphSeparator);
        const SearchOptions options{caseSensitive, wholeWord};
        QTEST(int(findForward(text, pattern, options, from, text.size())), "forward");
        QTEST(int(findBackward(text, pattern, options, from)), "backward");
    }

    void everyPositionOfALongTextIsSearched_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("written"); // as written in the text
        QTest::addColumn<bool>("caseSensitive");
        QTest::newRow("one character") << u"x"_s << u"x"_s << true;
        QTest::newRow("case counts") << u"xanny"_s << u"xanny"_s << true;
        QTest::newRow("capitals") << u"xanny"_s << u"XANNY"_s << false;
        QTest::newRow("capitals in the pattern") << u"XANNY"_s << u"xanny"_s << false;
        QTest::newRow("longer than a stretch") << u"x"_s.repeated(70) << u"x"_s.repeated(70) << true;
        QTest::newRow("no letters") << u"[]"_s << u"[]"_s << false;
        QTest::newRow("outside ASCII") << u"éxé"_s << u"ÉXÉ"_s << false;
        QTest::newRow("outside Latin-1") << u"ф"_s << u"Ф"_s << false;
        QTest::newRow("kelvin") << u"kx"_s << u"\u212aX"_s << false;
        QTest::newRow("long s") << u"xS"_s << u"x\u017f"_s << false;
    }
    void everyPositionOfALongTextIsSearched()
    {
        QFETCH(const QString, pattern);
        QFETCH(const QString, written);
        QFETCH(const bool, caseSensitive);
        const SearchOptions options{caseSensitive, false};
        const QString filling = u"any (line) of an every\u2029"_s.repeated(10);
        for (qsizetype place = 0; place <= filling.size(); ++place) {
            const QString text = QString(filling).insert(place, written);
            QCOMPARE(findForward(text, pattern, options, 0, text.size()), place);
            QCOMPARE(findForward(text, pattern, options, place, text.size()), place);
            QCOMPARE(findForward(text, pattern, options, place + written.size(), text.size()), -1);
        }
    }

    void searchStopsAtTheGivenEnd()
    {
        QCOMPARE(findForward(u"ab ab", u"ab", {}, 1, 3), -1);
        QCOMPARE(findForward(u"ab ab", u"ab", {}, 1, 4), 3);
    }

    void replacementsAreFoundInOrder_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("replacement");
        QTest::addColumn<bool>("wholeWord");
        QTest::addColumn<QString>("expected");
        QTest::newRow("all") << u"ab ab|ab"_s << u"ab"_s << u"x"_s << false << u"x x|x"_s;
        QTest::newRow("replacement holds the pattern") << u"ab ab"_s << u"ab"_s << u"abab"_s << false << u"abab abab"_s;
        QTest::newRow("overlapping") << u"aaa"_s << u"aa"_s << u"b"_s << false << u"ba"_s;
        QTest::newRow("removal") << u"ab.ab"_s << u"ab"_s << u""_s << false << u"."_s;
        QTest::newRow("whole words") << u"ab abc|ab"_s << u"ab"_s << u"x"_s << true << u"x abc|x"_s;
        QTest::newRow("compared with the replacement before")
            << u"(ab)(ab)"_s << u"(ab)"_s << u"x"_s << true << u"x(ab)"_s;
        QTest::newRow("compared with the text before a removal") << u".--"_s << u"-"_s << u""_s << true << u"."_s;
        QTest::newRow("nothing") << u"ab"_s << u"x"_s << u"y"_s << false << u"ab"_s;
    }
    void replacementsAreFoundInOrder()
    {
        QFETCH(QString, text);
        QFETCH(const QString, pattern);
        QFETCH(const QString, replacement);
        QFETCH(const bool, wholeWord);
        text.replace(u'|', QChar::ParagraphSeparator);
        const QString inner = u'x' + replacement; // what is in front of the replacement does not count
        const QList<Replacement> found =
            findReplacements(text, pattern, QStringView(inner).sliced(1), {true, wholeWord}, 0, text.size());
        for (auto match = found.crbegin(); match != found.crend(); ++match)
            text.replace(match->position, match->length, replacement);
        QTEST(text.replace(QChar::ParagraphSeparator, u'|'), "expected");
    }

    void nothingOverTheEndOfAParagraphIsReplaced()
    {
        const QString text = u"a\u2029b"_s;
        QVERIFY(findReplacements(text, text, u"x", {}, 0, text.size()).isEmpty());
    }

    void matchesAreCountedOnce()
    {
        const auto text = [] { return u"one two one"_s; };
        const TextPattern pattern(u"one"_s, {});
        MatchCounter counter;
        MatchCounter later; // after the same pause
        const QSignalSpy counted(&counter, &MatchCounter::counted);
        const QSignalSpy countedLater(&later, &MatchCounter::counted);
        counter.start(text, pattern);
        QTRY_COMPARE(counted, (QList<QVariantList>{{2, false}}));
        later.start(text, pattern);
        QTRY_COMPARE(countedLater.size(), 1);
        QCOMPARE(counted.size(), 1);
    }

    void countEndsAtALimit_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isMore");
        const QString most(MatchCounter::Most, u'a');
        QTest::newRow("as many as are counted") << most << false;
        QTest::newRow("another text behind them") << most + u"b"_s << false;
        QTest::newRow("more") << most + QString(500, u'a') << true;
    }
    void countEndsAtALimit()
    {
        QFETCH(const QString, text);
        QFETCH(const bool, isMore);
        MatchCounter counter;
        const QSignalSpy counted(&counter, &MatchCounter::counted);
        counter.start([text] { return text; }, TextPattern(u"a"_s, {}));
        QTRY_COMPARE(counted, (QList<QVariantList>{{MatchCounter::Most, isMore}}));
    }

    void eventsAreHandledDuringALongCount()
    {
        QTimer other;
        int events = 0;
        connect(&other, &QTimer::timeout, this, [&events] { ++events; });
        MatchCounter counter;
        const QSignalSpy counted(&counter, &MatchCounter::counted);
        const auto text = [&other, &events] {
            other.start(0);
            events = 0;
            return QString(20'000'000, u'b');
        };
        counter.start(text, TextPattern(u"(?<=a)b"_s, {SearchOptions{}, true})); // is tried at each character
        connect(&counter, &MatchCounter::counted, &other, &QTimer::stop);
        QTRY_COMPARE(counted, (QList<QVariantList>{{0, false}}));
        QVERIFY(events > 0);
    }

    void expressionKnowsTheEndsOfParagraphs()
    {
        const QString text = u"one\u2029two\u2029one\u2029end"_s;
        const TextPattern line(u"^one$"_s, {SearchOptions{}, true});
        const auto place = [](const std::optional<TextPattern::Match> &match) { return match ? match->position : -1; };
        QCOMPARE(place(line.forward(text, 1, text.size())), 8);
        QCOMPARE(place(line.backward(text, text.size())), 8);
        QCOMPARE(place(line.backward(text, 7)), 0);
        QCOMPARE(place(TextPattern(u"none"_s, {SearchOptions{}, true}).backward(text, text.size())), -1);
    }

    void searchBackwardSaysWhetherItWasGivenUp()
    {
        const QString text = u"one\u2029two"_s;
        TextPattern pattern(u"[no]ne"_s, {SearchOptions{}, true});
        QVERIFY(pattern.backward(text, text.size()));
        QVERIFY(!pattern.hasGivenUp());
        pattern.setTimeLimit(0);
        QVERIFY(!pattern.backward(text, text.size()));
        QVERIFY(pattern.hasGivenUp());
        pattern.setTimeLimit(60'000);
        QVERIFY(pattern.backward(text, text.size()));
        QVERIFY(pattern.hasGivenUp()); // once
    }

    void matchThatEndsBehindTheEndIsNotReplaced()
    {
        for (const bool regExp : {false, true}) {
            const TextPattern pattern(u"ab"_s, {SearchOptions{}, regExp});
            QCOMPARE(pattern.replacements(u"ab ab"_s, u"x"_s, 0, 5).size(), 2);
            QCOMPARE(pattern.replacements(u"ab ab"_s, u"x"_s, 0, 4).size(), 1);
        }
    }

    void patternsThatCannotMatch_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("regExp");
        QTest::addColumn<bool>("can");
        QTest::newRow("text") << u"("_s << false << true;
        QTest::newRow("no text") << QString() << false << false;
        QTest::newRow("expression") << u"(a)"_s << true << true;
        QTest::newRow("no expression") << QString() << true << false;
        QTest::newRow("wrong expression") << u"("_s << true << false;
    }
    void patternsThatCannotMatch()
    {
        QFETCH(const QString, text);
        QFETCH(const bool, regExp);
        QTEST(TextPattern(text, {SearchOptions{}, regExp}).canMatch(), "can");
    }
};

QTEST_GUILESS_MAIN(TestTextSearch)
#include "tst_textsearch.moc"
