// Debug sessions on an emulated board, beside a bare client that sends the same commands to the same gdb and board. The
// counter "bare_ms" is the client's time, "ratio" ours in relation to it.
#include "../tests/framework/installation.h"
#include "activity.h"
#include "ideapplication.h"
#include "livesession.h"
#include "mainwindow.h"
#include "qemumachine.h"
#include <algorithm>
#include <benchmark/benchmark.h>
#include <QDockWidget>
#include <QElapsedTimer>

namespace {
using Env = IExecutionEnvironment;

constexpr quint64 Prescale = 0x4002801C;     // of the board's counter
constexpr quint64 GuestCounter = 0x40028018; // counts microseconds with a prescale of 24

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

const QString &image()
{
    static const Programs programs;
    static const QString file = programs.firmware(u"firmware.elf"_s);
    return file;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values[values.size() / 2];
}

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

/// Writes commands to gdb and reads lines, nothing else.
class BareClient
{
public:
    BareClient() : m_board({u"qemu-system-arm"_s, u"mps2-an385"_s, image(), {}, 0, false, {}})
    {
        QString error;
        require(m_board.start(&error), qPrintable(error));
        m_gdb.start(u"gdb-multiarch"_s, {u"--nx"_s, u"--quiet"_s, u"--interpreter=mi3"_s});
        for (const char *command : {"-gdb-set mi-async on", "-gdb-set confirm off", "-gdb-set width 0"})
            ask(command, "^done");
        ask("-file-exec-and-symbols " + image().toUtf8(), "^done");
        ask("-target-select remote " + m_board.gdbAddress().toUtf8(), "^connected");
        ask("-break-insert -t main", "^done");
        ask("-exec-continue", "*stopped");
    }
    ~BareClient()
    {
        m_gdb.write("-gdb-exit\n");
        m_gdb.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(BareClient)

    /// Sends a command and reads up to the record that begins so.
    void ask(const QByteArray &command, const QByteArray &end)
    {
        m_gdb.write(command + '\n');
        for (;;) {
            while (!m_gdb.canReadLine())
                require(m_gdb.waitForReadyRead(10000), command.constData());
            const QByteArray line = m_gdb.readLine();
            if (line.startsWith(end))
                return;
            require(!line.startsWith("^error"), line.constData());
        }
    }

private:
    QemuMachine m_board;
    QProcess m_gdb;
};

QString option(const QString &more = {})
{
    return u"qemu:mps2-an385;image="_s + image() + more;
}

/// Both stand in a loop that never ends, where each step is a line.
void enterLoop(LiveSession *session)
{
    session->env->runTo(Programs::source(u"firmware.c"_s), Programs::lineOf(u"firmware.c"_s, u"loops = loops + 1;"_s));
    require(session->waitFor(Env::ProgramPaused), "the loop is reached");
}

void enterLoop(BareClient *client)
{
    client->ask("-break-insert -t firmware.c:"
                    + QByteArray::number(Programs::lineOf(u"firmware.c"_s, u"loops = loops + 1;"_s)),
                "^done");
    client->ask("-exec-continue", "*stopped");
}

void step(LiveSession *session)
{
    session->env->stepInto(u"firmware.c"_s); // nothing to step into: a line
    require(session->waitFor(Env::ProgramPaused), "the step ends");
}

/// What the host's windows ask for after a stop when all of them are open.
void queryEverything(LiveSession *session)
{
    require(!session->location().isEmpty(), "the place is known");
    const auto registers = session->get<IRegisters>();
    for (const RegisterInfo &info : registers->registers())
        registers->value(info.name, 0);
    MemoryBlock block;
    session->get<IMemory>()->readBlock(1, IMemory::Byte, 0x20000000, 1024, block);
    require(block.last().status == IMemory::Success, "memory is read");
    const auto devices = session->get<IPeripherals>();
    for (const PeripheralInfo &device : devices->peripherals()) {
        for (const PeripheralRegisterInfo &info : device.registers)
            devices->value(device.name, info.name);
    }
    for (const char *watch : {"loops", "origin", "buffer"})
        require(!session->evaluate(QString::fromLatin1(watch)).startsWith(u"error"_s), watch);
    const auto lines = session->get<IDisassemblyAddress>();
    const int place = int(session->env->session()->frame().address);
    for (int index = std::max(0, place - 64); index < place + 64; ++index) {
        lines->sourceLines(index);
        lines->text(index);
    }
    session->get<IBreakpoints>()->breakpoints();
}

void setPeer(benchmark::State &state, const QList<double> &ours, const QList<double> &bare)
{
    state.counters["median_ms"] = median(ours);
    state.counters["bare_ms"] = median(bare);
    state.counters["ratio"] = median(bare) > 0 ? median(ours) / median(bare) : 0;
}

/// Ours and the bare client's in turn, so that both see the same machine.
template <typename Ours, typename Bare>
void compare(benchmark::State &state, Ours ours, Bare bare)
{
    QList<double> ourTimes;
    QList<double> bareTimes;
    QElapsedTimer timer;
    for ([[maybe_unused]] auto round : state) {
        timer.start();
        ours();
        ourTimes.append(milliseconds(timer));
        state.SetIterationTime(ourTimes.last() / 1e3);
        timer.start();
        bare();
        bareTimes.append(milliseconds(timer));
    }
    setPeer(state, ourTimes, bareTimes);
}

void SessionStart(benchmark::State &state)
{
    compare(
        state,
        [] {
            LiveSession session(option());
            require(session.start(), "the session starts");
        },
        [] { const BareClient client; });
}
BENCHMARK(SessionStart)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

void SourceStep(benchmark::State &state)
{
    LiveSession session(option());
    require(session.start(), "the session starts");
    enterLoop(&session);
    BareClient client;
    enterLoop(&client);
    compare(
        state, [&session] { step(&session); }, [&client] { client.ask("-exec-step", "*stopped"); });
}
BENCHMARK(SourceStep)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

void SourceStepWithAllWindows(benchmark::State &state)
{
    LiveSession session(option(u";svdFile="_s + Programs::source(u"board.svd"_s)));
    require(session.start(), "the session starts");
    enterLoop(&session);
    BareClient client;
    enterLoop(&client);
    compare(
        state,
        [&session] {
            step(&session);
            queryEverything(&session);
        },
        [&client] { client.ask("-exec-step", "*stopped"); });
}
BENCHMARK(SourceStepWithAllWindows)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

/// The main window with a project that is debugged on the board, as the user has it: with every dock window open.
class DebuggedWindow
{
public:
    DebuggedWindow()
    {
        m_files.write(u"board.vnp"_s, "<project executionenvironment='{27aa5f2d-ef64-4eab-9fda-9693e2e6117f}' "
                                      "executionenvironmentoption='"
                                          + option().toUtf8()
                                          + "'><properties currentconfiguration='Default'>"
                                            "<configuration name='Default'/></properties></project>");
        m_files.write(u"board.vnw"_s, "<workspace><project path='board.vnp'/></workspace>");
        m_window.resize(1200, 900);
        m_window.show();
        require(m_window.openWorkspace(m_files.path(u"board.vnw"_s), false), "the workspace opens");
        m_window.lookupSource(Programs::source(u"firmware.c"_s),
                              Programs::lineOf(u"firmware.c"_s, u"loops = loops + 1;"_s));
        m_window.debugRunToCursor();
        waitForPause();
        for (QDockWidget *dock : m_window.findChildren<QDockWidget *>())
            dock->show();
        QCoreApplication::processEvents();
    }
    ~DebuggedWindow()
    {
        m_window.debugStop();
        m_window.close();
    }
    Q_DISABLE_COPY_MOVE(DebuggedWindow)

    /// From the command until everything is painted.
    void step()
    {
        m_window.debugStepInto();
        waitForPause();
    }

private:
    void waitForPause()
    {
        while (m_window.activity().state() == StateRunning)
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        require(m_window.activity().state() == StatePaused, "the step ends");
        QCoreApplication::processEvents();
    }

    Installation m_files;
    MainWindow m_window;
};

void SourceStepInTheWindow(benchmark::State &state)
{
    DebuggedWindow window;
    BareClient client;
    enterLoop(&client);
    compare(
        state, [&window] { window.step(); }, [&client] { client.ask("-exec-step", "*stopped"); });
}
BENCHMARK(SourceStepInTheWindow)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

void BreakpointToggle(benchmark::State &state)
{
    LiveSession session(option());
    require(session.start(), "the session starts");
    BareClient client;
    const QString file = Programs::source(u"firmware.c"_s);
    const int line = Programs::lineOf(u"firmware.c"_s, u"int result"_s);
    const auto breakpoints = session.get<IBreakpoints>();
    const QByteArray place = "-break-insert firmware.c:" + QByteArray::number(line);
    int number = 1; // the temporary one at main
    compare(
        state,
        [&] {
            require(breakpoints->setBreakpoint(file, line, BreakpointEnabled) == 0, "it is set");
            require(breakpoints->setBreakpoint(file, line, BreakpointRemoved) == 0, "it is removed");
        },
        [&] {
            client.ask(place, "^done");
            client.ask("-break-delete " + QByteArray::number(++number), "^done");
        });
}
BENCHMARK(BreakpointToggle)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

void BreakpointToggleWhileRunning(benchmark::State &state)
{
    LiveSession session(option());
    require(session.start(), "the session starts");
    session.env->run();
    require(session.waitFor(Env::ProgramRunning), "it runs");
    const auto breakpoints = session.get<IBreakpoints>();
    const QString file = Programs::source(u"firmware.c"_s);
    const int line = Programs::lineOf(u"firmware.c"_s, u"int result"_s);
    for ([[maybe_unused]] auto round : state) {
        require(breakpoints->setBreakpoint(file, line, BreakpointEnabled) == 0, "it is set");
        require(breakpoints->setBreakpoint(file, line, BreakpointRemoved) == 0, "it is removed");
    }
}
BENCHMARK(BreakpointToggleWhileRunning)->Iterations(50)->UseRealTime()->Unit(benchmark::kMillisecond);

double residentMegabytes()
{
    QFile file(u"/proc/self/statm"_s);
    require(file.open(QIODevice::ReadOnly), "our memory is known");
    return double(file.readAll().split(' ').value(1).toLongLong()) * 4096 / 1e6;
}

/// The first and the last hundred steps in comparison, and what our memory grew by.
void ThousandSteps(benchmark::State &state)
{
    for ([[maybe_unused]] auto round : state) {
        LiveSession session(option());
        require(session.start(), "the session starts");
        enterLoop(&session);
        QList<double> times;
        QElapsedTimer timer;
        double before = 0;
        for (int i = 0; i < 1000; ++i) {
            timer.start();
            step(&session);
            queryEverything(&session);
            times.append(milliseconds(timer));
            if (i == 99)
                before = residentMegabytes();
        }
        state.counters["first_ms"] = median(times.first(100));
        state.counters["last_ms"] = median(times.last(100));
        state.counters["grown_MB"] = residentMegabytes() - before;
    }
}
BENCHMARK(ThousandSteps)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

quint64 guestMicroseconds(const LiveSession &session)
{
    QByteArray bytes;
    require(session.env->session()->target()->readDirectly(GuestCounter, 4, &bytes), "the counter is read");
    return memoryCellValue(bytes, false);
}

/// How differently long two boards ran between a common start and a common pause, in their own time.
void SynchronisedPauseSkew(benchmark::State &state)
{
    LiveSession first(option(u";group=pair"_s));
    LiveSession second(option(u";group=pair"_s));
    require(first.start() && second.start(), "the sessions start");
    for (const LiveSession *session : {&first, &second})
        session->env->session()->target()->writeDirectly(Prescale, memoryCellBytes(24, 4, false));
    const auto group = first.get<IMultiProcessorSync>();
    QList<double> skews;
    for ([[maybe_unused]] auto round : state) {
        const quint64 starts[] = {guestMicroseconds(first), guestMicroseconds(second)};
        group->syncRun();
        require(first.waitFor(Env::ProgramRunning) && second.waitFor(Env::ProgramRunning), "both run");
        QTest::qWait(20); // how long they run together; no outcome depends on it
        group->syncPause();
        require(first.waitFor(Env::ProgramPaused) && second.waitFor(Env::ProgramPaused), "both pause");
        const double ran[] = {double(guestMicroseconds(first) - starts[0]),
                              double(guestMicroseconds(second) - starts[1])};
        require(ran[0] > 0 && ran[1] > 0, "guest time goes on");
        skews.append(std::abs(ran[0] - ran[1]) / 1e3);
    }
    state.counters["skew_ms"] = median(skews);
    state.counters["worst_ms"] = *std::max_element(skews.begin(), skews.end());
}
BENCHMARK(SynchronisedPauseSkew)->Iterations(40)->UseRealTime()->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Installation installation;
    for (const QString &folder : {u"config"_s, u"images"_s, u"plugins"_s, u"help"_s, u"data"_s, u"python"_s})
        QFile::link(QStringLiteral(STAGE_DIRECTORY "/") + folder, installation.path(folder));
    Arguments arguments;
    const IDEApplication application(arguments.count(), arguments.values(), installation.paths());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
