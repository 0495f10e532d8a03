#pragma once
#include "projectfilecheck.h"
#include "recentfilelist.h"
#include "scripttrust.h"
#include <QObject>
class Activity;
class Project;
class ProjectWorkspace;
class WindowServices;

/// Whether a plug-in runs for a caller that still uses the workspace and the window. False while a modal dialog is
/// open: one that the program shows within such a call has callers that expect the workspace and the window to close
/// meanwhile.
[[nodiscard]] bool isUnderPluginCall();

/// Opens, closes and saves workspaces and projects.
class ProjectCommands : public QObject
{
    Q_OBJECT
public:
    /// Both arguments outlive this object.
    ProjectCommands(Activity &activity, WindowServices &window, QObject *parent = nullptr);

    /// Asks for a workspace or a project and opens it; the open workspace is closed.
    void open();
    void openRecent(int index);
    /// Opens the workspace next to a project file; creates it if it does not exist. If it cannot be written, the
    /// project is opened in a workspace without a file.
    bool openProject(const QString &path, bool addToRecent);
    /// Opens a workspace. False if it or one of its projects could not be loaded; in the latter case it is open. The
    /// status bar shows the progress and a failure.
    bool openWorkspace(const QString &path, bool addToRecent);
    /// Creates a workspace file with one project, and opens it like openWorkspace().
    bool createWorkspace(const QString &workspacePath, const QString &projectPath);
    /// Closes the open workspace, with the question about saving. Returns false if the user refused, or if a document
    /// cannot be closed; in the latter case the workspace is closed.
    bool closeWorkspace();

    /// Saves all projects and the workspace, modified or not.
    void save();
    /// Saves the modified projects and the workspace if it is modified, also over newer files. Returns false if
    /// something could not be saved.
    bool saveModified();
    void insertFiles(Project *project);
    /// Shows the properties of the file that is selected in the navigator; if none is, of the file in the current view.
    void showFileProperties();
    void insertProject();
    /// Adds the project in a file to the open workspace, which must not be null. One that is in the workspace already
    /// becomes the current one.
    void addProject(const QString &path);
    /// Offers to reload project and workspace files that other programs have changed.
    void checkFileChanges();

    void runScriptsUnasked() { m_trust.setUnattended(); } ///< No user is there to answer questions.
    /// Forgets whether the scripts of the open workspace are trusted.
    void forgetTrust();

    [[nodiscard]] const QStringList &recentWorkspaces() const { return m_recentWorkspaces.paths(); }
    void saveRecentWorkspaces() const { m_recentWorkspaces.save(); }

Q_SIGNALS:
    void recentWorkspacesChanged();
    void sessionEndRequested(); ///< The debug session has to end before the workspace is closed.

private:
    [[nodiscard]] bool offerToSave();
    bool show(std::unique_ptr<ProjectWorkspace> workspace, const QString &path, bool addToRecent);
    bool refuse(const QString &message);
    void runScripts();
    void rememberDirectories(const QString &path);
    void showProjectBeingOpened(const Project *project);
    void showOutcome();

    Activity &m_activity;
    WindowServices &m_window;
    RecentFileList m_recentWorkspaces;
    ScriptTrust m_trust;
    ProjectFileCheck m_fileCheck;
};
