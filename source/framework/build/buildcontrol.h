#pragma once
#include <functional>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
class Activity;
class IBuildEnvironment;
class Project;
class QAction;
class WindowServices;

/// The commands of the "Build" menu: a build from the command to buildFinished(). The build environments of projects do
/// the work, one build at a time; while it runs the program is in its building state.
class BuildControl : public QObject
{
    Q_OBJECT
public:
    /// Both arguments outlive this object.
    BuildControl(Activity &activity, WindowServices &window, QObject *parent = nullptr);
    ~BuildControl() override;

    [[nodiscard]] QString currentFile() const { return m_currentFile; }    ///< What the compile command acts on.
    [[nodiscard]] bool buildSucceeded() const { return m_buildSucceeded; } ///< The result of the last build.
    [[nodiscard]] bool buildStopped() const { return m_buildStopped; }     ///< The user stopped the last build.
    void clearBuildStopped() { m_buildStopped = false; }
    /// Starts the work that the build environment of @p project, which may be null, does before each debug session.
    /// Returns false, and does nothing, if it does not offer any.
    bool buildForDebug(const Project *project);

public Q_SLOTS:
    void buildCompileFile();
    void buildBuild();
    void buildRebuild();
    void buildClean();
    // These act on the project that is selected in the navigator, while that has the keyboard focus.
    void buildBuildAlt();
    void buildRebuildAlt();
    void buildCleanAlt();
    void buildStopBuild(); ///< The building state still lasts until buildFinished().
    void buildBatchBuild();
    void buildAllProjects(); ///< One after the other, in the order of the workspace.
    void buildConfigurationsNew();
    void buildConfigurationsEdit();
    void projectRepopulate();
    void executeExtensionCommand(int index); ///< Of the current project's build environment.

    void setCurrentFile(const QString &path); ///< Absolute or as a project has it; empty for none.
    void setViewedFile(const QString &path);  ///< Another view is in front; its file becomes the current one.
    /// The view in front was saved as @p path; this becomes the current file, unless another one was chosen.
    void renameViewedFile(const QString &path);

    void buildFinished(bool success);
    void xmlFeedback(const QString &xml); ///< Replaces the contents of the current project.
    /// Replaces the contents of @p project. A text that cannot be read is reported on the page "Build".
    void replaceContents(const QString &xml, Project *project);

Q_SIGNALS:
    void compileAvailable(bool available);

private:
    enum class Work { Build, Rebuild, Clean };

    void refreshCompileAction();
    [[nodiscard]] bool isBusy() const; ///< A build runs; a line on the page "Build" says so.
    void projectRemoving(const Project *project);
    void forgetWork();
    void runCurrent(Work work);
    void runSelected(Work work);
    void run(Work work, Project *project);
    void start(const Project *project, const std::function<bool(IBuildEnvironment *)> &work);
    [[nodiscard]] bool saveForCompile(Project *project) const;
    void prepareOutput(const Project *project) const;
    void displayBuildPage() const;
    void setLookupPattern(const Project *project) const;
    void showProgress(const QString &line);
    void startTime();
    void showOutcome(bool success);
    void leaveBuilding();
    [[nodiscard]] bool buildNext(bool success);
    void buildOne(const Project *project);
    [[nodiscard]] bool canCompile() const;
    [[nodiscard]] Project *expectProject() const; ///< The current one; null, with a warning, if there is none.

    Activity &m_activity;
    WindowServices &m_window;
    QPointer<QAction> m_compileAction; ///< its text names the current file; null if the program has none
    QString m_compileMenuText;         ///< "%1" stands for the file
    QString m_currentFile;
    QString m_viewedFile;    ///< that of the view in front
    bool m_forDebug = false; ///< the build belongs to the start of a session
    bool m_hasSteps = false; ///< the build has reported one
    QElapsedTimer m_time;    ///< since the start of the work that is shown in the status bar; invalid if there is none
    QPointer<const Project> m_built;    ///< its environment works, or has worked last
    QList<QPointer<Project>> m_waiting; ///< to be built next, by buildAllProjects()
    bool m_othersSucceeded = true;      ///< those that buildAllProjects() has built already
    bool m_buildSucceeded = false;
    bool m_buildStopped = false;
    bool m_stopRequested = false; ///< the work that is timed was stopped; cleaning and compiling keep m_buildStopped
};
