// Loading and saving a project with 100,000 files in 1,000 folders. The peer is QXmlStreamReader on the same file.
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>
using namespace Qt::StringLiterals;

namespace {

constexpr int FolderCount = 1000;
constexpr int FilesPerFolder = 100;
constexpr int FileCount = FolderCount * FilesPerFolder;

/// A project file of about 7 MB in a temporary directory.
struct Sample
{
    QTemporaryDir directory;
    QString fileName = directory.filePath(u"large.vnp"_s);
    QByteArray bytes;

    Sample()
    {
        Project project(u"large"_s, directory.path());
        project.properties()->addConfiguration(u"Default"_s);
        project.setCurrentConfiguration(u"Default"_s);
        for (int i = 0; i < FolderCount; ++i) {
            auto *folder = new ProjectFolder(u"Component %1"_s.arg(i));
            project.addFolder(folder, false);
            for (int j = 0; j < FilesPerFolder; ++j) {
                const QString name = u"source_file_%1_%2.c"_s.arg(i).arg(j);
                folder->addFile(new ProjectFile(name, u"source/components/component_%1/%2"_s.arg(i).arg(name)));
            }
        }
        bytes = project.toXml().toUtf8();
        QFile file(fileName);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("The sample cannot be written.");
    }
};

const Sample &sample()
{
    static const Sample theSample;
    return theSample;
}

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

qint64 bareReadNanoseconds()
{
    QElapsedTimer timer;
    timer.start();
    QFile file(sample().fileName);
    require(file.open(QIODevice::ReadOnly), "The sample cannot be read.");
    QXmlStreamReader xml(file.readAll());
    while (!xml.atEnd())
        benchmark::DoNotOptimize(xml.readNext());
    return timer.nsecsElapsed();
}

size_t allocated()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// The memory of the paths of all files, which include the names.
double stringBytesPerFile(const Project &project)
{
    const QList<ProjectFile *> files = project.files(QString(), nullptr);
    std::vector<QString> copies;
    copies.reserve(size_t(files.size()));
    const size_t before = allocated();
    for (const ProjectFile *file : files)
        copies.emplace_back(file->path().constData(), file->path().size());
    return double(allocated() - before) / FileCount;
}

void load(benchmark::State &state)
{
    Project checked({}, {});
    require(checked.load(sample().fileName), "The sample does not load.");
    require(checked.files(QString(), nullptr).size() == FileCount, "Files are missing.");
    require(checked.toXml().toUtf8() == sample().bytes, "The loaded sample differs.");

    qint64 bare = 0;
    qint64 loading = 0;
    double memory = 0;
    for ([[maybe_unused]] auto _ : state) {
        bare += bareReadNanoseconds();
        const size_t before = allocated();
        Project project({}, {});
        QElapsedTimer timer;
        timer.start();
        project.load(sample().fileName);
        const qint64 elapsed = timer.nsecsElapsed();
        loading += elapsed;
        memory = double(allocated() - before) / FileCount;
        state.SetIterationTime(double(elapsed) * 1e-9);
    }
    state.counters["times_bare_pass"] = double(loading) / double(bare);
    state.counters["bytes_per_file"] = memory;
    state.counters["beyond_strings"] = memory - stringBytesPerFile(checked);
    state.SetBytesProcessed(int64_t(state.iterations()) * sample().bytes.size());
}
BENCHMARK(load)->UseManualTime()->Unit(benchmark::kMillisecond);

void save(benchmark::State &state)
{
    Project project({}, {});
    require(project.load(sample().fileName), "The sample does not load.");
    qint64 bare = 0;
    qint64 saving = 0;
    for ([[maybe_unused]] auto _ : state) {
        bare += bareReadNanoseconds();
        QElapsedTimer timer;
        timer.start();
        require(project.save(), "The sample cannot be saved.");
        const qint64 elapsed = timer.nsecsElapsed();
        saving += elapsed;
        state.SetIterationTime(double(elapsed) * 1e-9);
    }
    QFile file(sample().fileName);
    require(file.open(QIODevice::ReadOnly) && file.readAll() == sample().bytes, "The sample was saved differently.");
    state.counters["times_bare_pass"] = double(saving) / double(bare);
    state.SetBytesProcessed(int64_t(state.iterations()) * sample().bytes.size());
}
BENCHMARK(save)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
