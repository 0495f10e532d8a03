#include "mainwindow.h"
#include "ibuildenvironment.h"
#include "ideapplication.h"
#include "iexecutionenvironment.h"
#include "project.h"
#include "projectworkspace.h"
#include "toolbar.h"
#include "uidocument.h"
#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace {
constexpr int RecentLimit = 4;
constexpr int StatusLabelCount = 4;

IDEApplication *application()
{
    return IDEApplication::instance();
}
} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , m_ui(this, application()->path(PathConfig).filePath(uiConfigFileName),
           [](const QString &name) { return application()->loadIcon(name); })
    , m_recentFiles(u"RecentFiles/File"_s, RecentLimit, application()->settings())
    , m_recentWorkspaces(u"RecentFiles/Workspace"_s, RecentLimit, application()->settings())
{
    setWindowIcon(application()->loadIcon(u"appicon.png"_s));
    setIconSize(QSize(22, 22)); // what the pictures are drawn for
    setupStatusBar();
    setupCentralArea();
    setupActions();
    setupToolbars();
    setupMenus();
    setupTitle();
    m_recentFiles.load();
    m_recentWorkspaces.load();
    emitNothingAvailable();
    setState(StateNoWorkspace);
}

MainWindow::~MainWindow() = default;

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
    statusBar()->addPermanentWidget(m_cursorLabel, 0);
}

void MainWindow::setupCentralArea()
{
    auto *area = new QWidget(this);
    area->setBackgroundRole(QPalette::Mid);
    area->setAutoFillBackground(true);
    setCentralWidget(area);
}

void MainWindow::setupActions()
{
    m_ui.setupActions();
    if (const QAction *compile = m_ui.action(u"buildCompileFile"_s)) {
        m_compileMenuText = compile->text();
        refreshCompileAction();
    }
    setActionVisible(u"debugTogglePeripheralWindow"_s, false);
    setActionVisible(u"projectRepopulate"_s, false);
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
    setActionEnabled(u"windowCascade"_s, false);
    setActionEnabled(u"windowTile"_s, false);
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

void MainWindow::setActionVisible(const QString &name, bool visible)
{
    if (QAction *action = m_ui.action(name))
        action->setVisible(visible);
}

void MainWindow::setActionEnabled(const QString &name, bool enabled)
{
    if (QAction *action = m_ui.action(name))
        action->setEnabled(enabled);
}

QList<QWidget *> MainWindow::dockWindows() const
{
    QList<QWidget *> windows;
    for (ToolBar *bar : m_ui.toolBars())
        windows.append(bar);
    return windows;
}

void MainWindow::setState(ActivityState state)
{
    const bool changed = state != m_state;
    if (changed)
        emitActivity(activityAvailability(state, activityContext()));
    if (changed && !isDebugState(state)) {
        for (QLabel *label : std::as_const(m_statusLabels))
            label->hide();
    }
    m_state = state;
    refreshCompileAction();
    refreshCaption();
}

void MainWindow::emitNothingAvailable()
{
    Q_EMIT viewHasFocus(false);
    Q_EMIT textViewHasFocus(false);
    Q_EMIT textNavigationAvailable(false);
    Q_EMIT undoAvailable(false);
    Q_EMIT redoAvailable(false);
    Q_EMIT cutAvailable(false);
    Q_EMIT copyAvailable(false);
    Q_EMIT pasteAvailable(false);
    Q_EMIT backAvailable(false);
    Q_EMIT forwardAvailable(false);
    Q_EMIT previousAvailable(false);
    Q_EMIT nextAvailable(false);
}

void MainWindow::emitActivity(const ActivityAvailability &available)
{
    Q_EMIT projectOpenAvailable(available.projectOpen);
    Q_EMIT projectRepopulateAvailable(available.projectRepopulate);
    Q_EMIT workspaceEditingAvailable(available.workspaceEditing);
    Q_EMIT projectEditingAvailable(available.projectEditing);
    Q_EMIT buildAvailable(available.build);
    Q_EMIT projectBuilding(available.building);
    Q_EMIT runAvailable(available.run);
    Q_EMIT stopAvailable(available.stop);
    Q_EMIT pauseAvailable(available.pause);
    Q_EMIT startAvailable(available.start);
    Q_EMIT restartAvailable(available.restart);
    Q_EMIT wakeupAvailable(available.wakeup);
    Q_EMIT showNextAvailable(available.showNext);
    Q_EMIT attachAvailable(available.attach);
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
            .canAttach = environment && environment->canAttach()};
}

bool MainWindow::canCompileCurrentFile() const
{
    if (!m_projectWorkspace || m_currentFile.isEmpty() || m_state == StateBuilding)
        return false;
    const QList<Project *> projects = m_projectWorkspace->projectsContainingFile(m_currentFile);
    if (projects.isEmpty())
        return false;
    const Project *project = projects.first();
    IBuildEnvironment *environment = project->buildInterface();
    return environment && environment->canCompile(m_currentFile, project->currentConfiguration());
}

void MainWindow::refreshCompileAction()
{
    if (QAction *compile = m_ui.action(u"buildCompileFile"_s)) {
        const QString name = QFileInfo(m_currentFile).fileName();
        compile->setText(QString(m_compileMenuText).replace("%1"_L1, name.isEmpty() ? tr("file") : name));
    }
    Q_EMIT compileAvailable(canCompileCurrentFile());
}

void MainWindow::refreshCaption()
{
    const QString workspace = m_projectWorkspace ? u" - "_s + m_projectWorkspace->name() : QString();
    setWindowTitle(m_caption + workspace + captionSuffix(m_state));
}

bool MainWindow::event(QEvent *event)
{
    m_normalGeometry.watch(this, event);
    return QMainWindow::event(event);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    savePlacement(*application()->settings(), m_normalGeometry.placement(this));
    m_recentFiles.save();
    m_recentWorkspaces.save();
    event->accept();
}
