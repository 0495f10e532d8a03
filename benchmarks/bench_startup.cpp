#include <benchmark/benchmark.h>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

// Start-up from exec to the first painted main window, and the memory of the idle program. The peer is an empty
// QMainWindow in the same run. Runs on the current display.

namespace {
struct Startup
{
    double milliseconds = 0;
    double megabytes = 0;
};

QProcessEnvironment environment(const QString &home)
{
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    result.insert(u"HOME"_s, home);
    result.insert(u"XDG_CONFIG_HOME"_s, home + u"/.config"_s);
    result.insert(u"QT_QPA_GENERIC_PLUGINS"_s, u"firstpaint"_s);
    result.insert(u"QT_PLUGIN_PATH"_s, QStringLiteral(PROBE_DIRECTORY));
    return result;
}

void writeSettings(const QString &home, bool splash)
{
    QDir().mkpath(home + u"/.config/Ostrand Labs/Varnel"_s);
    QFile file(home + u"/.config/Ostrand Labs/Varnel/1.0.ini"_s);
    if (file.open(QIODevice::WriteOnly))
        file.write(splash ? "[Startup]\nDisableSplashScreen=0\n" : "[Startup]\nDisableSplashScreen=1\n");
}

Startup start(const QString &program, const QString &home)
{
    QProcess process;
    process.setProcessEnvironment(environment(home));
    process.setStandardErrorFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    process.start(program, QStringList());
    Startup result;
    QByteArray output;
    while (process.waitForReadyRead(20000)) {
        output += process.readAllStandardOutput();
        if (result.milliseconds == 0 && output.contains("painted"))
            result.milliseconds = double(timer.nsecsElapsed()) / 1e6;
        const auto resident = output.indexOf("resident ");
        if (resident >= 0 && output.endsWith('\n'))
            result.megabytes = output.mid(resident + 9).trimmed().toDouble() / 1024;
    }
    process.waitForFinished();
    return result;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void startUp(benchmark::State &state, bool splash)
{
    QTemporaryDir home;
    writeSettings(home.path(), splash);
    const QString varnel = QStringLiteral(VARNEL_PROGRAM);
    const QString bare = QStringLiteral(BARE_PROGRAM);
    if (start(varnel, home.path()).megabytes == 0 || start(bare, home.path()).megabytes == 0) {
        state.SkipWithError("a program did not report its first paint");
        return;
    }
    std::vector<double> times, bareTimes, ratios, memories, bareMemories;
    for (auto _ : state) {
        const Startup peer = start(bare, home.path());
        const Startup own = start(varnel, home.path());
        state.SetIterationTime(own.milliseconds / 1000);
        times.push_back(own.milliseconds);
        bareTimes.push_back(peer.milliseconds);
        ratios.push_back(own.milliseconds / peer.milliseconds);
        memories.push_back(own.megabytes);
        bareMemories.push_back(peer.megabytes);
    }
    state.counters["ms"] = median(times);
    state.counters["bare_ms"] = median(bareTimes);
    state.counters["time_ratio"] = median(ratios);
    state.counters["MB"] = median(memories);
    state.counters["bare_MB"] = median(bareMemories);
    state.counters["memory_ratio"] = median(memories) / median(bareMemories);
}
} // namespace

BENCHMARK_CAPTURE(startUp, withSplash, true)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(startUp, withoutSplash, false)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
