// Debug sessions on an emulated board. The peer is a bare client that sends the same commands to gdb. The counter
// "bare_ms" is the time of the client, "ratio" our time divided by it.
#include "../tests/framework/fakeservices.h"
#include "../tests/framework/installation.h"
#include "../tests/plugins/gdb/foreignboard.h"
#include "activity.h"
#include "boardpeer.h"
#include "ideapplication.h"
#include "mainwindow.h"
#include "objectmodel.h"
#include "project.h"
#include "projectworkspace.h"
#include "pythonreference.h"
#include <algorithm>
#include <Python.h>
#include <QDockWidget>

namespace {
using Env = IExecutionEnvironment;

constexpr quint64 Prescale = 0x4002801C;     // of the board's counter
constexpr quint64 GuestCounter = 0x40028018; // counts microseconds with a prescale of 24

class NoProgress : public InterfaceObject<IStartProgress>
{
public:
    NoProgress() : InterfaceObject(0) {}
    void progress(const QString &, int) override {}
    void finished(bool, const QString &) override {}
};

/// Runs to an endless loop in which each step is one line.
void enterLoop(LiveSession *session)
{
    session->env->runTo(Programs::source(u"firmware.c"_s), Programs::lineOf(u"firmware.c"_s, u"loops = loops + 1;"_s));
    require(session->waitFor(Env::ProgramPaused), "The loop was not reached.");
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
    session->env->stepInto(u"firmware.c"_s); // steps one line, since there is no call
    require(session->waitFor(Env::ProgramPaused), "The step did not end.");
}

/// The queries of all windows of the host after a stop.
void queryEverything(LiveSession *session)
{
    require(!session->location().isEmpty(), "The location is unknown.");
    const auto registers = session->get<IRegisters>();
    for (const RegisterInfo &info : registers->registers())
        registers->value(info.name, 0);
    MemoryBlock block;
    session->get<IMemory>()->readBlock(1, IMemory::Byte, 0x20000000, 1024, block);
    require(block.last().status == IMemory::Success, "Memory was not read.");
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

void SessionStart(benchmark::State &state)
{
    compare(
        state,
        [] {
            LiveSession session(option());
            require(session.start(), "The session did not start.");
        },
        [] { const BareClient client; });
}
BENCHMARK(SessionStart)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

/// A program of 1 MB.
const QString &largeImage()
{
    static const Programs programs;
    static const QString file = programs.firmware(u"large.elf"_s, u"mps2.ld"_s, {u"-DFILLER=%1"_s.arg(1 << 20)});
    return file;
}

/// The time of the download within the start of a session, in which the event loop runs.
double downloadTime(const ForeignBoard &board)
{
    LiveSession session(u"remote:%1;image=%2"_s.arg(board.address(), largeImage()));
    QElapsedTimer timer;
    double time = 0;
    QObject::connect(session.env->session()->gdb(), &MiConnection::dialogue, [&](const QString &line, bool fromUs) {
        if (fromUs && line.contains("-target-download"_L1))
            timer.start();
        else if (timer.isValid() && time == 0 && line.contains("^done,address"_L1))
            time = milliseconds(timer);
    });
    const auto progress = shareInterface(new NoProgress);
    session.get<IProgressiveStart>()->startInBackground(false, progress.get());
    require(session.waitFor(Env::ProgramPaused), "The session did not start.");
    return time;
}

/// The same by a client that only waits for the answer.
double bareDownloadTime(const ForeignBoard &board)
{
    BareClient client(largeImage(), board.address());
    QElapsedTimer timer;
    timer.start();
    client.ask("-target-download", "^done");
    return milliseconds(timer);
}

void Download(benchmark::State &state)
{
    const ForeignBoard board(image());
    require(QTest::qWaitFor([&board] { return board.isUp(); }), "There is no board.");
    QList<double> ours;
    QList<double> bare;
    for ([[maybe_unused]] auto round : state) {
        ours.append(downloadTime(board));
        state.SetIterationTime(ours.last() / 1e3);
        bare.append(bareDownloadTime(board));
    }
    setPeer(state, ours, bare);
}
BENCHMARK(Download)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

void SourceStep(benchmark::State &state)
{
    LiveSession session(option());
    require(session.start(), "The session did not start.");
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
    require(session.start(), "The session did not start.");
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

/// The main window with a debug session on the board and all dock windows open.
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
        require(m_window.openWorkspace(m_files.path(u"board.vnw"_s), false), "The workspace was not opened.");
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

    /// A step, from the command until all windows are painted.
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
        require(m_window.activity().state() == StatePaused, "The step did not end.");
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

/// Scripts of a workspace with the processor of a session: `m` is its memory, in the region at @p address.
class ScriptedSession
{
public:
    ScriptedSession(const LiveSession &session, const QByteArray &address)
    {
        m_activity.openWorkspace(std::make_unique<ProjectWorkspace>(u"/tmp/all.vnw"_s));
        auto project = std::make_unique<Project>(u"board"_s, u"/tmp"_s);
        project->setExecutionEnvironment(session.env);
        m_activity.addProject(std::move(project));
        require(m_model.startScripting(), "Python does not start.");
        run("import varnel\nm = varnel.app.debugger.currentProcessor.memory\n"
            "for m.currentRegion in m.regions:\n    if m.lowAddress <= "
            + address + " < m.highAddress: break\nm.currentMode = 'Byte'\n");
    }

    static void run(const QByteArray &statements)
    {
        PyObject *globals = PyModule_GetDict(PyImport_AddModule("__main__"));
        const PythonReference result(PyRun_String(statements.constData(), Py_file_input, globals, globals));
        require(result != nullptr, statements.constData());
    }

private:
    FakeServices m_host;
    Activity m_activity;
    ObjectModel m_model{m_activity, m_host};
};

/// 64 KiB in a script, beside the bare command of gdb, whose answer is not even looked at.
void ScriptMemorySlice(benchmark::State &state)
{
    LiveSession session(option());
    require(session.start(), "The session did not start.");
    const ScriptedSession script(session, "0x20000000");
    ScriptedSession::run("assert len(m[0x20000000:0x20010000]) == 65536");
    BareClient client;
    compare(
        state, [] { ScriptedSession::run("m[0x20000000:0x20010000]"); },
        [&client] { client.ask("-data-read-memory-bytes 0x20000000 65536", "^done"); });
}
BENCHMARK(ScriptMemorySlice)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

void BreakpointToggle(benchmark::State &state)
{
    LiveSession session(option());
    require(session.start(), "The session did not start.");
    BareClient client;
    const QString file = Programs::source(u"firmware.c"_s);
    const int line = Programs::lineOf(u"firmware.c"_s, u"int result"_s);
    const auto breakpoints = session.get<IBreakpoints>();
    const QByteArray place = "-break-insert firmware.c:" + QByteArray::number(line);
    int number = 1; // the temporary one at main
    compare(
        state,
        [&] {
            require(breakpoints->setBreakpoint(file, line, BreakpointEnabled) == 0, "The breakpoint was not set.");
            require(breakpoints->setBreakpoint(file, line, BreakpointRemoved) == 0, "The breakpoint was not removed.");
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
    require(session.start(), "The session did not start.");
    session.env->run();
    require(session.waitFor(Env::ProgramRunning), "The program does not run.");
    const auto breakpoints = session.get<IBreakpoints>();
    const QString file = Programs::source(u"firmware.c"_s);
    const int line = Programs::lineOf(u"firmware.c"_s, u"int result"_s);
    for ([[maybe_unused]] auto round : state) {
        require(breakpoints->setBreakpoint(file, line, BreakpointEnabled) == 0, "The breakpoint was not set.");
        require(breakpoints->setBreakpoint(file, line, BreakpointRemoved) == 0, "The breakpoint was not removed.");
    }
}
BENCHMARK(BreakpointToggleWhileRunning)->Iterations(50)->UseRealTime()->Unit(benchmark::kMillisecond);

double residentMegabytes()
{
    QFile file(u"/proc/self/statm"_s);
    require(file.open(QIODevice::ReadOnly), "The memory size is unknown.");
    return double(file.readAll().split(' ').value(1).toLongLong()) * 4096 / 1e6;
}

/// Compares the first and the last hundred steps, and measures the growth of memory.
void ThousandSteps(benchmark::State &state)
{
    for ([[maybe_unused]] auto round : state) {
        LiveSession session(option());
        require(session.start(), "The session did not start.");
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
    require(session.env->session()->target()->readDirectly(GuestCounter, 4, &bytes), "The counter was not read.");
    return memoryCellValue(bytes, false);
}

/// The difference of the running times of two boards between a common start and a common pause, in guest time.
void SynchronisedPauseSkew(benchmark::State &state)
{
    LiveSession first(option(u";group=pair"_s));
    LiveSession second(option(u";group=pair"_s));
    require(first.start() && second.start(), "The sessions did not start.");
    for (const LiveSession *session : {&first, &second})
        session->env->session()->target()->writeDirectly(Prescale, memoryCellBytes(24, 4, false));
    const auto group = first.get<IMultiProcessorSync>();
    QList<double> skews;
    for ([[maybe_unused]] auto round : state) {
        const quint64 starts[] = {guestMicroseconds(first), guestMicroseconds(second)};
        group->syncRun();
        require(first.waitFor(Env::ProgramRunning) && second.waitFor(Env::ProgramRunning), "A board does not run.");
        QTest::qWait(20); // the running time; the result does not depend on it
        group->syncPause();
        require(first.waitFor(Env::ProgramPaused) && second.waitFor(Env::ProgramPaused), "A board did not pause.");
        const double ran[] = {double(guestMicroseconds(first) - starts[0]),
                              double(guestMicroseconds(second) - starts[1])};
        require(ran[0] > 0 && ran[1] > 0, "Guest time does not advance.");
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
