// A page down in a memory window that fills a 4K screen, up to the end of its repaint. The peer is a QPlainTextEdit
// that gets the same text and is repainted, and a bare read of the same block.
#include "../tests/workspace/paintcounter.h"
#include "imemory.h"
#include "interfaceobject.h"
#include "memoryedit.h"
#include "memorywindow.h"
#include <benchmark/benchmark.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {
constexpr int Pages = 50;

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

/// Memory that answers at once.
class Memory : public InterfaceObject<IMemory>
{
public:
    explicit Memory(uint modes) : m_modes(modes) {}

    QList<MemoryRegion> regions() override { return {{u"RAM"_s, 0, 0, 0, 0, 0x0FFFFFFF, false, m_modes}}; }
    int read(int, int, uint, uint *) override { return BadPointer; }
    int write(int, int, uint, uint, bool) override { return WriteToRom; }
    void readBlock(int, int, uint address, int count, MemoryBlock &result) override
    {
        ++reads;
        cells = count;
        result.resize(count);
        for (MemoryBlockCell &cell : result)
            cell = {address++ * 2654435761U, Success};
    }
    void writeBlock(int, int, uint, int, MemoryBlock &, bool) override {}

    int reads = 0;
    int cells = 0;

private:
    const uint m_modes;
};

qint64 bareEdit(const QStringList &texts, const QFont &font, QSize size)
{
    QPlainTextEdit edit;
    edit.setUndoRedoEnabled(false);
    edit.setLineWrapMode(QPlainTextEdit::NoWrap);
    edit.setFont(font);
    edit.resize(size);
    edit.show();
    QApplication::processEvents();
    const PaintCounter paints(edit.viewport());
    QElapsedTimer timer;
    timer.start();
    for (const QString &text : texts) {
        edit.setPlainText(text);
        QApplication::processEvents();
    }
    require(paints.count == texts.size(), "A page of the peer was not painted once.");
    return timer.nsecsElapsed();
}

qint64 bareReads(Memory &memory, int mode)
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < Pages; ++i) {
        MemoryBlock block;
        memory.readBlock(0, mode, uint(i), memory.cells, block);
        benchmark::DoNotOptimize(block.constLast().value);
    }
    return timer.nsecsElapsed();
}

/// The texts of the pages that it has gone through.
QStringList pageDown(MemoryEdit &edit, qint64 *nanoseconds)
{
    QStringList texts;
    const PaintCounter paints(edit.viewport());
    for (int i = 0; i < Pages; ++i) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
        QElapsedTimer timer;
        timer.start();
        QApplication::sendEvent(&edit, &key);
        QApplication::processEvents();
        *nanoseconds += timer.nsecsElapsed();
        require(paints.count == i + 1, "A page was not painted once.");
        texts.append(edit.toPlainText());
    }
    return texts;
}

void onePage(benchmark::State &state, int mode)
{
    InterfacePtr<Memory> memory(new Memory(uint(mode)));
    MemoryWindow window;
    auto *edit = window.findChild<MemoryEdit *>();
    QFont font(u"DejaVu Sans Mono"_s, 10);
    window.setFont(font);
    window.setAutoRead(true);
    window.resize(QSize(3840, 2160) / window.devicePixelRatio());
    window.show();
    window.setInterface(memory.get());
    QApplication::processEvents();
    qint64 total = 0;
    qint64 peer = 0;
    for ([[maybe_unused]] auto _ : state) {
        memory->reads = 0;
        qint64 time = 0;
        const QStringList texts = pageDown(*edit, &time);
        require(memory->reads == Pages, "A page down is not one read.");
        require(texts.first() != texts.last(), "The pages are the same.");
        peer += bareEdit(texts, font, edit->size()) + bareReads(*memory, mode);
        total += time;
        state.SetIterationTime(double(time) * 1e-9 / Pages);
    }
    state.counters["times_bare"] = double(total) / double(peer);
    state.counters["cells"] = memory->cells;
    window.setInterface(nullptr);
}
BENCHMARK_CAPTURE(onePage, bytes, IMemory::Byte)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(0.05);
BENCHMARK_CAPTURE(onePage, words_of_32_bits, IMemory::Word32)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->MinTime(0.05);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
