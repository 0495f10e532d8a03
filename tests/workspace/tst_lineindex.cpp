#include "largefile.h"
#include "lineindex.h"
#include "linemap.h"
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
std::string_view view(const QByteArray &bytes)
{
    return {bytes.data(), size_t(bytes.size())};
}

LineIndex indexOf(const QByteArray &bytes, qsizetype step = 100'000)
{
    LineIndex index;
    for (qsizetype at = 0; at < bytes.size(); at += step)
        index.append(view(bytes).substr(size_t(at), size_t(step)));
    return index;
}

/// Where lines begin, computed in a plain way.
QList<qint64> starts(const QByteArray &bytes)
{
    QList<qint64> found;
    qint64 length = 0;
    for (qint64 i = 0; i < bytes.size(); ++i) {
        if (length == 0)
            found << i;
        length = bytes[i] == '\n' || length + 1 == LongestLine ? 0 : length + 1;
    }
    return found;
}

/// Where a line begins, as found from the index.
qint64 startOf(const LineIndex &index, const QByteArray &bytes, qint64 line)
{
    const LineIndex::Start from = index.startForLine(line);
    qint64 at = from.offset;
    qint64 number = from.inLine ? from.line - 1 : from.line;
    for (int inLine = from.inLine; number < line; ++number, inLine = 0)
        at += lineLength(view(bytes).substr(size_t(at)), inLine);
    return at;
}

/// A file of which only the first bytes have been counted.
class MappedFile
{
public:
    MappedFile(const QByteArray &bytes, qint64 counted) : m_size(bytes.size())
    {
        QFile file(m_directory.filePath(u"f"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write a file");
        m_index->index.append(view(bytes).substr(0, size_t(counted)));
    }
    [[nodiscard]] std::unique_ptr<LineMap> map() const
    {
        return std::make_unique<LineMap>(LargeFile::open(m_directory.filePath(u"f"_s)), m_size, m_index);
    }

private:
    QTemporaryDir m_directory;
    qint64 m_size;
    std::shared_ptr<SharedIndex> m_index = std::make_shared<SharedIndex>();
};
} // namespace

class LineIndexTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void findsEveryLine_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("one line") << QByteArray("abc\n");
        QTest::newRow("without line end") << QByteArray("abc\ndef");
        QTest::newRow("empty lines") << QByteArray(70'000, '\n');
        QTest::newRow("2500 characters") << QByteArray(2499, 'x') + "\nnext\n";
        QTest::newRow("999 and a line end") << QByteArray(999, 'x') + "\nnext\n";
        QTest::newRow("998 and a line end") << QByteArray(998, 'x') + "\nnext\n";
        QTest::newRow("one line of many blocks") << QByteArray(100'001, 'x');
        QTest::newRow("line end behind a block") << QByteArray(16384, 'x') + "\n" + QByteArray(16383, 'y') + "\nz";
        QTest::newRow("zeros") << QByteArray(50'000, '\0');
        QByteArray mixed;
        QRandomGenerator random(1);
        while (mixed.size() < 300'000)
            mixed += QByteArray(random.bounded(10) == 0 ? random.bounded(5000) : random.bounded(80), 'm') + '\n';
        QTest::newRow("mixed lengths") << mixed;
    }

    void findsEveryLine()
    {
        QFETCH(QByteArray, bytes);
        const QList<qint64> expected = starts(bytes);
        for (const qsizetype step : {100'000, 4096, 77}) {
            const LineIndex index = indexOf(bytes, step);
            QCOMPARE(index.size(), bytes.size());
            QCOMPARE(index.lineCount(), expected.size());
            for (qsizetype line = 0; line<expected.size(); line += expected.size()> 10'000 ? 997 : 7)
                QCOMPARE(startOf(index, bytes, line), expected[line]);
        }
    }

    void emptyIndexBeginsAtTheStart()
    {
        const LineIndex index;
        QCOMPARE(index.startForLine(0).offset, 0);
        QCOMPARE(index.startForOffset(0).line, 0);
    }

    void blockOfAnOffsetBeginsBeforeIt()
    {
        const QByteArray bytes = QByteArray("0123456789\n").repeated(10'000);
        const LineIndex index = indexOf(bytes);
        const LineIndex::Start start = index.startForOffset(50'000);
        QCOMPARE(start.offset, 50'000 / LineIndex::BlockSize * LineIndex::BlockSize);
        QCOMPARE(start.line, (start.offset + 10) / 11);
        QCOMPARE(start.inLine, int(start.offset % 11));
    }

    void goesOnWithAFileThatHasGrown()
    {
        const QByteArray bytes = QByteArray("some line\n").repeated(5000) + "rest";
        LineIndex index = indexOf(bytes);
        QCOMPARE(index.lineCount(), 5001);
        index.append(" of the line\nnext\n");
        QCOMPARE(index.lineCount(), 5002);
    }

    // The map of a file, which estimates what has not been counted -------------

    void mapFindsTheLinesAroundAPlace_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<qint64>("counted");
        QByteArray numbered;
        for (int i = 0; i < 200'000; ++i)
            numbered += "line " + QByteArray::number(i) + '\n';
        const QByteArray noLines(3'000'000, 'x');
        const QByteArray shortFirst =
            QByteArray("123456789\n").repeated(7000) + QByteArray(499, 'y').append('\n').repeated(6000);
        const QByteArray longFirst =
            QByteArray(499, 'y').append('\n').repeated(200) + QByteArray("12\n").repeated(500'000);
        for (const qint64 counted : {0, 100'000, 1'000'000}) {
            QTest::addRow("lines, %d counted", int(counted)) << numbered << counted;
            QTest::addRow("no line ends, %d counted", int(counted)) << noLines << counted;
            QTest::addRow("short lines first, %d counted", int(counted)) << shortFirst << counted;
            QTest::addRow("long lines first, %d counted", int(counted)) << longFirst << counted;
        }
    }

    void mapFindsTheLinesAroundAPlace()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const qint64, counted);
        const QList<qint64> expected = starts(bytes);
        const MappedFile file(bytes, counted);
        const auto shared = file.map();
        const auto upwards = file.map();
        QList<qint64> offsets{0,
                              500,
                              20'000,
                              90'000,
                              99'990,
                              100'010,
                              bytes.size() / 2,
                              bytes.size() - 70'000,
                              bytes.size() - 2000,
                              bytes.size() - 1,
                              bytes.size()};
        for (const qint64 offset : std::as_const(offsets)) {
            const auto map = file.map();
            const int line = map->lineAt(offset);
            const auto next = std::upper_bound(expected.begin(), expected.end(), std::min(offset, bytes.size() - 1));
            QCOMPARE(map->startOf(line), *(next - 1));
            if (next != expected.end())
                QCOMPARE(map->startOf(line + 1), *next);
            if (next - expected.begin() > 1 && line > 0 && (map->isExact(line - 1) == map->isExact(line)))
                QCOMPARE(map->startOf(line - 1), *(next - 2));
            QCOMPARE(map->lineAt(offset), line);
            QCOMPARE(shared->startOf(shared->lineAt(offset)), *(next - 1)); // after other questions
        }
        std::ranges::reverse(offsets);
        for (const qint64 offset : std::as_const(offsets)) {
            const auto next = std::upper_bound(expected.begin(), expected.end(), std::min(offset, bytes.size() - 1));
            QCOMPARE(upwards->startOf(upwards->lineAt(offset)), *(next - 1));
        }
        QCOMPARE(shared->startOf(-1), bytes.size());
        QCOMPARE(shared->startOf(shared->lineCount()), bytes.size());
    }

    void linesThatAreCountedKeepTheirNumbersBelowEstimatedOnes()
    {
        const QByteArray bytes = QByteArray("some line\n").repeated(20'000) + QByteArray("\n").repeated(100'000);
        const auto map = MappedFile(bytes, 100'000).map();
        const int counted = 10'000;
        QVERIFY(map->isExact(counted - 1) && !map->isExact(counted));
        int line = map->lineAt(150'000);
        QVERIFY(line > counted + 1024); // so far that it is estimated
        while (line > counted)
            QVERIFY(map->startOf(--line) >= 100'000 || line == counted);
        for (line = counted - 1; line > counted - 10; --line)
            QCOMPARE(map->startOf(line), 10 * line);
    }

    // Fewer numbers were estimated than there are lines.
    void mapHasNoNumbersBelowTheFirst()
    {
        const QByteArray bytes = QByteArray(499, 'y').append('\n').repeated(200) + QByteArray("12\n").repeated(500'000);
        const auto map = MappedFile(bytes, 0).map();
        int line = map->lineAt(400'000);
        while (line > 0)
            QVERIFY(map->startOf(--line) > 100'000);
        QCOMPARE(map->startOf(-1), bytes.size());
    }

    void numberOfLinesFollowsFromTheCountedOnes()
    {
        const QByteArray bytes = QByteArray("1\n").repeated(40'000) + QByteArray(99, 'y').append('\n').repeated(20'000);
        const int lines = 60'000;
        const auto map = MappedFile(bytes, 1'900'000).map();
        QVERIFY(!map->isExact());
        QVERIFY2(qAbs(map->lineCount() - lines) < lines / 10, qPrintable(QString::number(map->lineCount())));
    }

    void lastByteIsInTheLastLine()
    {
        const QByteArray bytes = QByteArray("1\n").repeated(40'000) + QByteArray(99, 'y').append('\n').repeated(20'000);
        const auto map = MappedFile(bytes, 0).map();
        QCOMPARE(map->lineAt(bytes.size() - 1), map->lineCount() - 1);
        QCOMPARE(map->lineAt(bytes.size() - 150), map->lineCount() - 2);
    }

    // All of it would be read for a very long time.
    void endOfAFileThatIsNotCountedIsFoundFromTheEnd()
    {
        const QTemporaryDir directory;
        QFile file(directory.filePath(u"f"_s));
        constexpr qint64 Size = 200ll << 30;
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(Size));
        LineMap map(LargeFile::open(file.fileName()), Size, std::make_shared<SharedIndex>());
        QVERIFY(map.startOf(map.lineCount() - 1) >= Size - LongestLine);
    }

    void placesBehindTheEndOfAFileThatHasBecomeShorterHaveLines()
    {
        const QTemporaryDir directory;
        QFile file(directory.filePath(u"f"_s));
        const QByteArray bytes = QByteArray("some line\n").repeated(20'000);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        LineMap map(LargeFile::open(file.fileName()), bytes.size(), std::make_shared<SharedIndex>());
        QVERIFY(file.resize(100));
        for (const qint64 offset : {bytes.size() - 20, bytes.size() / 2}) {
            const int line = map.lineAt(offset);
            QVERIFY(line >= 0 && line < map.lineCount());
            QVERIFY(map.startOf(line) <= offset);
        }
    }

    // More numbers were estimated than there are lines.
    void mapHasNoLinesAboveTheStart()
    {
        const QByteArray bytes =
            QByteArray("123456789\n").repeated(7000) + QByteArray(99, 'y').append('\n').repeated(20'000);
        const auto map = MappedFile(bytes, 0).map();
        int line = map->lineAt(1'500'000);
        const int last = line;
        while (map->startOf(line) > 0)
            --line;
        QVERIFY(line > 0);
        QCOMPARE(map->startOf(line - 1), bytes.size());
        QCOMPARE(map->startOf(line), 0);
        QCOMPARE(map->startOf(line + 1), 10);
        while (map->startOf(line) < 1'500'000)
            ++line;
        QCOMPARE(line, last);
    }

    // Their numbers would not suffice, and line 0 would be one of them.
    void linesAtTheEndNeverTakeTheNumbersOfCountedOnes()
    {
        constexpr int Counted = 1000;
        const QByteArray bytes =
            QByteArray(LongestLine - 1, 'x').append('\n').repeated(Counted) + QByteArray(60'000, '\n');
        const auto map = MappedFile(bytes, Counted * LongestLine).map();
        const qint64 offset = bytes.size() - 50'000;
        const int line = map->lineAt(offset);
        QVERIFY(!map->isExact(line) && line < map->lineCount());
        QCOMPARE(map->startOf(line), offset);
        QCOMPARE(map->startOf(0), 0);
        QCOMPARE(map->startOf(Counted - 1), (Counted - 1) * LongestLine);
    }

    void lineThatIsCountedInPartHasOneNumber()
    {
        const QByteArray bytes =
            QByteArray("1\n").repeated(1000) + QByteArray(800, 'x').append('\n') + QByteArray("1\n").repeated(1000);
        const auto map = MappedFile(bytes, 2010).map();
        QCOMPARE(map->lineAt(2700), 1000);
        QCOMPARE(map->startOf(1000), 2000);
        QCOMPARE(map->startOf(1001), 2801);
        QCOMPARE(map->startOf(999), 1998);
    }

    // It is entered in its middle, and its start is too far away to be looked for.
    void everyByteOfAVeryLongLineIsInALine()
    {
        const QByteArray bytes =
            QByteArray("short line\n").repeated(10'000) + QByteArray(3 << 20, 'x') + QByteArray("\nend\n");
        const auto map = MappedFile(bytes, 0).map();
        int line = map->lineAt(2 << 20);
        qint64 next = map->startOf(line);
        while (line > 0 && next > 100'000) {
            const qint64 start = map->startOf(--line);
            const auto lineEnd = bytes.indexOf('\n', start);
            QVERIFY2(next - start <= LongestLine && (lineEnd < 0 || lineEnd >= next - 1),
                     qPrintable(u"line from %1 to %2"_s.arg(start).arg(next)));
            next = start;
        }
        QVERIFY(next <= 100'000);
    }

    void takesEightBytesForABlock()
    {
        const LineIndex index = indexOf(QByteArray(1'000'000, '\n'));
        QVERIFY(index.memory() <= 2 * 8 * (1'000'000 / LineIndex::BlockSize + 2));
    }
};

QTEST_APPLESS_MAIN(LineIndexTest)
#include "tst_lineindex.moc"
