#pragma once
#include "activitystate.h"
#include "dynamicmenus.h"
#include "recentfilelist.h"
#include "uiconfig.h"
#include "windowgeometry.h"
#include <QMainWindow>
class Project;
class ProjectWorkspace;
class QComboBox;
class QLabel;

/// The main window: a switchboard. Its slots are what the UI file's actions call, its signals tell them what is
/// possible now; the work behind a slot belongs to the class that owns the subject.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Opens the project's workspace, which is made if there is none. False if that fails.
    bool openProject(const QString &path, bool addToRecent);
    bool openWorkspace(const QString &path, bool addToRecent);
    /// Starts the automation server on @p port of this machine.
    void startServer(quint16 port);

    [[nodiscard]] ActivityState state() const { return m_state; }
    void setState(ActivityState state);

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
    bool fileSaveAll();
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

    void searchBoxFind(const QString &text);
    void searchBoxFindAgain(const QString &text);
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
    void setupStatusBar();
    void setupCentralArea();
    void setupActions();
    void setupToolbars();
    void setupMenus();
    void setupTitle();
    void addSearchBox(ToolBar *bar);
    void addProjectDropdown(ToolBar *bar);
    void fillViewToolbarsMenu(PopupMenu *menu);
    void updateWhenOpened(const QString &menu, void (MainWindow::*update)());
    void setActionVisible(const QString &name, bool visible);
    void setActionEnabled(const QString &name, bool enabled);

    /// Null while no workspace is open or it has no project.
    [[nodiscard]] Project *currentProject() const;
    [[nodiscard]] ActivityContext activityContext() const;
    [[nodiscard]] bool canCompileCurrentFile() const;

    void emitNothingAvailable();
    void emitActivity(const ActivityAvailability &available);
    void refreshCompileAction();
    void refreshCaption();

    UiConfig m_ui;
    std::unique_ptr<ProjectWorkspace> m_projectWorkspace; ///< null while no workspace is open
    QString m_caption;
    QString m_compileMenuText;
    QString m_currentFile; ///< what the compile command acts on
    ActivityState m_state = StateIdle;
    NormalGeometry m_normalGeometry;
    RecentFileList m_recentFiles;
    RecentFileList m_recentWorkspaces;
    QList<QLabel *> m_statusLabels; ///< what plug-ins have to say, hidden until they do
    QLabel *m_cursorLabel = nullptr;
    QComboBox *m_projectDropdown = nullptr;     ///< null if no tool bar has its place
    QAction *m_projectDropdownAction = nullptr; ///< shows and hides it
};
