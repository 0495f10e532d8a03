// The indentation of a new line near the end of a C file: computed from a list of lines, and in a document.
#include "cppindent.h"
#include "samplesource.h"
#include <benchmark/benchmark.h>
#include <QGuiApplication>
#include <QPlainTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace {
constexpr int LineCount = 300'000;
constexpr int LinesAboveReturn = 9; // in a function of the sample: the new line is below "if (flags & ADC_TRACE)"

void require(bool condition, const char *text)
{
    if (!condition)
        qFatal("%s", text);
}

/// The first @p count lines or slightly fewer, up to an "if", and an empty line.
QStringList linesUpToReturn(int count)
{
    static const QStringList all = sampleSource(9'900'000).split(u'\n');
    const int linesPerFunction = 22;
    QStringList lines = all.first(count / linesPerFunction * linesPerFunction - linesPerFunction + LinesAboveReturn);
    lines.append(QString());
    return lines;
}

void fromLines(benchmark::State &state)
{
    const QStringList lines = linesUpToReturn(int(state.range(0)));
    require(indentForBottomLine(lines, QChar(), 4) == 8, "The body of the if has a wrong column.");
    for (auto _ : state)
        benchmark::DoNotOptimize(indentForBottomLine(lines, QChar(), 4));
}
BENCHMARK(fromLines)->Arg(100)->Arg(LineCount)->Unit(benchmark::kMicrosecond);

void inDocument(benchmark::State &state)
{
    QTextDocument document;
    document.setDocumentLayout(new QPlainTextDocumentLayout(&document));
    document.setPlainText(linesUpToReturn(int(state.range(0))).join(u'\n'));
    CppIndent indent;
    indent.setIndentMode(TextIndent::Smart);
    int column = 0;
    for (auto _ : state)
        indent.indent(&document, document.lastBlock(), nullptr, &column);
    require(column == 8 && document.lastBlock().text() == QString(9, u' '), "The new line has a wrong column.");
}
BENCHMARK(inDocument)->Arg(100)->Arg(LineCount)->Unit(benchmark::kMicrosecond);
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
