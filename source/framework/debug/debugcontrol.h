#pragma once
#include "activitystate.h"
#include "debugoptions.h"
#include "executionstatus.h"
#include "imultiprocessorsync.h"
#include <functional>
#include <QObject>
#include <QPointer>
#include <vector>
class BuildControl;
class DebugControlHost;
class Project;
class ProjectWorkspace;

/// The commands of the "Debug" menu, and what the execution environments report: a session from its start to its end,
/// with one processor for each project of the workspace.
///
/// The environments know their targets; this class only tells them what to do, follows their reports, and shows where
/// their programs stand. Message boxes, builds and plug-ins run the event loop, so workspace and projects may be gone
/// after each of them.
class DebugControl : public QObject
{
    Q_OBJECT
public:
    /// What updateDebugWindows() brings up to date.
    enum Part { DataWindows = 1, RegisterWindow = 2, NextStatement = 4, AllParts = 7 };

    /// Both arguments outlive this object.
    DebugControl(DebugControlHost &host, BuildControl &build, QObject *parent = nullptr);
    ~DebugControl() override;

    [[nodiscard]] DebugOptions &options() { return m_options; }
    /// To be called before the program's state becomes @p next.
    void enterState(ActivityState next);
    void updateDebugWindows(int parts); ///< A set of Part.
    void refreshBreakpointMarkers();
    void refreshExecutionMarker();
    [[nodiscard]] QString breakpointToolTip(const QString &file, int line) const;
    /// Breakpoints at a line, counted from 1, of the document in front: none, enabled, disabled, and none again.
    void toggleBreakpoint(int line);
    /// Forgets what environments have reported that belong to no project any more, and closes their disassemblies.
    void forgetEnvironments();

public Q_SLOTS:
    void debugRun();
    void debugAttach();
    void debugRunToCursor();
    void debugStepOver();
    void debugStepInto();
    void debugPause(); ///< The state follows the report of the environment; so it does for debugWakeup().
    void debugStop();
    void debugRestart();
    void debugWakeup();
    void debugShowNext();
    void debugBreakpoints();
    void debugToggleBreakpoint();
    void debugViewDisassembly();

    void programStatusChanged(IExecutionEnvironment::ProgramStatus status, IExecutionEnvironment *environment);
    void statusInfo(const QString &text, int position, IExecutionEnvironment *environment);
    void breakpointsChanged();
    void currentProjectChanged();
    void fileOpened(); ///< A document came to the front, or was loaded anew.

Q_SIGNALS:
    void pausedChanged(bool paused); ///< Also when it stays as it was.
    void updateRegisterWindow();     ///< What is shown of registers is out of date, if it is visible.
    void updateDataWindows();        ///< The same for peripherals, watches and memory.

private:
    struct StatusText
    {
        QString text;
        int position = 0;
    };
    using Environment = InterfacePtr<IExecutionEnvironment>;
    using Operation = void (IExecutionEnvironment::*)();
    using Step = void (IExecutionEnvironment::*)(const QString &);
    /// An operation on one processor, and on all of them at once.
    struct RunControl
    {
        DebugEvent event;
        const char *name;
        Operation operation;
        IMultiProcessorSync::Operation syncBit;
        void (IMultiProcessorSync::*sync)();
    };
    static const RunControl Run, Pause, Restart, Wakeup;

    bool startDebugSession(bool attachOnly);
    [[nodiscard]] bool prepareSession();
    [[nodiscard]] bool isUpToDate() const;
    [[nodiscard]] bool offerRebuild();
    [[nodiscard]] bool startProjects(bool attachOnly);
    [[nodiscard]] bool startProject(Project *project, bool attachOnly);
    [[nodiscard]] bool buildForDebug(const Project *project);
    void waitForBuild() const;

    [[nodiscard]] DebugAction resolve(DebugEvent event);
    /// False if the user was asked and gave no processor, or ended the session instead.
    bool control(const RunControl &what);
    void carryOut(const RunControl &what, DebugAction action) const;
    [[nodiscard]] bool carryOutTogether(const RunControl &what) const;
    void step(const char *name, Step step);

    void showNextStatement();
    [[nodiscard]] bool goToLocation();
    [[nodiscard]] bool openSource(const QString &file);
    void closeOrphanedDisassemblies();
    void reactToBreakpoint(IExecutionEnvironment::ProgramStatus status, IExecutionEnvironment *environment);
    void switchProject(IExecutionEnvironment *environment);
    [[nodiscard]] Project *projectOfDocument(const QString &file) const;

    [[nodiscard]] bool isDebugging() const;
    [[nodiscard]] QPointer<Project> currentProject() const; ///< Null if there is none.
    [[nodiscard]] Environment currentEnvironment() const;   ///< Null if there is none.
    [[nodiscard]] QList<QPointer<Project>> projects() const;
    [[nodiscard]] std::vector<Environment> environments() const;
    [[nodiscard]] QString currentFile() const; ///< The document in front, as the current environment names it.
    void inform(const QString &text) const;

    DebugControlHost &m_host;
    BuildControl &m_build;
    DebugOptions m_options;
    QMap<uint, StatusText> m_statusByEnvironment; ///< by environmentKey(), as the next one
    QMap<uint, IExecutionEnvironment::ProgramStatus> m_programStatusByEnvironment;
};
