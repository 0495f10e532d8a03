#include "windowparts.h"
#include "configurationdropdown.h"
#include "contexthelp.h"
#include "debugcontents.h"
#include "debugoffers.h"
#include "dockwindow.h"
#include "document.h"
#include "documentkinds.h"
#include "editavailability.h"
#include "extensioncommands.h"
#include "fileformatbutton.h"
#include "helpcommands.h"
#include "helpwidget.h"
#include "ideapplication.h"
#include "livewindow.h"
#include "macromanager.h"
#include "mainwindow.h"
#include "mdiviewmanager.h"
#include "multiwatchwindow.h"
#include "navigator.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "pictures.h"
#include "plugindocuments.h"
#include "project.h"
#include "projectdropdown.h"
#include "projectfile.h"
#include "projectworkspace.h"
#include "pythonoutputpanel.h"
#include "scriptdirectories.h"
#include "scriptreplay.h"
#include "searchbox.h"
#include "tabbedviewmanager.h"
#include "textdocument.h"
#include "toolbar.h"
#include "toolbarrows.h"
#include "uidocument.h"
#include <QAction>
#include <QJsonArray>
#include <QScreen>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {
IDEApplication *application()
{
    return IDEApplication::instance();
}

TemplateDirectories templateDirectories()
{
    const auto below = [](PathId id, const QString &folder) { return application()->path(id).filePath(folder); };
    return {.installed = below(PathPlugInRoot, u"templates"_s),
            .user = below(PathUserData, u"mytemplates"_s),
            .files = below(PathData, u"filetemplates"_s),
            .userFiles = below(PathUserData, u"filetemplates"_s)};
}

HelpFiles helpFiles()
{
    return {.directory = application()->path(PathHelp).path(),
            .userIndex = application()->path(PathUserData).filePath(u"help/index"_s)};
}

/// For the page of the keys.
QList<ShortcutCommand> commandsOfPlugins(const Activity &activity)
{
    QList<ShortcutCommand> result;
    for (const OfferedCommand &command : offeredCommands(activity)) {
        const QString menu = command.isBuild ? OptionsCommands::tr("Build") : OptionsCommands::tr("Debug");
        result.append({command.name, QString(command.text).remove(u'&').remove(u"..."_s), menu, {}});
    }
    return result;
}

/// Optional: no warning if it is missing.
QPixmap outputArtwork()
{
    const QString name = u"marketing_output.png"_s;
    const QString images = application()->path(PathPlugInRoot).filePath(u"images"_s);
    return findPicture(images, name).exists() ? application()->loadPixmap(name) : QPixmap();
}

MultiWatchWindow *watchesOf(const WindowParts &parts)
{
    return parts.debugWindows->dock(DebugWindows::Watches)->findChild<MultiWatchWindow *>();
}

void keepDebugWindows(const WindowParts &parts)
{
    parts.sessions->addPart(
        {u"watches"_s, [watches = watchesOf(parts)] { return watches->watches(); },
         [watches = watchesOf(parts)](const QJsonValue &value) { watches->setWatches(value.toObject()); }});
    LiveWindow *live = parts.debugViews.live->window();
    parts.sessions->addPart({u"live"_s, [live] { return live->stored(); },
                             [live](const QJsonValue &value) { live->restore(value.toObject()); }});
    StoredBreakpoints *breakpoints = parts.debugViews.stored.get();
    parts.sessions->addPart({u"breakpoints"_s, [breakpoints] { return breakpoints->value(); },
                             [breakpoints](const QJsonValue &value) { breakpoints->restore(value.toObject()); }});
    QObject::connect(breakpoints, &StoredBreakpoints::restored, parts.debugControl.get(),
                     &DebugControl::breakpointsChanged);
    QObject::connect(parts.sessions.get(), &SessionKeeper::filesRestored, parts.debugControl.get(),
                     &DebugControl::fileOpened);
    QObject::connect(breakpoints, &StoredBreakpoints::refused, parts.outputWindow->page(OutputWindow::Debug),
                     qOverload<const QString &>(&OutputPage::outputLine));
}

/// It is created before the commands and so receives a new state before them: they may open files then.
void setUpRecorder(WindowParts &parts)
{
    parts.recorder = std::make_unique<ScriptRecorder>(parts.activity, parts.services,
                                                      [watches = watchesOf(parts)] { return watches->watches(); });
    parts.ui.setObserver([&parts](const QAction &action) { parts.recorder->actionTriggered(action); });
}
} // namespace

WindowParts::WindowParts(MainWindow &window)
    : window(window)
    , services(*this)
    , objectModel(activity, services)
    , ui(&window, application()->path(PathConfig).filePath(uiConfigFileName),
         [](const QString &name) { return application()->loadIcon(name); })
    , directories(application()->settings(), application()->path(PathUserDocuments).path())
    , layout(&window, application()->settings(), [this] { return dockWindows(); })
    , formats(services)
    , status(window.statusBar())
{}

/// Deletes the views before the kinds of their documents, and both before the objects that they refer to.
WindowParts::~WindowParts()
{
    viewManager.reset();
    workspace.reset();
}

void WindowParts::setUp()
{
    setUpWorkspace();
    ui.setupActions();
    ui.setActionVisible(u"debugTogglePeripheralWindow"_s, false);
    ui.setActionVisible(u"projectRepopulate"_s, false);
    setUpToolBars();
    ui.setupMenus();
    ui.setActionEnabled(u"windowCascade"_s, viewManager->canCascade());
    ui.setActionEnabled(u"windowTile"_s, viewManager->canTile());
    title = ui.title();
    macros = std::make_unique<MacroManager>(ui.menu(u"toolMacroMenu"_s), window.findChild<ToolBar *>(u"macroToolbar"_s),
                                            [](const QString &name) { return application()->loadIcon(name); });
    setUpDocks();
    // The labels are updated before the commands receive the signal, the caption after them.
    QObject::connect(&activity, &Activity::stateEntered, &window, [this](ActivityState state, ActivityState previous) {
        if (state != previous && !isDebugState(activity.stateOfWork()))
            status.hideInfo();
    });
    setUpCommands();
    restoreLayout();
    formats.load();
    followState();
    viewManager->raise(); // each change of a text looks at all objects of the window in front of it
}

void WindowParts::setUpWorkspace()
{
    QSettings *settings = application()->settings();
    workspace = std::make_unique<Workspace>();
    workspace->setObjectName(u"workspace"_s);
    QObject::connect(workspace.get(), &Workspace::fileConverted, &window,
                     [this](TextDocument *document, const TextFileFormat &before) {
                         services.showMessage(conversionText(*document, before), 0);
                     });
    if (settings->value(u"Editor/WorkspaceStyle"_s, 0).toInt() == 0)
        viewManager = std::make_unique<TabbedViewManager>(&window);
    else
        viewManager = std::make_unique<MDIViewManager>(settings, &window);
    viewManager->setObjectName(u"viewManager"_s);
    viewManager->setBackgroundRole(QPalette::Mid);
    viewManager->setAutoFillBackground(true);
    workspace->setViewManager(viewManager.get());
    window.setCentralWidget(viewManager.get());
    connectViews();
    new EditAvailability(window, services);
    const PluginSource plugins{application()->plugins(),
                               [](const QString &feature) { return application()->createPlugin(feature); }};
    registerDocumentKinds(*workspace, {formats.table(), &services, stateDirectory().filePath(u"swap"_s)},
                          [&] { addPluginDocuments(plugins, workspace.get(), formats.table(), &sourceExtensions); });
    applyEditorSettings(*workspace, *settings);
}

void WindowParts::connectViews() const
{
    const ViewManager *views = viewManager.get();
    QObject::connect(views, &ViewManager::viewActivated, &window, &MainWindow::viewActivated);
    QObject::connect(views, &ViewManager::viewTitleChanged, &window, [this](View *view) { // modified or saved
        if (view != viewManager->currentView())
            return;
        Q_EMIT window.saveAvailable(view->document()->modified());
        buildControl->renameViewedFile(view->document()->filename());
    });
    QObject::connect(views, &ViewManager::cursorPositionChanged, &window, &MainWindow::cursorPositionChanged);
    QObject::connect(views, &ViewManager::backAvailable, &window, &MainWindow::backAvailable);
    QObject::connect(views, &ViewManager::forwardAvailable, &window, &MainWindow::forwardAvailable);
    QObject::connect(views, &ViewManager::nextAvailable, &window, &MainWindow::nextAvailable);
    QObject::connect(views, &ViewManager::previousAvailable, &window, &MainWindow::previousAvailable);
}

void WindowParts::setUpToolBars()
{
    ui.addCompanion(u"editFind"_s, [this](ToolBar *bar) {
        auto *box = new SearchBox(bar);
        QObject::connect(box, &SearchBox::find, &window, &MainWindow::searchBoxFind);
        QObject::connect(box, &SearchBox::findAgain, &window, &MainWindow::searchBoxFindAgain);
        QObject::connect(&window, &MainWindow::textNavigationAvailable, box, &QWidget::setEnabled);
        bar->addWidget(box);
    });
    ui.addCompanion(u"buildStopBuild"_s, [this](ToolBar *bar) { new ConfigurationDropdown(activity, bar); });
    ui.addCompanion(u"debugStepInto"_s, [this](ToolBar *bar) { new ProjectDropdown(activity, bar); });
    ui.setupToolbars();
    new ToolBarRows(&window);
}

// Docks

DockWindow *WindowParts::addDock(const QString &objectName, const QString &caption, Qt::DockWidgetArea area)
{
    auto *dock = new DockWindow(objectName, caption, &window);
    window.addDockWidget(area, dock);
    docks.removeAll(nullptr);
    docks.append(dock);
    return dock;
}

QList<QWidget *> WindowParts::dockWindows() const
{
    QList<QWidget *> windows;
    for (ToolBar *bar : ui.toolBars())
        windows.append(bar);
    for (const QPointer<DockWindow> &dock : docks) {
        if (dock)
            windows.append(dock);
    }
    return windows;
}

void WindowParts::setUpDocks()
{
    navigator = new Navigator(activity, services);
    navigator->setObjectName(u"navigator"_s);
    navigatorDock = addDock(u"navigatorDockWindow"_s, MainWindow::tr("Navigator"), Qt::LeftDockWidgetArea);
    navigatorDock->setWidget(navigator);
    outputWindow = new OutputWindow(nullptr, outputArtwork());
    outputWindow->setObjectName(u"outputWindow"_s);
    outputDock = addDock(u"outputDockWindow"_s, MainWindow::tr("Output"), Qt::BottomDockWidgetArea);
    outputDock->setWidget(outputWindow);
    debugWindows = std::make_unique<DebugWindows>(activity, services);
    addDebugContents(*debugWindows, activity);
    formats.setDebugWindows(debugWindows.get());
    DockWindow *pythonDock =
        addDock(u"pythonOutputDockWindow"_s, MainWindow::tr("Python Output"), Qt::RightDockWidgetArea);
    pythonDock->setWidget(pythonOutput = new PythonOutputPanel);
    pythonDock->hide();
    window.setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    QObject::connect(outputWindow, &OutputWindow::consoleNeeded, outputDock, &DockWindow::bringUp);
    QObject::connect(outputWindow, &OutputWindow::lookupSource, &window, &MainWindow::lookupSource);
    QObject::connect(outputWindow, &OutputWindow::copyAvailable, &window, &MainWindow::copyAvailable);
    QObject::connect(outputWindow, &OutputWindow::cutAvailable, &window, &MainWindow::cutAvailable);
    QObject::connect(outputWindow, &OutputWindow::pasteAvailable, &window, &MainWindow::pasteAvailable);
    QObject::connect(outputWindow, &OutputWindow::selectAllAvailable, &window, &MainWindow::selectAllAvailable);
    connectNavigator();
}

void WindowParts::connectNavigator() const
{
    QObject::connect(navigator, &Navigator::openFile, &window, qOverload<const QString &>(&MainWindow::openFile));
    QObject::connect(navigator, &Navigator::runPyFile, &window, &MainWindow::runPyFile);
    QObject::connect(navigator, &Navigator::openHelp, &window, &MainWindow::openHelp);
    QObject::connect(navigator, &Navigator::fileSelected, &window, &MainWindow::fileSelected);
    QObject::connect(navigator, &Navigator::displayFileProperties, &window, &MainWindow::displayFileProperties);
    QObject::connect(navigator, &Navigator::cutAvailable, &window, &MainWindow::cutAvailable);
    QObject::connect(navigator, &Navigator::pasteAvailable, &window, &MainWindow::pasteAvailable);
    QObject::connect(navigator, &Navigator::undoAvailable, &window, &MainWindow::undoAvailable);
    QObject::connect(navigator, &Navigator::redoAvailable, &window, &MainWindow::redoAvailable);
    QObject::connect(navigator, &Navigator::previousAvailable, &window, &MainWindow::previousAvailable);
    QObject::connect(navigator, &Navigator::nextAvailable, &window, &MainWindow::nextAvailable);
    QObject::connect(viewManager.get(), &ViewManager::sourceChanged, navigator, &Navigator::helpSourceChanged);
}

/// The sizes of dock windows are parts of the window's size, so it must already have its final size.
void WindowParts::restoreLayout() const
{
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    const WindowPlacement placement =
        restoredPlacement(loadPlacement(*application()->settings(), available), available);
    window.resize(placement.maximised ? available.size() : QSize(placement.width, placement.height));
    window.resizeDocks({navigatorDock}, {qMax(1, window.width() / 5)}, Qt::Horizontal);
    window.resizeDocks({outputDock}, {qMax(1, window.height() / 4)}, Qt::Vertical);
    layout.restore(StateIdle);
}

void WindowParts::startConsole()
{
    if (!objectModel.startScripting())
        return;
    const auto setWatches = [this](const QString &projectFile, const QStringList &expressions) {
        MultiWatchWindow *watches = watchesOf(*this);
        QJsonObject all = watches->watches();
        all.insert(projectFile, QJsonArray::fromStringList(expressions));
        watches->setWatches(all);
    };
    offerReplay(objectModel, {[this] { return recorder->stateChanges(); }, setWatches});
    outputWindow->startConsole(application()->scriptDirectories());
    outputWindow->setConsoleHistory(application()->settings()->value(u"Console/History"_s).toStringList());
}

// Commands

/// The commands receive signals of the activity in the order in which they are created.
void WindowParts::setUpCommands()
{
    setUpRecorder(*this);
    fileCommands = std::make_unique<FileCommands>(activity, services);
    editCommands = std::make_unique<EditCommands>(activity, services);
    findCommands = std::make_unique<FindCommands>(services);
    fileFindCommands = std::make_unique<FileFindCommands>(activity, services);
    buildControl = std::make_unique<BuildControl>(activity, services);
    debugControl = std::make_unique<DebugControl>(activity, services, *buildControl);
    debugControl->options().load(*application()->settings());
    debugViews.breakpoints = std::make_unique<BreakpointsDock>(activity, services, *debugControl);
    debugViews.stored = std::make_unique<StoredBreakpoints>(activity, debugControl->breakpointLines());
    debugViews.processors = std::make_unique<ProcessorDock>(activity, services, *debugControl);
    debugViews.live = std::make_unique<LiveDock>(activity, services, *debugControl);
    debugViews.toolTips = std::make_unique<ValueToolTips>(activity);
    projectCommands = std::make_unique<ProjectCommands>(activity, services);
    templateCommands = std::make_unique<TemplateCommands>(activity, services, *projectCommands, templateDirectories());
    namedFiles = std::make_unique<NamedFiles>(services, *projectCommands, templateDirectories().installed);
    helpCommands = std::make_unique<HelpCommands>(activity, services, *projectCommands, helpFiles());
    pluginBinder = std::make_unique<PluginBinder>(activity, services);
    toolsCommands = std::make_unique<ToolsCommands>(activity, services);
    optionsCommands = std::make_unique<OptionsCommands>(services, application()->path(PathConfig), formats.formats(),
                                                        debugControl->options(), *toolsCommands);
    optionsCommands->setPages([this] { return pluginBinder->optionsPages(); });
    optionsCommands->setOfferedCommands({[this] { return commandsOfPlugins(activity); },
                                         [this](const QString &name) { executeOffered(activity, name); }});
    zoomCommands = std::make_unique<ZoomCommands>(services);
    contextHelp = std::make_unique<ContextHelp>(application()->path(PathConfig).filePath(u"helppages.xml"_s), &window);
    QObject::connect(contextHelp.get(), &ContextHelp::pageRequested, helpCommands.get(), &HelpCommands::showPage);
    sessions = std::make_unique<SessionKeeper>(activity, services);
    keepDebugWindows(*this);
    menus = std::make_unique<WindowMenus>(*this);
    QObject::connect(buildControl.get(), &BuildControl::compileAvailable, &window, &MainWindow::compileAvailable);
    QObject::connect(projectCommands.get(), &ProjectCommands::sessionEndRequested, debugControl.get(),
                     &DebugControl::debugStop);
    QObject::connect(toolsCommands.get(), &ToolsCommands::output, outputWindow->page(OutputWindow::Debug),
                     qOverload<const QString &>(&OutputPage::outputLine));
    QObject::connect(optionsCommands.get(), &OptionsCommands::appearanceChanged, &window, [this] { formats.apply(); });
    QObject::connect(zoomCommands.get(), &ZoomCommands::zoomChanged, &window, [this] { formats.apply(); });
    QObject::connect(navigator, &Navigator::saveAsTemplate, templateCommands.get(), &TemplateCommands::saveAsTemplate);
    connectOwnActions();
    connectReports();
}

/// Those whose subjects do not know the window.
void WindowParts::connectOwnActions()
{
    if (const QAction *showValue = services.action(u"debugShowValue"_s))
        QObject::connect(showValue, &QAction::triggered, debugViews.toolTips.get(), &ValueToolTips::showAtCursor);
    if (const QAction *format = services.action(u"viewFileFormat"_s))
        QObject::connect(format, &QAction::triggered, &window, [this] { status.showFormatMenu(); });
}

void WindowParts::connectReports() const
{
    const PluginBinder *binder = pluginBinder.get();
    const DebugControl *debug = debugControl.get();
    QObject::connect(fileCommands.get(), &FileCommands::fileOpened, recorder.get(), &ScriptRecorder::note);
    QObject::connect(binder, &PluginBinder::breakpointsChanged, recorder.get(), &ScriptRecorder::note);
    QObject::connect(binder, &PluginBinder::buildFinished, buildControl.get(), &BuildControl::buildFinished);
    QObject::connect(binder, &PluginBinder::xmlFeedback, buildControl.get(), &BuildControl::replaceContents);
    QObject::connect(binder, &PluginBinder::programStatusChanged, debug, &DebugControl::programStatusChanged);
    QObject::connect(binder, &PluginBinder::statusInfo, debug, &DebugControl::statusInfo);
    QObject::connect(binder, &PluginBinder::breakpointsChanged, debug, &DebugControl::breakpointsChanged);
    QObject::connect(viewManager.get(), &ViewManager::toggleBreakpoint, debug, &DebugControl::toggleBreakpoint);
    QObject::connect(fileCommands.get(), &FileCommands::fileOpened, debug, &DebugControl::fileOpened);
    QObject::connect(workspace.get(), &Workspace::documentReopened, debug, &DebugControl::fileOpened);
    QObject::connect(debug, &DebugControl::updateRegisterWindow, debugWindows.get(), &DebugWindows::updateRegisters);
    QObject::connect(debug, &DebugControl::updateDataWindows, debugWindows.get(), &DebugWindows::updateData);
    QObject::connect(debugWindows.get(), &DebugWindows::placeChosen, debug, &DebugControl::showPlace);
    QObject::connect(debugWindows.get(), &DebugWindows::valuesWritten, debug, &DebugControl::memoryWritten);
}

// State

void WindowParts::followState() const
{
    QObject::connect(&activity, &Activity::stateChanging, &window, [this](ActivityState next) {
        const ActivityState present = activity.stateOfWork();
        // A session continues behind a compilation.
        if (next != StateBuilding && isDebugState(next) != isDebugState(present)) {
            layout.save(present);
            if (isDebugState(next) && !layout.isStored(next))
                debugWindows->showFirstLayout();
            else
                layout.restore(next);
        }
    });
    const auto show = [this, newest = 0](const ActivityAvailability &available) mutable {
        const int own = ++newest;
        const DebugOffers offers = debugOffers(activity, viewManager->currentView()); // a plug-in may report a state
        if (own == newest)
            window.emitActivity(available, offers);
    };
    QObject::connect(&activity, &Activity::availabilityChanged, &window, show);
    QObject::connect(&activity, &Activity::stateEntered, &window, [this] { window.setWindowTitle(caption()); });
}

QString WindowParts::caption() const
{
    const ProjectWorkspace *open = activity.workspace();
    return title + (open ? u" - "_s + open->name() : QString()) + captionSuffix(activity.state());
}
