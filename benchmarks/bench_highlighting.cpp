// Highlighting of a C file of the largest size for the editor: the lexer alone, the whole document, and one typed
// character. The peer of the last is the same document without highlighting.
#include "cpphighlighter.h"
#include "highlightdriver.h"
#include "samplesource.h"
#include <benchmark/benchmark.h>
#include <QAbstractTextDocumentLayout>
#include <QGuiApplication>
#include <QPlainTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace {
constexpr qsizetype LargestFile = 9'900'000;
constexpr int Screen = 60;      // lines
constexpr int WidestLine = 200; // characters

enum Place { Top, Middle, End };

void require(bool condition, const char *text)
{
    if (!condition)
        qFatal("%s", text);
}

const QString &largeSource()
{
    static const QString text = sampleSource(LargestFile);
    return text;
}

FormatTable someFormats()
{
    FormatTable formats;
    for (int id = FormatId::Background; id <= FormatId::Label; ++id)
        formats[id].setForeground(QColor::fromRgb(QRgb(id)));
    return formats;
}

/// A document, with or without highlighting.
struct Sample
{
    Sample(const QString &text, bool highlighted)
    {
        document.setDocumentLayout(new QPlainTextDocumentLayout(&document));
        document.setPlainText(text + u'\n' + QString(WidestLine, u'x') + u'\n');
        // When the widest line shrinks, the layout searches all lines for another: text is not typed into that line.
        document.documentLayout()->blockBoundingRect(document.lastBlock().previous());
        if (highlighted)
            driver = std::make_unique<HighlightDriver>(&document, &highlighter);
    }

    void show(int line)
    {
        if (driver)
            driver->ensureProcessed(document.findBlockByNumber(std::min(line, document.blockCount() - 1)));
    }

    [[nodiscard]] int positionOf(Place place)
    {
        const int line = place == Top ? 0 : place == Middle ? document.blockCount() / 2 : document.blockCount() - 1;
        return document.findBlockByNumber(line).position();
    }

    QTextDocument document;
    FormatTable formats = someFormats();
    CppHighlighter highlighter{&formats};
    std::unique_ptr<HighlightDriver> driver;
};

/// The large document, highlighted to its end.
Sample &largeSample(bool highlighted)
{
    static Sample plain(largeSource(), false);
    static Sample painted(largeSource(), true);
    Sample &sample = highlighted ? painted : plain;
    sample.show(sample.document.blockCount());
    return sample;
}

void lexing(benchmark::State &state)
{
    const QStringList lines = largeSource().split(u'\n');
    std::vector<uchar> formats;
    QList<ParenEntry> brackets;
    require(lexLine(CppHighlighter::language(), u"int f(); // x", 0, formats, brackets) == 0 && formats[0] == 6
                && formats[9] == 2 && brackets.size() == 2,
            "The lexer returns wrong formats.");
    for (auto _ : state) {
        int lineState = 0;
        for (const QString &line : lines)
            lineState = lexLine(CppHighlighter::language(), line, lineState, formats, brackets);
        require(lineState == 0, "The end state is a comment.");
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * largeSource().size());
    state.counters["lines"] = double(lines.size());
}
BENCHMARK(lexing)->Unit(benchmark::kMillisecond);

/// All lines from the first to the last, as for a jump to the end of a newly opened file.
void wholeDocument(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto sample = std::make_unique<Sample>(largeSource(), true);
        state.ResumeTiming();
        sample->show(sample->document.blockCount());
        state.PauseTiming();
        require(sample->driver->isProcessed(sample->document.lastBlock()), "Lines are not highlighted.");
        sample.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * largeSource().size());
}
BENCHMARK(wholeDocument)->Unit(benchmark::kMillisecond)->Iterations(3);

/// The time to set the text of a document of that size, for comparison with wholeDocument.
void loadingWithoutHighlighting(benchmark::State &state)
{
    QTextDocument document;
    document.setDocumentLayout(new QPlainTextDocumentLayout(&document));
    for (auto _ : state)
        document.setPlainText(largeSource());
    state.SetBytesProcessed(int64_t(state.iterations()) * largeSource().size());
}
BENCHMARK(loadingWithoutHighlighting)->Unit(benchmark::kMillisecond)->Iterations(3);

void typeAndDelete(benchmark::State &state, Sample &sample, Place place)
{
    const int position = sample.positionOf(place);
    QTextCursor cursor(&sample.document);
    cursor.setPosition(position);
    const QString before = cursor.block().text();
    for (auto _ : state) {
        cursor.insertText(QStringLiteral("a"));
        cursor.deletePreviousChar();
    }
    require(cursor.block().text() == before, "The text has changed.");
    require(!sample.driver || sample.driver->isProcessed(sample.document.lastBlock()), "Lines are not highlighted.");
}

void typedCharacter(benchmark::State &state, bool highlighted, Place place)
{
    typeAndDelete(state, largeSample(highlighted), place);
}
BENCHMARK_CAPTURE(typedCharacter, top_bare, false, Top)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(typedCharacter, top_highlighted, true, Top)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(typedCharacter, middle_bare, false, Middle)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(typedCharacter, middle_highlighted, true, Middle)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(typedCharacter, end_bare, false, End)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(typedCharacter, end_highlighted, true, End)->Unit(benchmark::kMicrosecond);

void typedIntoEmptyDocument(benchmark::State &state, bool highlighted)
{
    Sample sample(QString(), highlighted);
    sample.show(sample.document.blockCount());
    typeAndDelete(state, sample, Top);
}
BENCHMARK_CAPTURE(typedIntoEmptyDocument, bare, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(typedIntoEmptyDocument, highlighted, true)->Unit(benchmark::kMicrosecond);

/// Opens and closes a comment at the start of the file, and highlights the visible lines each time.
void flippedComment(benchmark::State &state, const QString &text)
{
    Sample sample(text, true);
    sample.show(sample.document.blockCount());
    QTextCursor cursor(&sample.document);
    for (auto _ : state) {
        cursor.insertText(QStringLiteral("/*"));
        sample.show(Screen);
        require(sample.document.findBlockByNumber(1).userState() == 4, "The comment is not open.");
        cursor.deletePreviousChar();
        cursor.deletePreviousChar();
        sample.show(Screen);
    }
    require(sample.document.findBlockByNumber(1).userState() == 0, "The comment is not closed.");
}
BENCHMARK_CAPTURE(flippedComment, one_screen, QString(QStringLiteral("int x;\n")).repeated(Screen))
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(flippedComment, whole_file, QString(QStringLiteral("int x;\n")).repeated(LargestFile / 7))
    ->Unit(benchmark::kMicrosecond);
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
