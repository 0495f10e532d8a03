#include "automation.h"
#include "extensioncommands.h"
#include "ideapplication.h"
#include "mainwindow.h"
#include "messages.h"
#include "project.h"
#include "projectworkspace.h"
#include "varnelassert.h"
#include <QDialog>

// The commands. One whose owner is not there yet does what it does without a workspace, a project and views: that is
// mostly nothing. The others say so on the warning channel.

namespace {
void warnNoOwner(const char *command)
{
    qWarning("MainWindow::%s: nothing here can do this yet", command);
}

void warnNotImplemented(const char *command)
{
    qWarning("Slot not implemented: %s", command);
}
} // namespace

void MainWindow::fileNew()
{
    warnNoOwner("fileNew");
}

void MainWindow::fileOpen()
{
    warnNoOwner("fileOpen");
}

void MainWindow::fileClose() {}

void MainWindow::fileCloseAll() {}

void MainWindow::fileSave() {}

void MainWindow::fileSaveAs() {}

bool MainWindow::fileSaveAll()
{
    return true;
}

void MainWindow::filePrint() {}

void MainWindow::fileExit()
{
    close();
}

void MainWindow::fileProperties() {}

void MainWindow::fileRevert() {}

void MainWindow::editUndo() {}

void MainWindow::editRedo() {}

void MainWindow::editCut() {}

void MainWindow::editCopy() {}

void MainWindow::editPaste() {}

void MainWindow::editRemove() {}

void MainWindow::editInsertFile()
{
    warnNoOwner("editInsertFile");
}

void MainWindow::editComment()
{
    warnNotImplemented("editComment");
}

void MainWindow::editUncomment()
{
    warnNotImplemented("editUncomment");
}

void MainWindow::editIndent() {}

void MainWindow::editUnindent()
{
    warnNotImplemented("editUnindent");
}

void MainWindow::editFind() {}

void MainWindow::editReplace() {}

void MainWindow::editFindInFiles()
{
    warnNoOwner("editFindInFiles");
}

void MainWindow::editSelectAll() {}

void MainWindow::editLookupNextLine()
{
    warnNoOwner("editLookupNextLine");
}

void MainWindow::viewGotoLine()
{
    warnNoOwner("viewGotoLine");
}

void MainWindow::viewNavigator(bool)
{
    warnNoOwner("viewNavigator");
}

void MainWindow::viewOutput(bool)
{
    warnNoOwner("viewOutput");
}

void MainWindow::projectNew()
{
    warnNoOwner("projectNew");
}

void MainWindow::projectOpen()
{
    warnNoOwner("projectOpen");
}

void MainWindow::projectRepopulate()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::projectGenerateMakefile()
{
    warnNotImplemented("projectGenerateMakefile");
}

void MainWindow::projectClose() {}

void MainWindow::projectSave()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::projectInsertFiles()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::projectInsertFilesAlt()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::projectInsertProject()
{
    VARNEL_ASSERT(m_projectWorkspace);
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
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::buildBuild()
{
    VARNEL_ASSERT(m_projectWorkspace);
    showInformation(this, tr("The project cannot be built.\n\nNo build environment is available."));
}

void MainWindow::buildRebuild()
{
    VARNEL_ASSERT(m_projectWorkspace);
    showInformation(this, tr("The project cannot be built.\n\nNo build environment is available."));
}

void MainWindow::buildClean()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::buildBuildAlt() {}

void MainWindow::buildRebuildAlt() {}

void MainWindow::buildCleanAlt() {}

void MainWindow::buildStopBuild() {}

void MainWindow::buildBatchBuild()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::buildConfigurationsNew()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::buildConfigurationsEdit()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::debugRun()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::debugAttach() {}

void MainWindow::debugRunToCursor()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::debugStepOver()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::debugStepInto()
{
    VARNEL_ASSERT(m_projectWorkspace);
}

void MainWindow::debugPause() {}

void MainWindow::debugStop() {}

void MainWindow::debugRestart() {}

void MainWindow::debugWakeup() {}

void MainWindow::debugShowNext() {}

void MainWindow::debugBreakpoints()
{
    if (!m_projectWorkspace)
        showInformation(this, tr("Cannot edit breakpoints.\n\nOpen a project that supports breakpoints first."));
}

void MainWindow::debugToggleBreakpoint() {}

void MainWindow::debugViewDisassembly() {}

void MainWindow::debugToggleRegisterWindow(bool)
{
    warnNoOwner("debugToggleRegisterWindow");
}

void MainWindow::debugTogglePeripheralWindow(bool)
{
    warnNoOwner("debugTogglePeripheralWindow");
}

void MainWindow::debugToggleWatchWindow(bool)
{
    warnNoOwner("debugToggleWatchWindow");
}

void MainWindow::debugToggleMemoryWindow(bool)
{
    warnNoOwner("debugToggleMemoryWindow");
}

void MainWindow::toolsMacroNew()
{
    warnNotImplemented("toolsMacroNew");
}

void MainWindow::toolsMacroEdit()
{
    warnNoOwner("toolsMacroEdit");
}

void MainWindow::toolsCustomise()
{
    warnNotImplemented("toolsCustomise");
}

void MainWindow::toolsOptions()
{
    warnNoOwner("toolsOptions");
}

void MainWindow::windowNew() {}

void MainWindow::windowSplit() {}

void MainWindow::windowClose() {}

void MainWindow::windowCloseAll() {}

void MainWindow::windowCascade() {}

void MainWindow::windowTile() {}

void MainWindow::windowNext() {}

void MainWindow::windowPrev() {}

void MainWindow::helpSearch()
{
    warnNoOwner("helpSearch");
}

void MainWindow::helpHome()
{
    warnNoOwner("helpHome");
}

void MainWindow::helpBack() {}

void MainWindow::helpForward() {}

void MainWindow::helpPrevious()
{
    warnNoOwner("helpPrevious");
}

void MainWindow::helpNext()
{
    warnNoOwner("helpNext");
}

void MainWindow::helpAbout()
{
    if (const std::unique_ptr<QDialog> box = IDEApplication::instance()->aboutBox())
        box->exec();
}

bool MainWindow::openProject(const QString &, bool)
{
    warnNoOwner("openProject");
    return false;
}

bool MainWindow::openWorkspace(const QString &, bool)
{
    warnNoOwner("openWorkspace");
    return false;
}

void MainWindow::startServer(quint16 port)
{
    startAutomation(port, this, m_ui, *IDEApplication::instance()->settings());
}

void MainWindow::searchBoxFind(const QString &) {}

void MainWindow::searchBoxFindAgain(const QString &) {}

void MainWindow::projectDropdownChanged(int index)
{
    VARNEL_ASSERT(m_projectWorkspace);
    if (m_projectWorkspace)
        m_projectWorkspace->setCurrentProject(index);
}

void MainWindow::recentFileSelected(int)
{
    warnNoOwner("recentFileSelected");
}

void MainWindow::recentWorkspaceSelected(int)
{
    warnNoOwner("recentWorkspaceSelected");
}

void MainWindow::activateView(int) {}

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
    executeDebugExtension(m_projectWorkspace.get(), index);
}

void MainWindow::extensionDockWindowSelected(int) {}
