#pragma once
#include <QObject>
class PopupMenu;
struct WindowParts;

/// The menus whose contents change. Each is filled when it is about to open.
class WindowMenus : public QObject
{
    Q_OBJECT
public:
    /// @p parts, which outlives this object, has its menus already.
    explicit WindowMenus(WindowParts &parts);

public Q_SLOTS: // by position in the menu; positions that it does not have are ignored
    void recentFileSelected(int index);
    void recentWorkspaceSelected(int index);
    void activateView(int index);
    void activateConfiguration(int index);

private:
    void connectMenu(const QString &name, void (WindowMenus::*update)());
    void fillViewToolbarsMenu(PopupMenu *menu);
    void updateViewMenu();
    void updateViewToolbarsMenu();
    void updateWindowMenu();
    void updateRecentFilesMenu();
    void updateRecentWorkspacesMenu();
    void updateConfigurationsMenu();
    void updateToolsMenu();
    void updateBuildMenu();
    void updateDebugMenu();
    void updateDebugWindowsMenu();

    WindowParts &m_parts;
};
