// The start of Python: the interpreter and its console up to the first prompt, including "startup.py". The peer is
// Py_InitializeFromConfig with the same configuration. Python can start only once in a process, so each start is
// measured in a child process, which runs this program and prints the time.
#include "pythoninterpreter.h"
#include "pythonruntime.h"
#include "scriptdirectories.h"
#include <benchmark/benchmark.h>
#include <cstdio>
#include <Python.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
using namespace Qt::StringLiterals;

namespace {

bool startBarePython()
{
    PyPreConfig preConfig;
    PyPreConfig_InitPythonConfig(&preConfig);
    preConfig.parse_argv = 0;
    preConfig.use_environment = 0;
    preConfig.configure_locale = 0;
    preConfig.utf8_mode = 1;
    if (PyStatus_Exception(Py_PreInitialize(&preConfig)))
        return false;
    PyConfig config;
    PyConfig_InitPythonConfig(&config);
    config.parse_argv = 0;
    config.use_environment = 0;
    config.user_site_directory = 0;
    config.install_signal_handlers = 0;
    config.configure_c_stdio = 0;
    const bool named =
        !PyStatus_Exception(PyConfig_SetBytesString(&config, &config.program_name, "/usr/bin/python3.11"));
    const bool started = named && !PyStatus_Exception(Py_InitializeFromConfig(&config));
    PyConfig_Clear(&config);
    return started;
}

bool startConsole()
{
    if (!startPython())
        return false;
    static QString shown; // must exist until the end of the process, because output may still be written
    auto *interpreter = new PythonInterpreter({QStringLiteral(VARNEL_STAGE_DIR) + u"/python"_s, QString()});
    QObject::connect(interpreter, &PythonInterpreter::outputLine, [](const QString &text) { shown += text; });
    interpreter->start(QStringLiteral(VARNEL_STAGE_DIR) + u"/python/startup.py"_s);
    return shown.endsWith(u"'...\nOK\n>>> "_s);
}

/// Runs in the child process: prints the time of a start in nanoseconds.
int measure(bool (*start)())
{
    QElapsedTimer timer;
    timer.start();
    if (!start())
        return 1;
    std::printf("%lld\n", static_cast<long long>(timer.nsecsElapsed()));
    std::fflush(stdout);
    std::_Exit(0);
}

/// The time of a start in a child process in milliseconds; 0 if it failed.
double startInChild(const QString &kind)
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {kind});
    child.waitForFinished();
    return child.readAllStandardOutput().trimmed().toDouble() / 1e6;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void startOfPython(benchmark::State &state)
{
    if (startInChild(u"--bare"_s) == 0 || startInChild(u"--console"_s) == 0) {
        state.SkipWithError("a start failed");
        return;
    }
    std::vector<double> times, bareTimes;
    for ([[maybe_unused]] auto _ : state) {
        bareTimes.push_back(startInChild(u"--bare"_s));
        times.push_back(startInChild(u"--console"_s));
        state.SetIterationTime(times.back() / 1000);
    }
    state.counters["ms"] = median(times);
    state.counters["bare_ms"] = median(bareTimes);
    state.counters["times_bare"] = median(times) / median(bareTimes);
    state.counters["worst_ms"] = *std::ranges::max_element(times);
}
BENCHMARK(startOfPython)->UseManualTime()->Iterations(41)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc == 2 && qstrcmp(argv[1], "--bare") == 0)
        return measure(startBarePython);
    if (argc == 2 && qstrcmp(argv[1], "--console") == 0)
        return measure(startConsole);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
