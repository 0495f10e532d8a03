// The text editor on a C file of 9.9 MB. The peers are QPlainTextEdit and memmem() on the same text.
#include "cpphighlighter.h"
#include "cppindent.h"
#include "textdocument.h"
#include "textdocumenttemplate.h"
#include "textview.h"
#include "textviewedit.h"
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstring>
#include <ctime>
#include <malloc.h>
#include <QApplication>
#include <QDeadlineTimer>
#include <QTemporaryDir>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype FileSize = 9'900'000;
const auto RareWord = u"needle_in_a_haystack"_s;

const QByteArray &source()
{
    static const QByteArray text = [] {
        QByteArray text;
        for (int i = 0; text.size() < FileSize - 300; ++i) {
            const QByteArray n = QByteArray::number(i);
            text += "/* Handler " + n + " of the table below. */\nstatic int handler_" + n
                    + "(const char *name, unsigned flags)\n{\n    if (flags & 0x" + n
                    + " && name[0] != '\\n') {\n        log_message(\"handler %d: %s\", " + n
                    + ", name);\n        return -1;\n    }\n    return table[" + n + "].count++; // done\n}\n\n";
        }
        return text + "int " + RareWord.toLatin1() + ";\n";
    }();
    return text;
}

const QString &sourceFile()
{
    static const QTemporaryDir directory;
    static const QString path = [] {
        QFile file(directory.filePath(u"large.c"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(source()) != source().size())
            qFatal("cannot write the source file");
        return file.fileName();
    }();
    return path;
}

const FormatTable &formats()
{
    static const FormatTable table = [] {
        FormatTable table;
        for (int id = FormatId::Background; id <= FormatId::Label; ++id) {
            table[id].setFontFamilies({u"DejaVu Sans Mono"_s});
            table[id].setFontPointSize(10);
            table[id].setForeground(id == FormatId::Background ? QColor(Qt::white)
                                                               : QColor::fromHsv(id * 40, 255, 120));
        }
        return table;
    }();
    return table;
}

void paint(QWidget *widget)
{
    QCoreApplication::processEvents();
    widget->repaint();
}

/// In microseconds, of this thread.
double processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e6 + double(time.tv_nsec) / 1e3;
}

/// Paints the changes on screen at once, and nothing else.
void paintChanges(QWidget *widget)
{
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(widget->window(), &request);
}

const QString &smallFile()
{
    static const QTemporaryDir directory;
    static const QString path = [] {
        QFile file(directory.filePath(u"small.c"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(source().first(30'000)) != 30'000)
            qFatal("cannot write the source file");
        return file.fileName();
    }();
    return path;
}

/// Our editor: a document with a view that shows its start.
struct FirstScreen
{
    explicit FirstScreen(const QString &file = sourceFile())
        : docTemplate(u"C"_s, {}, {}, {u"c"_s}, std::make_unique<CppHighlighter>(&formats()),
                      std::make_unique<CppIndent>())
        , document(&docTemplate)
    {
        if (!document.open(file))
            qFatal("cannot open the source file");
        view.reset(static_cast<TextView *>(docTemplate.createView(&document)));
        view->resize(900, 700);
        view->show();
        paint(edit()->viewport());
    }

    [[nodiscard]] QPlainTextEdit *edit() const { return view->currentEdit(); }

    TextDocumentTemplate docTemplate;
    TextDocument document;
    std::unique_ptr<TextView> view;
};

struct SmallFile : FirstScreen
{
    SmallFile() : FirstScreen(smallFile()) {}
};

/// Our editor when the text is loaded to its end.
struct Ours : FirstScreen
{
    Ours()
    {
        while (document.isLoading())
            QCoreApplication::processEvents();
        paint(edit()->viewport());
    }
};

/// The peer: QPlainTextEdit, without colours, margins or bracket matching.
struct Bare
{
    Bare()
    {
        QFile file(sourceFile());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot open the source file");
        pane.setLineWrapMode(QPlainTextEdit::NoWrap);
        pane.setFont(formats()[FormatId::Standard].font());
        pane.setPlainText(QString::fromUtf8(file.readAll()));
        pane.resize(900, 700);
        pane.show();
        paint(pane.viewport());
    }

    [[nodiscard]] QPlainTextEdit *edit() { return &pane; }

    QPlainTextEdit pane;
};

/// Opens a file up to the first picture: the beginning of a large file, or a small file as a whole.
template <typename Editor>
void BM_OpenToFirstPaint(benchmark::State &state)
{
    source();
    smallFile();
    sourceFile();
    for (auto _ : state) {
        auto editor = std::make_unique<Editor>();
        state.PauseTiming();
        if (editor->edit()->document()->characterCount() < 30'000)
            state.SkipWithError("the text is incomplete");
        editor.reset();
        state.ResumeTiming();
    }
}

/// Opens a file up to the picture after which all of its text is there.
template <typename Editor>
void BM_OpenToEnd(benchmark::State &state)
{
    sourceFile();
    for (auto _ : state) {
        auto editor = std::make_unique<Editor>();
        state.PauseTiming();
        if (editor->edit()->document()->characterCount() != source().size() + 1)
            state.SkipWithError("the text is incomplete");
        editor.reset();
        state.ResumeTiming();
    }
}

void press(QPlainTextEdit *edit, int key, const QString &text = {})
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(edit, &event);
}

/// Types and paints one character at the start of a newly opened text. The argument is the pause between characters in
/// milliseconds, in which our editor highlights further lines.
template <typename Editor>
void BM_TypeWhileOpening(benchmark::State &state)
{
    Editor editor;
    const int before = editor.edit()->document()->characterCount();
    for (auto _ : state) {
        press(editor.edit(), Qt::Key_X, u"x"_s);
        paintChanges(editor.edit());
        state.PauseTiming();
        const QDeadlineTimer pause(state.range(0));
        do
            QCoreApplication::processEvents();
        while (!pause.hasExpired());
        state.ResumeTiming();
    }
    if (editor.edit()->document()->characterCount() - before != int(state.iterations()))
        state.SkipWithError("characters are missing");
}

/// Types and paints one character, at a position in percent of the file.
template <typename Editor>
void BM_TypeCharacter(benchmark::State &state)
{
    Editor editor;
    QTextDocument *text = editor.edit()->document();
    const int line = std::min(int(text->blockCount() * state.range(0) / 100), text->blockCount() - 1);
    editor.edit()->setTextCursor(QTextCursor(text->findBlockByNumber(line)));
    if constexpr (std::is_same_v<Editor, Ours>) // without the highlighting in idle time
        editor.document.ensureProcessed(text->lastBlock());
    paint(editor.edit()->viewport());
    const int before = text->characterCount();
    int typed = 0;
    for (auto _ : state) {
        press(editor.edit(), Qt::Key_X, u"x"_s);
        paintChanges(editor.edit());
        state.PauseTiming();
        if (++typed % 60 == 0) { // keeps the line short
            for (int i = 0; i < 60; ++i)
                press(editor.edit(), Qt::Key_Backspace);
        }
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
    if (text->characterCount() - before != typed % 60)
        state.SkipWithError("characters are missing");
}

/// Types and paints one character in the middle of the only line. The argument is its length.
template <typename Editor>
void BM_TypeInLine(benchmark::State &state)
{
    Editor editor;
    QTextDocument *text = editor.edit()->document();
    const int length = int(state.range(0));
    text->setPlainText(u"call(value_x, 12); "_s.repeated(length / 19 + 1).left(length));
    QTextCursor cursor(text);
    cursor.setPosition(length / 2);
    editor.edit()->setTextCursor(cursor);
    press(editor.edit(), Qt::Key_X, u"x"_s); // scrolls to the cursor and paints the whole window
    paintChanges(editor.edit());
    std::vector<double> times;
    for (auto _ : state) {
        const double start = processorTime();
        press(editor.edit(), Qt::Key_X, u"x"_s);
        paintChanges(editor.edit());
        times.push_back(processorTime() - start);
        state.PauseTiming();
        if (editor.edit()->textCursor().position() <= length / 2)
            state.SkipWithError("the character is missing");
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
    std::ranges::nth_element(times, times.begin() + qsizetype(times.size() / 2));
    state.counters["p50 us"] = times[times.size() / 2]; // without the keys that scroll
}

template <typename Editor>
void BM_OpenLine(benchmark::State &state)
{
    Editor editor;
    const QString line = u"call(value_x, 12); "_s.repeated(state.range(0) / 19);
    for (auto _ : state) {
        editor.edit()->document()->setPlainText(line);
        paint(editor.edit()->viewport());
        state.PauseTiming();
        editor.edit()->document()->clear();
        state.ResumeTiming();
    }
}

/// Types the "*" that turns all lines below into a comment, and paints the changes on screen.
template <typename Editor>
void BM_FlipComment(benchmark::State &state)
{
    Editor editor;
    editor.edit()->setPlainText(u"/\n"_s + u"int x = 0; // some line of code\n"_s.repeated(state.range(0)));
    editor.edit()->setTextCursor(QTextCursor(editor.edit()->document()->firstBlock()));
    press(editor.edit(), Qt::Key_Right);
    paint(editor.edit()->viewport());
    for (auto _ : state) {
        press(editor.edit(), Qt::Key_Asterisk, u"*"_s);
        paintChanges(editor.edit());
        state.PauseTiming();
        if (!editor.edit()->toPlainText().startsWith(u"/*\n"_s))
            state.SkipWithError("the character is missing");
        press(editor.edit(), Qt::Key_Backspace);
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
}

template <typename Editor>
void BM_PageDown(benchmark::State &state)
{
    Editor editor;
    editor.edit()->moveCursor(QTextCursor::Start);
    for (auto _ : state) {
        press(editor.edit(), Qt::Key_PageDown);
        paintChanges(editor.edit());
        state.PauseTiming();
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
    if (editor.edit()->textCursor().blockNumber() < 10)
        state.SkipWithError("the cursor did not move");
}

template <typename Editor>
void BM_MemoryPerLine(benchmark::State &state)
{
    for (auto _ : state) {
        ::malloc_trim(0);
        const size_t before = ::mallinfo2().uordblks + ::mallinfo2().hblkhd;
        Editor editor;
        const size_t after = ::mallinfo2().uordblks + ::mallinfo2().hblkhd;
        state.counters["bytes/line"] = double(after - before) / editor.edit()->document()->blockCount();
        if constexpr (std::is_same_v<Editor, Ours>) {
            // As after idle time and two pages on screen: brackets of all lines, colours near the screen
            const int lines = editor.edit()->document()->blockCount();
            editor.document.ensureProcessed(editor.document.text()->lastBlock());
            editor.document.ensureFormatted(0, 100);
            editor.document.ensureFormatted(lines - 100, lines - 1);
            const size_t painted = ::mallinfo2().uordblks + ::mallinfo2().hblkhd;
            state.counters["bytes/line highlighted"] =
                double(painted - before) / editor.edit()->document()->blockCount();
        }
        state.counters["lines"] = editor.edit()->document()->blockCount();
    }
}

void BM_FindRareWord(benchmark::State &state)
{
    const Ours ours;
    for (auto _ : state) {
        if (!ours.view->find(RareWord, state.range(0) != 0, false, true, false))
            state.SkipWithError("not found");
    }
}

void BM_FindRareWordByMemmem(benchmark::State &state)
{
    const QByteArray word = RareWord.toLatin1();
    for (auto _ : state) {
        const void *found =
            ::memmem(source().constData(), size_t(source().size()), word.constData(), size_t(word.size()));
        benchmark::DoNotOptimize(found);
        if (!found)
            state.SkipWithError("not found");
    }
}

void BM_FindRareWordByBareEditor(benchmark::State &state)
{
    Bare bare;
    for (auto _ : state) {
        bare.edit()->moveCursor(QTextCursor::Start);
        if (!bare.edit()->find(RareWord, QTextDocument::FindCaseSensitively))
            state.SkipWithError("not found");
    }
}

void BM_ReplaceAll(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        const Ours ours;
        state.ResumeTiming();
        if (!ours.view->replace(u"handler_"_s, u"h_"_s, true, false, true, true, true))
            state.SkipWithError("nothing replaced");
    }
}

BENCHMARK(BM_OpenToFirstPaint<SmallFile>)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OpenToFirstPaint<FirstScreen>)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OpenToEnd<Ours>)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OpenToEnd<Bare>)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TypeCharacter<Ours>)->Arg(0)->Arg(50)->Arg(100)->Unit(benchmark::kMicrosecond)->Iterations(300);
BENCHMARK(BM_TypeCharacter<Bare>)->Arg(0)->Arg(50)->Arg(100)->Unit(benchmark::kMicrosecond)->Iterations(300);
BENCHMARK(BM_TypeWhileOpening<Ours>)->Arg(0)->Arg(300)->Unit(benchmark::kMicrosecond)->Iterations(40);
BENCHMARK(BM_TypeWhileOpening<Bare>)->Arg(0)->Arg(300)->Unit(benchmark::kMicrosecond)->Iterations(40);
BENCHMARK(BM_TypeInLine<Ours>)
    ->Arg(0)
    ->Arg(200'000)
    ->Arg(1'000'000)
    ->Arg(5'000'000)
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(40);
BENCHMARK(BM_TypeInLine<Bare>)->Arg(0)->Arg(200'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond)->Iterations(3);
BENCHMARK(BM_OpenLine<Ours>)->Arg(1'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_OpenLine<Bare>)->Arg(1'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_FlipComment<Ours>)->Arg(100)->Arg(300'000)->Unit(benchmark::kMicrosecond)->Iterations(60);
BENCHMARK(BM_FlipComment<Bare>)->Arg(100)->Arg(300'000)->Unit(benchmark::kMicrosecond)->Iterations(60);
BENCHMARK(BM_PageDown<Ours>)->Unit(benchmark::kMicrosecond)->Iterations(500);
BENCHMARK(BM_PageDown<Bare>)->Unit(benchmark::kMicrosecond)->Iterations(500);
BENCHMARK(BM_MemoryPerLine<Ours>)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_MemoryPerLine<Bare>)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_FindRareWord)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FindRareWordByMemmem)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FindRareWordByBareEditor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReplaceAll)->Unit(benchmark::kMillisecond)->Iterations(1);
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
