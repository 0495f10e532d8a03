// What a script pays for reaching an object of the toolkit by name: reading an attribute, calling a slot and getting a
// signal. The peer is the same access through a type that was bound to C++ by hand, in the same run.
#include "pythonruntime.h"
#include "qtwrapper.h"
#include <benchmark/benchmark.h>
#include <pybind11/eval.h>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
namespace py = pybind11;

namespace {

/// The peer of a wrapped button.
struct BoundButton
{
    QPushButton *button;
    py::object handler = py::none();
};

void bindButton()
{
    py::class_<BoundButton>(py::handle(), "BoundButton")
        .def_property_readonly("checkable", [](const BoundButton &self) { return self.button->isCheckable(); })
        .def("toggle", [](const BoundButton &self) { self.button->toggle(); });
}

struct Scope
{
    Scope()
    {
        globals["__builtins__"] = py::handle(PyEval_GetBuiltins());
        globals["bound"] = BoundButton{&button};
        globals["wrapped"] =
            py::reinterpret_steal<py::object>(QtWrapper::get(&button, false)->pythonObject().release());
        py::exec("def handler(*given): pass\n"
                 "def read(object, n):\n"
                 "  for i in range(n): object.checkable\n"
                 "def call(object, n):\n"
                 "  for i in range(n): object.toggle()\n",
                 globals);
    }
    void run(const char *function, const char *object, int count) const { globals[function](globals[object], count); }

    QPushButton button;
    py::dict globals;
};

double nanoseconds(const Scope &scope, const char *function, const char *object)
{
    constexpr int Count = 20000;
    const auto start = std::chrono::steady_clock::now();
    scope.run(function, object, Count);
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count() / Count;
}

/// Both are measured by turns, so that the load of the machine hits them alike.
void compare(benchmark::State &state, const char *function)
{
    const Scope scope;
    double wrapped = 0;
    double bound = 0;
    for ([[maybe_unused]] auto _ : state) {
        const double time = nanoseconds(scope, function, "wrapped");
        bound += nanoseconds(scope, function, "bound");
        wrapped += time;
        state.SetIterationTime(time / 1e9);
    }
    state.counters["ns"] = wrapped / double(state.iterations());
    state.counters["bound_ns"] = bound / double(state.iterations());
    state.counters["times_bound"] = wrapped / bound;
    QtWrapper::deleteAll();
}

void attributeRead(benchmark::State &state)
{
    compare(state, "read");
}

void slotCall(benchmark::State &state)
{
    compare(state, "call");
}

/// The peer is a call of the function from C++.
void signalToHandler(benchmark::State &state)
{
    Scope scope;
    const py::object handler = scope.globals["handler"];
    const py::tuple arguments = py::make_tuple(scope.globals["wrapped"]);
    py::setattr(scope.globals["wrapped"], "onClicked", handler);
    for ([[maybe_unused]] auto _ : state)
        Q_EMIT scope.button.clicked();
    constexpr int Count = 100000;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < Count; ++i)
        Py_DECREF(PyObject_CallObject(handler.ptr(), arguments.ptr()));
    state.counters["bare_call_ns"] =
        std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count() / Count;
    QtWrapper::deleteAll();
}

void signalWithoutHandler(benchmark::State &state)
{
    const Scope scope;
    for ([[maybe_unused]] auto _ : state)
        Q_EMIT const_cast<QPushButton &>(scope.button).clicked();
    QtWrapper::deleteAll();
}

void firstAccess(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        QLabel label;
        state.ResumeTiming();
        benchmark::DoNotOptimize(QtWrapper::get(&label, false));
        state.PauseTiming();
        QtWrapper::deleteAll();
        state.ResumeTiming();
    }
}

BENCHMARK(attributeRead)->UseManualTime()->Iterations(50);
BENCHMARK(slotCall)->UseManualTime()->Iterations(50);
BENCHMARK(signalToHandler);
BENCHMARK(signalWithoutHandler);
BENCHMARK(firstAccess);

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    if (!startPython())
        return 1;
    bindButton();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
