#include "lineindex.h"
#include <QRandomGenerator>
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

    void takesEightBytesForABlock()
    {
        const LineIndex index = indexOf(QByteArray(1'000'000, '\n'));
        QVERIFY(index.memory() <= 2 * 8 * (1'000'000 / LineIndex::BlockSize + 2));
    }
};

QTEST_APPLESS_MAIN(LineIndexTest)
#include "tst_lineindex.moc"
