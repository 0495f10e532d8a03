#include "dockwindow.h"
#include "editablescript.h"
#include "editproperties.h"
#include "focuswithin.h"
#include "helpcommands.h"
#include "ideapplication.h"
#include "macrocommands.h"
#include "mainwindow.h"
#include "makefilecommand.h"
#include "navigator.h"
#include "outputwindow.h"
#include "scriptdirectories.h"
#include "varnelassert.h"
#include "windowparts.h"

// The commands of the actions, in the order of the menus, without those of the menus Build and Debug.

using namespace Qt::StringLiterals;

namespace {
void warnNotImplemented(const char *command)
{
    qWarning("Slot not implemented: %s", command);
}

QString macroFile()
{
    return editableScript(IDEApplication::instance()->scriptDirectories(), u"macros.py"_s);
}
} // namespace

void MainWindow::fileNew()
{
    m_parts->templateCommands->fileNew();
}

void MainWindow::fileOpen()
{
    m_parts->fileCommands->open();
}

void MainWindow::fileClose()
{
    m_parts->fileCommands->close();
}

void MainWindow::fileCloseAll()
{
    m_parts->fileCommands->closeAll();
}

void MainWindow::fileSave()
{
    m_parts->fileCommands->save();
}

void MainWindow::fileSaveAs()
{
    m_parts->fileCommands->saveAs();
}

bool MainWindow::fileSaveAll()
{
    return m_parts->services.fileSaveAll();
}

void MainWindow::filePrint()
{
    m_parts->fileCommands->print();
}

void MainWindow::fileExit()
{
    close();
}

void MainWindow::fileProperties()
{
    m_parts->projectCommands->showFileProperties();
}

void MainWindow::fileRevert()
{
    m_parts->fileCommands->revert();
}

void MainWindow::editUndo()
{
    m_parts->editCommands->undo();
}

void MainWindow::editRedo()
{
    m_parts->editCommands->redo();
}

void MainWindow::editCut()
{
    m_parts->editCommands->cut();
}

void MainWindow::editCopy()
{
    m_parts->editCommands->copy();
}

void MainWindow::editPaste()
{
    m_parts->editCommands->paste();
}

void MainWindow::editRemove()
{
    m_parts->editCommands->remove();
}

void MainWindow::editInsertFile()
{
    m_parts->fileCommands->insertFile();
}

void MainWindow::editComment()
{
    if (!m_parts->editCommands->comment())
        warnNotImplemented("editComment");
}

void MainWindow::editUncomment()
{
    if (!m_parts->editCommands->uncomment())
        warnNotImplemented("editUncomment");
}

void MainWindow::editIndent()
{
    m_parts->editCommands->indent();
}

void MainWindow::editUnindent()
{
    if (!m_parts->editCommands->unindent())
        warnNotImplemented("editUnindent");
}

void MainWindow::editFind()
{
    m_parts->findCommands->find();
}

void MainWindow::editReplace()
{
    m_parts->findCommands->replace();
}

void MainWindow::editFindInFiles()
{
    m_parts->fileFindCommands->findInFiles();
}

void MainWindow::editSelectAll()
{
    m_parts->editCommands->selectAll();
}

void MainWindow::editLookupNextLine()
{
    m_parts->outputWindow->lookupNextLine();
}

void MainWindow::viewGotoLine()
{
    m_parts->editCommands->gotoLine();
}

void MainWindow::viewNavigator(bool)
{
    m_parts->navigatorDock->toggleVisible();
}

void MainWindow::viewOutput(bool)
{
    m_parts->outputDock->toggleVisible();
}

void MainWindow::displayFileProperties(ProjectFile *file)
{
    editFileProperties(file, this);
}

void MainWindow::projectNew()
{
    m_parts->templateCommands->projectNew();
}

void MainWindow::projectOpen()
{
    m_parts->projectCommands->open();
}

void MainWindow::projectRepopulate()
{
    m_parts->buildControl->projectRepopulate();
}

void MainWindow::projectGenerateMakefile()
{
    if (!generateMakefiles(m_parts->activity, m_parts->services))
        warnNotImplemented("projectGenerateMakefile");
}

void MainWindow::projectClose()
{
    closeWorkspace();
}

void MainWindow::projectSave()
{
    m_parts->projectCommands->save();
}

void MainWindow::projectInsertFiles()
{
    m_parts->projectCommands->insertFiles(m_parts->activity.currentProject());
}

void MainWindow::projectInsertFilesAlt()
{
    Project *selected = hasFocusWithin(m_parts->navigator) ? m_parts->navigator->selectedProject() : nullptr;
    m_parts->projectCommands->insertFiles(selected ? selected : m_parts->activity.currentProject());
}

void MainWindow::projectInsertProject()
{
    m_parts->projectCommands->insertProject();
}

void MainWindow::projectProperties()
{
    VARNEL_ASSERT_TEXT(m_parts->activity.workspace(), "m_projectWorkspace");
    if (Project *project = m_parts->activity.currentProject())
        editProjectProperties(project, this);
}

void MainWindow::projectPropertiesAlt()
{
    VARNEL_ASSERT_TEXT(m_parts->activity.workspace(), "m_projectWorkspace");
    if (Project *project = m_parts->navigator->selectedProject())
        editProjectProperties(project, this);
}

void MainWindow::toolsMacroNew()
{
    if (!addMacroTo(macroFile(), m_parts->services))
        warnNotImplemented("toolsMacroNew");
}

void MainWindow::toolsMacroEdit()
{
    m_parts->workspace->openDocument(macroFile(), true);
}

void MainWindow::toolsCustomise()
{
    m_parts->optionsCommands->showOptions(u"shortcutsPage"_s);
}

void MainWindow::toolsOptions()
{
    m_parts->optionsCommands->showOptions();
}

void MainWindow::windowNew()
{
    m_parts->viewManager->newView();
}

void MainWindow::windowSplit()
{
    m_parts->viewManager->split();
}

void MainWindow::windowClose()
{
    m_parts->viewManager->closeCurrentView();
}

void MainWindow::windowCloseAll()
{
    m_parts->viewManager->closeAll();
}

void MainWindow::windowCascade()
{
    m_parts->viewManager->cascade();
}

void MainWindow::windowTile()
{
    m_parts->viewManager->tile();
}

void MainWindow::windowNext()
{
    m_parts->viewManager->nextView();
}

void MainWindow::windowPrev()
{
    m_parts->viewManager->previousView();
}

void MainWindow::helpSearch()
{
    m_parts->helpCommands->search();
}

void MainWindow::helpHome()
{
    m_parts->navigator->helpHome();
}

void MainWindow::helpBack()
{
    m_parts->viewManager->back();
}

void MainWindow::helpForward()
{
    m_parts->viewManager->forward();
}

void MainWindow::helpPrevious()
{
    m_parts->navigator->previous();
}

void MainWindow::helpNext()
{
    m_parts->navigator->next();
}

void MainWindow::helpAbout()
{
    m_parts->helpCommands->about();
}

void MainWindow::find(const QString &text, bool matchCase, bool matchWord, bool forward, bool startAtCursor)
{
    m_parts->findCommands->find(text, matchCase, matchWord, forward, startAtCursor);
}

void MainWindow::searchBoxFind(const QString &text)
{
    find(text, false, false, true, false);
}

void MainWindow::searchBoxFindAgain(const QString &text)
{
    find(text, false, false, true, true);
}
