#pragma once
#include "activitystate.h"
#include "recordedscript.h"
#include <functional>
#include <optional>
#include <QJsonObject>
#include <QMap>
#include <QObject>
#include <QPointer>
class Activity;
class Project;
class QAction;
class ScriptHost;

/// The command "Record Script": records what the user does as a Python function, which appears in an editor when
/// the recording is stopped.
///
/// Commands are recorded when they are triggered. Files, breakpoints, watches and the current project are compared with
/// what they were, so that it does not matter how the user has changed them; what the program itself changes when it
/// enters a state is not recorded.
class ScriptRecorder : public QObject
{
    Q_OBJECT
public:
    using Watches = std::function<QJsonObject()>; ///< see MultiWatchWindow::watches()

    /// The arguments outlive this object.
    ScriptRecorder(Activity &activity, ScriptHost &window, Watches watches, QObject *parent = nullptr);

    /// Call it before the command of @p action is carried out.
    void actionTriggered(const QAction &action);
    void note(); ///< Something may have changed: files, breakpoints.
    [[nodiscard]] int stateChanges() const { return m_stateChanges; }

private:
    using Breakpoints = QMap<std::pair<QString, int>, int>; ///< states by place

    void setRecording(bool recording);
    void finish();
    void showSource(const QString &workspace);
    void takeSnapshot();
    void skipProgramChanges();
    void add(const QString &statement);
    void addCommand(const QAction &action);
    void noteFile();
    void noteProject();
    void noteBreakpoints();
    void noteBreakpointsOf(const QString &processor, const Breakpoints &before, const Breakpoints &now);
    void noteWatches();
    void enterState(ActivityState state, ActivityState previous);
    void workspaceReady();
    void workspaceClosing();
    [[nodiscard]] QString frontFile() const;
    [[nodiscard]] QString folder() const; ///< of the workspace; empty while none is open
    [[nodiscard]] QString workspaceFile() const;
    [[nodiscard]] QStringList projectNames() const;
    [[nodiscard]] static Breakpoints breakpointsOf(const Project &project);

    Activity &m_activity;
    ScriptHost &m_window;
    const Watches m_watches;
    RecordedScript m_script;
    bool m_recording = false;
    bool m_entering = false; ///< a state is being entered
    int m_stateChanges = 0;
    std::optional<ActivityState> m_wait; ///< the state since the last statement, if it has changed
    QString m_workspace;                 ///< the one that was open at the start
    // As found at the last comparison
    QString m_file;
    QPointer<Project> m_project;
    QMap<QString, Breakpoints> m_breakpoints; ///< by the file of the project
    QJsonObject m_knownWatches;
};
