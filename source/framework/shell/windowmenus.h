#pragma once
#include <QObject>
class PopupMenu;
struct WindowParts;

/// The menus whose contents change. Each is filled when it is about to open.
class WindowMenus : public QObject
{
    Q_OBJECT
public:
    /// @p parts outlives this object. Its menus must exist.
    explicit WindowMenus(WindowParts &parts);

public Q_SLOTS: // the argument is the position in the menu; positions out of range are ignored
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
