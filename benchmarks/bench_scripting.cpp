// 64 KiB of memory in a script, as the list of a slice and back, from a target that answers at once. The peer is a bare
// read or write of the same block; the time of Python's own list of as many numbers is shown too. bench_gdb has the
// slice of a real target. And the call of the handler of an event.
#include "../tests/framework/fakedebugenvironment.h"
#include "../tests/framework/fakeservices.h"
#include "activity.h"
#include "eventhandlers.h"
#include "imemory.h"
#include "objectmodel.h"
#include "project.h"
#include "projectworkspace.h"
#include "pythonreference.h"
#include <benchmark/benchmark.h>
#include <Python.h>
#include <QApplication>
#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace {
constexpr int Bytes = 65536;

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

/// Memory that answers at once.
class Memory : public InterfaceObject<IMemory>
{
public:
    QList<MemoryRegion> regions() override { return {{u"RAM"_s, 0, 0, 0, 0, 0x0FFFFFFF, false, Byte}}; }
    int read(int, int, uint address, uint *value) override
    {
        *value = address & 0xFF;
        return Success;
    }
    int write(int, int, uint, uint, bool) override { return Success; }
    void readBlock(int, int, uint address, int count, MemoryBlock &result) override
    {
        result.resize(count);
        for (MemoryBlockCell &cell : result)
            cell = {address++ & 0xFF, Success};
    }
    void writeBlock(int, int, uint, int, MemoryBlock &cells, bool) override
    {
        for (MemoryBlockCell &cell : cells)
            written += cell.value;
    }

    quint64 written = 0;
};

class Environment : public FakeDebugEnvironment
{
public:
    using FakeDebugEnvironment::FakeDebugEnvironment;
    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override
    {
        if (id != IMemory::Iid)
            return InterfaceObject::queryInterface(id, out);
        m_memory->addRef();
        *out = m_memory.get();
        return QS_OK;
    }
    Memory &memory() { return *m_memory; }

private:
    const InterfacePtr<Memory> m_memory{new Memory};
};

/// A workspace with one processor, and the names of its objects in Python.
struct Program
{
    Program()
    {
        activity.openWorkspace(std::make_unique<ProjectWorkspace>(u"/tmp/all.vnw"_s));
        auto project = std::make_unique<Project>(u"fw"_s, u"/tmp"_s);
        project->setExecutionEnvironment(environment.get());
        activity.addProject(std::move(project));
        require(model.startScripting(), "Python does not start.");
        run("import varnel\nm = varnel.app.debugger.currentProcessor.memory\nvalues = m[0:65536]\n"
            "numbers = list(range(256)) * 256\n");
        require(PyObject_IsTrue(PythonReference(value("values == numbers")).get()) == 1, "The memory is wrong.");
    }

    ~Program() { activity.closeWorkspace(); }

    static PyObject *globals() { return PyModule_GetDict(PyImport_AddModule("__main__")); }
    static void run(const char *statements)
    {
        const PythonReference result(PyRun_String(statements, Py_file_input, globals(), globals()));
        require(result != nullptr, statements);
    }
    static PyObject *value(const char *expression)
    {
        return PyRun_String(expression, Py_eval_input, globals(), globals());
    }

    int alive = 0;
    InterfacePtr<Environment> environment{new Environment(&alive)};
    FakeServices host;
    Activity activity;
    ObjectModel model{activity, host};
};

/// Measures a statement and the peer in turn.
template <typename Peer>
void compare(benchmark::State &state, const char *statement, const Peer &peer)
{
    const PythonReference code(Py_CompileString(statement, "benchmark", Py_file_input));
    qint64 total = 0;
    qint64 bare = 0;
    for ([[maybe_unused]] auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        const PythonReference result(PyEval_EvalCode(code.get(), Program::globals(), Program::globals()));
        const qint64 time = timer.nsecsElapsed();
        require(result != nullptr, statement);
        timer.start();
        peer();
        bare += timer.nsecsElapsed();
        total += time;
        state.SetIterationTime(double(time) * 1e-9);
    }
    state.counters["times_bare"] = double(total) / double(bare);
}

void readSlice(benchmark::State &state)
{
    Program program;
    compare(state, "m[0:65536]", [&] {
        MemoryBlock block;
        program.environment->memory().readBlock(0, IMemory::Byte, 0, Bytes, block);
        benchmark::DoNotOptimize(block.constLast().value);
    });
}
BENCHMARK(readSlice)->UseManualTime()->Unit(benchmark::kMicrosecond);

void writeSlice(benchmark::State &state)
{
    Program program;
    MemoryBlock block(Bytes);
    compare(state, "m[0:65536] = values", [&] {
        program.environment->memory().writeBlock(0, IMemory::Byte, 0, Bytes, block, false);
        benchmark::DoNotOptimize(block.constLast().status);
    });
}
BENCHMARK(writeSlice)->UseManualTime()->Unit(benchmark::kMicrosecond);

void copyOfAList(benchmark::State &state)
{
    Program program;
    compare(state, "[n for n in numbers]", [&] {
        MemoryBlock block;
        program.environment->memory().readBlock(0, IMemory::Byte, 0, Bytes, block);
        benchmark::DoNotOptimize(block.constLast().value);
    });
}
BENCHMARK(copyOfAList)->UseManualTime()->Unit(benchmark::kMicrosecond);

void oneWord(benchmark::State &state)
{
    Program program;
    compare(state, "m[5]", [&] {
        uint value = 0;
        program.environment->memory().read(0, IMemory::Byte, 5, &value);
        benchmark::DoNotOptimize(value);
    });
}
BENCHMARK(oneWord)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// A thousand calls of a handler without work, as for onBreakpointHit. The peer is the bare call of the function.
void eventHandler(benchmark::State &state)
{
    const Program program;
    Program::run("def handler(): pass");
    PyObject *function = PyDict_GetItemString(Program::globals(), "handler");
    EventHandlers handlers;
    require(handlers.setHandler(u"onBreakpointHit"_s, function), "The handler is refused.");
    constexpr int Calls = 1000;
    qint64 total = 0;
    qint64 bare = 0;
    for ([[maybe_unused]] auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < Calls; ++i)
            handlers.fire(u"onBreakpointHit"_s);
        const qint64 time = timer.nsecsElapsed();
        timer.start();
        for (int i = 0; i < Calls; ++i)
            const PythonReference result(PyObject_CallNoArgs(function));
        bare += timer.nsecsElapsed();
        total += time;
        state.SetIterationTime(double(time) * 1e-9);
    }
    state.counters["ns_a_call"] = double(total) / Calls / double(state.iterations());
    state.counters["times_bare"] = double(total) / double(bare);
}
BENCHMARK(eventHandler)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
