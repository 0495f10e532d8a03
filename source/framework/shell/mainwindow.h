#pragma once
#include "availabilitywindow.h"
#include <memory>
class Activity;
class ObjectModel;
class OutputWindow;
class ProjectFile;
class ProjectWorkspace;
class SessionKeeper;
class View;
class ViewManager;
class Workspace;
struct WindowParts;

/// The main window. The actions of the user interface file call its slots; each slot calls the class that implements
/// the command.
class MainWindow : public AvailabilityWindow
{
    Q_OBJECT
    Q_MOC_INCLUDE("projectfile.h")
    Q_MOC_INCLUDE("view.h")
public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Opens a file; a relative path is relative to the current project's directory. Returns false if that fails.
    bool openFile(const QString &path, bool addToRecent);
    /// Opens the project's workspace, which is created if there is none. Returns false if that fails.
    bool openProject(const QString &path, bool addToRecent);
    /// Returns false also if one of its projects could not be loaded; the workspace is open then.
    bool openWorkspace(const QString &path, bool addToRecent);
    /// False if the user refused, or if a document cannot be closed; in the latter case the workspace is closed.
    bool closeWorkspace();

    void runScriptsUnasked(); ///< Scripts of workspaces run without a question.
    /// Opens what the command line names and the files of the last run, and offers to recover unsaved texts.
    void continueLastRun(const QStringList &named = {});

    [[nodiscard]] Activity &activity() const;
    [[nodiscard]] ProjectWorkspace *projectWorkspace() const; ///< Null while no workspace is open.
    [[nodiscard]] SessionKeeper &sessions() const;
    [[nodiscard]] Workspace *workspace() const;
    [[nodiscard]] ViewManager *viewManager() const;
    [[nodiscard]] OutputWindow *outputWindow() const;
    [[nodiscard]] ObjectModel &objectModel() const;
    [[nodiscard]] QList<QWidget *> dockWindows() const; ///< Tool bars in the order of the UI file, then dock windows.

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
    // Edit and view
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
    void viewGotoLine();
    void viewNavigator(bool);
    void viewOutput(bool);
    // Project and build
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
    // Tools and windows
    void toolsMacroNew();
    void toolsMacroEdit();
    void toolsCustomise();
    void toolsOptions();
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
    /// Opens the file and marks the line. Lines and columns count from 1; column 0 is the start of the line.
    void lookupSource(const QString &file, int line, int column = 0);
    void runPyFile(const QString &file);
    void openHelp(const QString &file);
    void fileSelected(const QString &path); ///< The file selected in the project tree.
    void displayFileProperties(ProjectFile *file);
    void viewActivated(View *view);
    void cursorPositionChanged(int line, int column); ///< Both count from 0.
    void find(const QString &text, bool matchCase, bool matchWord, bool forward, bool startAtCursor);
    void searchBoxFind(const QString &text);
    void searchBoxFindAgain(const QString &text);

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    std::unique_ptr<WindowParts> m_parts;
};
