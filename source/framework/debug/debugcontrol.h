#pragma once
#include "activitystate.h"
#include "breakpoints.h"
#include "executionstatus.h"
#include "nextstatement.h"
#include "processorreports.h"
#include "runcontrol.h"
#include "sessionstart.h"
#include <utility>
class BuildControl;

/// The commands of the "Debug" menu, and what the execution environments report: a session from its start to its end,
/// with one processor for each project of the workspace. Each subject has a class of its own; this one calls them and
/// reacts to reports and changes of state.
class DebugControl : public QObject
{
    Q_OBJECT
public:
    /// The parts that updateDebugWindows() refreshes.
    enum Part { DataWindows = 1, RegisterWindow = 2, NextStatementPart = 4, AllParts = 7 };

    /// All arguments outlive this object. Sessions begin with a build, so that it needs the build control.
    DebugControl(Activity &activity, WindowServices &window, BuildControl &build, QObject *parent = nullptr);
    ~DebugControl() override;

    [[nodiscard]] DebugOptions &options() { return m_run.options(); }
    void refreshBreakpointMarkers() { m_breakpoints.refreshMarkers(); }
    [[nodiscard]] const BreakpointLines &breakpointLines() const { return m_breakpoints.lines(); }
    void refreshExecutionMarker() { m_nextStatement.refreshMarker(); }
    /// See Breakpoints::toolTip().
    [[nodiscard]] QString breakpointToolTip(const QString &file, int line) const
    {
        return m_breakpoints.toolTip(file, line);
    }
    void updateDebugWindows(int parts); ///< A set of Part.
    [[nodiscard]] const ProcessorReports &reports() const { return m_reports; }

public Q_SLOTS:
    void debugRun() { m_run.run(); }
    void debugAttach() { m_run.attach(); }
    void debugRunToCursor() { m_run.runToCursor(); }
    void debugStepOver() { m_run.stepOver(); }
    void debugStepInto() { m_run.stepInto(); }
    void debugPause() { m_run.pause(); }
    void debugStop() { m_run.stop(); }
    void debugRestart() { m_run.restart(); }
    void debugWakeup() { m_run.wakeUp(); }
    void runProcessor(Project *project) { m_run.runProcessor(project); }
    void pauseProcessor(Project *project) { m_run.pauseProcessor(project); }
    void runAllProcessors() { m_run.runAll(); }
    void pauseAllProcessors() { m_run.pauseAll(); }
    void debugShowNext();
    void debugSetNext() { m_nextStatement.setAtCursor(); }
    void debugBreakpoints() { m_breakpoints.edit(); }
    void debugToggleBreakpoint() { m_breakpoints.toggleAtCursor(); }
    void debugViewDisassembly() { m_nextStatement.viewDisassembly(); }
    void toggleBreakpoint(int line) { m_breakpoints.toggle(line); } ///< See Breakpoints::toggle().

    void programStatusChanged(IExecutionEnvironment::ProgramStatus status, IExecutionEnvironment *environment);
    void statusInfo(const QString &text, int position, IExecutionEnvironment *environment);
    void breakpointsChanged();
    /// The user has chosen another thread or function of a paused program.
    void showPlace(IExecutionEnvironment *environment);
    void memoryWritten() { m_nextStatement.refreshDisassemblies(); } ///< By the user, in a window.
    void fileOpened();                                               ///< A document came to the front, or was reloaded.

Q_SIGNALS:
    void updateRegisterWindow(); ///< Registers have changed.
    void updateDataWindows();    ///< The same for peripherals, watches and memory.
    void breakpointsReported();  ///< The breakpoints of an environment have changed.
    void processorReported();    ///< reports() has changed.

private:
    void enterState(ActivityState next);
    void keepReportsOfBuild(ActivityState state, ActivityState previous);
    void currentProjectChanged();
    void forgetEnvironments(const std::vector<InterfacePtr<IExecutionEnvironment>> &alive);
    void reactToBreakpoint(IExecutionEnvironment::ProgramStatus status, IExecutionEnvironment *environment);
    void switchProject(IExecutionEnvironment *environment);

    Activity &m_activity;
    WindowServices &m_window;
    ProcessorReports m_reports;
    std::pair<const IExecutionEnvironment *, int> m_reportsBeforeBuild{}; ///< of the current environment
    Breakpoints m_breakpoints;
    NextStatement m_nextStatement;
    SessionStart m_session;
    RunControl m_run;
};
