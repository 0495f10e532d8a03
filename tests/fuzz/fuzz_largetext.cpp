#include "bytesearch.h"
#include "largefile.h"
#include "linemap.h"
#include <QFile>
#include <QTemporaryDir>

namespace {
/// Where lines begin, computed in a plain way.
std::vector<qint64> startsOf(QByteArrayView bytes)
{
    std::vector<qint64> starts;
    qint64 length = 0;
    for (qint64 i = 0; i < bytes.size(); ++i) {
        if (length == 0)
            starts.push_back(i);
        length = bytes[i] == '\n' || length + 1 == LongestLine ? 0 : length + 1;
    }
    return starts;
}

/// Repeats bytes, so that short inputs give lines of several pieces and files of several blocks.
QByteArray expanded(const uint8_t *data, size_t size)
{
    QByteArray bytes;
    for (size_t i = 0; i + 1 < size && bytes.size() < 40'000; i += 2)
        bytes.append(qsizetype(data[i + 1]) * (data[i] & 0x40 ? 16 : 1), char(data[i] & 0x3f ? data[i] : '\n'));
    return bytes;
}

void checkLines(const QByteArray &bytes)
{
    static const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("f"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return;
    file.close();
    const std::vector<qint64> starts = startsOf(bytes);
    const auto index = std::make_shared<SharedIndex>();
    index->index.append({bytes.data(), size_t(bytes.size())});
    LineMap map(LargeFile::open(path), bytes.size(), index);
    if (map.lineCount() != int(starts.size()))
        qFatal("wrong number of lines");
    for (size_t i = 0; i < starts.size(); i += 1 + starts.size() / 50) {
        if (map.startOf(int(i)) != starts[i] || map.lineAt(starts[i]) != int(i))
            qFatal("wrong place of a line");
    }
    LineMap unindexed(LargeFile::open(path), bytes.size(), std::make_shared<SharedIndex>());
    qint64 last = -1;
    for (int i = 0; i < std::min(unindexed.lineCount(), 500); ++i) {
        const qint64 start = unindexed.startOf(i);
        if (start < last || start > bytes.size())
            qFatal("estimated lines are out of order");
        last = start;
    }
}
} // namespace

// Any bytes as a large file: lines begin where the plain computation has them, and a search finds the same last match
// as QByteArray.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    checkLines(expanded(data, size));
    if (size < 2)
        return 0;
    const auto patternSize = qsizetype(std::min<size_t>(data[0] % 8, size - 1));
    const QByteArray pattern(reinterpret_cast<const char *>(data) + 1, patternSize);
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const BytePattern wanted{QString::fromUtf8(pattern), (data[0] & 0x10) != 0, (data[0] & 0x20) != 0};
    const ByteSearch search(wanted);
    qsizetype last = -1;
    search.forEach(bytes, 0, bytes.size(), ByteSearch::Step::NextByte, [&](const ByteMatch &match) {
        if (match.offset <= last || match.length < 1 || match.offset + match.length > bytes.size())
            qFatal("a match out of order");
        last = match.offset;
        return true;
    });
    const bool plain =
        wanted.caseSensitive && !wanted.wholeWord && !pattern.isEmpty() && bytes.isValidUtf8() && pattern.isValidUtf8();
    if (plain && last != bytes.lastIndexOf(pattern))
        qFatal("wrong last match");
    return 0;
}
