#include "dockwindow.h"
#include "extensioncommands.h"
#include "idisassembly.h"
#include "iexecutionenvironment.h"
#include "mainwindow.h"
#include "pluginbinder.h"
#include "project.h"
#include "projectworkspace.h"
#include "toolbar.h"
#include "view.h"
#include "viewmanager.h"
#include <QAction>

using namespace Qt::StringLiterals;

// The menus that change, each filled when it is about to open.

void MainWindow::fillViewToolbarsMenu(PopupMenu *menu)
{
    const QList<QWidget *> windows = dockWindows();
    for (int i = 0; i < windows.size(); ++i) {
        if (auto *bar = qobject_cast<ToolBar *>(windows[i]))
            menu->insertItem(bar->windowTitle(), i, [bar](int) { bar->toggleVisible(); })->setCheckable(true);
    }
}

void MainWindow::updateViewMenu()
{
    m_ui.setActionChecked(u"viewNavigator"_s, m_navigatorDock->isVisible());
    m_ui.setActionChecked(u"viewOutput"_s, m_outputDock->isVisible());
}

void MainWindow::updateViewToolbarsMenu()
{
    const PopupMenu *menu = m_ui.menu(u"viewToolbarsMenu"_s);
    const QList<QWidget *> windows = dockWindows();
    for (int i = 0; i < windows.size(); ++i) {
        if (QAction *item = menu->item(i))
            item->setChecked(windows[i]->isVisible());
    }
}

void MainWindow::updateWindowMenu()
{
    QList<MenuEntry> entries;
    for (const View *view : m_viewManager->views())
        entries.append({.text = view->title(), .checked = view == m_viewManager->currentView()});
    DynamicMenus::fillWindowMenu(m_ui.menu(u"windowMenu"_s), entries, [this](int i) { activateView(i); });
}

void MainWindow::updateRecentFilesMenu()
{
    DynamicMenus::fillRecentList(m_ui.menu(u"fileRecentFilesMenu"_s), m_recentFiles.paths(), true,
                                 [this](int i) { recentFileSelected(i); });
}

void MainWindow::updateRecentWorkspacesMenu()
{
    const bool quiet = m_state == StateNoWorkspace || m_state == StateIdle;
    DynamicMenus::fillRecentList(m_ui.menu(u"projectRecentWorkspacesMenu"_s), m_recentWorkspaces.paths(), quiet,
                                 [this](int i) { recentWorkspaceSelected(i); });
}

void MainWindow::updateConfigurationsMenu()
{
    QList<MenuEntry> entries;
    if (const Project *project = currentProject()) {
        const QStringList names = project->properties()->configurations();
        for (const QString &name : names)
            entries.append({.text = name,
                            .checked = name == project->currentConfiguration(),
                            .enabled = m_state == StateIdle && names.size() > 1});
    }
    DynamicMenus::fillPlain(m_ui.menu(u"buildConfigurationsMenu"_s), entries,
                            [this](int i) { activateConfiguration(i); });
}

void MainWindow::updateToolsMenu()
{
    DynamicMenus::fillToolsMenu(m_ui.menu(u"toolsMenu"_s), {}, [this](int i) { executeExternalTool(i); });
}

void MainWindow::updateBuildMenu()
{
    DynamicMenus::fillAtEnd(m_ui.menu(u"buildMenu"_s), buildExtensionEntries(currentProject()),
                            [this](int i) { executeBuildExtensionCommand(i); });
}

void MainWindow::updateDebugMenu()
{
    DynamicMenus::fillGroupsAtEnd(m_ui.menu(u"debugMenu"_s), debugExtensionEntries(m_projectWorkspace),
                                  [this](int i) { executeDebugExtensionCommand(i); });
    const Project *project = currentProject();
    const auto disassembly = queryInterface<IDisassembly>(project ? project->executionInterface() : nullptr);
    m_ui.setActionEnabled(u"debugViewDisassembly"_s, disassembly != nullptr);
}

void MainWindow::updateDebugWindowsMenu()
{
    m_ui.setActionChecked(u"debugToggleRegisterWindow"_s, m_registerDock->isVisible());
    m_ui.setActionChecked(u"debugTogglePeripheralWindow"_s, m_peripheralDock->isVisible());
    m_ui.setActionChecked(u"debugToggleWatchWindow"_s, m_watchDock->isVisible());
    m_ui.setActionChecked(u"debugToggleMemoryWindow"_s, m_memoryDock->isVisible());
    DynamicMenus::fillAtEnd(m_ui.menu(u"debugWindowsMenu"_s), m_pluginBinder->extensionDockEntries(),
                            [this](int i) { extensionDockWindowSelected(i); });
}
