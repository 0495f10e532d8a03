#pragma once
#include "activitystate.h"
#include "buildcontrolhost.h"
#include "docklayout.h"
#include "dynamicmenus.h"
#include "lastdirectories.h"
#include "pluginbinderhost.h"
#include "projectcommands.h"
#include "recentfilelist.h"
#include "session.h"
#include "textformats.h"
#include "uiconfig.h"
#include "windowgeometry.h"
#include "windowhosts.h"
#include <QMainWindow>
#include <QPointer>
class BuildControl;
class DockWindow;
class EditCommands;
class FileChangeCheck;
class FileCommands;
class FindCommands;
class Navigator;
class OutputWindow;
class PluginBinder;
class Project;
class ProjectFile;
class ProjectWorkspace;
class QComboBox;
class QLabel;
class View;
class ViewManager;
class Workspace;
struct ScriptDirectories;

/// The main window: a switchboard. Its slots are what the UI file's actions call, its signals tell them what is
/// possible now; the work behind a slot belongs to the class that owns the subject.
class MainWindow : public QMainWindow, private ProjectCommandsHost, private PluginBinderHost, private BuildControlHost
{
    Q_OBJECT
    Q_MOC_INCLUDE("projectfile.h")
    Q_MOC_INCLUDE("view.h")
public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Opens a file; a relative path belongs to the current project's directory. False if that fails.
    bool openFile(const QString &path, bool addToRecent);
    /// Opens the project's workspace, which is made if there is none. False if that fails.
    bool openProject(const QString &path, bool addToRecent);
    /// False as well if one of its projects could not be loaded; the workspace is open then.
    bool openWorkspace(const QString &path, bool addToRecent);
    /// False if the user refused, or if a document did: then the workspace is gone all the same.
    bool closeWorkspace();
    /// Starts the automation server on @p port of this machine.
    void startServer(quint16 port);

    /// What was open is neither remembered nor opened again: the user has said what to open.
    void disableSessions() { m_sessionsKept = false; }
    /// Opens what was open when the program ended, and offers what a crash has left.
    void continueLastRun();

    [[nodiscard]] ActivityState state() const override { return m_state; }
    void setState(ActivityState state) override;

    [[nodiscard]] ProjectWorkspace *projectWorkspace() const
    {
        return m_projectWorkspace;
    } ///< Null while no workspace is open.
    [[nodiscard]] Workspace *workspace() const override { return m_workspace; }
    [[nodiscard]] ViewManager *viewManager() const { return m_viewManager; }
    [[nodiscard]] OutputWindow *outputWindow() const override { return m_outputWindow; }

    /// Tool bars in the order of the UI file, then dock windows in the order in which they were made.
    [[nodiscard]] QList<QWidget *> dockWindows() const;

public Q_SLOTS:
    // File
    void fileNew();
    void fileOpen();
    void fileClose();
    void fileCloseAll();
    void fileSave();
    void fileSaveAs();
    bool fileSaveAll() override;
    void filePrint();
    void fileExit();
    void fileProperties();
    void fileRevert();
    // Edit
    void editUndo();
    void editRedo();
    void editCut();
    void editCopy();
    void editPaste();
    void editRemove();
    void editInsertFile();
    void editComment();
    void editUncomment();
    void editIndent();
    void editUnindent();
    void editFind();
    void editReplace();
    void editFindInFiles();
    void editSelectAll();
    void editLookupNextLine();
    // View
    void viewGotoLine();
    void viewNavigator(bool);
    void viewOutput(bool);
    // Project
    void projectNew();
    void projectOpen();
    void projectRepopulate();
    void projectGenerateMakefile();
    void projectClose();
    void projectSave();
    void projectInsertFiles();
    void projectInsertFilesAlt();
    void projectInsertProject();
    void projectProperties();
    void projectPropertiesAlt();
    // Build
    void buildCompileFile();
    void buildBuild();
    void buildRebuild();
    void buildClean();
    void buildBuildAlt();
    void buildRebuildAlt();
    void buildCleanAlt();
    void buildStopBuild();
    void buildBatchBuild();
    void buildConfigurationsNew();
    void buildConfigurationsEdit();
    // Debug
    void debugRun();
    void debugAttach();
    void debugRunToCursor();
    void debugStepOver();
    void debugStepInto();
    void debugPause();
    void debugStop();
    void debugRestart();
    void debugWakeup();
    void debugShowNext();
    void debugBreakpoints();
    void debugToggleBreakpoint();
    void debugViewDisassembly();
    void debugToggleRegisterWindow(bool);
    void debugTogglePeripheralWindow(bool);
    void debugToggleWatchWindow(bool);
    void debugToggleMemoryWindow(bool);
    // Tools
    void toolsMacroNew();
    void toolsMacroEdit();
    void toolsCustomise();
    void toolsOptions();
    // Window
    void windowNew();
    void windowSplit();
    void windowClose();
    void windowCloseAll();
    void windowCascade();
    void windowTile();
    void windowNext();
    void windowPrev();
    // Help
    void helpSearch();
    void helpHome();
    void helpBack();
    void helpForward();
    void helpPrevious();
    void helpNext();
    void helpAbout();

    void openFile(const QString &path) { openFile(path, false); }
    /// Opens the file and marks the line, which counts from 1.
    void lookupSource(const QString &file, int line);
    /// Runs a Python file; a relative path belongs to the current project's directory.
    void runPyFile(const QString &file) override;
    void openHelp(const QString &file);
    /// The file selected in the project tree.
    void fileSelected(const QString &path);
    void displayFileProperties(ProjectFile *file);
    void viewActivated(View *view);
    void cursorPositionChanged(int line, int column); ///< both count from 0
    void find(const QString &text, bool matchCase, bool matchWord, bool forward, bool startAtCursor);
    void searchBoxFind(const QString &text);
    void searchBoxFindAgain(const QString &text);
    void workspaceChanged() override;
    void currentProjectChanged();
    void updateProjectUI() override;
    void projectDropdownChanged(int index);

Q_SIGNALS:
    void viewHasFocus(bool available);
    void textViewHasFocus(bool available);
    void textNavigationAvailable(bool available);
    void undoAvailable(bool available);
    void redoAvailable(bool available);
    void copyAvailable(bool available);
    void cutAvailable(bool available);
    void pasteAvailable(bool available);
    void projectOpenAvailable(bool available);
    void projectRepopulateAvailable(bool available);
    void projectEditingAvailable(bool available);
    void workspaceEditingAvailable(bool available);
    void compileAvailable(bool available);
    void buildAvailable(bool available);
    void projectBuilding(bool available);
    void runAvailable(bool available);
    void pauseAvailable(bool available);
    void stopAvailable(bool available);
    void restartAvailable(bool available);
    void startAvailable(bool available);
    void wakeupAvailable(bool available);
    void showNextAvailable(bool available);
    void backAvailable(bool available);
    void forwardAvailable(bool available);
    void previousAvailable(bool available);
    void nextAvailable(bool available);
    void attachAvailable(bool available);

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private Q_SLOTS:
    void updateViewMenu();
    void updateViewToolbarsMenu();
    void updateWindowMenu();
    void updateRecentFilesMenu();
    void updateRecentWorkspacesMenu();
    void updateConfigurationsMenu();
    void updateToolsMenu();
    void updateBuildMenu();
    void updateDebugMenu();
    void updateDebugWindowsMenu();

    void recentFileSelected(int index);
    void recentWorkspaceSelected(int index);
    void activateView(int index);
    void executeExternalTool(int index);
    void activateConfiguration(int index);
    void executeBuildExtensionCommand(int index);
    void executeDebugExtensionCommand(int index);
    void extensionDockWindowSelected(int index);

private:
    // For ProjectCommands
    void bindProjectPlugins(Project *project) override;
    void setProjectWorkspace(ProjectWorkspace *workspace) override { m_projectWorkspace = workspace; }
    void showWorkspace(ProjectWorkspace *workspace) override;
    void restoreFiles() override;
    void stopDebugging() override;
    bool closeAllViews() override;
    void workspaceClosed() override;
    void setRepopulateVisible(bool visible) override;
    [[nodiscard]] QString sourceFilter() const override;

    // For PluginBinder
    [[nodiscard]] IPluginObject *createPlugin(const QString &feature) const override;
    [[nodiscard]] QAction *action(const QString &name) const override { return m_ui.action(name); }
    [[nodiscard]] QWidget *dialogParent() override { return this; }
    void saveDockLayout() override { m_layout.save(m_state); }
    void restoreDockLayout() override { m_layout.restore(m_state); }
    [[nodiscard]] QDockWidget *addDockWindow(const QString &objectName) override;

    // For BuildControl
    [[nodiscard]] Navigator *navigator() const override { return m_navigator; }
    void showOutputDock() override;
    void checkFileChanges() override;

    void setupStatusBar();
    void setupWorkspace();
    void setupCommands();
    void setupDockWindows();
    DockWindow *addDock(const QString &objectName, const QString &caption, Qt::DockWidgetArea area, QWidget *content);
    DockWindow *addHiddenDock(const char *objectName, const QString &caption, Qt::DockWidgetArea area, bool newLine);
    void restoreLayout();
    /// The line of the disassembly that @p symbol stands for, 0 if it is unknown.
    [[nodiscard]] int lineOfSymbol(const QString &symbol) const;
    void setupActions();
    void setupToolbars();
    void setupMenus();
    void setupTitle();
    void addSearchBox(ToolBar *bar);
    void addProjectDropdown(ToolBar *bar);
    void fillViewToolbarsMenu(PopupMenu *menu);
    void updateWhenOpened(const QString &menu, void (MainWindow::*update)());

    /// Null while no workspace is open or it has no project.
    [[nodiscard]] Project *currentProject() const;
    [[nodiscard]] ActivityContext activityContext() const;
    [[nodiscard]] static ScriptDirectories scriptDirectories();

    void applyTextFormats();
    void followPalette();
    void keepSession(const QString &workspace, const Session &session);
    void saveSettings();
    void emitNothingAvailable();
    void emitActivity(const ActivityAvailability &available);
    void refreshCaption();

    UiConfig m_ui;
    LastDirectories m_directories;
    QStringList m_sourceExtensions; ///< those that plug-ins have added
    TreeWindowHost m_treeHost;
    EditorWindowHost m_editorHost;
    SessionStore m_sessions;
    bool m_sessionsKept = true;
    bool m_closing = false; ///< the views are closed already, so what was open is known already
    DockLayout m_layout;
    TextFormats m_textFormats;
    FormatTable m_formats; ///< what the editors paint with
    Workspace *m_workspace = nullptr;
    ViewManager *m_viewManager = nullptr;
    std::unique_ptr<FileChangeCheck> m_changeCheck;
    FileCommands *m_fileCommands = nullptr;
    EditCommands *m_editCommands = nullptr;
    BuildControl *m_buildControl = nullptr;
    PluginBinder *m_pluginBinder = nullptr;
    FindCommands *m_findCommands = nullptr;
    int m_currentLine = 1;                              ///< of the cursor, counted from 1
    int m_currentColumn = 1;                            ///< likewise
    std::unique_ptr<ProjectCommands> m_projectCommands; ///< null until all windows are there
    ProjectWorkspace *m_projectWorkspace = nullptr;     ///< theirs; null while no workspace is open
    QList<QPointer<DockWindow>> m_docks; ///< in the order in which they were made; plug-ins take theirs away
    DockWindow *m_navigatorDock = nullptr;
    DockWindow *m_outputDock = nullptr;
    DockWindow *m_registerDock = nullptr;
    DockWindow *m_peripheralDock = nullptr;
    DockWindow *m_watchDock = nullptr;
    DockWindow *m_memoryDock = nullptr;
    Navigator *m_navigator = nullptr;
    OutputWindow *m_outputWindow = nullptr;
    QString m_caption;
    ActivityState m_state = StateIdle;
    NormalGeometry m_normalGeometry;
    RecentFileList m_recentFiles;
    RecentFileList m_recentWorkspaces;
    QList<QLabel *> m_statusLabels; ///< what plug-ins have to say, hidden until they do
    QLabel *m_cursorLabel = nullptr;
    QComboBox *m_projectDropdown = nullptr;     ///< null if no tool bar has its place
    QAction *m_projectDropdownAction = nullptr; ///< shows and hides it
};
