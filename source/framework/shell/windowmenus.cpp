#include "windowmenus.h"
#include "callplugin.h"
#include "dockwindow.h"
#include "dynamicmenus.h"
#include "extensioncommands.h"
#include "idisassembly.h"
#include "mainwindow.h"
#include "project.h"
#include "toolbar.h"
#include "varnelassert.h"
#include "viewmanager.h"
#include "windowparts.h"
#include <QAction>

using namespace Qt::StringLiterals;

WindowMenus::WindowMenus(WindowParts &parts) : QObject(&parts.window), m_parts(parts)
{
    if (PopupMenu *menu = parts.ui.menu(u"viewToolbarsMenu"_s))
        fillViewToolbarsMenu(menu);
    connectMenu(u"viewMenu"_s, &WindowMenus::updateViewMenu);
    connectMenu(u"viewToolbarsMenu"_s, &WindowMenus::updateViewToolbarsMenu);
    connectMenu(u"windowMenu"_s, &WindowMenus::updateWindowMenu);
    connectMenu(u"fileRecentFilesMenu"_s, &WindowMenus::updateRecentFilesMenu);
    connectMenu(u"projectRecentWorkspacesMenu"_s, &WindowMenus::updateRecentWorkspacesMenu);
    connectMenu(u"buildConfigurationsMenu"_s, &WindowMenus::updateConfigurationsMenu);
    connectMenu(u"toolsMenu"_s, &WindowMenus::updateToolsMenu);
    connectMenu(u"buildMenu"_s, &WindowMenus::updateBuildMenu);
    connectMenu(u"debugMenu"_s, &WindowMenus::updateDebugMenu);
    connectMenu(u"debugWindowsMenu"_s, &WindowMenus::updateDebugWindowsMenu);
}

void WindowMenus::connectMenu(const QString &name, void (WindowMenus::*update)())
{
    if (const PopupMenu *menu = m_parts.ui.menu(name))
        connect(menu, &QMenu::aboutToShow, this, update);
}

void WindowMenus::fillViewToolbarsMenu(PopupMenu *menu)
{
    const QList<QWidget *> windows = m_parts.dockWindows();
    for (int i = 0; i < windows.size(); ++i) {
        if (auto *bar = qobject_cast<ToolBar *>(windows[i]))
            menu->insertItem(bar->windowTitle(), i, [bar](int) { bar->toggleVisible(); })->setCheckable(true);
    }
}

void WindowMenus::updateViewMenu()
{
    m_parts.ui.setActionChecked(u"viewNavigator"_s, m_parts.navigatorDock->isVisible());
    m_parts.ui.setActionChecked(u"viewOutput"_s, m_parts.outputDock->isVisible());
}

void WindowMenus::updateViewToolbarsMenu()
{
    const PopupMenu *menu = m_parts.ui.menu(u"viewToolbarsMenu"_s);
    const QList<QWidget *> windows = m_parts.dockWindows();
    for (int i = 0; i < windows.size(); ++i) {
        if (QAction *item = menu->item(i))
            item->setChecked(windows[i]->isVisible());
    }
}

void WindowMenus::updateWindowMenu()
{
    QList<MenuEntry> entries;
    for (const View *view : m_parts.viewManager->views())
        entries.append({.text = view->title(), .checked = view == m_parts.viewManager->currentView()});
    DynamicMenus::fillWindowMenu(m_parts.ui.menu(u"windowMenu"_s), entries, [this](int i) { activateView(i); });
}

void WindowMenus::activateView(int index)
{
    if (View *view = m_parts.viewManager->views().value(index))
        m_parts.viewManager->activateView(view, true);
}

void WindowMenus::updateRecentFilesMenu()
{
    DynamicMenus::fillRecentList(m_parts.ui.menu(u"fileRecentFilesMenu"_s), m_parts.fileCommands->recentFiles(), true,
                                 [this](int i) { recentFileSelected(i); });
}

void WindowMenus::recentFileSelected(int index)
{
    m_parts.fileCommands->openRecent(index);
}

void WindowMenus::recentWorkspaceSelected(int index)
{
    m_parts.projectCommands->openRecent(index);
}

void WindowMenus::updateRecentWorkspacesMenu()
{
    const ActivityState state = m_parts.activity.state();
    const bool quiet = state == StateNoWorkspace || state == StateIdle;
    DynamicMenus::fillRecentList(m_parts.ui.menu(u"projectRecentWorkspacesMenu"_s),
                                 m_parts.projectCommands->recentWorkspaces(), quiet,
                                 [this](int i) { recentWorkspaceSelected(i); });
}

void WindowMenus::updateConfigurationsMenu()
{
    QList<MenuEntry> entries;
    if (const Project *project = m_parts.activity.currentProject()) {
        const QStringList names = project->properties()->configurations();
        for (const QString &name : names)
            entries.append({.text = DynamicMenus::withoutMnemonics(name),
                            .checked = name == project->currentConfiguration(),
                            .enabled = m_parts.activity.state() == StateIdle && names.size() > 1});
    }
    DynamicMenus::fillPlain(m_parts.ui.menu(u"buildConfigurationsMenu"_s), entries,
                            [this](int i) { activateConfiguration(i); });
}

void WindowMenus::activateConfiguration(int index)
{
    Project *project = m_parts.activity.currentProject();
    VARNEL_ASSERT(project);
    const QString name = project ? project->properties()->configurations().value(index) : QString();
    if (!name.isEmpty())
        project->setCurrentConfiguration(name);
}

void WindowMenus::updateToolsMenu()
{
    m_parts.toolsCommands->updateMenu(m_parts.ui.menu(u"toolsMenu"_s));
}

void WindowMenus::updateBuildMenu()
{
    DynamicMenus::fillAtEnd(m_parts.ui.menu(u"buildMenu"_s), buildExtensionEntries(m_parts.activity.currentProject()),
                            [this](int i) { m_parts.buildControl->executeExtensionCommand(i); });
}

void WindowMenus::updateDebugMenu()
{
    DynamicMenus::fillGroupsAtEnd(m_parts.ui.menu(u"debugMenu"_s), debugExtensionEntries(m_parts.activity),
                                  [this](int i) { executeDebugExtension(m_parts.activity, i); });
    const Activity::Environment environment = m_parts.activity.currentEnvironment();
    m_parts.ui.setActionEnabled(u"debugViewDisassembly"_s, queryPlugin<IDisassembly>(environment.get()) != nullptr);
}

void WindowMenus::updateDebugWindowsMenu()
{
    m_parts.debugWindows->updateCheckMarks();
    DynamicMenus::fillAtEnd(m_parts.ui.menu(u"debugWindowsMenu"_s), m_parts.pluginBinder->extensionDockEntries(),
                            [this](int i) { m_parts.pluginBinder->toggleExtensionDock(i); });
}
