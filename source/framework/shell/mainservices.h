#pragma once
#include "editorhost.h"
#include "scripthost.h"
struct WindowParts;

/// The main window as its commands, its docks, scripts and text editors see it.
class MainServices : public ScriptHost, public EditorHost
{
public:
    /// @p parts outlives this object; they need not be set up yet.
    explicit MainServices(WindowParts &parts) : m_parts(parts) {}

    [[nodiscard]] QWidget *dialogParent() override;
    [[nodiscard]] Workspace *workspace() const override;
    [[nodiscard]] ViewManager *viewManager() const override;
    [[nodiscard]] Navigator *navigator() const override;
    [[nodiscard]] OutputWindow *outputWindow() const override;
    [[nodiscard]] int currentLine() const override;
    [[nodiscard]] QAction *action(const QString &name) const override;
    [[nodiscard]] QIcon icon(const QString &name) const override;
    [[nodiscard]] ScriptDirectories scriptDirectories() const override;
    [[nodiscard]] MacroManager &macros() override;
    [[nodiscard]] QSettings &settings() const override;
    [[nodiscard]] LastDirectories &directories() override;
    [[nodiscard]] QString sourceFilter() const override;
    bool openFile(const QString &path, bool addToRecent) override;
    bool fileSaveAll() override;
    void checkFileChanges() override;
    [[nodiscard]] DockWindow *addDock(const QString &objectName, const QString &caption,
                                      Qt::DockWidgetArea area) override;
    void saveDockLayout() override;
    void restoreDockLayout() override;
    void showOutputDock() override;
    void showMessage(const QString &text, int milliseconds) override;
    void replaceMessage(const QString &present, const QString &text) override;
    void showStatusInfo(const QString &text, int position) override;
    [[nodiscard]] IPluginObject *createPlugin(const QString &feature) const override;
    void runPyFile(const QString &path) override;
    void fireEvent(const QString &name) override;
    [[nodiscard]] EventHandlers &eventHandlers() override;
    [[nodiscard]] PythonOutputPanel *pythonOutput() const override;
    bool replaceWorkspace(const QString &path) override;
    bool closeOpenWorkspace() override;
    bool mayOverwriteNewer(const QString &path) override;
    void build(bool rebuild) override;
    void debugStop() override;
    void debugRestart() override;
    void debugAttach() override;
    void updateDebugWindows(int parts) override;

    [[nodiscard]] QString markerToolTip(const QString &filename, int line) override;
    [[nodiscard]] QAction *sharedAction(const QString &name) override;
    [[nodiscard]] QPixmap picture(const QString &name) override;

private:
    WindowParts &m_parts;
};
