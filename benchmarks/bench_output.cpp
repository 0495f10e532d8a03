// 100,000 lines of build output on a visible page, with events handled every 500 lines. The peers are a QPlainTextEdit
// to which each line is appended, and one whose whole text is set at once.
#include "outputpage.h"
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <QApplication>
#include <QElapsedTimer>
using namespace Qt::StringLiterals;

namespace {

constexpr int LineCount = 100000;
constexpr int LinesPerRound = 500;

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

const QStringList &lines()
{
    static const QStringList theLines = [] {
        QStringList result;
        for (int i = 0; i < LineCount; ++i)
            result +=
                u"../../src/drivers/uart_%1.c(%2): warning: unused variable 'x' [-Wunused-variable]"_s.arg(i % 97).arg(
                    i);
        return result;
    }();
    return theLines;
}

size_t allocated()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

struct Cost
{
    qint64 nanoseconds;
    double bytesPerLine;
};

/// The cost of showing all lines in @p edit; @p add adds the line with the given number.
template <typename Add>
Cost fill(QPlainTextEdit &edit, Add add)
{
    edit.resize(800, 300);
    edit.setLineWrapMode(QPlainTextEdit::NoWrap);
    edit.show();
    QApplication::processEvents();
    const size_t before = allocated();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < LineCount; ++i) {
        add(i);
        if (i % LinesPerRound == LinesPerRound - 1)
            QApplication::processEvents();
    }
    benchmark::DoNotOptimize(edit.grab());
    const Cost cost{timer.nsecsElapsed(), double(allocated() - before) / LineCount};
    require(edit.toPlainText() == lines().join(u'\n'), "The text is wrong.");
    return cost;
}

Cost fillBareEdit()
{
    QPlainTextEdit edit;
    edit.setUndoRedoEnabled(false);
    return fill(edit, [&edit](int i) { edit.appendPlainText(lines()[i]); });
}

Cost fillAtOnce()
{
    QPlainTextEdit edit;
    edit.setUndoRedoEnabled(false);
    return fill(edit, [&edit](int i) {
        if (i == LineCount - 1)
            edit.setPlainText(lines().join(u'\n'));
    });
}

/// Adds complete lines, or each line in two pieces.
void fillPage(benchmark::State &state, bool inPieces)
{
    const Cost bare = fillBareEdit();
    const Cost atOnce = fillAtOnce();
    qint64 total = 0;
    double bytesPerLine = 0;
    for ([[maybe_unused]] auto _ : state) {
        OutputPage page;
        const Cost cost = fill(page, [&page, inPieces](int i) {
            const QString &line = lines()[i];
            if (inPieces)
                page.outputLine(line.left(20));
            const QString rest = inPieces ? line.mid(20) : line;
            page.outputLine(inPieces && i == LineCount - 1 ? rest : rest + u'\n');
        });
        total += cost.nanoseconds;
        bytesPerLine = cost.bytesPerLine;
        state.SetIterationTime(double(cost.nanoseconds) * 1e-9);
    }
    const double average = double(total) / double(state.iterations());
    state.counters["times_bare_append"] = average / double(bare.nanoseconds);
    state.counters["times_at_once"] = average / double(atOnce.nanoseconds);
    state.counters["bytes_per_line"] = bytesPerLine;
    state.counters["bare_bytes_per_line"] = bare.bytesPerLine;
    state.SetItemsProcessed(int64_t(state.iterations()) * LineCount);
}
BENCHMARK_CAPTURE(fillPage, whole_lines, false)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fillPage, two_pieces_each, true)->UseManualTime()->Unit(benchmark::kMillisecond);

/// One growing line, as of a program that prints a dot for each step.
void growOneLine(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        OutputPage page;
        page.resize(800, 300);
        page.show();
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < LineCount; ++i)
            page.outputLine(u"."_s);
        benchmark::DoNotOptimize(page.grab());
        state.SetIterationTime(double(timer.nsecsElapsed()) * 1e-9);
        require(page.toPlainText() == QString(LineCount, u'.'), "The line is wrong.");
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * LineCount);
}
BENCHMARK(growOneLine)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
