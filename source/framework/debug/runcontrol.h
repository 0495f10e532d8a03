#pragma once
#include "debugoptions.h"
#include "iexecutionenvironment.h"
#include "imultiprocessorsync.h"
#include <QObject>
class Activity;
class ProcessorReports;
class Project;
class SessionStart;
class WindowServices;

/// Runs, steps, pauses, restarts and stops the processors of the workspace: the current one, or all of them.
class RunControl : public QObject
{
    Q_OBJECT
public:
    /// All arguments outlive this object.
    RunControl(Activity &activity, WindowServices &window, SessionStart &session, ProcessorReports &reports,
               QObject *parent = nullptr);

    [[nodiscard]] DebugOptions &options() { return m_options; }

    void run();
    void attach();
    void runToCursor();
    void stepOver();
    void stepInto();
    void pause(); ///< The state follows the report of the environment; so it does for wakeUp().
    void wakeUp();
    void restart();
    void stop();
    // The same without a question which processors are meant.
    void runProcessor(Project *project);
    void pauseProcessor(Project *project);
    void runAll();
    void pauseAll();
    void pauseOthers(const IExecutionEnvironment *environment); ///< All processors but this one.

private:
    using Environment = InterfacePtr<IExecutionEnvironment>;
    using Step = bool (*)(const Environment &environment, const QString &file);
    /// An operation on one processor, and on all of them at once.
    struct Command
    {
        DebugEvent event;
        bool (*operation)(const Environment &environment);
        IMultiProcessorSync::Operation syncBit;
        bool (*sync)(const InterfacePtr<IMultiProcessorSync> &leader);
    };
    static const Command Run, Pause, Restart, Wakeup;

    /// Those that commands may reach: not the ones that have not started yet.
    [[nodiscard]] std::vector<Environment> environments() const;
    [[nodiscard]] bool canStop() const;
    [[nodiscard]] DebugAction resolve(DebugEvent event);
    bool carryOut(const Command &command);
    void carryOut(const Command &command, DebugAction action) const;
    [[nodiscard]] bool carryOutTogether(const Command &command) const;
    void step(Step step);
    [[nodiscard]] bool isNotPaused(int reportsBefore) const;
    void endSession();
    void projectRemoving(const Project *project);

    Activity &m_activity;
    WindowServices &m_window;
    SessionStart &m_session;
    ProcessorReports &m_reports;
    DebugOptions m_options;
};
