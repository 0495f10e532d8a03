#include "mainwindow.h"
#include "applicationpaths.h"
#include "callplugin.h"
#include "debugoffers.h"
#include "dockfit.h"
#include "document.h"
#include "droppedfiles.h"
#include "filecommands.h"
#include "folderproject.h"
#include "helpview.h"
#include "ideapplication.h"
#include "navigator.h"
#include "outputwindow.h"
#include "pythoncall.h"
#include "qtwrapper.h"
#include "recovery.h"
#include "textdocument.h"
#include "textview.h"
#include "windowparts.h"
#include <QCloseEvent>
#include <QPointer>
#include <QSettings>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype LongestHistory = 500; ///< lines of the console that are kept

/// Closes nothing before everything was asked, so that a user who cancels finds all views as they were.
bool closeEverything(const WindowParts &parts)
{
    if (parts.activity.state() == StateBuilding)
        parts.buildControl->buildStopBuild();
    parts.fileFindCommands->stop();
    if (!parts.viewManager->askBeforeClosingAll())
        return false;
    if (parts.projectCommands->closeWorkspace())
        parts.viewManager->closeAll();
    return !parts.activity.workspace() && parts.viewManager->views().isEmpty();
}

void saveSettings(WindowParts &parts, const WindowPlacement &placement)
{
    QSettings &settings = parts.services.settings();
    savePlacement(settings, placement);
    parts.services.saveDockLayout();
    parts.fileCommands->saveRecentFiles();
    parts.projectCommands->saveRecentWorkspaces();
    parts.formats.save();
    const QStringList history = parts.outputWindow->consoleHistory();
    settings.setValue(u"Console/History"_s, history.mid(std::max<qsizetype>(0, history.size() - LongestHistory)));
    settings.sync();
    if (settings.status() == QSettings::AccessError)
        qWarning("MainWindow::saveSettings: the settings cannot be written (%s)", qPrintable(settings.fileName()));
}
} // namespace

MainWindow::MainWindow(QWidget *parent) : AvailabilityWindow(parent)
{
    m_parts = std::make_unique<WindowParts>(*this); // not in the initialiser list: the window gets events during this
    setWindowIcon(IDEApplication::instance()->loadIcon(u"appicon.png"_s));
    setIconSize(QSize(22, 22)); // the size for which the pictures are drawn
    setDockNestingEnabled(true);
    keepDocksFitting(*this);
    m_parts->setUp();
    setWindowTitle(m_parts->title);
    m_parts->startConsole();
    emitNothingAvailable();
    m_parts->activity.setState(StateNoWorkspace);
    setAcceptDrops(true);
    m_parts->ready = true;
}

MainWindow::~MainWindow()
{
    m_parts->ready = false;            // the toolkit still sends events
    if (m_parts->activity.workspace()) // a command was about to open it when the window was closed
        m_parts->activity.closeWorkspace();
    QtWrapper::deleteAll(); // if the window was not closed
}

Activity &MainWindow::activity() const
{
    return m_parts->activity;
}

ProjectWorkspace *MainWindow::projectWorkspace() const
{
    return m_parts->activity.workspace();
}

Workspace *MainWindow::workspace() const
{
    return m_parts->workspace.get();
}

ViewManager *MainWindow::viewManager() const
{
    return m_parts->viewManager.get();
}

OutputWindow *MainWindow::outputWindow() const
{
    return m_parts->outputWindow;
}

SessionKeeper &MainWindow::sessions() const
{
    return *m_parts->sessions;
}

ObjectModel &MainWindow::objectModel() const
{
    return m_parts->objectModel;
}

QList<QWidget *> MainWindow::dockWindows() const
{
    return m_parts->dockWindows();
}

// Files and views ---------------------------------------------------------

bool MainWindow::openFile(const QString &path, bool addToRecent)
{
    return m_parts->ready && m_parts->fileCommands->openFile(path, addToRecent);
}

void MainWindow::lookupSource(const QString &file, int line, int column)
{
    if (m_parts->ready)
        m_parts->fileCommands->showSource(file, line, column);
}

void MainWindow::runPyFile(const QString &file)
{
    m_parts->services.runPyFile(file);
}

void MainWindow::openHelp(const QString &file)
{
    m_parts->workspace->openHelp(file);
}

void MainWindow::fileSelected(const QString &path)
{
    m_parts->buildControl->setCurrentFile(path);
}

void MainWindow::viewActivated(View *view)
{
    const bool isView = view;
    const QPointer<View> kept(view);
    m_parts->buildControl->setViewedFile(view ? view->document()->filename() : QString());
    if (isView && !kept)
        return; // closed while a plug-in was asked about the file
    m_parts->findCommands->viewActivated(view);
    const auto *text = qobject_cast<TextView *>(view);
    Q_EMIT viewHasFocus(view != nullptr);
    m_parts->fileCommands->viewActivated(view);
    Q_EMIT textViewHasFocus(text != nullptr);
    Q_EMIT textNavigationAvailable(viewInterface<ITextNavigation>(view) != nullptr);
    Q_EMIT saveAvailable(view && view->document()->modified());
    Q_EMIT closePaneAvailable(text && text->shownEdits().size() > 1);
    setProgramLines(hasProgramLines(m_parts->activity, view));
    m_parts->status.setDocument(text ? text->textDocument() : nullptr);
    if (!viewInterface<ITextNavigation>(view))
        m_parts->status.clearCursor();
}

void MainWindow::cursorPositionChanged(int line, int column)
{
    m_parts->status.setCursor(line, column);
    if (qobject_cast<HelpView *>(m_parts->viewManager->currentView())) // its lines have no numbers for the user
        m_parts->status.clearCursor();
}

// Workspaces and the program's start --------------------------------------

bool MainWindow::openProject(const QString &path, bool addToRecent)
{
    return m_parts->ready && m_parts->projectCommands->openProject(path, addToRecent);
}

bool MainWindow::openWorkspace(const QString &path, bool addToRecent)
{
    return m_parts->ready && m_parts->projectCommands->openWorkspace(path, addToRecent);
}

bool MainWindow::closeWorkspace()
{
    return m_parts->projectCommands->closeWorkspace();
}

void MainWindow::runScriptsUnasked()
{
    m_parts->projectCommands->runScriptsUnasked();
}

void MainWindow::continueLastRun(const QStringList &named)
{
    const QPointer<MainWindow> self(this);
    m_parts->namedFiles->open(named);
    if (!self)
        return; // closed during a question
    const QString workspace = m_parts->sessions->lastWorkspace();
    if (workspace.isEmpty())
        m_parts->sessions->restoreLastFiles();
    else if (isProjectFile(workspace))
        openProject(workspace, false);
    else
        openWorkspace(workspace, false);
    if (self)
        offerRecovery(*m_parts->workspace, stateDirectory().filePath(u"swap"_s), this);
}

// Events ------------------------------------------------------------------

bool MainWindow::event(QEvent *event)
{
    if (!m_parts)
        return QMainWindow::event(event);
    m_parts->normalGeometry.watch(this, event);
    if (event->type() == QEvent::WindowActivate) // a message box must not run inside the event
        QTimer::singleShot(0, this, [this] { m_parts->services.checkFileChanges(); });
    return QMainWindow::event(event);
}

void MainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (m_parts && m_parts->ready && event->type() == QEvent::PaletteChange)
        m_parts->formats.followPalette();
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    for (const QString &file : droppedFiles(*event->mimeData()))
        openFile(file, false);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (isUnderPluginCall()) {
        event->ignore();
        QTimer::singleShot(AfterCallDelay, this, &QWidget::close);
        return;
    }
    m_parts->sessions->beginClosing();
    if (!closeEverything(*m_parts)) {
        m_parts->viewManager->forgetAnswers();
        m_parts->sessions->cancelClosing();
        event->ignore();
        return;
    }
    m_parts->sessions->endClosing();
    saveSettings(*m_parts, m_parts->normalGeometry.placement(this));
    QtWrapper::deleteAll();
    endPython(); // a script that handles events would keep the process alive
    event->accept();
}
