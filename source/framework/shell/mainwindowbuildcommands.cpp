#include "mainwindow.h"
#include "windowparts.h"

// The commands of the menus Build and Debug.

void MainWindow::buildCompileFile()
{
    m_parts->buildControl->buildCompileFile();
}

void MainWindow::buildBuild()
{
    m_parts->buildControl->buildBuild();
}

void MainWindow::buildRebuild()
{
    m_parts->buildControl->buildRebuild();
}

void MainWindow::buildClean()
{
    m_parts->buildControl->buildClean();
}

void MainWindow::buildBuildAlt()
{
    m_parts->buildControl->buildBuildAlt();
}

void MainWindow::buildRebuildAlt()
{
    m_parts->buildControl->buildRebuildAlt();
}

void MainWindow::buildCleanAlt()
{
    m_parts->buildControl->buildCleanAlt();
}

void MainWindow::buildStopBuild()
{
    m_parts->buildControl->buildStopBuild();
}

void MainWindow::buildBatchBuild()
{
    m_parts->buildControl->buildBatchBuild();
}

void MainWindow::buildConfigurationsNew()
{
    m_parts->buildControl->buildConfigurationsNew();
}

void MainWindow::buildConfigurationsEdit()
{
    m_parts->buildControl->buildConfigurationsEdit();
}

void MainWindow::debugRun()
{
    m_parts->debugControl->debugRun();
}

void MainWindow::debugAttach()
{
    m_parts->debugControl->debugAttach();
}

void MainWindow::debugRunToCursor()
{
    m_parts->debugControl->debugRunToCursor();
}

void MainWindow::debugStepOver()
{
    m_parts->debugControl->debugStepOver();
}

void MainWindow::debugStepInto()
{
    m_parts->debugControl->debugStepInto();
}

void MainWindow::debugPause()
{
    m_parts->debugControl->debugPause();
}

void MainWindow::debugStop()
{
    m_parts->debugControl->debugStop();
}

void MainWindow::debugRestart()
{
    m_parts->debugControl->debugRestart();
}

void MainWindow::debugWakeup()
{
    m_parts->debugControl->debugWakeup();
}

void MainWindow::debugShowNext()
{
    m_parts->debugControl->debugShowNext();
}

void MainWindow::debugBreakpoints()
{
    m_parts->debugControl->debugBreakpoints();
}

void MainWindow::debugToggleBreakpoint()
{
    m_parts->debugControl->debugToggleBreakpoint();
}

void MainWindow::debugViewDisassembly()
{
    m_parts->debugControl->debugViewDisassembly();
}

void MainWindow::debugToggleRegisterWindow(bool)
{
    m_parts->debugWindows->toggle(DebugWindows::Registers);
}

void MainWindow::debugTogglePeripheralWindow(bool)
{
    m_parts->debugWindows->toggle(DebugWindows::Peripherals);
}

void MainWindow::debugToggleWatchWindow(bool)
{
    m_parts->debugWindows->toggle(DebugWindows::Watches);
}

void MainWindow::debugToggleMemoryWindow(bool)
{
    m_parts->debugWindows->toggle(DebugWindows::Memory);
}
