#include "buildcontrol.h"
#include "dockwindow.h"
#include "document.h"
#include "filechangecheck.h"
#include "filecommands.h"
#include "findcommands.h"
#include "formatchoice.h"
#include "ideapplication.h"
#include "mainwindow.h"
#include "navigator.h"
#include "outputwindow.h"
#include "pluginbinder.h"
#include "project.h"
#include "projectworkspace.h"
#include "recovery.h"
#include "textview.h"
#include "viewmanager.h"
#include "workspace.h"
#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>

using namespace Qt::StringLiterals;

// What comes and goes while the window is there: files, views, workspaces, and the window's own end.

namespace {
const auto LastWorkspaceKey = u"Session/Workspace"_s;

QSettings *settings()
{
    return IDEApplication::instance()->settings();
}

/// The files that @p data brings, empty if it is about something else.
QStringList filesOf(const QMimeData *data)
{
    QStringList files;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    const QString text = data->text();
    if (!files.isEmpty() || !text.startsWith("file:"_L1))
        return files;
    const QString local = QUrl(text.trimmed()).toLocalFile().trimmed();
    if (!local.isEmpty())
        return {local};
    QString path = text.mid(5).trimmed();
    if (path.startsWith("///"_L1))
        path.remove(0, 3);
    return path.isEmpty() ? QStringList() : QStringList(path);
}
} // namespace

// Files and views ---------------------------------------------------------

bool MainWindow::openFile(const QString &path, bool addToRecent)
{
    return m_fileCommands && m_fileCommands->openFile(path, addToRecent);
}

void MainWindow::lookupSource(const QString &file, int line)
{
    if (openFile(file, false))
        m_viewManager->gotoLine(line, true);
}

void MainWindow::runPyFile(const QString &file)
{
    const Project *project = currentProject();
    const QString path =
        project && QDir::isRelativePath(file) ? QDir(project->basePath()).absoluteFilePath(file) : file;
    m_outputWindow->runScript(QDir::cleanPath(path));
}

void MainWindow::openHelp(const QString &file)
{
    m_workspace->openHelp(file);
}

void MainWindow::fileSelected(const QString &path)
{
    m_buildControl->setCurrentFile(path);
}

void MainWindow::viewActivated(View *view)
{
    m_buildControl->setCurrentFile(view ? view->document()->filename() : QString());
    if (m_findCommands)
        m_findCommands->viewActivated(view);
    Q_EMIT viewHasFocus(view != nullptr);
    Q_EMIT textViewHasFocus(qobject_cast<TextView *>(view) != nullptr);
    Q_EMIT textNavigationAvailable(viewInterface<ITextNavigation>(view) != nullptr);
}

void MainWindow::cursorPositionChanged(int line, int column)
{
    m_currentLine = line + 1;
    m_currentColumn = column + 1;
    m_cursorLabel->setText(tr(" Ln %1, Col %2").arg(m_currentLine).arg(m_currentColumn));
}

// Workspaces --------------------------------------------------------------

bool MainWindow::openProject(const QString &path, bool addToRecent)
{
    return m_projectCommands && m_projectCommands->openProject(path, addToRecent);
}

bool MainWindow::openWorkspace(const QString &path, bool addToRecent)
{
    return m_projectCommands && m_projectCommands->openWorkspace(path, addToRecent);
}

bool MainWindow::closeWorkspace()
{
    return !m_projectCommands || m_projectCommands->closeWorkspace();
}

void MainWindow::bindProjectPlugins(Project *project)
{
    m_pluginBinder->bindProjectPlugins(project);
}

IPluginObject *MainWindow::createPlugin(const QString &feature) const
{
    return IDEApplication::instance()->createPlugin(feature);
}

QDockWidget *MainWindow::addDockWindow(const QString &objectName)
{
    m_docks.removeAll(nullptr);
    return addDock(objectName, {}, Qt::RightDockWidgetArea, nullptr);
}

void MainWindow::showOutputDock()
{
    if (m_outputDock->isHidden())
        m_outputDock->bringUp();
}

void MainWindow::checkFileChanges()
{
    m_changeCheck->run();
}

void MainWindow::showWorkspace(ProjectWorkspace *workspace)
{
    if (!workspace && !m_closing)
        keepSession(m_projectWorkspace->fileName(), currentSession(*m_viewManager));
    m_projectWorkspace = workspace;
    m_navigator->setWorkspace(workspace);
    if (!workspace && m_projectDropdownAction)
        m_projectDropdownAction->setVisible(false);
}

void MainWindow::stopDebugging()
{
    debugStop();
}

bool MainWindow::closeAllViews()
{
    m_viewManager->closeAll();
    return m_viewManager->views().isEmpty();
}

void MainWindow::workspaceClosed()
{
    m_pluginBinder->deleteExtensionDocks();
}

void MainWindow::setRepopulateVisible(bool visible)
{
    m_ui.setActionVisible(u"projectRepopulate"_s, visible);
}

QString MainWindow::sourceFilter() const
{
    return ::sourceFilter(m_sourceExtensions);
}

void MainWindow::workspaceChanged()
{
    m_pluginBinder->notifyWorkspaceChanged();
    updateProjectUI();
}

void MainWindow::currentProjectChanged()
{
    if (m_projectDropdown)
        m_projectDropdown->setCurrentIndex(m_projectWorkspace ? m_projectWorkspace->currentProjectIndex() : -1);
    m_buildControl->refreshCompileAction();
}

void MainWindow::updateProjectUI()
{
    if (!m_projectDropdown)
        return;
    const ProjectWorkspace *workspace = m_projectWorkspace;
    m_projectDropdown->clear();
    for (int i = 0; workspace && i < workspace->count(); ++i) {
        if (workspace->project(i)->isActive())
            m_projectDropdown->addItem(workspace->project(i)->name());
    }
    m_projectDropdown->setCurrentIndex(workspace ? workspace->currentProjectIndex() : -1);
    m_projectDropdownAction->setVisible(workspace && workspace->count() >= 2);
}

// Sessions ----------------------------------------------------------------

void MainWindow::keepSession(const QString &workspace, const Session &session)
{
    if (m_sessionsKept && !m_sessions.save(workspace, session))
        qWarning("MainWindow::keepSession: the open files cannot be remembered");
}

void MainWindow::restoreFiles()
{
    if (m_sessionsKept)
        restoreSession(m_sessions.load(m_projectWorkspace->fileName()), *m_workspace, *m_viewManager);
}

void MainWindow::continueLastRun()
{
    if (m_sessionsKept) {
        const QString workspace = settings()->value(LastWorkspaceKey).toString();
        if (workspace.isEmpty())
            restoreSession(m_sessions.load(QString()), *m_workspace, *m_viewManager);
        else
            openWorkspace(workspace, false);
    }
    offerRecovery(*m_workspace, stateDirectory().filePath(u"swap"_s), this);
}

// Events ------------------------------------------------------------------

bool MainWindow::event(QEvent *event)
{
    m_normalGeometry.watch(this, event);
    if (event->type() == QEvent::WindowActivate && m_changeCheck)
        QTimer::singleShot(0, this, [this] { m_changeCheck->run(); }); // a box is no thing to show amid an event
    return QMainWindow::event(event);
}

void MainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_outputWindow)
        followPalette();
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!filesOf(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    const QStringList files = filesOf(event->mimeData());
    if (files.isEmpty())
        return;
    event->acceptProposedAction();
    for (const QString &file : files)
        openFile(file, false);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    const Session session = currentSession(*m_viewManager);
    const QString workspace = m_projectWorkspace ? m_projectWorkspace->fileName() : QString();
    if (m_state == StateBuilding)
        m_buildControl->buildStopBuild();
    m_findCommands->stop();
    m_closing = true;
    const bool closed = closeAllViews() && closeWorkspace();
    m_closing = false;
    if (!closed) {
        event->ignore();
        return;
    }
    if (m_sessionsKept) {
        keepSession(workspace, session);
        settings()->setValue(LastWorkspaceKey, workspace);
    }
    saveSettings();
    event->accept();
}

void MainWindow::saveSettings()
{
    savePlacement(*settings(), m_normalGeometry.placement(this));
    m_layout.save(m_state);
    m_recentFiles.save();
    m_recentWorkspaces.save();
    m_textFormats.saveToSettings(*settings());
    settings()->sync();
    if (settings()->status() == QSettings::AccessError)
        qWarning("MainWindow::saveSettings: the settings cannot be written (%s)", qPrintable(settings()->fileName()));
}
