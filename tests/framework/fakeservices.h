#pragma once
#include "scriptdirectories.h"
#include "scripthost.h"
#include <memory>
#include <QString>

/// Window services that do nothing: tests override the functions that they check.
class FakeServices : public ScriptHost
{
public:
    virtual ~FakeServices() = default;

    QWidget *dialogParent() override { return nullptr; }
    Workspace *workspace() const override { return nullptr; }
    ViewManager *viewManager() const override { return nullptr; }
    Navigator *navigator() const override { return nullptr; }
    OutputWindow *outputWindow() const override { return nullptr; }
    int currentLine() const override { return 1; }
    QAction *action(const QString &) const override { return nullptr; }
    QIcon icon(const QString &) const override { return {}; }
    QSettings &settings() const override { qFatal("a test uses settings that it does not have"); }
    LastDirectories &directories() override { qFatal("a test uses directories that it does not have"); }
    QString sourceFilter() const override { return {}; }
    bool openFile(const QString &, bool) override { return false; }
    bool fileSaveAll() override { return true; }
    void checkFileChanges() override {}
    DockWindow *addDock(const QString &, const QString &, Qt::DockWidgetArea) override { return nullptr; }
    void saveDockLayout() override {}
    void restoreDockLayout() override {}
    void showOutputDock() override {}
    void showMessage(const QString &, int) override {}
    void showStatusInfo(const QString &, int) override {}
    IPluginObject *createPlugin(const QString &) const override { return nullptr; }
    void runPyFile(const QString &) override {}
    void fireEvent(const QString &) override {}
    MacroManager &macros() override { qFatal("a test uses macros that it does not have"); }
    ScriptDirectories scriptDirectories() const override { return {}; }
    EventHandlers &eventHandlers() override { qFatal("a test uses event handlers that it does not have"); }
    PythonOutputPanel *pythonOutput() const override { return nullptr; }
    bool replaceWorkspace(const QString &) override { return false; }
    bool closeOpenWorkspace() override { return true; }
    bool mayOverwriteNewer(const QString &) override { return true; }
    void build(bool) override {}
    void debugStop() override {}
    void debugRestart() override {}
    void debugAttach() override {}
    void updateDebugWindows(int) override {}
};
