#pragma once
#include "iexecutionenvironment.h"
#include "iprogressivestart.h"
#include <QObject>
#include <vector>
class Activity;
class BuildControl;
class ProcessorReports;
class Project;
class WindowServices;

/// The start of a debug session: save, offer to build, then start the environment of each project.
///
/// Message boxes, builds and plug-ins run the event loop, so workspace and projects may be gone after each of them.
class SessionStart : public QObject
{
    Q_OBJECT
public:
    /// All arguments outlive this object.
    SessionStart(Activity &activity, WindowServices &window, BuildControl &build, const ProcessorReports &reports,
                 QObject *parent = nullptr);

    /// Starts a session if the state is idle; @p attachOnly attaches to running targets. Returns whether there is a
    /// session now.
    bool start(bool attachOnly);
    [[nodiscard]] bool isStarting() const { return m_isStarting; } ///< start() has not returned yet.
    /// Whether a processor is starting in the background, which end() cancels.
    [[nodiscard]] bool isInBackground() const { return m_background != nullptr; }
    /// Whether commands may reach @p environment: in a session that is still starting, those that have been started.
    [[nodiscard]] bool mayOperate(const IExecutionEnvironment *environment) const;
    /// Ends the start in whose event loops it is called: no further processor is started, and start() changes nothing
    /// more. The caller stops the environments.
    void end();
    /// If the session is still starting, sets the state that the environment of the current project has reported.
    void adoptReportedState();
    /// The same with the status that it returns, for a session whose environments have not reported any. Commands of
    /// the user are possible then.
    void adoptQueriedState();

private:
    [[nodiscard]] bool prepare();
    [[nodiscard]] bool isUpToDate() const;
    [[nodiscard]] bool offerRebuild();
    [[nodiscard]] bool startProjects(bool attachOnly);
    [[nodiscard]] bool startProject(Project *project, bool attachOnly);
    [[nodiscard]] bool startEnvironment(const InterfacePtr<IExecutionEnvironment> &environment, bool attachOnly);
    [[nodiscard]] bool startInBackground(const InterfacePtr<IExecutionEnvironment> &environment, bool attachOnly);
    void showProgress(const QString &step, int percent);
    [[nodiscard]] bool isOpen(const IExecutionEnvironment *environment) const;
    void stopStarted();
    void endWithWorkspace();
    [[nodiscard]] bool buildForDebug(const Project *project);
    void waitForBuild() const;

    Activity &m_activity;
    WindowServices &m_window;
    BuildControl &m_build;
    const ProcessorReports &m_reports;
    bool m_isStarting = false;
    bool m_cancelled = false;                                   ///< the user has cancelled a start in the background
    bool m_ended = false;                                       ///< by end()
    InterfacePtr<IExecutionEnvironment> m_startingOne;          ///< while it starts
    InterfacePtr<IProgressiveStart> m_background;               ///< the same, if it starts in the background
    std::vector<InterfacePtr<IExecutionEnvironment>> m_started; ///< while the projects are started, one after the other
};
