#include "mainservices.h"
#include "dockwindow.h"
#include "document.h"
#include "ideapplication.h"
#include "macromanager.h"
#include "mainwindow.h"
#include "navigator.h"
#include "outputwindow.h"
#include "project.h"
#include "projectsaving.h"
#include "scriptdirectories.h"
#include "viewmanager.h"
#include "windowparts.h"
#include "workspace.h"
#include <QStatusBar>

// Parts of the window

QWidget *MainServices::dialogParent()
{
    return &m_parts.window;
}

Workspace *MainServices::workspace() const
{
    return m_parts.workspace.get();
}

ViewManager *MainServices::viewManager() const
{
    return m_parts.viewManager.get();
}

Navigator *MainServices::navigator() const
{
    return m_parts.navigator;
}

OutputWindow *MainServices::outputWindow() const
{
    return m_parts.outputWindow;
}

int MainServices::currentLine() const
{
    return m_parts.status.line();
}

QAction *MainServices::action(const QString &name) const
{
    return m_parts.ui.action(name);
}

QIcon MainServices::icon(const QString &name) const
{
    return IDEApplication::instance()->loadIcon(name);
}

// Scripts

ScriptDirectories MainServices::scriptDirectories() const
{
    return IDEApplication::instance()->scriptDirectories();
}

MacroManager &MainServices::macros()
{
    return *m_parts.macros;
}

// Files and settings

QSettings &MainServices::settings() const
{
    return *IDEApplication::instance()->settings();
}

LastDirectories &MainServices::directories()
{
    return m_parts.directories;
}

QString MainServices::sourceFilter() const
{
    return ::sourceFilter(m_parts.sourceExtensions);
}

bool MainServices::openFile(const QString &path, bool addToRecent)
{
    return m_parts.fileCommands->openFile(path, addToRecent);
}

bool MainServices::fileSaveAll()
{
    if (!m_parts.fileCommands->mayOverwriteNewer())
        return false;
    const bool documentsSaved = m_parts.workspace->saveAll(true);
    return m_parts.projectCommands->saveModified() && documentsSaved;
}

void MainServices::checkFileChanges()
{
    m_parts.fileCommands->checkFileChanges();
    m_parts.projectCommands->checkFileChanges();
}

// Docks and the status bar

DockWindow *MainServices::addDock(const QString &objectName, const QString &caption, Qt::DockWidgetArea area)
{
    return m_parts.addDock(objectName, caption, area);
}

void MainServices::saveDockLayout()
{
    m_parts.layout.save(m_parts.activity.stateOfWork());
}

void MainServices::restoreDockLayout()
{
    m_parts.layout.restore(m_parts.activity.stateOfWork());
}

void MainServices::showOutputDock()
{
    m_parts.outputDock->bringUp();
}

void MainServices::showMessage(const QString &text, int milliseconds)
{
    QStatusBar *bar = m_parts.window.statusBar();
    bar->showMessage(text, milliseconds);
    bar->repaint(); // long work may follow
}

void MainServices::replaceMessage(const QString &present, const QString &text)
{
    const QString shown = m_parts.window.statusBar()->currentMessage();
    if (shown.isEmpty() || shown == present)
        showMessage(text, 0);
}

void MainServices::showStatusInfo(const QString &text, int position)
{
    m_parts.status.showInfo(text, position);
}

// Plug-ins, scripts and editors

IPluginObject *MainServices::createPlugin(const QString &feature) const
{
    return IDEApplication::instance()->createPlugin(feature);
}

void MainServices::runPyFile(const QString &path)
{
    const Project *project = m_parts.activity.currentProject();
    m_parts.outputWindow->runScript(QDir::cleanPath(project ? QDir(project->basePath()).absoluteFilePath(path) : path));
}

void MainServices::fireEvent(const QString &name)
{
    m_parts.events.fire(name);
}

EventHandlers &MainServices::eventHandlers()
{
    return m_parts.events;
}

PythonOutputPanel *MainServices::pythonOutput() const
{
    return m_parts.pythonOutput;
}

bool MainServices::replaceWorkspace(const QString &path)
{
    if (!m_parts.ready || !QFileInfo(path).isFile())
        return false;
    if (!closeOpenWorkspace() && m_parts.activity.workspace())
        return false;
    return m_parts.projectCommands->openWorkspace(path, true);
}

bool MainServices::closeOpenWorkspace()
{
    return m_parts.projectCommands->closeWorkspace();
}

bool MainServices::mayOverwriteNewer(const QString &path)
{
    return ::mayOverwriteNewer(dialogParent(), path);
}

void MainServices::build(bool rebuild)
{
    if (rebuild)
        m_parts.buildControl->buildRebuild();
    else
        m_parts.buildControl->buildBuild();
}

void MainServices::debugStop()
{
    m_parts.debugControl->debugStop();
}

void MainServices::debugRestart()
{
    m_parts.debugControl->debugRestart();
}

void MainServices::debugAttach()
{
    m_parts.debugControl->debugAttach();
}

void MainServices::updateDebugWindows(int parts)
{
    m_parts.debugControl->updateDebugWindows(parts);
}

QString MainServices::markerToolTip(const QString &filename, int line)
{
    return m_parts.debugControl->breakpointToolTip(filename, line);
}

QAction *MainServices::sharedAction(const QString &name)
{
    return m_parts.ui.action(name);
}

QPixmap MainServices::picture(const QString &name)
{
    return IDEApplication::instance()->loadPixmap(name);
}
