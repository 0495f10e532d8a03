#include "boxanswers.h"
#include "fulltextindex.h"
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {
/// A directory of documents, and the index file beside it.
class Fixture
{
public:
    Fixture() { QDir().mkpath(path(u"help"_s)); }

    [[nodiscard]] QString path(const QString &name) const { return m_directory.filePath(name); }
    [[nodiscard]] QString help() const { return path(u"help"_s); }
    [[nodiscard]] QString file() const { return path(u"index"_s); }

    void write(const QString &name, const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile out(path(name));
        if (!out.open(QIODevice::WriteOnly) || out.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(out.fileName()));
    }
    /// Writes a document; the line end is the last byte, which is not read.
    void page(const QString &name, const QByteArray &text) const { write(u"help/"_s + name, text + '\n'); }
    void build() { QVERIFY(index.build(help())); }
    /// The names of the documents that are found, without the directory.
    [[nodiscard]] QString found(const QString &query) const
    {
        QStringList names;
        for (const QString &document : index.search(query))
            names.append(QDir(help()).relativeFilePath(document));
        return names.join(u' ');
    }

    FullTextIndex index;

private:
    QTemporaryDir m_directory;
};

WordIndex numberedIndex(int count)
{
    QStringList paths;
    for (int i = 0; i < count; ++i)
        paths.append(QString::number(i));
    return {u"/help"_s, paths};
}

/// Adds a document that has "word" @p count times, and nothing else.
void add(WordIndex *index, qsizetype docNumber, int count = 1)
{
    for (int i = 0; i < count; ++i)
        index->insert("word");
    index->endDocument(docNumber);
}
} // namespace

class TestFullTextIndex : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    // Building

    void emptyDirectoryGivesAnEmptyIndex()
    {
        Fixture f;
        f.build();
        QVERIFY(!f.index.isLoaded());
        QCOMPARE(f.found(u"word"_s), QString());
        QVERIFY(f.index.build(f.path(u"missing"_s)));
    }

    void onlyFilesWithTheExactSuffixAreIndexed()
    {
        Fixture f;
        for (const QString &name : {u"a.html"_s, u"b.htm"_s, u"c.HTML"_s, u"d.txt"_s, u"below/deep/e.html"_s})
            f.page(name, "word");
        f.build();
        QVERIFY(f.index.isLoaded());
        QCOMPARE(f.index.docPath(), f.help());
        QStringList found = f.found(u"word"_s).split(u' '); // equal frequencies have no order
        found.sort();
        QCOMPARE(found, (QStringList{u"a.html"_s, u"below/deep/e.html"_s}));
    }

    void lastByteOfADocumentIsNotRead()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "one words");
        f.build();
        QCOMPARE(f.found(u"word"_s), u"a.html"_s);
        QCOMPARE(f.found(u"words"_s), QString());
    }

    void wordAcrossTwoBlocksOfAFileIsOne()
    {
        Fixture f;
        f.page(u"a.html"_s, QByteArray(65533, ' ') + "boundary");
        f.build();
        QCOMPARE(f.found(u"boundary"_s), u"a.html"_s);
    }

    void linkBackToTheDirectoryIsFollowedOnce()
    {
        Fixture f;
        f.page(u"a.html"_s, "word");
        QVERIFY(QFile::link(f.help(), f.path(u"help/again"_s)));
        f.build();
        QCOMPARE(f.found(u"word"_s), u"a.html"_s);
    }

    void whatCannotBeReadIsLoggedAndSkipped()
    {
        Fixture f;
        f.page(u"a.html"_s, "word");
        QDir().mkpath(f.path(u"help/b.html"_s));
        QCOMPARE(::mkfifo(QFile::encodeName(f.path(u"help/c.html"_s)).constData(), 0600), 0); // would block
        QVERIFY(QFile::link(f.path(u"help/c.html"_s), f.path(u"help/d.html"_s)));
        for (const QString &name : {u"help/b.html"_s, u"help/d.html"_s})
            QTest::ignoreMessage(QtWarningMsg, qPrintable(u"FullTextIndex: cannot open file "_s + f.path(name)));
        f.build();
        QCOMPARE(f.found(u"word"_s), u"a.html"_s);
    }

    void progressIsReportedForEachFifthPercent()
    {
        Fixture f;
        for (int i = 0; i < 30; ++i)
            f.page(u"%1.html"_s.arg(i, 2, 10, QLatin1Char('0')), "word");
        QStringList reported;
        connect(&f.index, &FullTextIndex::indexing, this, [&](int percent, const QString &file) {
            reported.append(QString::number(percent) + u' ' + QFileInfo(file).baseName());
        });
        f.build();
        QCOMPARE(reported.join(u", "_s), u"0 00, 10 03, 20 06, 30 09, 40 12, 50 15, 60 18, 70 21, 80 24, 90 27"_s);
    }

    void buildHandlesEvents()
    {
        Fixture f;
        f.page(u"a.html"_s, "word");
        bool handled = false;
        QTimer::singleShot(0, this, [&] { handled = true; });
        f.build();
        QVERIFY(handled);
    }

    void eventsAreHandledWhileALongDocumentIsRead()
    {
        int handled = 0; // the first is before the document
        for (int length = 3'000'000; handled < 2 && length < 100'000'000; length *= 2) {
            Fixture f;
            f.page(u"a.html"_s, QByteArray("<p>word</p> ").repeated(length) + "end");
            handled = 0;
            QTimer timer;
            connect(&timer, &QTimer::timeout, this, [&] { ++handled; });
            timer.start(0);
            f.build();
            QCOMPARE(f.found(u"end"_s), u"a.html"_s);
        }
        QVERIFY(handled > 1);
    }

    void indexMayBeDeletedWhileItIsBuilt()
    {
        const Fixture f;
        f.page(u"a.html"_s, "word");
        const QPointer<FullTextIndex> index = new FullTextIndex;
        QTimer::singleShot(0, this, [&] { delete index; });
        QVERIFY(!index->build(f.help()));
        QVERIFY(!index);
    }

    void indexMayBeDeletedWhileALongDocumentIsRead()
    {
        QPointer<FullTextIndex> index = new FullTextIndex;
        for (int length = 3'000'000; index && length < 100'000'000; length *= 2) {
            const Fixture f;
            f.page(u"a.html"_s, QByteArray("<p>word</p> ").repeated(length));
            int handled = 0;
            QTimer timer;
            connect(&timer, &QTimer::timeout, this, [&] {
                if (++handled == 2)
                    delete index;
            });
            timer.start(0);
            const bool built = index->build(f.help());
            QCOMPARE(built, !index.isNull());
        }
        QVERIFY(!index);
    }

    void indexMayBeDeletedWhileManyDirectoriesAreListed()
    {
        const Fixture f;
        QPointer<FullTextIndex> index = new FullTextIndex;
        bool built = true;
        for (int count = 1'000, made = 0; index && count < 200'000; count *= 2) {
            for (; made < count; ++made)
                QVERIFY(QDir(f.help()).mkdir(QString::number(made)));
            QTimer::singleShot(0, index, [&] { delete index; }); // the first events are before the first page
            built = index->build(f.help());
        }
        QVERIFY(!index);
        QVERIFY(!built);
    }

    void secondBuildReplacesTheFirst()
    {
        Fixture f;
        f.page(u"a.html"_s, "old");
        f.build();
        f.page(u"a.html"_s, "new");
        f.build();
        QCOMPARE(f.found(u"old"_s), QString());
        QCOMPARE(f.found(u"new"_s), u"a.html"_s);
    }

    // Search

    void search_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("found");
        QTest::newRow("no term") << u"  "_s << QString();
        QTest::newRow("single letter") << u"a"_s << QString();
        QTest::newRow("any case, all words") << u"Foo  BAR"_s << u"both.html"_s;
        QTest::newRow("all words, other order") << u"bar foo"_s << u"both.html"_s;
        QTest::newRow("a word is missing") << u"foo nothing"_s << QString();
        QTest::newRow("a word is missing, first") << u"nothing foo"_s << QString();
        QTest::newRow("most occurrences first") << u"foo"_s << u"foo.html both.html"_s;
        QTest::newRow("the sum of occurrences") << u"sum more"_s << u"more.html sum.html"_s;
        QTest::newRow("in an attribute") << u"hidden"_s << QString();
        QTest::newRow("part of a word") << u"configur"_s << QString();
        QTest::newRow("* at the end") << u"configur*"_s << u"config.html config.html"_s; // once for each of two words
        QTest::newRow("pattern inside a word") << u"nfig?r"_s << u"config.html config.html"_s;
        QTest::newRow("? is one character") << u"f?o"_s << u"foo.html both.html"_s;
        QTest::newRow("set") << u"?[ac]r"_s << u"both.html"_s;
        QTest::newRow("set with a range") << u"?[0-9a-b]r"_s << u"both.html"_s;
        QTest::newRow("set of all others") << u"?[^b-z]r"_s << u"both.html"_s;
        QTest::newRow("set that does not end") << u"?[ar"_s << QString();
        QTest::newRow("set with a backslash") << u"?[\\w]r"_s << QString();
        QTest::newRow("not a valid set") << u"?[z-a]r"_s << QString();
        QTest::newRow("expression characters are plain") << u"*fo+"_s << QString();
        QTest::newRow("pattern without a match") << u"foo z*z*z"_s << QString();
        QTest::newRow("pieces in their order") << u"s*m"_s << u"sum.html more.html"_s;
        QTest::newRow("pieces in another order") << u"m*s"_s << QString();
        QTest::newRow("pieces do not overlap") << u"mor*ore"_s << QString();
        QTest::newRow("more characters than the word") << u"?sum?"_s << QString();
        QTest::newRow("a letter outside of ASCII") << u"\u00c4*l"_s << u"latin.html"_s;
        QTest::newRow("a letter outside of Latin-1") << u"*\u4e2d"_s << QString();
        QTest::newRow("pattern and word") << u"f*o b*r"_s << u"both.html"_s;
        QTest::newRow("not Latin-1") << u"\u4e2d\u6587"_s << QString();
        QTest::newRow("Latin-1") << u"\u00c4PFEL"_s << u"latin.html"_s;
    }

    void search()
    {
        QFETCH(QString, query);
        Fixture f;
        f.page(u"both.html"_s, "Foo <a title='hidden'>bar</a>");
        f.page(u"config.html"_s, "configure configuration");
        f.page(u"foo.html"_s, "foo foo FOO");
        f.page(u"latin.html"_s, "\xe4pfel");
        f.page(u"more.html"_s, "sum more more more more");
        f.page(u"sum.html"_s, "sum sum sum more");
        f.build();
        QTEST(f.found(query), "found");
    }

    void longPatternOfAsterisksEnds()
    {
        Fixture f;
        f.page(u"a.html"_s, QByteArray(63, 'a'));
        f.build();
        QCOMPARE(f.found(QString(10000, u'*')), u"a.html"_s);
    }

    /// Of a pattern that is not the first term, one word counts.
    void patternBehindAnotherTermAddsTheOccurrencesOfOneWord()
    {
        WordIndex index = numberedIndex(1);
        for (const char *word : {"foo", "foo", "zza", "zzb", "zzb", "zzb", "zzb"})
            index.insert(word);
        index.endDocument(0);
        const QList<WordIndex::Doc> found = index.find(u"foo zz?"_s);
        QCOMPARE(found.size(), 1);
        QVERIFY(found.first().frequency == 2 + 1
                || found.first().frequency == 2 + 4); // the order of words is not defined
        QCOMPARE(index.find(u"zz? foo"_s).size(), 2);
    }

    // The numbers of 16 bits

    void documentsAbove32767AreLoaded()
    {
        WordIndex index = numberedIndex(32770);
        add(&index, 32769);
        const std::optional<WordIndex> loaded = WordIndex::fromBytes(index.toBytes());
        QVERIFY(loaded);
        QCOMPARE(loaded->search(u"word"_s), QStringList(u"32769"_s));
    }

    void documentNumberAbove32767Wraps()
    {
        WordIndex index = numberedIndex(32770);
        add(&index, 32769);
        QCOMPARE(index.documents("word").first().docNumber, qint16(-32767));
        QCOMPARE(index.search(u"word"_s), QStringList(u"32769"_s));
        index = numberedIndex(65540);
        add(&index, 65537);
        QCOMPARE(index.search(u"word"_s), QStringList(u"1"_s));
    }

    void frequencyAbove65535Wraps()
    {
        WordIndex index = numberedIndex(1);
        add(&index, 0, 65537);
        QCOMPARE(index.documents("word"), QList<WordIndex::Doc>({{0, 1}}));
    }

    void documentsAreThoseOfTheWordNewestFirst()
    {
        WordIndex index = numberedIndex(3);
        add(&index, 0);
        index.endDocument(1); // without a word
        add(&index, 2, 2);
        QCOMPARE(index.documents("word"), QList<WordIndex::Doc>({{2, 2}, {0, 1}}));
        QCOMPARE(index.documents("other"), QList<WordIndex::Doc>());
    }

    void frequencyIsComparedWithoutSign()
    {
        WordIndex index = numberedIndex(2);
        add(&index, 0);
        add(&index, 1, 40000);
        QCOMPARE(index.documents("word").first(), (WordIndex::Doc{1, 40000}));
        QCOMPARE(index.search(u"word"_s), (QStringList{u"1"_s, u"0"_s}));
    }

    void manyDifferentWordsAreCountedApart()
    {
        constexpr int Count = 40'000; // more than are remembered as recent
        WordIndex index = numberedIndex(1);
        const auto word = [](int number) { return "word" + QByteArray::number(number); };
        for (int round = 0; round < 2; ++round) {
            for (int i = 0; i < Count; ++i)
                index.insert(word(i));
        }
        index.endDocument(0);
        for (int i = 0; i < Count; ++i)
            QCOMPARE(index.documents(word(i)), QList<WordIndex::Doc>({{0, 2}}));
    }

    void defaultDocHasNoNumber() { QCOMPARE(WordIndex::Doc().docNumber, qint16(-1)); }

    // The index file

    void fileHasTheDocumentedFormat()
    {
        WordIndex index(u"/h"_s, {u"/h/a"_s});
        add(&index, 0, 2);
        QCOMPARE(index.toBytes().toHex(' '), QByteArray("00 00 00 04 00 2f 00 68 " // "/h"
                                                        "00 00 00 01 00 00 00 08 00 2f 00 68 00 2f 00 61 "
                                                        "00 00 00 05 77 6f 72 64 00 " // "word" with its zero
                                                        "00 00 00 01 00 00 00 02"));
    }

    void loadedIndexFindsTheSame()
    {
        Fixture f;
        f.page(u"a.html"_s, "one two");
        f.page(u"b.html"_s, "two two");
        f.build();
        QVERIFY(f.index.save(f.file()));
        FullTextIndex other;
        QVERIFY(other.load(f.file()));
        QVERIFY(other.isLoaded());
        QCOMPARE(other.docPath(), f.help());
        for (const QString &query : {u"one"_s, u"two"_s, u"one two"_s, u"*o*"_s})
            QCOMPARE(other.search(query).size(), f.index.search(query).size());
        QCOMPARE(other.search(u"two"_s), f.index.search(u"two"_s));
    }

    void loadedIndexIsWrittenAndContinuedLikeTheOneThatWasSaved()
    {
        WordIndex index = numberedIndex(3);
        add(&index, 0, 2);
        add(&index, 1, 5);
        std::optional<WordIndex> loaded = WordIndex::fromBytes(index.toBytes());
        QVERIFY(loaded);
        QCOMPARE(loaded->toBytes(), index.toBytes());
        add(&*loaded, 2, 3);
        QCOMPARE(loaded->documents("word"), QList<WordIndex::Doc>({{2, 3}, {1, 5}, {0, 2}}));
    }

    void addedOrRemovedDocumentsMakeTheFileStale()
    {
        Fixture f;
        f.page(u"a.html"_s, "one");
        f.build();
        QVERIFY(f.index.save(f.file()));
        f.page(u"a.html"_s, "changed");
        QVERIFY(f.index.load(f.file())); // changes are not noticed
        QCOMPARE(f.found(u"one"_s), u"a.html"_s);
        f.page(u"deep/b.html"_s, "two");
        QVERIFY(!f.index.load(f.file()));
        f.build();
        QVERIFY(f.index.save(f.file()));
        QVERIFY(QFile::remove(f.path(u"help/a.html"_s)));
        QVERIFY(!f.index.load(f.file()));
        QCOMPARE(f.found(u"two"_s), u"deep/b.html"_s); // what was loaded before stays
    }

    void filesThatAreNoIndexAreRefused_data()
    {
        QTest::addColumn<QByteArray>("content");
        WordIndex index(u"/h"_s, {u"/h/a"_s});
        add(&index, 0);
        const QByteArray good = index.toBytes();
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("no index at all, but a text");
        QTest::newRow("cut off in a posting") << good.chopped(1);
        QTest::newRow("cut off in a word") << good.chopped(11);
        QTest::newRow("more paths than bytes") << good.left(8) + QByteArray("\x7f\xff\xff\xff", 4) + good.mid(12);
        QTest::newRow("count too large") << good.chopped(8) + QByteArray("\x7f\xff\xff\xff\0\0\0\2", 8);
        QTest::newRow("negative count") << good.chopped(8) + QByteArray("\xff\xff\xff\xff\0\0\0\2", 8);
        QTest::newRow("unknown document") << good.chopped(4) + QByteArray("\0\1\0\2", 4);
        QTest::newRow("word without a zero") << good.chopped(9) + QByteArray("x\0\0\0\1\0\0\0\2", 9);
        QTest::newRow("empty word") << good + QByteArray("\0\0\0\1\0\0\0\0\0", 9);
        QTest::newRow("null word") << good + QByteArray("\xff\xff\xff\xff\0\0\0\0", 8);
    }

    void filesThatAreNoIndexAreRefused()
    {
        QFETCH(QByteArray, content);
        QVERIFY(!WordIndex::fromBytes(content));
    }

    void missingOrUnwritableFileGivesFalse()
    {
        Fixture f;
        QVERIFY(!f.index.load(f.file()));
        QVERIFY(!f.index.load(f.help()));
        QVERIFY(!f.index.save(f.path(u"missing/index"_s)));
        QVERIFY(!f.index.save(f.help()));
    }

    void readingCanBeStopped()
    {
        WordIndex index = numberedIndex(1);
        for (int i = 0; i < 1000; ++i)
            index.insert("word" + QByteArray::number(i));
        index.endDocument(0);
        int asked = 0;
        QVERIFY(!WordIndex::fromBytes(index.toBytes(), [&] { return ++asked < 2; }));
        QCOMPARE(asked, 2);
        QVERIFY(WordIndex::fromBytes(index.toBytes())); // without a function that is asked
    }

    // The results page

    void titleAndDescriptionAreThoseOfTheDocument_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("description");
        const QString path = u"(the path)"_s;
        QTest::newRow("none") << QByteArray("text") << path << u""_s;
        QTest::newRow("both") << QByteArray("<TITLE>The\ntitle</Title></title>"
                                            "<meta name=\"description\" content=\"What it has\"><a b=\"c\">")
                              << u"The\ntitle"_s << u"What it has"_s;
        QTest::newRow("ends only") << QByteArray("a long text </title> and a <a href=\"page.html\">link</a>") << path
                                   << u""_s;
        QTest::newRow("no end") << QByteArray("<title>a<meta name=\"description\" content=\"b") << path << u""_s;
        QTest::newRow("not escaped") << QByteArray("<title><b>&amp;</title>") << u"<b>&amp;"_s << u""_s;
        QTest::newRow("too far down") << QByteArray(1'000'000, ' ') + "<title>a</title>" << path << u""_s;
    }

    void titleAndDescriptionAreThoseOfTheDocument()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, title);
        const Fixture f;
        f.page(u"a.html"_s, content);
        QString foundTitle;
        QString foundDescription;
        const QString path = f.path(u"help/a.html"_s);
        FullTextIndex::getDocumentInfo(path, &foundTitle, &foundDescription);
        QCOMPARE(foundTitle, title == "(the path)"_L1 ? path : title);
        QTEST(foundDescription, "description");
        FullTextIndex::getDocumentInfo(path, nullptr, nullptr);
    }

    void missingDocumentIsLoggedAndNamedByItsPath()
    {
        QString title;
        QString description = u"old"_s;
        QTest::ignoreMessage(QtWarningMsg, "FullTextIndex: cannot open file /missing.html");
        FullTextIndex::getDocumentInfo(u"/missing.html"_s, &title, &description);
        QCOMPARE(title, u"/missing.html"_s);
        QVERIFY(description.isEmpty());
    }

    void resultsPageIsExact()
    {
        Fixture f;
        f.page(u"a.html"_s, "<title>100% %1 <i>A</i></title><meta name=\"description\" content=\"%2 about\">word");
        f.build();
        QCOMPARE(f.index.searchResultsPage(u"WORD"_s),
                 u"<html><head><title>Search Results</title></head><body><h2>Search results for \"WORD\":</h2><p><a "
                 "href='"_s
                     + f.path(u"help/a.html"_s)
                     + u"'>100% %1 <i>A</i></a><br>%2 about</p><p>1 matches.</p></body></html>"_s);
        QCOMPARE(f.index.searchResultsPage(u"<b>%1"_s),
                 u"<html><head><title>Search Results</title></head><body><h2>Search results for \"&lt;b&gt;%1\":</h2>"
                 "<p>0 matches.</p></body></html>"_s);
    }

    void pageSaysThatThereAreMoreThanTwentyResults_data()
    {
        QTest::addColumn<int>("count");
        QTest::newRow("20") << 20;
        QTest::newRow("21") << 21;
    }

    void pageSaysThatThereAreMoreThanTwentyResults()
    {
        QFETCH(int, count);
        Fixture f;
        for (int i = 0; i < count; ++i)
            f.page(u"%1.html"_s.arg(i), "word");
        f.build();
        const QString page = f.index.searchResultsPage(u"word"_s);
        QCOMPARE(page.count(u"<a href="_s), 20);
        QVERIFY(page.contains(u"<p>%1 matches.</p>"_s.arg(count)));
        QCOMPARE(page.contains(u"<p>Only the first 20 matches are displayed. Try refining your search terms.</p>"_s),
                 count > 20);
    }
};

QTEST_MAIN(TestFullTextIndex)
#include "tst_fulltextindex.moc"
