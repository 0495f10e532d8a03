#pragma once
#include "activity.h"
#include "breakpointsdock.h"
#include "buildcontrol.h"
#include "debugcontrol.h"
#include "debugwindows.h"
#include "docklayout.h"
#include "editcommands.h"
#include "eventhandlers.h"
#include "filecommands.h"
#include "filefindcommands.h"
#include "findcommands.h"
#include "lastdirectories.h"
#include "livedock.h"
#include "mainservices.h"
#include "namedfiles.h"
#include "objectmodel.h"
#include "optionscommands.h"
#include "pluginbinder.h"
#include "processordock.h"
#include "projectcommands.h"
#include "scriptrecorder.h"
#include "sessionkeeper.h"
#include "statuslabels.h"
#include "storedbreakpoints.h"
#include "templatecommands.h"
#include "toolscommands.h"
#include "uiconfig.h"
#include "valuetooltips.h"
#include "viewmanager.h"
#include "windowformats.h"
#include "windowgeometry.h"
#include "windowmenus.h"
#include "workspace.h"
#include "zoomcommands.h"
#include <QPointer>
class ContextHelp;
class DockWindow;
class HelpCommands;
class MacroManager;
class MainWindow;
class MultiWatchWindow;
class Navigator;
class OutputWindow;
class PythonOutputPanel;

/// The debugger's windows about all projects together, and the values under the mouse pointer.
struct DebugViews
{
    std::unique_ptr<BreakpointsDock> breakpoints;
    std::unique_ptr<StoredBreakpoints> stored;
    std::unique_ptr<ProcessorDock> processors;
    std::unique_ptr<LiveDock> live;
    std::unique_ptr<ValueToolTips> toolTips;
};

/// The parts of the main window and their connections. Members are in the order of their creation; setUp() creates
/// those that are pointers, and none of them is null after that.
struct WindowParts
{
    explicit WindowParts(MainWindow &window);
    ~WindowParts();

    void setUp();
    void startConsole(); ///< Also runs "startup.py", which may use the whole window.

    DockWindow *addDock(const QString &objectName, const QString &caption, Qt::DockWidgetArea area);
    /// Tool bars in the order of the UI file, then dock windows in the order in which they were made.
    [[nodiscard]] QList<QWidget *> dockWindows() const;
    [[nodiscard]] QString caption() const; ///< Of the window, in the present state.

    MainWindow &window;
    bool ready = false; ///< the constructor of the window is done
    NormalGeometry normalGeometry;
    MainServices services;
    Activity activity;
    ObjectModel objectModel;
    EventHandlers events;
    UiConfig ui;
    LastDirectories directories;
    QStringList sourceExtensions; ///< those that plug-ins have added
    DockLayout layout;
    WindowFormats formats;
    StatusLabels status;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<ViewManager> viewManager;
    QString title;                     ///< the caption without a workspace
    QList<QPointer<DockWindow>> docks; ///< in the order in which they were made; plug-ins delete theirs
    std::unique_ptr<MacroManager> macros;
    DockWindow *navigatorDock = nullptr;
    DockWindow *outputDock = nullptr;
    Navigator *navigator = nullptr;
    OutputWindow *outputWindow = nullptr;
    PythonOutputPanel *pythonOutput = nullptr;
    std::unique_ptr<DebugWindows> debugWindows;
    std::unique_ptr<ScriptRecorder> recorder;
    std::unique_ptr<FileCommands> fileCommands;
    std::unique_ptr<EditCommands> editCommands;
    std::unique_ptr<FindCommands> findCommands;
    std::unique_ptr<FileFindCommands> fileFindCommands;
    std::unique_ptr<BuildControl> buildControl;
    std::unique_ptr<DebugControl> debugControl;
    DebugViews debugViews;
    std::unique_ptr<ProjectCommands> projectCommands;
    std::unique_ptr<TemplateCommands> templateCommands;
    std::unique_ptr<NamedFiles> namedFiles;
    std::unique_ptr<HelpCommands> helpCommands;
    std::unique_ptr<PluginBinder> pluginBinder;
    std::unique_ptr<ToolsCommands> toolsCommands;
    std::unique_ptr<OptionsCommands> optionsCommands;
    std::unique_ptr<ZoomCommands> zoomCommands;
    std::unique_ptr<ContextHelp> contextHelp;
    std::unique_ptr<SessionKeeper> sessions;
    std::unique_ptr<WindowMenus> menus;

private:
    void setUpWorkspace();
    void setUpToolBars();
    void setUpDocks();
    void setUpCommands();
    void connectViews() const;
    void connectOwnActions();
    void connectReports() const;
    void connectNavigator() const;
    void followState() const;
    void restoreLayout() const;
};
