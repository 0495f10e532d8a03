// The viewer of large files on a log of 1 GiB, each time beside the bare operation that it cannot do without.
#include "bytesearch.h"
#include "largefile.h"
#include "largetextdocument.h"
#include "largetextdocumenttemplate.h"
#include "largetextscan.h"
#include "largetextview.h"
#include "lineindex.h"
#include "textlineview.h"
#include <benchmark/benchmark.h>
#include <cstring>
#include <malloc.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 Gigabyte = 1ll << 30;
const auto RareWord = u"needle_in_a_haystack"_s;

const QString &fileOf(qint64 size)
{
    static const QTemporaryDir directory;
    static QHash<qint64, QString> files;
    QString &path = files[size];
    if (!path.isEmpty())
        return path;
    path = directory.filePath(QString::number(size));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write the log");
    QByteArray block;
    for (int i = 0; block.size() < 1 << 20; ++i)
        block += "2026-11-21 12:00:" + QByteArray::number(i % 60) + " [uart" + QByteArray::number(i % 7)
                 + "] info: received frame " + QByteArray::number(i) + ", crc ok\n";
    while (file.pos() < size)
        file.write(block.constData(), std::min<qint64>(block.size(), size - file.pos()));
    file.seek(size / 10 * 9);
    file.write(RareWord.toLatin1() + '\n');
    return path;
}

/// A log with the characters of markup, whose lines are laid out as rich text.
const QString &markedUp()
{
    static const QTemporaryDir directory;
    static const QString path = [&] {
        QFile file(directory.filePath(u"marked"_s));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write the log");
        for (int i = 0; i < 500'000; ++i)
            file.write("<event id=\"" + QByteArray::number(i)
                       + "\"><source>uart</source> a &lt; b &amp;&amp; <b>crc</b> ok</event>\n");
        return file.fileName();
    }();
    return path;
}

/// A log of very short lines.
const QString &shortLines(qint64 count)
{
    static const QTemporaryDir directory;
    static const QString path = [&] {
        QFile file(directory.filePath(u"short"_s));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write the log");
        const QByteArray block = QByteArray("line of text\n").repeated(100'000);
        for (qint64 i = 0; i < count; i += 100'000)
            file.write(block);
        return file.fileName();
    }();
    return path;
}

struct Shown
{
    explicit Shown(const QString &file, const QSize &size = {900, 700})
        : docTemplate({}, nullptr), document(&docTemplate)
    {
        if (!document.open(file))
            qFatal("cannot open the log");
        view = std::make_unique<LargeTextView>(&document, nullptr, nullptr);
        view->resize(size);
        view->show();
        view->setFocus();
        QCoreApplication::processEvents();
        view->repaint();
    }
    ~Shown() { view.reset(); }
    void waitForIndex()
    {
        while (!document.isIndexed())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    LargeTextDocumentTemplate docTemplate;
    LargeTextDocument document;
    std::unique_ptr<LargeTextView> view;
};

void firstScreen(benchmark::State &state)
{
    const QString &file = fileOf(state.range(0));
    for (auto _ : state)
        const Shown shown(file);
}

void lastScreen(benchmark::State &state)
{
    const QString &file = fileOf(state.range(0));
    for (auto _ : state) {
        const Shown shown(file);
        QElapsedTimer timer;
        timer.start();
        QKeyEvent end(QEvent::KeyPress, Qt::Key_End, Qt::ControlModifier);
        QCoreApplication::sendEvent(shown.view->lineView(), &end);
        shown.view->repaint();
        state.SetIterationTime(double(timer.nsecsElapsed()) / 1e9);
        state.counters["indexed_percent"] = shown.document.indexedPercent();
    }
}

template <typename Read>
void readBlocks(const QString &path, const Read &read)
{
    const auto file = LargeFile::open(path);
    std::vector<char> buffer(1 << 18);
    for (qint64 at = 0; at < file->size();) {
        const qint64 length = file->read(at, buffer.data(), qint64(buffer.size()));
        read(buffer.data(), length);
        at += length;
    }
}

void index(benchmark::State &state)
{
    const QString &file = fileOf(Gigabyte);
    for (auto _ : state) {
        LineIndex lines;
        readBlocks(file, [&](const char *bytes, qint64 length) { lines.append({bytes, size_t(length)}); });
        benchmark::DoNotOptimize(lines.lineCount());
        state.counters["index_bytes"] = double(lines.memory());
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * Gigabyte);
}

void indexPeerMemchr(benchmark::State &state)
{
    const QString &file = fileOf(Gigabyte);
    for (auto _ : state) {
        qint64 lines = 0;
        readBlocks(file, [&](const char *bytes, qint64 length) {
            for (const char *at = bytes;
                 (at = static_cast<const char *>(memchr(at, '\n', size_t(bytes + length - at))));)
                ++lines, ++at;
        });
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * Gigabyte);
}

void indexPeerReading(benchmark::State &state)
{
    const QString &file = fileOf(Gigabyte);
    for (auto _ : state)
        readBlocks(file, [](const char *bytes, qint64) { benchmark::DoNotOptimize(bytes); });
    state.SetBytesProcessed(int64_t(state.iterations()) * Gigabyte);
}

void find(benchmark::State &state)
{
    const QString &path = fileOf(Gigabyte);
    const auto file = LargeFile::open(path);
    const LargeTextScan scan(file, file->size(), {RareWord, state.range(0) != 0, false});
    for (auto _ : state) {
        if (!scan.next(0, file->size(), [](qint64) { return true; }))
            qFatal("not found");
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * Gigabyte);
}

const auto FrequentWord = u"uart3"_s; // in every seventh line

void count(benchmark::State &state)
{
    const QString &path = fileOf(Gigabyte);
    const auto file = LargeFile::open(path);
    const LargeTextScan scan(file, file->size(), {FrequentWord, true, false});
    for (auto _ : state) {
        qint64 matches = 0;
        scan.forEach([](qint64) { return true; }, [&](const ByteMatch &) { return ++matches > 0; });
        state.counters["matches"] = double(matches);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * Gigabyte);
}

/// The processor time of the peers so far.
double secondsOfChildren()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval &time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Its time is that of the processor, as in the column "CPU" of our own search. What it prints is short and read
/// through a pipe: grep stops at the first match if its output is /dev/null.
void findPeer(benchmark::State &state, const QString &program, const QString &options, const QString &word)
{
    const QString &path = fileOf(Gigabyte);
    if (QStandardPaths::findExecutable(program).isEmpty()) {
        state.SkipWithError("not installed");
        return;
    }
    for (auto _ : state) {
        QProcess process;
        const double before = secondsOfChildren();
        process.start(program, {options, word, path});
        if (!process.waitForFinished(-1) || process.exitCode() != 0)
            qFatal("not found");
        state.SetIterationTime(secondsOfChildren() - before);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * Gigabyte);
}

void pageDownIn(benchmark::State &state, const QString &file, const QSize &size)
{
    Shown shown(file, size);
    shown.waitForIndex();
    shown.view->lineView()->setCursor(shown.document.lineCount() / 2, 0);
    for (auto _ : state) {
        QKeyEvent down(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
        QCoreApplication::sendEvent(shown.view->lineView(), &down);
        shown.view->repaint();
    }
}

void pageDown(benchmark::State &state, const QSize &size)
{
    pageDownIn(state, fileOf(state.range(0)), size);
}

void pageDownInMarkup(benchmark::State &state)
{
    pageDownIn(state, markedUp(), {3840, 2160});
}

/// What copying the largest selection takes.
void copyLargest(benchmark::State &state)
{
    Shown shown(fileOf(64 << 20));
    shown.waitForIndex();
    const auto lines = int(shown.document.placeOf(LargeTextView::LongestCopy - 1000).line);
    shown.view->lineView()->setSelection({0, 0}, {lines, 0});
    for (auto _ : state)
        shown.view->copy();
}

/// Bytes of the process that it shares with no other one and with no file.
double privateMemory()
{
    malloc_trim(0);
    QFile file(u"/proc/self/smaps_rollup"_s);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the size of the memory is unknown");
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("Private_Dirty:"))
            return line.simplified().split(' ').value(1).toDouble() * 1024;
    }
    return 0;
}

/// More private memory than a window with a small file, once the lines are counted and shown from all over the file.
void memoryOfTenMillionLines(benchmark::State &state)
{
    const QString &file = shortLines(10'000'000);
    for (auto _ : state) {
        double before = 0;
        {
            const Shown small(fileOf(64 << 10));
            before = privateMemory();
        }
        Shown shown(file);
        shown.waitForIndex();
        for (int line = 0; line < shown.document.lineCount(); line += 9999) {
            shown.view->lineView()->setCursor(line, 0);
            shown.view->repaint();
        }
        state.counters["private_bytes"] = privateMemory() - before;
    }
}

BENCHMARK(firstScreen)
    ->Name("first screen, bytes")
    ->Arg(64 << 10)
    ->Arg(200 << 20)
    ->Arg(Gigabyte)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(lastScreen)
    ->Name("Ctrl+End after opening, bytes")
    ->Arg(64 << 10)
    ->Arg(200 << 20)
    ->Arg(Gigabyte)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(index)->Name("index of 1 GiB")->Unit(benchmark::kMillisecond);
BENCHMARK(indexPeerMemchr)->Name("index of 1 GiB, peer: memchr")->Unit(benchmark::kMillisecond);
BENCHMARK(indexPeerReading)->Name("index of 1 GiB, peer: reading alone")->Unit(benchmark::kMillisecond);
BENCHMARK(find)->Name("find in 1 GiB, with case")->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(find)->Name("find in 1 GiB, without case")->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(findPeer, grep, u"grep"_s, u"-Fq"_s, RareWord)
    ->Name("find in 1 GiB, peer: grep -F")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK_CAPTURE(findPeer, grepCase, u"grep"_s, u"-Fqi"_s, RareWord)
    ->Name("find in 1 GiB, peer: grep -Fi")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK_CAPTURE(findPeer, rg, u"rg"_s, u"-Fq"_s, RareWord)
    ->Name("find in 1 GiB, peer: rg -F")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK_CAPTURE(findPeer, rgCase, u"rg"_s, u"-Fqi"_s, RareWord)
    ->Name("find in 1 GiB, peer: rg -Fi")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK_CAPTURE(findPeer, rgCountRare, u"rg"_s, u"-c"_s, RareWord)
    ->Name("find in 1 GiB, peer: rg -c")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK(count)->Name("count in 1 GiB")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(findPeer, grepCount, u"grep"_s, u"-Fc"_s, FrequentWord)
    ->Name("count in 1 GiB, peer: grep -Fc")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK_CAPTURE(findPeer, rgCount, u"rg"_s, u"-Fc"_s, FrequentWord)
    ->Name("count in 1 GiB, peer: rg -Fc")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK_CAPTURE(pageDown, small, QSize(900, 700))
    ->Name("page down, bytes")
    ->Arg(64 << 10)
    ->Arg(Gigabyte)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pageDown, large, QSize(3840, 2160))
    ->Name("page down in 3840 x 2160 pixels, bytes")
    ->Arg(Gigabyte)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(pageDownInMarkup)->Name("page down in 3840 x 2160 pixels, markup")->Unit(benchmark::kMillisecond);
BENCHMARK(copyLargest)->Name("copy of the most characters")->Unit(benchmark::kMillisecond);
BENCHMARK(memoryOfTenMillionLines)->Name("memory for 10 million lines")->Iterations(1)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
