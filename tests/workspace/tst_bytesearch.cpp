#include "bytesearch.h"
#include "largefile.h"
#include "largetextscan.h"
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QList<ByteMatch> all(const BytePattern &pattern, const QByteArray &bytes)
{
    QList<ByteMatch> found;
    ByteSearch(pattern).forEach(bytes, 0, bytes.size(), ByteSearch::Step::BehindMatch, [&](const ByteMatch &match) {
        found << match;
        return true;
    });
    return found;
}

QString text(const QList<ByteMatch> &matches)
{
    QStringList texts;
    for (const ByteMatch &match : matches)
        texts << u"%1+%2"_s.arg(match.offset).arg(match.length);
    return texts.join(u' ');
}
} // namespace

class ByteSearchTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void matchesThatOverlapAreFoundFromAnyPlace_data()
    {
        QTest::addColumn<QString>("letter");
        QTest::newRow("ASCII") << u"a"_s;
        QTest::newRow("beyond ASCII") << u"ä"_s;
    }
    void matchesThatOverlapAreFoundFromAnyPlace()
    {
        QFETCH(const QString, letter);
        const ByteSearch search(BytePattern{letter.repeated(2), true, false});
        const QByteArray bytes = letter.repeated(3).toUtf8();
        const qsizetype size = letter.toUtf8().size();
        QCOMPARE(search.first(bytes, 1, bytes.size())->offset, size);
        QCOMPARE(search.last(bytes, 0, bytes.size())->offset, size);
    }

    void findsMatches_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("caseSensitive");
        QTest::addColumn<bool>("wholeWord");
        QTest::addColumn<QString>("matches");
        const auto row = [](const char *name, const QByteArray &bytes, const QString &pattern, bool caseSensitive,
                            bool wholeWord, const QString &matches) {
            QTest::newRow(name) << bytes << pattern << caseSensitive << wholeWord << matches;
        };
        row("empty pattern", "abc", {}, true, false, {});
        row("empty text", "", u"a"_s, true, false, {});
        row("pattern longer than the text", "ab", u"abc"_s, true, false, {});
        row("whole text", "abc", u"abc"_s, true, false, u"0+3"_s);
        row("one character", "abcabc", u"c"_s, true, false, u"2+1 5+1"_s);
        row("at both ends", "ab-------------------ab", u"ab"_s, true, false, u"0+2 21+2"_s);
        row("matches do not overlap", "aaaaa", u"aa"_s, true, false, u"0+2 2+2"_s);
        row("case", "Error error ERROR", u"error"_s, true, false, u"6+5"_s);
        row("without case", "Error error ERROR", u"eRRor"_s, false, false, u"0+5 6+5 12+5"_s);
        row("signs have no case", "[a] {A}", u"[a]"_s, false, false, u"0+3"_s);
        row("braces are no brackets", "{a} [A]", u"{a}"_s, false, false, u"0+3"_s);
        row("signs end words", "cat: cat; cat{ cat| cat", u"cat"_s, true, true, u"0+3 5+3 10+3 15+3 20+3"_s);
        row("whole words", "cat concat cats cat_ cat9 (cat)", u"cat"_s, true, true, u"0+3 27+3"_s);
        row("letters beyond ASCII belong to words", "caté écat cat", u"cat"_s, true, true, u"12+3"_s);
        row("beyond ASCII", "Größe größe", u"größe"_s, true, false, u"8+7"_s);
        row("beyond ASCII without case", "Größe GRÖSSE GRÖße", u"gröSSE"_s, false, false, u"8+7"_s);
        row("cyrillic without case", "ОШИБКА ошибка", u"ошибка"_s, false, false, u"0+12 13+12"_s);
        row("whole word beyond ASCII", "über überall", u"über"_s, true, true, u"0+5"_s);
        row("Latin-1",
            "\xfc"
            "ber\n\xfc"
            "ber",
            u"über"_s, true, false, u"0+4 5+4"_s);
        row("Latin-1 and UTF-8",
            "\xfc"
            "ber\nüber\n",
            u"über"_s, true, false, u"0+4 5+5"_s);
        row("binary", QByteArray("\0\0\xff\0needle\0\xfe", 12), u"needle"_s, true, false, u"4+6"_s);
        row("across lines beyond ASCII", "é\né", u"é\né"_s, true, false, u"0+5"_s);
        row("across lines", "one\ntwo", u"e\nt"_s, true, false, u"2+3"_s);
    }

    void findsMatches()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, pattern);
        QFETCH(bool, caseSensitive);
        QFETCH(bool, wholeWord);
        QCOMPARE(text(all({pattern, caseSensitive, wholeWord}, bytes)),
                 *static_cast<QString *>(QTest::qData("matches", QMetaType::QString)));
    }

    void findsTheSameAsASearchInAString()
    {
        QRandomGenerator random(7);
        for (int round = 0; round < 300; ++round) {
            QByteArray bytes(random.bounded(200), Qt::Uninitialized);
            for (char &byte : bytes)
                byte = "aAbB\n "[random.bounded(6)];
            QString pattern;
            for (int i = random.bounded(1, 5); i > 0; --i)
                pattern += QChar(u"aAb "[random.bounded(4)]);
            const bool caseSensitive = random.bounded(2);
            const auto sensitivity = caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
            const QString whole = QString::fromLatin1(bytes);
            const ByteSearch search({pattern, caseSensitive, false});
            const auto first = search.first(bytes, 0, bytes.size());
            const auto last = search.last(bytes, 0, bytes.size());
            QCOMPARE(first ? first->offset : -1, whole.indexOf(pattern, 0, sensitivity));
            QCOMPARE(last ? last->offset : -1, whole.lastIndexOf(pattern, -1, sensitivity));
        }
    }

    void searchStaysBetweenItsLimits()
    {
        const ByteSearch search({u"ab"_s, true, true});
        const QByteArray bytes = "ab ab abc ab";
        QCOMPARE(search.first(bytes, 1, bytes.size())->offset, 3);
        QCOMPARE(search.last(bytes, 0, 10)->offset, 3); // "abc" is no whole word, and the last begins at 10
        QVERIFY(!search.first(bytes, 4, 10));
        QCOMPARE(search.last(bytes, 0, 11)->offset, 10);
        const ByteSearch decoded({u"ä"_s, true, false});
        const QByteArray umlauts = "ä ä ä"; // at 0, 3 and 6
        QCOMPARE(decoded.last(umlauts, 0, 6)->offset, 3);
        QCOMPARE(decoded.last(umlauts, 0, 7)->offset, 6);
        QCOMPARE(decoded.first(umlauts, 1, 6)->offset, 3);
        QVERIFY(!decoded.first(umlauts, 4, 6));
    }

    void scansAFileInBlocks()
    {
        const QTemporaryDir directory;
        QFile file(directory.filePath(u"f"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const qint64 block = 256 * 1024;
        QByteArray bytes(3 * block, '.');
        const QList<qint64> places{0, block - 3, block, 2 * block - 1, 3 * block - 6};
        for (const qint64 place : places)
            bytes.replace(place, 6, "needle");
        file.write(bytes);
        file.close();
        const auto opened = LargeFile::open(file.fileName());
        const auto always = [](qint64) { return true; };
        const QList<qint64> expected{0, block - 3, 2 * block - 1, 3 * block - 6}; // the third one was overwritten
        for (const QString &pattern : {u"needle"_s, u"eedle"_s}) {
            const LargeTextScan scan(opened, bytes.size(), {pattern, true, false});
            const qint64 shift = 6 - pattern.size();
            QList<qint64> forward;
            while (const auto match =
                       scan.next(forward.isEmpty() ? 0 : forward.last() + shift + 1, bytes.size(), always))
                forward << match->offset - shift;
            QList<qint64> backward;
            while (const auto match =
                       scan.previous(0, backward.isEmpty() ? bytes.size() : backward.first() + shift, always))
                backward.prepend(match->offset - shift);
            QList<qint64> counted;
            scan.forEach(always, [&](const ByteMatch &match) {
                counted << match.offset - shift;
                return true;
            });
            QCOMPARE(backward, forward);
            QCOMPARE(counted, forward);
            QVERIFY(forward.contains(2 * block - 1));
            QVERIFY(forward.contains(0));
            QVERIFY(expected.contains(forward.last()));
        }
    }

    void charactersOnTheBorderOfABlockAreFound()
    {
        const QTemporaryDir directory;
        QFile file(directory.filePath(u"f"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QByteArray bytes(2 * 256 * 1024, '.');
        bytes.replace(256 * 1024 - 3, 6, "äöü");
        file.write(bytes);
        file.close();
        const LargeTextScan scan(LargeFile::open(file.fileName()), bytes.size(), {u"ÄÖÜ"_s, false, false});
        const auto always = [](qint64) { return true; };
        QCOMPARE(scan.next(0, bytes.size(), always)->offset, 256 * 1024 - 3);
        QCOMPARE(scan.previous(0, bytes.size(), always)->offset, 256 * 1024 - 3);
        const LargeTextScan middle(LargeFile::open(file.fileName()), bytes.size(), {u"ö"_s, true, false});
        QCOMPARE(middle.next(0, bytes.size(), always)->offset, 256 * 1024 - 1);
    }

    void placeOfAMatchCountsACharacterAtTheStartOfItsBlock()
    {
        const QTemporaryDir directory;
        QFile file(directory.filePath(u"f"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        constexpr qsizetype Block = 131'072;
        for (qsizetype before = 1; before < 12; ++before) { // some of them are read from their second byte on
            QByteArray bytes(2 * Block, '.');
            bytes.replace(Block - before, 3, "€");
            bytes.replace(Block + 100, 6, "needle");
            QVERIFY(file.seek(0));
            file.write(bytes);
            file.flush();
            const LargeTextScan scan(LargeFile::open(file.fileName()), bytes.size(), {u"needle"_s, true, false});
            const auto always = [](qint64) { return true; };
            QCOMPARE(scan.next(0, bytes.size(), always)->offset, Block + 100);
        }
    }

    void characterOnTheBorderOfWhatIsReadDoesNotHideAMatch()
    {
        const QTemporaryDir directory;
        QFile file(directory.filePath(u"f"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        constexpr qsizetype Block = 131'072;
        for (qsizetype behind = 0; behind < 24; ++behind) { // one of them is cut
            QByteArray bytes(2 * Block, '.');
            bytes.replace(Block - 100, 4, "äö");
            bytes.replace(Block + behind, 3, "€");
            bytes.replace(Block - 20 + behind, 3, "€"); // before what is read next
            bytes.replace(2 * Block - 4, 4, "äö");      // up to the end
            QVERIFY(file.seek(0));
            file.write(bytes);
            file.flush();
            const LargeTextScan scan(LargeFile::open(file.fileName()), bytes.size(), {u"ÄÖ"_s, false, false});
            const auto always = [](qint64) { return true; };
            const auto find = [&](qint64 from) {
                return scan.next(from, bytes.size(), always).value_or(ByteMatch{-1, 0}).offset;
            };
            QCOMPARE(find(0), Block - 100);
            QCOMPARE(find(Block), 2 * Block - 4);
        }
    }

    void bytesThatContinueNoCharacterAreSearched()
    {
        const QTemporaryDir directory;
        QFile file(directory.filePath(u"f"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        constexpr qsizetype Block = 131'072;
        QByteArray bytes(2 * Block, '\xb5'); // Latin-1
        bytes[1] = '\xb6';
        bytes[Block + 100] = '\xb6';
        file.write(bytes);
        file.flush();
        const LargeTextScan scan(LargeFile::open(file.fileName()), bytes.size(), {u"\u00b5\u00b6"_s, true, false});
        for (const qint64 start : {qint64(0), Block}) {
            const auto found = scan.next(start, bytes.size(), [](qint64) { return true; });
            QVERIFY(found);
            QCOMPARE(found->offset, start == 0 ? 0 : Block + 99);
        }
    }

    void scanEndsWhenItsCallbackReturnsFalse()
    {
        const QTemporaryDir directory;
        QFile file(directory.filePath(u"f"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(10'000'000));
        const LargeTextScan scan(LargeFile::open(file.fileName()), 10'000'000, {u"x"_s, true, false});
        int blocks = 0;
        QVERIFY(!scan.next(0, 10'000'000, [&](qint64) { return ++blocks < 3; }));
        QCOMPARE(blocks, 3);
        QVERIFY(!scan.previous(0, 10'000'000, [&](qint64) { return ++blocks < 6; }));
        QCOMPARE(blocks, 6);
    }
};

QTEST_APPLESS_MAIN(ByteSearchTest)
#include "tst_bytesearch.moc"
