// Opening a workspace of 20 projects with 2,000 files each in the main window, up to the painted tree. The peer is
// loading the model alone. Also the longest time without an update of the status bar.
#include "../tests/framework/installation.h"
#include "ideapplication.h"
#include "mainwindow.h"
#include "project.h"
#include "projectworkspace.h"
#include <benchmark/benchmark.h>
#include <ctime>
#include <QStatusBar>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {
constexpr int ProjectCount = 20;
constexpr int FolderCount = 20;
constexpr int FilesPerFolder = 100;

/// Processor time of this process, which does not depend on the load of the machine.
double milliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

QByteArray projectXml(int number)
{
    QByteArray xml = "<project>";
    for (int folder = 0; folder < FolderCount; ++folder) {
        xml += "<folder name='Component " + QByteArray::number(folder) + "'>";
        for (int file = 0; file < FilesPerFolder; ++file) {
            const QByteArray name = QByteArray::number(number) + '_' + QByteArray::number(folder * 1000 + file) + ".c";
            xml += "<file path='source/" + QByteArray::number(folder) + "/file_" + name + "'/>";
        }
        xml += "</folder>";
    }
    return xml + "<properties currentconfiguration='Default'><configuration name='Default'/></properties></project>";
}

/// Writes a workspace file and its projects below @p installation. Returns its path.
QString writeWorkspace(const Installation &installation)
{
    QByteArray xml = "<workspace>";
    for (int i = 0; i < ProjectCount; ++i) {
        const QString name = u"work/p%1/p%1.vnp"_s.arg(i);
        installation.write(name, projectXml(i));
        xml += "<project path='" + installation.path(name).toUtf8() + "'/>";
    }
    installation.write(u"work/all.vnw"_s, xml + "</workspace>");
    return installation.path(u"work/all.vnw"_s);
}

/// Measures the longest time between two paint events of a widget.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget *widget) { widget->installEventFilter(this); }

    void begin()
    {
        longest = 0;
        m_last = milliseconds();
    }
    void mark()
    {
        longest = std::max(longest, milliseconds() - m_last);
        m_last = milliseconds();
    }

    double longest = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            mark();
        return false;
    }

private:
    double m_last = 0;
};

double bareLoad(const QString &path)
{
    const double start = milliseconds();
    ProjectWorkspace workspace;
    require(workspace.load(path), "The workspace does not load.");
    return milliseconds() - start;
}

void openLargeWorkspace(benchmark::State &state)
{
    const Installation installation;
    qputenv("XDG_STATE_HOME", installation.path(u"state"_s).toLocal8Bit());
    installation.writeWindowFiles();
    const QString path = writeWorkspace(installation);
    Arguments arguments;
    IDEApplication application(arguments.count(), arguments.values(), installation.paths());
    MainWindow window;
    window.resize(1000, 800);
    window.show();
    QCoreApplication::processEvents();
    PaintWatch watch(window.statusBar());
    double bare = 0;
    double silent = 0;
    for ([[maybe_unused]] auto _ : state) {
        bare += bareLoad(path);
        watch.begin();
        const double start = milliseconds();
        require(window.openWorkspace(path, false), "The workspace does not open.");
        QCoreApplication::processEvents();
        const double end = milliseconds();
        watch.mark();
        state.SetIterationTime((end - start) / 1000);
        silent = std::max(silent, watch.longest);
        require(window.findChild<QTreeWidget *>(u"ProjectTree"_s)->topLevelItem(0)->childCount() == ProjectCount,
                "Projects are missing.");
        require(window.projectWorkspace()->project(ProjectCount - 1)->files({}, nullptr).size()
                    == FolderCount * FilesPerFolder,
                "Files are missing.");
        require(window.closeWorkspace(), "The workspace does not close.");
        QCoreApplication::processEvents();
    }
    state.counters["bare_load_ms"] = bare / double(state.iterations());
    state.counters["longest_silence_ms"] = silent;
    window.close();
}
BENCHMARK(openLargeWorkspace)->UseManualTime()->Unit(benchmark::kMillisecond);
} // namespace

BENCHMARK_MAIN();
