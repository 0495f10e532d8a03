// Find in files over 30,000 files of 392 MB, with the results on a visible page, beside `rg -j1`, which lists the same
// lines. The search runs once on all cores, as in the program, and once on one core. The programs take turns, and the
// median of each counts. The time of the processors is that of all threads. Set VARNEL_SEARCH_FOLDER to search another
// folder, without a check of the results.
#include "filesearcher.h"
#include "lookuppattern.h"
#include "outputpage.h"
#include "outputwindow.h"
#include <algorithm>
#include <benchmark/benchmark.h>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <sched.h>
#include <sys/resource.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
constexpr int FileCount = 30'000;
constexpr int FilesPerFolder = 30;
constexpr qint64 CorpusSize = 392'000'000; // bytes
constexpr int Rounds = 9;

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

/// Lines of C; about one in 4000 has the name that is searched for.
QByteArray line(QRandomGenerator &random)
{
    static const QByteArrayList names{"count", "buffer", "device", "state",   "flags", "uart_send", "timer_start",
                                      "index", "value",  "length", "channel", "irq",   "snd_pcm",   "param_get"};
    const auto name = [&random] { return names[random.bounded(int(names.size()))]; };
    const QByteArray number = QByteArray::number(random.bounded(10'000));
    if (random.bounded(4000) == 0)
        return "    err = snd_pcm_hw_params(" + name() + ", " + number + ");\n";
    switch (random.bounded(6)) {
    case 0:
        return "/* The " + name() + " of the " + name() + " is not changed before the " + name() + " ends. */\n";
    case 1:
        return "static int " + name() + '_' + number + "(struct " + name() + " *" + name() + ")\n";
    case 2:
        return "    if (" + name() + "->" + name() + " & 0x" + number + ") {\n";
    case 3:
        return "        " + name() + '_' + name() + '(' + name() + ", " + number + ");\n";
    case 4:
        return "#define " + name().toUpper() + '_' + number + " (" + name() + " << " + number + ")\n";
    default:
        return "    }\n\n";
    }
}

/// Files of 1 to 25 KB.
QString writeCorpus(const QString &folder)
{
    QRandomGenerator random(1);
    for (int i = 0; i < FileCount; ++i) {
        const QString path = u"%1/module%2/file%3.c"_s.arg(folder).arg(i / FilesPerFolder).arg(i);
        if (i % FilesPerFolder == 0)
            require(QDir().mkpath(QFileInfo(path).path()), "cannot make a folder");
        const qsizetype size = 1000 + random.bounded(2 * int(CorpusSize / FileCount - 1000));
        QByteArray text;
        while (text.size() < size)
            text += line(random);
        QFile file(path);
        require(file.open(QIODevice::WriteOnly) && file.write(text) == text.size(), "cannot write a file");
    }
    return folder;
}

QString givenFolder()
{
    return qEnvironmentVariable("VARNEL_SEARCH_FOLDER");
}

const QString &corpus()
{
    static const QTemporaryDir directory;
    static const QString path = givenFolder().isEmpty() ? writeCorpus(directory.path()) : givenFolder();
    return path;
}

/// The searcher and its page of results, as in the main window.
struct Window
{
    Window()
    {
        output.displayPage(OutputWindow::FindInFiles);
        output.resize(1200, 250);
        output.show();
        QObject::connect(&searcher, &FileSearcher::matchFound, &output,
                         [this](const QString &file, int line, const QString &text) {
                             output.outputLine(OutputWindow::FindInFiles,
                                               file + u'(' + QString::number(line) + u"):"_s + text + u'\n',
                                               LookupPlace{file, line});
                             ++lines;
                         });
        QObject::connect(&searcher, &FileSearcher::finished, &output, [this] { finished = true; });
        QApplication::processEvents();
    }

    OutputWindow output;
    FileSearcher searcher;
    qsizetype lines = 0;
    bool finished = false;
};

struct Cost
{
    double seconds;
    double processorSeconds;
    qsizetype lines;
};

double processorSeconds(int who)
{
    struct rusage usage = {};
    ::getrusage(who, &usage);
    const auto seconds = [](const timeval &time) { return double(time.tv_sec) + double(time.tv_usec) * 1e-6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

Cost searchHere(const FileSearch &search)
{
    Window window;
    const double before = processorSeconds(RUSAGE_SELF);
    QElapsedTimer timer;
    timer.start();
    window.searcher.start(search);
    while (!window.finished)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QApplication::processEvents();
    return {double(timer.nsecsElapsed()) * 1e-9, processorSeconds(RUSAGE_SELF) - before, window.lines};
}

/// Keeps this thread, and those that it starts, on one core.
class OnOneCore
{
public:
    OnOneCore()
    {
        require(::sched_getaffinity(0, sizeof m_before, &m_before) == 0, "cannot read the cores");
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(::sched_getcpu(), &one);
        require(::sched_setaffinity(0, sizeof one, &one) == 0, "cannot choose a core");
    }
    ~OnOneCore() { ::sched_setaffinity(0, sizeof m_before, &m_before); }
    Q_DISABLE_COPY_MOVE(OnOneCore)

private:
    cpu_set_t m_before{};
};

Cost searchByPeer(const FileSearch &search)
{
    QStringList arguments{u"-j1"_s, u"-n"_s, u"--no-ignore"_s};
    if (!search.regExp)
        arguments << u"-F"_s;
    if (!search.caseSensitive)
        arguments << u"-i"_s;
    const double before = processorSeconds(RUSAGE_CHILDREN);
    QElapsedTimer timer;
    timer.start();
    QProcess process;
    process.start(u"rg"_s, arguments << search.text << search.folder);
    require(process.waitForFinished(-1), "rg does not run");
    const double seconds = double(timer.nsecsElapsed()) * 1e-9;
    return {seconds, processorSeconds(RUSAGE_CHILDREN) - before, process.readAllStandardOutput().count('\n')};
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

FileSearch plain()
{
    return {.text = u"snd_pcm_hw_params"_s, .folder = corpus(), .mask = u"*"_s, .recursive = true};
}

FileSearch caseBlind()
{
    FileSearch search = plain();
    search.text = u"Snd_Pcm_hw_Params"_s;
    search.caseSensitive = false;
    return search;
}

FileSearch expression()
{
    FileSearch search = plain();
    search.text = u"snd_[a-z]+_hw_par[a-z]+"_s;
    search.regExp = true;
    return search;
}

void searchAll(benchmark::State &state, FileSearch (*kind)())
{
    const FileSearch search = kind();
    searchHere(search); // the files are in memory from now on
    for ([[maybe_unused]] auto _ : state) {
        std::vector<double> here;
        std::vector<double> onOneCore;
        std::vector<double> peer;
        std::vector<double> processor;
        for (int i = 0; i < Rounds; ++i) {
            const Cost ours = searchHere(search);
            const Cost other = searchByPeer(search);
            require(!givenFolder().isEmpty() || ours.lines == other.lines, "the searches differ");
            const OnOneCore one;
            here.push_back(ours.seconds);
            peer.push_back(other.seconds);
            processor.push_back(ours.processorSeconds / other.processorSeconds);
            onOneCore.push_back(searchHere(search).seconds);
            state.counters["lines"] = double(ours.lines);
        }
        state.counters["rg_s"] = median(peer);
        state.counters["one_core_s"] = median(onOneCore);
        state.counters["times_rg"] = median(here) / median(peer);
        state.counters["one_core_times_rg"] = median(onOneCore) / median(peer);
        state.counters["processor_times_rg"] = median(processor);
        state.SetIterationTime(median(here));
    }
}
BENCHMARK_CAPTURE(searchAll, plain, plain)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchAll, case_blind, caseBlind)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchAll, expression, expression)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// From the start of a search until its first line is painted.
void firstLineOnScreen(benchmark::State &state)
{
    const FileSearch search = plain();
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        Window window;
        state.ResumeTiming();
        window.searcher.start(search);
        while (window.lines == 0)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QEvent request(QEvent::UpdateRequest);
        QApplication::sendEvent(&window.output, &request);
        state.PauseTiming();
        window.searcher.stop();
        state.ResumeTiming();
    }
}
BENCHMARK(firstLineOnScreen)->Unit(benchmark::kMillisecond)->Iterations(50)->UseRealTime();

qsizetype threads()
{
    return QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

/// From the stop of a search that is under way until its threads have ended.
void stop(benchmark::State &state)
{
    const FileSearch search = expression();
    while (threads() > 1) // of the searches before
        QThread::yieldCurrentThread();
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        Window window;
        const qsizetype before = threads();
        window.searcher.start(search);
        while (window.searcher.filesSearched() < 1000)
            QApplication::processEvents();
        require(window.searcher.isRunning(), "the search ended too early");
        state.ResumeTiming();
        window.searcher.stop();
        while (threads() > before)
            QThread::yieldCurrentThread();
    }
}
BENCHMARK(stop)->Unit(benchmark::kMillisecond)->Iterations(50)->UseRealTime();
} // namespace

int main(int argc, char **argv)
{
    const QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
