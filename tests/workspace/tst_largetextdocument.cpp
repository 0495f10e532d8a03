#include "largefixture.h"
#include "processcounts.h"
#include <QSignalSpy>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

class LargeTextDocumentTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    void readsLines_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("empty") << QByteArray() << QStringList();
        QTest::newRow("line ends are kept") << QByteArray("a\nb\n") << QStringList{u"a\n"_s, u"b\n"_s};
        QTest::newRow("last line without one") << QByteArray("a\nb") << QStringList{u"a\n"_s, u"b"_s};
        QTest::newRow("only line ends") << QByteArray("\n\n") << QStringList{u"\n"_s, u"\n"_s};
        QTest::newRow("CRLF") << QByteArray("a\r\nb\r\n") << QStringList{u"a\n"_s, u"b\n"_s};
        QTest::newRow("CR alone") << QByteArray("a\rb") << QStringList{u"a\rb"_s};
        QTest::newRow("UTF-8") << QByteArray("Größe\n") << QStringList{u"Größe\n"_s};
        QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbfx\n") << QStringList{u"x\n"_s};
        QTest::newRow("invalid UTF-8") << QByteArray("Gr\xf6\xdf"
                                                     "e\nGröße\n")
                                       << QStringList{u"Größe\n"_s, u"Größe\n"_s};
        QTest::newRow("binary") << QByteArray("a\0b\x01\n\xff", 6)
                                << QStringList{u"a"_s + QChar(0) + u"b\x01\n"_s, u"ÿ"_s};
        QTest::newRow("continuation bytes at the start")
            << QByteArray("\x80\x81x\n") << QStringList{u"\u0080\u0081x\n"_s};
        QTest::newRow("continuation bytes only")
            << QByteArray(2000, '\x80') + '\n'
            << QStringList{QString(1002, QChar(0x80)), QString(998, QChar(0x80)), u"\n"_s};
        QTest::newRow("continuation byte behind a line end") << QByteArray(998, 'x') + "\n\x80y\n"
                                                             << QStringList{QString(998, u'x') + u'\n', u"\u0080y\n"_s};
        QTest::newRow("2500 characters") << QByteArray(2499, 'x') + '\n'
                                         << QStringList{QString(999, u'x'), QString(999, u'x'),
                                                        QString(501, u'x') + u'\n'};
        QTest::newRow("999 and a line end")
            << QByteArray(999, 'x') + "\ny" << QStringList{QString(999, u'x'), u"\n"_s, u"y"_s};
        QTest::newRow("character over two pieces") << QByteArray(998, 'x') + "öy\n"
                                                   << QStringList{QString(998, u'x') + u'ö', u"y\n"_s};
        QTest::newRow("character of four bytes over two pieces") << QByteArray(997, 'x') + "😀y\n"
                                                                 << QStringList{QString(997, u'x') + u"😀"_s, u"y\n"_s};
        QTest::newRow("Latin-1 over two pieces") << QByteArray(998, 'x') + "\xe4\xbc\xf6\n"
                                                 << QStringList{QString(998, u'x') + u"ä¼"_s, u"ö\n"_s};
    }

    void readsLines()
    {
        QFETCH(QByteArray, bytes);
        LargeFixture f;
        QVERIFY(f.open(f.write(u"a.log"_s, bytes)));
        QTest::qWait(0);
        QTRY_VERIFY(f.document->isIndexed());
        QTEST(f.allLines(), "lines");
        QCOMPARE(f.document->line(-1), QString());
        QCOMPARE(f.document->line(f.document->lineCount()), QString());
    }

    void unreadableFilesAreRefusedWithoutMessage()
    {
        LargeFixture f;
        QVERIFY(!f.open(f.path(u"missing"_s)));
        QVERIFY(!f.open(f.directory.path()));
        QCOMPARE(mkfifo(QFile::encodeName(f.path(u"pipe"_s)).constData(), 0600), 0);
        QVERIFY(!f.open(f.path(u"pipe"_s)));
        QVERIFY(!f.open(u"/dev/zero"_s));
        QVERIFY(f.open(f.write(u"a.log"_s, "a\n")));
    }

    void isAReadOnlyDocument()
    {
        LargeFixture f;
        const QString file = f.write(u"a.log"_s, "a\n");
        QVERIFY(f.open(file));
        QCOMPARE(f.document->filename(), file);
        QCOMPARE(f.document->title(), u"a.log"_s);
        QCOMPARE(f.document->lastModified(), QFileInfo(file).lastModified());
        QVERIFY(!f.document->modified());
        for (int i = 0; i < 3; ++i)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"false\" in "_s));
        QVERIFY(!f.document->save());
        QVERIFY(!f.document->saveAs(file));
        QVERIFY(!f.document->create(file));
    }

    void changedFileIsNotNewer()
    {
        LargeFixture f;
        const QString file = f.write(u"a.log"_s, "a\n");
        QVERIFY(f.open(file));
        f.write(u"a.log"_s, "b\nc\n");
        QVERIFY(!f.document->isNewerOnDisk());
    }

    void placesAndOffsetsAgree()
    {
        LargeFixture f;
        QVERIFY(f.open(f.write(u"a.log"_s, "first\nGröße\nlast")));
        QCOMPARE(f.document->offsetOf({0, 3}), 3);
        QCOMPARE(f.document->offsetOf({1, 4}), 6 + 6); // two characters of two bytes
        QCOMPARE(f.document->offsetOf({1, 99}), 14);
        QCOMPARE(f.document->offsetOf({9, 0}), 0);
        const auto place = [&](qint64 offset) {
            const LargeTextDocument::Place found = f.document->placeOf(offset);
            return u"%1,%2"_s.arg(found.line).arg(found.column);
        };
        QCOMPARE(place(0), u"0,0"_s);
        QCOMPARE(place(5), u"0,5"_s);
        QCOMPARE(place(6), u"1,0"_s);
        QCOMPARE(place(12), u"1,4"_s);
        QCOMPARE(place(17), u"2,3"_s);
        QCOMPARE(place(99), u"2,4"_s); // behind the end
    }

    void lineEndOfTwoBytesHasOneColumn()
    {
        LargeFixture f;
        QVERIFY(f.open(f.write(u"a.log"_s, "ö\r\nb\r\n")));
        QList<qint64> offsets;
        for (const LargeTextDocument::Place place :
             {LargeTextDocument::Place{0, 0}, {0, 1}, {0, 2}, {0, 9}, {1, 1}, {1, 2}})
            offsets.append(f.document->offsetOf(place));
        QCOMPARE(offsets, (QList<qint64>{0, 2, 4, 4, 5, 7}));
        QStringList places;
        for (const qint64 offset : {0, 2, 3, 4, 5, 6, 7, 99}) {
            const LargeTextDocument::Place place = f.document->placeOf(offset);
            places.append(u"%1,%2"_s.arg(place.line).arg(place.column));
        }
        QCOMPARE(places.join(u' '), u"0,0 0,1 0,1 1,0 1,1 1,1 1,2 1,2"_s);
    }

    void byteOrderMarkIsNotPartOfTheFirstLine()
    {
        LargeFixture f;
        QVERIFY(f.open(f.write(u"a.log"_s, "\xef\xbb\xbf"
                                           "ab\nc\n")));
        QCOMPARE(f.document->offsetOf({0, 0}), 3);
        QCOMPARE(f.document->offsetOf({0, 2}), 5);
        QCOMPARE(f.document->offsetOf({1, 1}), 7);
        for (const int offset : {0, 2, 3})
            QCOMPARE(f.document->placeOf(offset).column, 0);
        QCOMPARE(f.document->placeOf(4).column, 1);
        QVERIFY(f.open(f.write(u"b.log"_s, "a\n\xef\xbb\xbf"
                                           "b\n"))); // elsewhere it is a character
        QCOMPARE(f.document->offsetOf({1, 0}), 2);
        QVERIFY(f.open(f.write(u"c.log"_s, "\xef\xbb\xbf")));
        QCOMPARE(f.allLines(), QStringList{QString()});
    }

    void followsAFileWhoseLastWriteWasCutOff()
    {
        LargeFixture f;
        f.write(u"a.log"_s, "one\ngr\xc3"); // as on a full disk: half of a character is missing
        QVERIFY(f.open(f.path(u"a.log"_s)));
        f.document->setFollowing(true);
        QCOMPARE(f.allLines(), (QStringList{u"one\n"_s, u"gr\u00c3"_s}));
        f.document->checkFile();
        QCOMPARE(f.document->change(), LargeTextDocument::Change::None);
        f.write(u"a.log"_s, "\xb6\xc3\x9f", QIODevice::Append);
        f.document->checkFile();
        QCOMPARE(f.allLines(), (QStringList{u"one\n"_s, u"gr\u00f6\u00df"_s}));
        f.write(u"a.log"_s, "e\n", QIODevice::Append);
        f.document->checkFile();
        QCOMPARE(f.allLines(), (QStringList{u"one\n"_s, u"gr\u00f6\u00dfe\n"_s}));
    }

    void lineFarDownIsFound()
    {
        LargeFixture f;
        QByteArray bytes;
        for (int i = 0; i < 200'000; ++i)
            bytes += "line " + QByteArray::number(i) + '\n';
        QVERIFY(f.open(f.write(u"a.log"_s, bytes)));
        QTRY_VERIFY(f.document->isIndexed());
        QCOMPARE(f.document->lineCount(), 200'000);
        for (const int line : {0, 199'999, 100'000, 99'999, 100'001, 5, 150'000, 99'000, 149'000, 151'100})
            QCOMPARE(f.document->line(line), u"line %1\n"_s.arg(line));
        for (int line = 120'000; line < 140'000; line += 7)
            QCOMPARE(f.document->line(line), u"line %1\n"_s.arg(line));
        for (int line = 140'000; line > 120'000; line -= 7)
            QCOMPARE(f.document->line(line), u"line %1\n"_s.arg(line));
    }

    /// The thread would have to read for longer than this test takes.
    void startAndEndDoNotWaitForTheIndex()
    {
        LargeFixture f;
        const qint64 size = 200ll << 30;
        QByteArray start;
        QByteArray end = "\n";
        for (int i = 0; i < 3000; ++i) {
            start += "first " + QByteArray::number(i) + '\n';
            end += "last " + QByteArray::number(i) + '\n';
        }
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, size, start, end)));
        QVERIFY(!f.document->isIndexed());
        QVERIFY(f.document->indexedPercent() < 50);
        const int count = f.document->lineCount();
        QVERIFY(count > 10'000'000);
        for (const int line : {0, 1, 150}) // the first screen
            QCOMPARE(f.document->line(line), u"first %1\n"_s.arg(line));
        for (const int line : {0, 1, 20, 900})
            QCOMPARE(f.document->line(count - 1 - line), u"last %1\n"_s.arg(2999 - line));
        QCOMPARE(f.document->line(count / 2).size(), 999); // somewhere among the zeros
    }

    void linesInTheMiddleFollowEachOtherBeforeTheIndexIsReady()
    {
        LargeFixture f;
        const QString file = f.writeSparse(u"a.log"_s, 200ll << 30, QByteArray("a line of text\n").repeated(100'000));
        QFile middle(file);
        QVERIFY(middle.open(QIODevice::ReadWrite) && middle.seek(100ll << 30));
        QByteArray lines;
        for (int i = 0; i < 5000; ++i)
            lines += "middle " + QByteArray::number(i) + '\n';
        middle.write(lines);
        middle.close();
        QVERIFY(f.open(file));
        QVERIFY(!f.document->isIndexed());
        const LargeTextDocument::Place place = f.document->placeOf((100ll << 30) + 30'000);
        const int number = f.document->line(place.line).section(u' ', 1).toInt();
        QVERIFY(number > 1000);
        for (const int step : {1, -1, 30, -30, 500, -500})
            QCOMPARE(f.document->line(place.line + step), u"middle %1\n"_s.arg(number + step));
        QCOMPARE(f.document->placeOf(f.document->offsetOf({place.line + 7, 2})).line, place.line + 7);
    }

    void deletedDocumentDoesNotWaitForItsThread()
    {
        LargeFixture f;
        const qsizetype threads = threadCount();
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 200ll << 30)));
        QVERIFY(!f.document->isIndexed());
        QElapsedTimer time;
        time.start();
        f.document.reset();
        QVERIFY(time.elapsed() < 5000);
        QTRY_VERIFY(threadCount() <= threads); // it does not read on
    }

    void closedDocumentHasClosedItsFile()
    {
        LargeFixture f;
        const QString file = f.write(u"a.log"_s, "one\n");
        const qsizetype files = openFileCount();
        QVERIFY(f.open(file));
        QVERIFY(f.document->reload());
        f.document.reset();
        QTRY_VERIFY(openFileCount() <= files); // the thread that counts lines may end later
    }

    void numbersAreExactWhenTheIndexIsReady()
    {
        LargeFixture f;
        // Short lines first: the estimate is far too high.
        const QString file = f.write(u"a.log"_s, QByteArray("\n").repeated(100'000)
                                                     + QByteArray("a long line of text\n").repeated(4'000'000));
        QVERIFY(f.open(file));
        const QSignalSpy renumbering(f.document.get(), &LargeTextDocument::renumbering);
        const QSignalSpy renumbered(f.document.get(), &LargeTextDocument::renumbered);
        QTRY_VERIFY(f.document->isIndexed());
        QCOMPARE(f.document->lineCount(), 4'100'000);
        QCOMPARE(f.document->line(99'999), u"\n"_s);
        QCOMPARE(f.document->line(100'000), u"a long line of text\n"_s);
        QCOMPARE(renumbering.count(), renumbered.count());
    }

    // Files that change -----------------------------------------------------

    void changesOfTheFileAreReported()
    {
        using Change = LargeTextDocument::Change;
        LargeFixture f;
        const QString file = f.write(u"a.log"_s, "one\ntwo\n");
        QVERIFY(f.open(file));
        QSignalSpy changed(f.document.get(), &LargeTextDocument::fileChanged);
        f.document->checkFile();
        QVERIFY(changed.isEmpty());

        f.write(u"a.log"_s, "three\n", QIODevice::Append);
        f.document->checkFile();
        QCOMPARE(f.document->change(), Change::Grown);
        QCOMPARE(f.document->presentSize(), 14);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(f.allLines(), (QStringList{u"one\n"_s, u"two\n"_s})); // the text changes only by reload

        QVERIFY(QFile::resize(file, 2));
        f.document->checkFile();
        QCOMPARE(f.document->change(), Change::Shrunk);

        f.write(u"b.log"_s, "new\n");
        QCOMPARE(rename(QFile::encodeName(f.path(u"b.log"_s)).constData(), QFile::encodeName(file).constData()), 0);
        f.document->checkFile();
        QCOMPARE(f.document->change(), Change::Replaced);

        QVERIFY(QFile::remove(file));
        f.document->checkFile();
        QCOMPARE(f.document->change(), Change::Gone);
        QCOMPARE(changed.size(), 4);
        f.document->checkFile();
        QCOMPARE(changed.size(), 4);
    }

    void rewrittenFileIsReported()
    {
        LargeFixture f;
        const QString file = f.write(u"a.log"_s, "one\n");
        QVERIFY(f.open(file));
        QFile other(file);
        QVERIFY(other.open(QIODevice::ReadWrite));
        other.write("two\n");
        other.flush();
        other.setFileTime(QDateTime::currentDateTime().addSecs(10), QFileDevice::FileModificationTime);
        other.close();
        f.document->checkFile();
        QCOMPARE(f.document->change(), LargeTextDocument::Change::Rewritten);
    }

    void linesOfAShrunkenFileAreEmptyBehindItsEnd()
    {
        LargeFixture f;
        const QString file = f.write(u"a.log"_s, QByteArray("some text\n").repeated(1'000'000));
        QVERIFY(f.open(file));
        QTRY_VERIFY(f.document->isIndexed());
        QVERIFY(QFile::resize(file, 25));
        QCOMPARE(f.document->line(0), u"some text\n"_s);
        for (const int line : {999'999, 500'000, 123'456, 3})
            QCOMPARE(f.document->line(line), QString());
        QCOMPARE(f.document->line(2), u"some "_s);
        QVERIFY(f.document->reload());
        QCOMPARE(f.allLines(), (QStringList{u"some text\n"_s, u"some text\n"_s, u"some "_s}));
        QCOMPARE(f.document->change(), LargeTextDocument::Change::None);
    }

    void fileThatShrinksWhileItIsIndexedEndsAtItsNewSize()
    {
        LargeFixture f;
        const QString file = f.writeSparse(u"a.log"_s, 200ll << 30, "first\nsecond\n");
        QVERIFY(f.open(file));
        QVERIFY(!f.document->isIndexed());
        QVERIFY(QFile::resize(file, 13));
        QTRY_VERIFY(f.document->isIndexed());
        QCOMPARE(f.document->line(1), u"second\n"_s);
        QCOMPARE(f.document->line(f.document->lineCount() - 1).size() < 1000, true);
    }

    void deletedFileCanStillBeRead()
    {
        LargeFixture f;
        const QString file = f.write(u"a.log"_s, "one\ntwo\n");
        QVERIFY(f.open(file));
        QVERIFY(QFile::remove(file));
        QCOMPARE(f.document->line(1), u"two\n"_s);
        QVERIFY(!f.document->reload());
        QCOMPARE(f.document->line(1), u"two\n"_s);
    }

    void followsAGrowingFile()
    {
        LargeFixture f;
        f.write(u"a.log"_s, "one\ntw");
        QVERIFY(f.open(f.path(u"a.log"_s)));
        f.document->setFollowing(true);
        QSignalSpy renumbered(f.document.get(), &LargeTextDocument::renumbered);
        f.write(u"a.log"_s, "o\nthree\n", QIODevice::Append);
        f.document->checkFile();
        QCOMPARE(f.allLines(), (QStringList{u"one\n"_s, u"two\n"_s, u"three\n"_s}));
        QCOMPARE(f.document->change(), LargeTextDocument::Change::None);
        QVERIFY(!renumbered.isEmpty());
        f.write(u"a.log"_s, "four\n", QIODevice::Append);
        f.document->checkFile();
        QCOMPARE(f.document->lineCount(), 4);
        f.document->setFollowing(false);
        QCOMPARE(f.document->change(), LargeTextDocument::Change::None);
        f.write(u"a.log"_s, "five\n", QIODevice::Append);
        f.document->checkFile();
        QCOMPARE(f.document->lineCount(), 4);
        QCOMPARE(f.document->change(), LargeTextDocument::Change::Grown);
    }

    void documentWithoutAFileCanBeFollowed()
    {
        LargeFixture f;
        LargeTextDocument document(&f.docTemplate);
        document.setFollowing(true);
        QVERIFY(document.isFollowing());
        QCOMPARE(document.indexedPercent(), 100);
        QCOMPARE(document.lineCount(), 0);
        QCOMPARE(document.placeOf(5).line, 0);
    }

    void followingBeginsWithWhatIsThere()
    {
        LargeFixture f;
        f.write(u"a.log"_s, "one\n");
        QVERIFY(f.open(f.path(u"a.log"_s)));
        f.write(u"a.log"_s, "two\n", QIODevice::Append);
        const QSignalSpy reloaded(f.document.get(), &LargeTextDocument::reloaded);
        f.document->setFollowing(true);
        QCOMPARE(f.allLines(), (QStringList{u"one\n"_s, u"two\n"_s}));
        f.document->checkFile();
        QCOMPARE(reloaded.size(), 0);
    }

    void followedFileIsExtendedWhenItsLinesHaveBeenCounted()
    {
        LargeFixture f;
        const qint64 size = 200ll << 30;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, size)));
        QVERIFY(!f.document->isIndexed());
        f.document->setFollowing(true);
        const QSignalSpy reloaded(f.document.get(), &LargeTextDocument::reloaded);
        f.write(u"a.log"_s, "more\n", QIODevice::Append);
        f.document->checkFile();
        QCOMPARE(f.document->size(), size);
        QCOMPARE(f.document->change(), LargeTextDocument::Change::Grown);
        QCOMPARE(reloaded.size(), 0);
    }

    void furtherGrowthIsReported()
    {
        LargeFixture f;
        QVERIFY(f.open(f.write(u"a.log"_s, "one\n")));
        QSignalSpy changed(f.document.get(), &LargeTextDocument::fileChanged);
        for (const qint64 size : {8, 12}) {
            f.write(u"a.log"_s, "two\n", QIODevice::Append);
            f.document->checkFile();
            QCOMPARE(f.document->presentSize(), size);
        }
        QCOMPARE(changed.size(), 2);
    }

    void followsAFileThatBeginsAgain()
    {
        LargeFixture f;
        const QString file = f.write(u"a.log"_s, "one\ntwo\n");
        QVERIFY(f.open(file));
        f.document->setFollowing(true);
        QSignalSpy reloaded(f.document.get(), &LargeTextDocument::reloaded);
        QSignalSpy changed(f.document.get(), &LargeTextDocument::fileChanged);
        QVERIFY(QFile::resize(file, 0));
        f.document->checkFile();
        QCOMPARE(reloaded.size(), 1);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(f.document->lineCount(), 0);
        QCOMPARE(rename(QFile::encodeName(file).constData(), QFile::encodeName(file + u".1"_s).constData()), 0);
        f.document->checkFile();
        QCOMPARE(f.document->change(), LargeTextDocument::Change::Gone);
        f.write(u"a.log"_s, "new\n");
        f.document->checkFile();
        QCOMPARE(f.allLines(), QStringList{u"new\n"_s});
        QCOMPARE(f.document->change(), LargeTextDocument::Change::None);
    }

    void timerChecksTheFile()
    {
        LargeFixture f;
        f.write(u"a.log"_s, "one\n");
        QVERIFY(f.open(f.path(u"a.log"_s)));
        f.write(u"a.log"_s, "two\n", QIODevice::Append);
        QTRY_VERIFY(f.document->isIndexed());
        const QSignalSpy renumbered(f.document.get(), &LargeTextDocument::renumbered);
        QTRY_COMPARE(f.document->change(), LargeTextDocument::Change::Grown);
        QCOMPARE(renumbered.size(), 0); // all lines have their numbers
    }

    // Many lines ------------------------------------------------------------

    void millionsOfEmptyLinesAreCounted()
    {
        LargeFixture f;
        QVERIFY(f.open(f.write(u"a.log"_s, QByteArray(300'000'000, '\n'))));
        QTRY_VERIFY_WITH_TIMEOUT(f.document->isIndexed(), 60'000);
        QCOMPARE(f.document->lineCount(), 300'000'000);
        QCOMPARE(f.document->line(299'999'999), u"\n"_s);
        QCOMPARE(f.document->placeOf(12'345'678).line, 12'345'678);
    }

    void lineOfTwoGigabytesIsShownInPieces()
    {
        LargeFixture f;
        const qint64 size = 2ll << 30;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, size, "start", "end")));
        const int estimated = f.document->lineCount();
        QVERIFY(std::abs(estimated - size / 999) < size / 999 / 50);
        QVERIFY(f.document->line(0).startsWith(u"start"_s));
        QVERIFY(f.document->line(estimated - 1).endsWith(u"end"_s));
        QTRY_VERIFY_WITH_TIMEOUT(f.document->isIndexed(), 60'000);
        QCOMPARE(f.document->lineCount(), int((size + 998) / 999));
        QVERIFY(f.document->line(f.document->lineCount() - 1).endsWith(u"end"_s));
    }
};

QTEST_MAIN(LargeTextDocumentTest)
#include "tst_largetextdocument.moc"
