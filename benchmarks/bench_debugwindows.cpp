// The windows of the debugger on an emulated board. The peer of the first two is a bare client that sends the same
// reads to gdb: "bare_ms" is its time, "ratio" ours divided by it. The last one gives the share of a processor core
// that live values cost, "core_percent", and for how long the boards stood still meanwhile by their own counters,
// "standstill_ms".
#include "../tests/framework/fakeservices.h"
#include "../tests/project/modeltext.h"
#include "../tests/workspace/paintcounter.h"
#include "activity.h"
#include "boardpeer.h"
#include "imemory64.h"
#include "livewindow.h"
#include "memoryedit.h"
#include "memorywindow.h"
#include "peripheralwidget.h"
#include "project.h"
#include "projectworkspace.h"
#include "rateswitch.h"
#include "registerwidget.h"
#include "watchwindow.h"
#include <algorithm>
#include <ctime>
#include <QApplication>
#include <QKeyEvent>
#include <utility>

using Env = IExecutionEnvironment;

namespace {
constexpr uint Ram = 0x20000000;
constexpr quint64 Prescale = 0x4002801C;     // of the board's counter
constexpr quint64 GuestCounter = 0x40028018; // counts microseconds with a prescale of 24
constexpr int LargestPage = 8192;            // bytes that a 4K screen shows
constexpr int RedrawLimit = 50;              // ms that the registers of devices may take

/// Variables first, then expressions.
QStringList watches(int count)
{
    QStringList list{u"loops"_s, u"ticks"_s, u"origin"_s, u"buffer"_s, u"command"_s};
    while (list.size() < count)
        list += u"loops + %1"_s.arg(list.size());
    return list;
}

QString boardWithDevices()
{
    return option(u";svdFile="_s + Programs::source(u"board.svd"_s));
}

/// Registers, peripherals, watches and memory of a board, as large as in a window of 1440 by 900 pixels.
class FourWindows
{
public:
    FourWindows(LiveSession &session, const QStringList &watches) : m_session(session)
    {
        m_registers.setRegisters(session.get<IRegisters>().get());
        m_peripherals.setPeripherals(session.get<IPeripherals>().get());
        m_watches.setEnvironment(session.env);
        m_watches.setWatches(watches);
        m_memory.setInterface(session.get<IMemory>().get());
        m_memory.setAutoRead(true);
        for (QWidget *window : windows()) {
            window->resize(window == &m_memory ? QSize(1000, 250) : QSize(300, 400));
            window->show();
        }
        refresh();
    }
    void refresh()
    {
        m_registers.update();
        m_peripherals.update();
        m_watches.update();
        m_memory.update();
        QApplication::processEvents(); // and they are painted
    }
    void step() const
    {
        m_session.env->stepInto(u"firmware.c"_s);
        require(m_session.waitFor(Env::ProgramPaused), "The step did not end.");
    }

private:
    QList<QWidget *> windows() { return {&m_registers, &m_peripherals, &m_watches, &m_memory}; }

    LiveSession &m_session;
    RegisterWidget m_registers;
    PeripheralWidget m_peripherals;
    WatchWindow m_watches;
    MemoryWindow m_memory;
};

/// The reads of these windows by a client that does not look at the answers.
void readEverything(BareClient &client, const QStringList &watches)
{
    client.ask("-data-list-register-values x", "^done");
    for (const QString &watch : watches)
        client.ask("-data-evaluate-expression \"" + watch.toLatin1() + '"', "^done");
    client.ask("-data-read-memory-bytes 0x20000000 512", "^done");
    for (int i = 0; i < 12; ++i)
        client.ask("-data-read-memory-bytes " + QByteArray::number(0x40004000 + 4 * i) + " 4", "^done");
}

void enterLoop(LiveSession &session, BareClient &client)
{
    const int line = Programs::lineOf(u"firmware.c"_s, u"loops = loops + 1;"_s);
    session.env->runTo(Programs::source(u"firmware.c"_s), line);
    require(session.waitFor(Env::ProgramPaused), "The loop was not reached.");
    client.ask("-break-insert -t firmware.c:" + QByteArray::number(line), "^done");
    client.ask("-exec-continue", "*stopped");
}

void StopToFourWindows(benchmark::State &state)
{
    LiveSession session(boardWithDevices());
    require(session.start(), "The session did not start.");
    BareClient client;
    enterLoop(session, client);
    const QStringList expressions = watches(int(state.range(0)));
    FourWindows windows(session, expressions);
    QList<double> ours;
    QList<double> bare;
    QElapsedTimer timer;
    for ([[maybe_unused]] auto round : state) {
        windows.step();
        timer.start();
        windows.refresh();
        ours.append(milliseconds(timer));
        state.SetIterationTime(ours.last() / 1e3);
        client.ask("-exec-step", "*stopped");
        timer.start();
        readEverything(client, expressions);
        bare.append(milliseconds(timer));
    }
    setPeer(state, ours, bare);
}
BENCHMARK(StopToFourWindows)
    ->ArgName("watches")
    ->Arg(5)
    ->Arg(50)
    ->UseManualTime()
    ->Iterations(100)
    ->Unit(benchmark::kMillisecond);

/// A page of devices, which are read one by one until the time limit: "cells" of them were read in time. "whole_ms" is
/// the time for all of them.
void DevicePageAt4K(benchmark::State &state)
{
    LiveSession session(boardWithDevices());
    require(session.start(), "The session did not start.");
    const auto memory = session.get<IMemory>();
    const auto wide = session.get<IMemory64>();
    const QList<MemoryRegion64> regions = wide->regions();
    const auto devices = std::ranges::find(regions, u"Peripherals"_s, &MemoryRegion64::name);
    require(devices != regions.end(), "The board has no devices.");
    MemoryBlock64 block;
    for ([[maybe_unused]] auto round : state) {
        QElapsedTimer timer;
        timer.start();
        wide->readBlock(devices->id, IMemory::Byte, devices->lowAddress, LargestPage, block);
        state.SetIterationTime(milliseconds(timer) / 1e3);
        require(milliseconds(timer) < 2 * RedrawLimit, "The time limit was not kept.");
    }
    MemoryBlock whole;
    QElapsedTimer timer;
    timer.start();
    memory->readBlock(devices->id, IMemory::Byte, uint(devices->lowAddress), LargestPage, whole);
    state.counters["whole_ms"] = milliseconds(timer);
    state.counters["cells"] = double(std::ranges::count(block, int(IMemory::Success), &MemoryBlockCell64::status));
}
BENCHMARK(DevicePageAt4K)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

void PageDownAt4K(benchmark::State &state)
{
    LiveSession session(boardWithDevices());
    require(session.start(), "The session did not start.");
    BareClient client;
    MemoryWindow window;
    auto *edit = window.findChild<MemoryEdit *>();
    window.setFont(QFont(u"DejaVu Sans Mono"_s, 10));
    window.setAutoRead(true);
    window.resize(QSize(3840, 2160) / window.devicePixelRatio());
    window.show();
    window.setInterface(session.get<IMemory>().get());
    QApplication::processEvents();
    PaintCounter paints(edit->viewport());
    QList<double> ours;
    QList<double> bare;
    QElapsedTimer timer;
    for ([[maybe_unused]] auto round : state) {
        const QString before = edit->toPlainText();
        QKeyEvent key(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
        timer.start();
        QApplication::sendEvent(edit, &key);
        QApplication::processEvents();
        ours.append(milliseconds(timer));
        require(std::exchange(paints.count, 0) == 1, "The page was not painted once.");
        state.SetIterationTime(ours.last() / 1e3);
        require(edit->toPlainText() != before && !edit->toPlainText().contains(u'?'), "The page was not read.");
        timer.start();
        client.ask("-data-read-memory-bytes 0x4000 32768", "^done");
        bare.append(milliseconds(timer));
    }
    setPeer(state, ours, bare);
    window.setInterface(nullptr);
}
BENCHMARK(PageDownAt4K)->UseManualTime()->Iterations(40)->Unit(benchmark::kMillisecond);

// Live values ---------------------------------------------------------------------------------------------------------

/// A program with many counters.
QString countersImage(const Programs &programs)
{
    QString text = u"static void count(void);\n"_s;
    QString body;
    for (int i = 0; i < 50; ++i) {
        text += u"volatile unsigned int v%1;\n"_s.arg(i);
        body += u"    v%1 = v%1 + %2;\n"_s.arg(i).arg(i + 1);
    }
    text += u"static void count(void)\n{\n"_s + body + u"}\nvolatile unsigned command;\nvoid crash(void) {}\n"_s
            + u"void tick(void) {}\nint main(void)\n{\n    for (;;)\n        count();\n}\n"_s;
    const QString source = programs.directory() + u"/counters.c"_s;
    writeFile(source, text.toUtf8());
    const QString image = programs.directory() + u"/counters.elf"_s;
    QProcess compiler;
    compiler.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    compiler.start(u"arm-none-eabi-gcc"_s,
                   {u"-mcpu=cortex-m3"_s, u"-mthumb"_s, u"-g"_s, u"-Og"_s, u"-ffreestanding"_s, u"-nostartfiles"_s,
                    u"-nostdlib"_s, u"-T"_s, Programs::source(u"mps2.ld"_s), u"-Wl,--no-warn-rwx-segments"_s, u"-o"_s,
                    image, Programs::source(u"startup.c"_s), source});
    require(compiler.waitForFinished() && compiler.exitCode() == 0, "The program was not compiled.");
    return image;
}

double processorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

double guestSeconds(const LiveSession &session)
{
    QByteArray bytes;
    require(session.env->session()->target()->readDirectly(GuestCounter, 4, &bytes), "The counter was not read.");
    return double(memoryCellValue(bytes, false)) / 1e6;
}

void runEvents(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// @p count variables on two boards ten times a second; with the number of curves of the second argument.
void LiveRefresh(benchmark::State &state)
{
    constexpr int Seconds = 5;
    const Programs programs;
    const QString image = countersImage(programs);
    LiveSession boards[] = {LiveSession(u"qemu:mps2-an385;image="_s + image),
                            LiveSession(u"qemu:mps2-an385;image="_s + image)};
    Activity activity;
    FakeServices services;
    const QTemporaryDir directory;
    activity.openWorkspace(std::make_unique<ProjectWorkspace>(directory.filePath(u"all.vnw"_s)));
    LiveWindow window(activity, static_cast<WindowServices &>(services));
    for (int i = 0; i < 2; ++i) {
        require(boards[i].start(), "The session did not start.");
        auto *project = new Project({}, {});
        require(project->load(writeFile(directory.filePath(u"board%1.vnp"_s.arg(i)), "<project/>")), "No project.");
        project->setExecutionEnvironment(boards[i].env);
        activity.workspace()->addProject(project);
        for (int v = 0; v < state.range(0) / 2; ++v)
            window.recorder().add(project, u"v%1"_s.arg(v), v < state.range(1) / 2);
        boards[i].env->session()->target()->writeDirectly(Prescale, memoryCellBytes(24, 4, false));
    }
    window.resize(1400, 400);
    window.show();
    window.recorder().readAll();
    for (LiveSession &board : boards) {
        board.env->run();
        require(board.waitFor(Env::ProgramRunning), "The board does not run.");
    }
    window.findChild<RateSwitch *>()->setRate(10);
    window.findChild<RateSwitch *>()->setChecked(true);
    runEvents(1000);
    for ([[maybe_unused]] auto round : state) {
        const auto samples = window.recorder().variables().constFirst().series->samples().size();
        const double guest = guestSeconds(boards[0]);
        const double used = processorSeconds();
        QElapsedTimer timer;
        timer.start();
        runEvents(Seconds * 1000);
        const double passed = milliseconds(timer);
        state.counters["core_percent"] = (processorSeconds() - used) / passed * 1e5;
        state.counters["standstill_ms"] = passed - (guestSeconds(boards[0]) - guest) * 1e3;
        state.counters["readings"] =
            double(window.recorder().variables().constFirst().series->samples().size() - samples);
    }
    require(std::ranges::all_of(window.recorder().variables(),
                                [](const LiveVariable &each) { return each.state == LiveVariable::Readable; }),
            "A variable was not read.");
    activity.closeWorkspace();
}
BENCHMARK(LiveRefresh)
    ->Args({50, 0})
    ->Args({50, 4})
    ->Args({50, 50})
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
