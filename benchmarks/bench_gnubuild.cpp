// Builds with the GNU build environment. The peer is ninja called directly on the same files. Also the time to generate
// the file of a large project.
#include "gnubuild.h"
#include "iprojectimpl.h"
#include "ninjafile.h"
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "propertytable.h"
#include <benchmark/benchmark.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
using namespace Qt::StringLiterals;

namespace {

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

/// Waits for the end of a build.
class Events : public InterfaceObject<IBuildEvents>
{
public:
    QEventLoop loop;
    QString text;
    bool success = false;

    void buildFinished(bool ok) override
    {
        success = ok;
        loop.quit();
    }
    void feedback(const QString &line) override { text += line; }
    void xmlFeedback(const QString &) override {}
};

/// A project with @p count files in a temporary directory, a hundred per folder.
class Sample
{
public:
    explicit Sample(int count, bool onDisk = true) : m_project(u"sample"_s, m_directory.path()), m_count(count)
    {
        m_project.properties()->addConfiguration(u"Debug"_s);
        m_project.setCurrentConfiguration(u"Debug"_s);
        m_project.properties()->setProperty(PropertyKey::Includes, u"include"_s, u"Debug"_s);
        ProjectFolder *folder = nullptr;
        for (int i = 0; i < count; ++i) {
            if (i % 100 == 0)
                m_project.addFolder(folder = new ProjectFolder(u"Module %1"_s.arg(i / 100)), false);
            const QString name = u"file_%1.c"_s.arg(i);
            const QString path = u"source/modules/module_%1/%2"_s.arg(i / 100).arg(name);
            folder->addFile(new ProjectFile(name, path));
            if (onDisk)
                write(path, source(i));
        }
        write(u"include/common.h"_s,
              "#include <stdio.h>\n#include <stdlib.h>\n#include <string.h>\n#include <math.h>\n");
        environment->initialise(events.get(), {});
        environment->setProject(interface().get());
    }

    InterfacePtr<IProject> interface() { return queryInterface<IProject>(new IProjectImpl(&m_project)); }

    qint64 build()
    {
        QElapsedTimer timer;
        timer.start();
        events->text.clear();
        environment->build({u"Debug"_s}, false);
        events->loop.exec();
        const qint64 elapsed = timer.nsecsElapsed();
        require(events->success, qPrintable(events->text));
        return elapsed;
    }

    qint64 ninja(const QStringList &arguments = {}) const
    {
        QElapsedTimer timer;
        timer.start();
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setWorkingDirectory(m_directory.path());
        process.start(u"ninja"_s, QStringList{u"-f"_s, u"build/Debug/build.ninja"_s} + arguments);
        require(process.waitForFinished(-1) && process.exitCode() == 0, "ninja failed.");
        return timer.nsecsElapsed();
    }

    InterfacePtr<Events> events{new Events};

private:
    int helpers() const { return m_count > 100 ? 1 : 20; } ///< functions per file: few if there are many files

    QByteArray source(int number) const
    {
        QByteArray text = "#include \"common.h\"\n";
        for (int i = 0; i < helpers(); ++i) {
            text += "static int helper_" + QByteArray::number(i)
                    + "(int x) { char text[64]; for (int i = 0; i < x; ++i)"
                      " snprintf(text, sizeof text, \"%d %f\", i, i * 0.5); return (int)strlen(text); }\n";
        }
        text += "int function_" + QByteArray::number(number) + "(int x) { return 0";
        for (int i = 0; i < helpers(); ++i)
            text += " + helper_" + QByteArray::number(i) + "(x)";
        text += "; }\n";
        return number == 0 ? text + "int main(void) { return 0; }\n" : text;
    }

    void write(const QString &name, const QByteArray &text) const
    {
        const QString path = m_directory.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        require(file.open(QIODevice::WriteOnly) && file.write(text) == text.size(), "The sample cannot be written.");
    }

    QTemporaryDir m_directory;
    Project m_project;
    const int m_count;

public:
    InterfacePtr<GnuBuild> environment{new GnuBuild(toolChains().first(), std::make_shared<QList<GnuProject *>>())};
};

/// Measures both alternately, from the command to the end.
void compare(benchmark::State &state, Sample &sample, const std::function<void()> &prepare)
{
    qint64 ours = 0;
    qint64 byHand = 0;
    bool first = false;
    for ([[maybe_unused]] auto _ : state) {
        first = !first; // alternates, so that both profit equally from caches
        qint64 elapsed = 0;
        for (const bool isOurs : {first, !first}) {
            prepare();
            const qint64 time = isOurs ? sample.build() : sample.ninja();
            (isOurs ? ours : byHand) += time;
            elapsed = isOurs ? time : elapsed;
        }
        state.SetIterationTime(double(elapsed) * 1e-9);
    }
    state.counters["by_hand_ms"] = double(byHand) * 1e-6 / double(state.iterations());
    state.counters["times_by_hand"] = double(ours) / double(byHand);
    state.counters["ms_more"] = double(ours - byHand) * 1e-6 / double(state.iterations());
}

void fullBuild(benchmark::State &state)
{
    Sample sample(int(state.range(0)));
    sample.build();
    compare(state, sample, [&] { sample.ninja({u"-t"_s, u"clean"_s}); });
    require(sample.events->text.contains(u"Linking build/Debug/sample"_s), "The program was not linked.");
}
BENCHMARK(fullBuild)->Arg(60)->UseManualTime()->Iterations(6)->Unit(benchmark::kMillisecond);

void nothingToDo(benchmark::State &state)
{
    Sample sample(int(state.range(0)));
    sample.build();
    compare(state, sample, [] {});
    require(sample.events->text.contains(u"up to date"_s), "The build was not up to date.");
}
BENCHMARK(nothingToDo)->Arg(60)->Arg(2000)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

/// Generates the text for ninja. The peer reads the paths of all files.
void generate(benchmark::State &state)
{
    Sample sample(int(state.range(0)), false);
    const auto project = sample.interface();
    const ProjectReader reader(toolChains().first(), {});
    qint64 walk = 0;
    qint64 text = 0;
    QByteArray file;
    for ([[maybe_unused]] auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        benchmark::DoNotOptimize(ProjectReader::filePaths(project.get()));
        walk += timer.nsecsElapsed();
        timer.start();
        QStringList problems;
        const BuildDescription description = reader.read(project.get(), u"Debug"_s, problems);
        QElapsedTimer writing;
        writing.start();
        file = ninjaFile(description);
        text += writing.nsecsElapsed();
        state.SetIterationTime(double(timer.nsecsElapsed()) * 1e-9);
        require(problems.isEmpty(), "The sample has problems.");
    }
    require(file.count("\nbuild ") == state.range(0) + 1, "Files are missing.");
    state.counters["paths_ms"] = double(walk) * 1e-6 / double(state.iterations());
    state.counters["text_ms"] = double(text) * 1e-6 / double(state.iterations());
    state.counters["bytes"] = double(file.size());
}
BENCHMARK(generate)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
