#include "automation.h"
#include "buildcontrol.h"
#include "debugcontrol.h"
#include "dockwindow.h"
#include "document.h"
#include "editablescript.h"
#include "editcommands.h"
#include "environmentkey.h"
#include "extensioncommands.h"
#include "filecommands.h"
#include "findcommands.h"
#include "ideapplication.h"
#include "idisassembly.h"
#include "iexecutionenvironment.h"
#include "isourcemapping.h"
#include "mainwindow.h"
#include "messages.h"
#include "navigator.h"
#include "outputwindow.h"
#include "pluginbinder.h"
#include "project.h"
#include "projectworkspace.h"
#include "scriptdirectories.h"
#include "varnelassert.h"
#include "viewmanager.h"
#include "workspace.h"
#include <QApplication>
#include <QDialog>
#include <QStatusBar>

// The commands. One whose owner is not there yet does what it does without a workspace, a project and views: that is
// mostly nothing. The others say so on the warning channel.

using namespace Qt::StringLiterals;

namespace {
/// For commands that still lack the class that would carry them out.
void warnNoOwner(const MainWindow *window, const char *command)
{
    qWarning("MainWindow::%s: nothing here can do this yet", command);
    window->statusBar()->showMessage(MainWindow::tr("This command cannot do anything yet."));
}

void warnNotImplemented(const char *command)
{
    qWarning("Slot not implemented: %s", command);
}
} // namespace

void MainWindow::fileNew()
{
    warnNoOwner(this, "fileNew");
}

void MainWindow::fileOpen()
{
    m_fileCommands->open();
}

void MainWindow::fileClose()
{
    m_fileCommands->close();
}

void MainWindow::fileCloseAll()
{
    m_fileCommands->closeAll();
}

void MainWindow::fileSave()
{
    m_fileCommands->save();
}

void MainWindow::fileSaveAs()
{
    m_fileCommands->saveAs();
}

bool MainWindow::fileSaveAll()
{
    if (!m_fileCommands->mayOverwriteNewer())
        return false;
    const bool documentsSaved = m_workspace->saveAll(true);
    return m_projectCommands->saveModified() && documentsSaved;
}

void MainWindow::filePrint()
{
    m_fileCommands->print();
}

void MainWindow::fileExit()
{
    close();
}

void MainWindow::fileProperties()
{
    m_navigator->showFileProperties();
}

void MainWindow::fileRevert()
{
    m_fileCommands->revert();
}

void MainWindow::editUndo()
{
    m_editCommands->undo();
}

void MainWindow::editRedo()
{
    m_editCommands->redo();
}

void MainWindow::editCut()
{
    m_editCommands->cut();
}

void MainWindow::editCopy()
{
    m_editCommands->copy();
}

void MainWindow::editPaste()
{
    m_editCommands->paste();
}

void MainWindow::editRemove()
{
    m_editCommands->remove();
}

void MainWindow::editInsertFile()
{
    m_fileCommands->insertFile();
}

void MainWindow::editComment()
{
    warnNotImplemented("editComment");
}

void MainWindow::editUncomment()
{
    warnNotImplemented("editUncomment");
}

void MainWindow::editIndent()
{
    m_editCommands->indent();
}

void MainWindow::editUnindent()
{
    warnNotImplemented("editUnindent");
}

void MainWindow::editFind()
{
    m_findCommands->find();
}

void MainWindow::editReplace()
{
    m_findCommands->replace();
}

void MainWindow::editFindInFiles()
{
    m_findCommands->findInFiles();
}

void MainWindow::editSelectAll()
{
    m_editCommands->selectAll();
}

void MainWindow::editLookupNextLine()
{
    m_outputWindow->lookupNextLine();
}

void MainWindow::viewGotoLine()
{
    m_editCommands->gotoLine([this](const QString &symbol) { return lineOfSymbol(symbol); });
}

void MainWindow::viewNavigator(bool)
{
    m_navigatorDock->toggleVisible();
}

void MainWindow::viewOutput(bool)
{
    m_outputDock->toggleVisible();
}

int MainWindow::lineOfSymbol(const QString &symbol) const
{
    const Project *project = currentProject();
    const auto mapping = queryInterface<ISourceMapping>(project ? project->executionInterface() : nullptr);
    uint address = 0;
    return mapping && mapping->symbolAddress(symbol, address) ? int(address + 1) : 0;
}

void MainWindow::displayFileProperties(ProjectFile *)
{
    warnNoOwner(this, "displayFileProperties");
}

void MainWindow::projectNew()
{
    warnNoOwner(this, "projectNew");
}

void MainWindow::projectOpen()
{
    m_projectCommands->open();
}

void MainWindow::projectRepopulate()
{
    m_buildControl->projectRepopulate();
}

void MainWindow::projectGenerateMakefile()
{
    warnNotImplemented("projectGenerateMakefile");
}

void MainWindow::projectClose()
{
    closeWorkspace();
}

void MainWindow::projectSave()
{
    m_projectCommands->save();
}

void MainWindow::projectInsertFiles()
{
    m_projectCommands->insertFiles(currentProject());
}

void MainWindow::projectInsertFilesAlt()
{
    Project *selected =
        m_navigator->isAncestorOf(QApplication::focusWidget()) ? m_navigator->selectedProject() : nullptr;
    m_projectCommands->insertFiles(selected ? selected : currentProject());
}

void MainWindow::projectInsertProject()
{
    m_projectCommands->insertProject();
}

void MainWindow::projectProperties()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::projectPropertiesAlt()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::buildCompileFile()
{
    m_buildControl->buildCompileFile();
}

void MainWindow::buildBuild()
{
    m_buildControl->buildBuild();
}

void MainWindow::buildRebuild()
{
    m_buildControl->buildRebuild();
}

void MainWindow::buildClean()
{
    m_buildControl->buildClean();
}

void MainWindow::buildBuildAlt()
{
    m_buildControl->buildBuildAlt();
}

void MainWindow::buildRebuildAlt()
{
    m_buildControl->buildRebuildAlt();
}

void MainWindow::buildCleanAlt()
{
    m_buildControl->buildCleanAlt();
}

void MainWindow::buildStopBuild()
{
    m_buildControl->buildStopBuild();
}

void MainWindow::buildBatchBuild()
{
    m_buildControl->buildBatchBuild();
}

void MainWindow::buildConfigurationsNew()
{
    m_buildControl->buildConfigurationsNew();
}

void MainWindow::buildConfigurationsEdit()
{
    m_buildControl->buildConfigurationsEdit();
}

void MainWindow::debugRun()
{
    m_debugControl->debugRun();
}

void MainWindow::debugAttach()
{
    m_debugControl->debugAttach();
}

void MainWindow::debugRunToCursor()
{
    m_debugControl->debugRunToCursor();
}

void MainWindow::debugStepOver()
{
    m_debugControl->debugStepOver();
}

void MainWindow::debugStepInto()
{
    m_debugControl->debugStepInto();
}

void MainWindow::debugPause()
{
    m_debugControl->debugPause();
}

void MainWindow::debugStop()
{
    m_debugControl->debugStop();
}

void MainWindow::debugRestart()
{
    m_debugControl->debugRestart();
}

void MainWindow::debugWakeup()
{
    m_debugControl->debugWakeup();
}

void MainWindow::debugShowNext()
{
    m_debugControl->debugShowNext();
}

void MainWindow::debugBreakpoints()
{
    m_debugControl->debugBreakpoints();
}

void MainWindow::debugToggleBreakpoint()
{
    m_debugControl->debugToggleBreakpoint();
}

void MainWindow::debugViewDisassembly()
{
    m_debugControl->debugViewDisassembly();
    const Project *project = currentProject();
    Document *document = m_viewManager->currentDocument();
    if (queryInterface<IDisassembly>(project ? project->executionInterface() : nullptr)
        && !(document && isDisassemblyName(document->filename())))
        warnNoOwner(this, "debugViewDisassembly");
}

void MainWindow::debugToggleRegisterWindow(bool)
{
    m_registerDock->toggleVisible();
}

void MainWindow::debugTogglePeripheralWindow(bool)
{
    m_peripheralDock->toggleVisible();
}

void MainWindow::debugToggleWatchWindow(bool)
{
    m_watchDock->toggleVisible();
}

void MainWindow::debugToggleMemoryWindow(bool)
{
    m_memoryDock->toggleVisible();
}

void MainWindow::toolsMacroNew()
{
    warnNotImplemented("toolsMacroNew");
}

void MainWindow::toolsMacroEdit()
{
    m_workspace->openDocument(editableScript(scriptDirectories(), u"macros.py"_s), true);
}

void MainWindow::toolsCustomise()
{
    warnNotImplemented("toolsCustomise");
}

void MainWindow::toolsOptions()
{
    warnNoOwner(this, "toolsOptions");
}

void MainWindow::windowNew()
{
    m_viewManager->newView();
}

void MainWindow::windowSplit()
{
    m_viewManager->split();
}

void MainWindow::windowClose()
{
    m_viewManager->closeCurrentView();
}

void MainWindow::windowCloseAll()
{
    m_viewManager->closeAll();
}

void MainWindow::windowCascade()
{
    m_viewManager->cascade();
}

void MainWindow::windowTile()
{
    m_viewManager->tile();
}

void MainWindow::windowNext()
{
    m_viewManager->nextView();
}

void MainWindow::windowPrev()
{
    m_viewManager->previousView();
}

void MainWindow::helpSearch()
{
    warnNoOwner(this, "helpSearch");
}

void MainWindow::helpHome()
{
    if (m_navigator->hasHelp())
        m_navigator->helpHome();
}

void MainWindow::helpBack()
{
    m_viewManager->back();
}

void MainWindow::helpForward()
{
    m_viewManager->forward();
}

void MainWindow::helpPrevious()
{
    if (m_navigator->hasHelp())
        m_navigator->previous();
}

void MainWindow::helpNext()
{
    if (m_navigator->hasHelp())
        m_navigator->next();
}

void MainWindow::helpAbout()
{
    if (const std::unique_ptr<QDialog> box = IDEApplication::instance()->aboutBox())
        box->exec();
}

void MainWindow::startServer(quint16 port)
{
    startAutomation(port, this, m_ui, *IDEApplication::instance()->settings());
}

void MainWindow::find(const QString &text, bool matchCase, bool matchWord, bool forward, bool startAtCursor)
{
    QWidget *asker = m_findCommands->findDialog();
    m_editCommands->find(text, matchCase, matchWord, forward, startAtCursor, asker->isVisible() ? asker : this);
}

void MainWindow::searchBoxFind(const QString &text)
{
    find(text, false, false, true, false);
}

void MainWindow::searchBoxFindAgain(const QString &text)
{
    find(text, false, false, true, true);
}

void MainWindow::projectDropdownChanged(int index)
{
    VARNEL_ASSERT(m_projectWorkspace);
    if (m_projectWorkspace)
        m_projectWorkspace->setCurrentProject(index);
}

void MainWindow::recentFileSelected(int index)
{
    m_fileCommands->openRecent(index);
}

void MainWindow::recentWorkspaceSelected(int index)
{
    m_projectCommands->openRecent(index);
}

void MainWindow::activateView(int index)
{
    if (View *view = m_viewManager->views().value(index))
        m_viewManager->activateView(view, true);
}

void MainWindow::executeExternalTool(int) {}

void MainWindow::activateConfiguration(int index)
{
    Project *project = currentProject();
    VARNEL_ASSERT(project);
    if (project)
        project->setCurrentConfiguration(project->properties()->configurations().value(index));
}

void MainWindow::executeBuildExtensionCommand(int index)
{
    executeBuildExtension(currentProject(), index);
}

void MainWindow::executeDebugExtensionCommand(int index)
{
    executeDebugExtension(m_projectWorkspace, index);
}

void MainWindow::extensionDockWindowSelected(int index)
{
    m_pluginBinder->toggleExtensionDock(index);
}
