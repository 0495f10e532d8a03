#include "mainwindow.h"
#include "buildcontrol.h"
#include "callplugin.h"
#include "debugcontrol.h"
#include "dockwindow.h"
#include "document.h"
#include "documentkinds.h"
#include "editcommands.h"
#include "filechangecheck.h"
#include "filecommands.h"
#include "findcommands.h"
#include "formatchoice.h"
#include "ideapplication.h"
#include "iexecutionenvironment.h"
#include "mdiviewmanager.h"
#include "navigator.h"
#include "outputwindow.h"
#include "pictures.h"
#include "pluginbinder.h"
#include "plugindocuments.h"
#include "project.h"
#include "projectfile.h"
#include "projectworkspace.h"
#include "pythonruntime.h"
#include "scriptdirectories.h"
#include "tabbedviewmanager.h"
#include "textview.h"
#include "toolbar.h"
#include "uidocument.h"
#include "workspace.h"
#include <QAction>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>

using namespace Qt::StringLiterals;

// How the window is put together, and what it tells its actions.

namespace {
constexpr int RecentLimit = 4;
constexpr int StatusLabelCount = 4;

IDEApplication *application()
{
    return IDEApplication::instance();
}

/// Optional, so its absence is no news.
QPixmap outputArtwork()
{
    const QString name = u"marketing_output.png"_s;
    const QString images = application()->path(PathPlugInRoot).filePath(u"images"_s);
    return findPicture(images, name).exists() ? application()->loadPixmap(name) : QPixmap();
}
} // namespace

MainWindow::MainWindow(QWidget *parent)
    : AvailabilityWindow(parent)
    , m_ui(this, application()->path(PathConfig).filePath(uiConfigFileName),
           [](const QString &name) { return application()->loadIcon(name); })
    , m_directories(application()->settings(), application()->path(PathUserDocuments).path())
    , m_treeHost(m_ui, m_directories, m_sourceExtensions)
    , m_editorHost(m_ui,
                   [this](const QString &file, int line) { return m_debugControl->breakpointToolTip(file, line); })
    , m_sessions(stateDirectory().filePath(u"sessions"_s))
    , m_layout(this, application()->settings(), [this] { return dockWindows(); })
    , m_recentFiles(u"RecentFiles/File"_s, RecentLimit, application()->settings())
    , m_recentWorkspaces(u"RecentFiles/Workspace"_s, RecentLimit, application()->settings())
{
    setWindowIcon(application()->loadIcon(u"appicon.png"_s));
    setIconSize(QSize(22, 22)); // what the pictures are drawn for
    setDockNestingEnabled(true);
    setupStatusBar();
    setupWorkspace();
    setupActions();
    setupToolbars();
    setupMenus();
    setupTitle();
    setupDockWindows();
    restoreLayout();
    m_recentFiles.load();
    m_recentWorkspaces.load();
    m_textFormats = chosenFormats(*application()->settings(), application()->path(PathConfig));
    applyTextFormats();
    setupCommands();
    emitNothingAvailable();
    MainWindow::setState(StateNoWorkspace);
    setAcceptDrops(true);
}

/// The views go before the documents' kinds, and both before what they ask things of.
MainWindow::~MainWindow()
{
    m_projectCommands.reset();
    delete m_viewManager;
    delete m_workspace;
}

void MainWindow::setupStatusBar()
{
    for (int i = 0; i < StatusLabelCount; ++i) {
        auto *label = new QLabel(statusBar());
        label->hide();
        m_statusLabels.prepend(label);
        statusBar()->addPermanentWidget(label, 0);
    }
    for (QLabel *label : std::as_const(m_statusLabels))
        label->hide(); // a status bar shows what it takes in
    m_cursorLabel = new QLabel(statusBar());
    m_cursorLabel->setObjectName(u"cursorLabel"_s);
    statusBar()->addPermanentWidget(m_cursorLabel, 0);
}

void MainWindow::setupWorkspace()
{
    QSettings *settings = application()->settings();
    m_workspace = new Workspace(this);
    m_workspace->setObjectName(u"workspace"_s);
    if (settings->value(u"Editor/WorkspaceStyle"_s, 0).toInt() == 0)
        m_viewManager = new TabbedViewManager(this);
    else
        m_viewManager = new MDIViewManager(settings, this);
    m_viewManager->setObjectName(u"viewManager"_s);
    m_viewManager->setBackgroundRole(QPalette::Mid);
    m_viewManager->setAutoFillBackground(true);
    m_workspace->setViewManager(m_viewManager);
    setCentralWidget(m_viewManager);

    connect(m_viewManager, &ViewManager::viewActivated, this, &MainWindow::viewActivated);
    connect(m_viewManager, &ViewManager::cursorPositionChanged, this, &MainWindow::cursorPositionChanged);
    connect(m_viewManager, &ViewManager::undoAvailable, this, &MainWindow::undoAvailable);
    connect(m_viewManager, &ViewManager::redoAvailable, this, &MainWindow::redoAvailable);
    connect(m_viewManager, &ViewManager::copyAvailable, this, &MainWindow::copyAvailable);
    connect(m_viewManager, &ViewManager::cutAvailable, this, &MainWindow::cutAvailable);
    connect(m_viewManager, &ViewManager::pasteAvailable, this, &MainWindow::pasteAvailable);
    connect(m_viewManager, &ViewManager::backAvailable, this, &MainWindow::backAvailable);
    connect(m_viewManager, &ViewManager::forwardAvailable, this, &MainWindow::forwardAvailable);
    connect(m_viewManager, &ViewManager::nextAvailable, this, &MainWindow::nextAvailable);
    connect(m_viewManager, &ViewManager::previousAvailable, this, &MainWindow::previousAvailable);

    const PluginSource plugins{application()->plugins(),
                               [](const QString &feature) { return application()->createPlugin(feature); }};
    registerDocumentKinds(*m_workspace, {&m_formats, &m_editorHost, stateDirectory().filePath(u"swap"_s)},
                          [&] { addPluginDocuments(plugins, m_workspace, &m_formats, &m_sourceExtensions); });
    applyEditorSettings(*m_workspace, *settings);
}

void MainWindow::setupCommands()
{
    m_changeCheck = std::make_unique<FileChangeCheck>(this, m_workspace, m_viewManager);
    m_fileCommands = new FileCommands({.window = this,
                                       .workspace = m_workspace,
                                       .viewManager = m_viewManager,
                                       .recentFiles = &m_recentFiles,
                                       .changeCheck = m_changeCheck.get(),
                                       .directories = &m_directories,
                                       .filter = [this] { return sourceFilter(); },
                                       .projectDirectory =
                                           [this] {
                                               const Project *project = currentProject();
                                               return project ? project->basePath() : QString();
                                           }},
                                      this);
    m_editCommands = new EditCommands(this, m_viewManager, m_navigator, m_outputWindow, this);
    m_pluginBinder = new PluginBinder(*this, this);
    connect(m_pluginBinder, &PluginBinder::buildFinished, m_buildControl, &BuildControl::buildFinished);
    connect(m_pluginBinder, &PluginBinder::xmlFeedback, m_buildControl, &BuildControl::xmlFeedback);
    m_findCommands = new FindCommands(this, m_viewManager, m_outputWindow, application()->settings(), this);
    connect(m_findCommands, &FindCommands::findRequested, this, &MainWindow::find);
    connect(m_findCommands, &FindCommands::searchStarted, m_outputDock, &DockWindow::bringUp);
    ProjectCommandsHost *host = this;
    m_projectCommands = std::make_unique<ProjectCommands>(this, host, &m_recentWorkspaces, &m_directories);
    connect(m_projectCommands.get(), &ProjectCommands::currentProjectChanged, this, &MainWindow::currentProjectChanged);
    connect(m_projectCommands.get(), &ProjectCommands::workspaceLoaded, this,
            [this] { fireEvent(u"onWorkspaceLoaded"_s); });
    setupDebugging();
}

void MainWindow::setupDebugging()
{
    m_debugControl = new DebugControl(*this, *m_buildControl, this);
    m_debugControl->options().load(*application()->settings());
    connect(m_pluginBinder, &PluginBinder::programStatusChanged, m_debugControl, &DebugControl::programStatusChanged);
    connect(m_pluginBinder, &PluginBinder::statusInfo, m_debugControl, &DebugControl::statusInfo);
    connect(m_pluginBinder, &PluginBinder::breakpointsChanged, m_debugControl, &DebugControl::breakpointsChanged);
    connect(m_viewManager, &ViewManager::toggleBreakpoint, m_debugControl, &DebugControl::toggleBreakpoint);
    connect(m_fileCommands, &FileCommands::fileOpened, m_debugControl, &DebugControl::fileOpened);
    connect(m_workspace, &Workspace::documentReopened, m_debugControl, &DebugControl::fileOpened);
}

DockWindow *MainWindow::addDock(const QString &objectName, const QString &caption, Qt::DockWidgetArea area,
                                QWidget *content)
{
    auto *dock = new DockWindow(objectName, caption, this);
    if (content)
        dock->setWidget(content);
    addDockWidget(area, dock);
    m_docks.append(dock);
    return dock;
}

DockWindow *MainWindow::addHiddenDock(const char *objectName, const QString &caption, Qt::DockWidgetArea area,
                                      bool newLine)
{
    DockWindow *dock = addDock(QString::fromLatin1(objectName), caption, area, nullptr);
    dock->setNewLine(newLine);
    dock->hide();
    return dock;
}

void MainWindow::setupDockWindows()
{
    m_navigator = new Navigator(m_treeHost);
    m_navigator->setObjectName(u"navigator"_s);
    m_navigatorDock = addDock(u"navigatorDockWindow"_s, tr("Navigator"), Qt::LeftDockWidgetArea, m_navigator);
    m_outputWindow = new OutputWindow(nullptr, outputArtwork());
    m_outputWindow->setObjectName(u"outputWindow"_s);
    m_outputDock = addDock(u"outputDockWindow"_s, tr("Output"), Qt::BottomDockWidgetArea, m_outputWindow);
    m_registerDock = addHiddenDock("registerDockWindow", tr("Registers"), Qt::RightDockWidgetArea, false);
    m_peripheralDock = addHiddenDock("peripheralDockWindow", tr("Peripherals"), Qt::RightDockWidgetArea, false);
    m_watchDock = addHiddenDock("watchDockWindow", tr("Watches"), Qt::RightDockWidgetArea, true);
    m_memoryDock = addHiddenDock("memoryDockWindow", tr("Memory"), Qt::TopDockWidgetArea, true);
    addHiddenDock("pythonOutputDockWindow", tr("Python Output"), Qt::RightDockWidgetArea, false);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);

    connect(m_outputWindow, &OutputWindow::lookupSource, this, &MainWindow::lookupSource);
    connect(m_navigator, &Navigator::openFile, this, qOverload<const QString &>(&MainWindow::openFile));
    connect(m_navigator, &Navigator::runPyFile, this, &MainWindow::runPyFile);
    connect(m_navigator, &Navigator::openHelp, this, &MainWindow::openHelp);
    connect(m_navigator, &Navigator::fileSelected, this, &MainWindow::fileSelected);
    connect(m_navigator, &Navigator::displayFileProperties, this, &MainWindow::displayFileProperties);
    connect(m_navigator, &Navigator::cutAvailable, this, &MainWindow::cutAvailable);
    connect(m_navigator, &Navigator::pasteAvailable, this, &MainWindow::pasteAvailable);
    connect(m_navigator, &Navigator::previousAvailable, this, &MainWindow::previousAvailable);
    connect(m_navigator, &Navigator::nextAvailable, this, &MainWindow::nextAvailable);
    connect(m_viewManager, &ViewManager::sourceChanged, m_navigator, &Navigator::helpSourceChanged);

    if (startPython())
        m_outputWindow->startConsole(scriptDirectories());
}

/// Dock windows take their sizes as parts of the window's, so it must have the size that it will be shown in.
void MainWindow::restoreLayout()
{
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    const WindowPlacement placement =
        restoredPlacement(loadPlacement(*application()->settings(), available), available);
    resize(placement.maximised ? available.size() : QSize(placement.width, placement.height));
    resizeDocks({m_navigatorDock}, {qMax(1, width() / 5)}, Qt::Horizontal);
    resizeDocks({m_outputDock}, {qMax(1, height() / 4)}, Qt::Vertical);
    m_layout.restore(StateIdle);
}

void MainWindow::setupActions()
{
    m_ui.setupActions();
    m_buildControl = new BuildControl(*this, this);
    connect(m_buildControl, &BuildControl::compileAvailable, this, &MainWindow::compileAvailable);
    m_buildControl->setCompileAction(m_ui.action(u"buildCompileFile"_s));
    m_ui.setActionVisible(u"debugTogglePeripheralWindow"_s, false);
    m_ui.setActionVisible(u"projectRepopulate"_s, false);
}

void MainWindow::setupToolbars()
{
    m_ui.addCompanion(u"editFind"_s, [this](ToolBar *bar) { addSearchBox(bar); });
    m_ui.addCompanion(u"debugStepInto"_s, [this](ToolBar *bar) { addProjectDropdown(bar); });
    m_ui.setupToolbars();
}

void MainWindow::addSearchBox(ToolBar *bar)
{
    auto *box = new QComboBox(bar);
    box->setObjectName(u"searchBox"_s);
    box->setEditable(true);
    box->setCompleter(nullptr); // it would find text that nobody has typed
    box->setDuplicatesEnabled(false);
    box->setMaxCount(10);
    box->setMinimumWidth(150);
    box->lineEdit()->setPlaceholderText(tr("Find"));
    connect(box, &QComboBox::editTextChanged, this, &MainWindow::searchBoxFind);
    connect(box, &QComboBox::textActivated, this, &MainWindow::searchBoxFindAgain);
    connect(this, &MainWindow::textNavigationAvailable, box, &QWidget::setEnabled);
    bar->addWidget(box);
}

void MainWindow::addProjectDropdown(ToolBar *bar)
{
    m_projectDropdown = new QComboBox(bar);
    m_projectDropdown->setObjectName(u"projectDropdown"_s);
    m_projectDropdown->setMinimumWidth(100);
    m_projectDropdown->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_projectDropdown->setToolTip(tr("Current project"));
    connect(m_projectDropdown, &QComboBox::activated, this, &MainWindow::projectDropdownChanged);
    m_projectDropdownAction = bar->addWidget(m_projectDropdown);
    m_projectDropdownAction->setVisible(false);
}

void MainWindow::setupMenus()
{
    m_ui.setupMenus();
    if (PopupMenu *menu = m_ui.menu(u"viewToolbarsMenu"_s))
        fillViewToolbarsMenu(menu);
    m_ui.setActionEnabled(u"windowCascade"_s, m_viewManager->canCascade());
    m_ui.setActionEnabled(u"windowTile"_s, m_viewManager->canTile());
    updateWhenOpened(u"viewMenu"_s, &MainWindow::updateViewMenu);
    updateWhenOpened(u"viewToolbarsMenu"_s, &MainWindow::updateViewToolbarsMenu);
    updateWhenOpened(u"windowMenu"_s, &MainWindow::updateWindowMenu);
    updateWhenOpened(u"fileRecentFilesMenu"_s, &MainWindow::updateRecentFilesMenu);
    updateWhenOpened(u"projectRecentWorkspacesMenu"_s, &MainWindow::updateRecentWorkspacesMenu);
    updateWhenOpened(u"buildConfigurationsMenu"_s, &MainWindow::updateConfigurationsMenu);
    updateWhenOpened(u"toolsMenu"_s, &MainWindow::updateToolsMenu);
    updateWhenOpened(u"buildMenu"_s, &MainWindow::updateBuildMenu);
    updateWhenOpened(u"debugMenu"_s, &MainWindow::updateDebugMenu);
    updateWhenOpened(u"debugWindowsMenu"_s, &MainWindow::updateDebugWindowsMenu);
}

void MainWindow::updateWhenOpened(const QString &name, void (MainWindow::*update)())
{
    if (const PopupMenu *menu = m_ui.menu(name))
        connect(menu, &QMenu::aboutToShow, this, update);
}

void MainWindow::setupTitle()
{
    m_caption = m_ui.title();
    setWindowTitle(m_caption);
}

QList<QWidget *> MainWindow::dockWindows() const
{
    QList<QWidget *> windows;
    for (ToolBar *bar : m_ui.toolBars())
        windows.append(bar);
    for (const QPointer<DockWindow> &dock : m_docks) {
        if (dock)
            windows.append(dock);
    }
    return windows;
}

ScriptDirectories MainWindow::scriptDirectories()
{
    return {application()->path(PathPython).path(), application()->path(PathUserData).filePath(u"python"_s)};
}

// Looks -----------------------------------------------------------------

void MainWindow::applyTextFormats()
{
    m_formats = m_textFormats.formatTable();
    m_viewManager->updateAllDocuments(true);
    const QString section = m_textFormats.sections().value(1);
    const QString format = m_textFormats.formats(section).value(0);
    QFont font(m_textFormats.fontFamily(section, format), m_textFormats.fontSize(section, format));
    font.setStyleHint(QFont::TypeWriter);
    font.setBold(m_textFormats.bold(section, format));
    font.setItalic(m_textFormats.italic(section, format));
    m_outputWindow->setFont(font);
    m_outputWindow->setTextColour(m_textFormats.fgColour(section, format));
    m_outputWindow->setPaperColour(m_textFormats.bgColour(section, format));
}

/// Colours that the user has not chosen go with the desktop's, also when these change.
void MainWindow::followPalette()
{
    const QDir config = application()->path(PathConfig);
    if (!areProductFormats(m_textFormats, config))
        return;
    m_textFormats = productFormats(config);
    applyTextFormats();
}

// State -------------------------------------------------------------------

void MainWindow::setState(ActivityState state)
{
    const int change = ++m_stateChanges;
    m_debugControl->enterState(state);
    if (change != m_stateChanges)
        return; // it has asked the user something, and meanwhile the state became another one
    const bool changed = state != m_state;
    if (isDebugState(state) != isDebugState(m_state)) {
        m_layout.save(m_state);
        m_layout.restore(state);
    }
    if (changed)
        emitActivity(activityAvailability(state, activityContext()));
    if (changed && !isDebugState(state)) {
        for (QLabel *label : std::as_const(m_statusLabels))
            label->hide();
    }
    m_state = state;
    m_buildControl->refreshCompileAction();
    refreshCaption();
}

void MainWindow::showStatusInfo(const QString &text, int position)
{
    if (position < 0 || position >= m_statusLabels.size())
        return;
    m_statusLabels[position]->setText(text);
    m_statusLabels[position]->show();
}

Project *MainWindow::currentProject() const
{
    return m_projectWorkspace ? m_projectWorkspace->currentProject() : nullptr;
}

ActivityContext MainWindow::activityContext() const
{
    const Project *project = currentProject();
    IExecutionEnvironment *environment = project ? project->executionInterface() : nullptr;
    return {.workspace = m_projectWorkspace != nullptr,
            .project = project != nullptr,
            .executionEnvironment = environment != nullptr,
            .canAttach =
                environment && askPlugin("IExecutionEnvironment::canAttach", [&] { return environment->canAttach(); })};
}

void MainWindow::refreshCaption()
{
    const QString workspace = m_projectWorkspace ? u" - "_s + m_projectWorkspace->name() : QString();
    setWindowTitle(m_caption + workspace + captionSuffix(m_state));
}
