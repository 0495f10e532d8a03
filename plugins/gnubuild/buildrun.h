#pragma once
#include "builddescription.h"
#include "diagnostics.h"
#include "sizereport.h"
#include "toolprocess.h"
#include <functional>
#include <QPointer>

class GnuProject;

/// The work of one build command: steps that run one after the other in the background, each for one configuration of a
/// project. After a failed step, the further steps of its configuration are skipped.
class BuildRun : public QObject
{
    Q_OBJECT
public:
    explicit BuildRun(QObject *parent = nullptr);

    /// Builds the libraries that @p project uses, then the project, from scratch if @p rebuild.
    void addBuild(GnuProject *project, const QString &configuration, bool rebuild);
    void addClean(GnuProject *project, const QString &configuration);
    /// Compiles @p file, absolute or relative to the project, even if its object is up to date.
    void addCompile(GnuProject *project, const QString &configuration, const QString &file);
    void start(); ///< Runs the steps. finished() follows in any case, after this call.
    void stop();
    [[nodiscard]] bool isRunning() const { return m_running; }

Q_SIGNALS:
    void line(const QString &text); ///< Without its line end.
    void finished(bool success);

private:
    enum class Outcome { Run, Skip, Fail };
    /// Shared by the steps of one configuration.
    struct Work
    {
        QPointer<GnuProject> project;
        QString configuration;
        BuildDescription description;
        QByteArray ninjaFile;
        bool failed = false;
        bool collecting = false; ///< the output of the running program goes to @p collected
        QStringList collected;
        std::shared_ptr<Work> needed; ///< must succeed before this starts
    };
    using WorkPtr = std::shared_ptr<Work>;
    using Prepare = Outcome (BuildRun::*)(Work &work, ToolProcess::Command &command);
    struct Step
    {
        WorkPtr work;
        std::function<Outcome(ToolProcess::Command &command)> prepare;
    };

    static WorkPtr newWork(GnuProject *project, const QString &configuration);
    WorkPtr addOneBuild(const WorkPtr &work, bool rebuild);
    void addStep(const WorkPtr &work, Prepare prepare);
    void nextStep();
    void stepEnded(bool success);
    void finish();
    void showLines(const QStringList &lines);
    void showLine(const QString &text);

    Outcome describe(Work &work, ToolProcess::Command &command);
    Outcome preBuild(Work &work, ToolProcess::Command &command);
    Outcome listOutputs(Work &work, ToolProcess::Command &command);
    Outcome listStale(Work &work, ToolProcess::Command &command);
    Outcome removeListed(Work &work, ToolProcess::Command &command);
    Outcome makeAll(Work &work, ToolProcess::Command &command);
    Outcome listSections(Work &work, ToolProcess::Command &command);
    Outcome showUsage(Work &work, ToolProcess::Command &command);
    Outcome makeObject(Work &work, const QString &file, ToolProcess::Command &command);
    bool writeFiles(const Work &work);

    ToolProcess m_process;
    QList<Step> m_steps;
    WorkPtr m_work; ///< of the current step
    Diagnostics m_diagnostics;
    QStringList m_linked; ///< the outputs that this run has linked
    bool m_running = false;
    bool m_stopped = false;
    bool m_success = true;
};

/// The command that lists the sections of the program.
[[nodiscard]] ToolProcess::Command sectionsCommand(const BuildDescription &description);

/// The memory regions of the linker script, from the map that the linker has written.
[[nodiscard]] QList<MemorySize> readRegionsOf(const BuildDescription &description);

/// The command that runs ninja for @p description, with further arguments.
[[nodiscard]] ToolProcess::Command ninjaCommand(const BuildDescription &description, const QStringList &arguments);
