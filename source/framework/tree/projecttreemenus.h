#pragma once
#include <QCoreApplication>
class PopupMenu;
class ProjectTree;
class QAction;
class QPoint;
class WindowServices;

/// The context menus of a project tree, with items that call its slots and with actions of the window.
class ProjectTreeMenus
{
    Q_DECLARE_TR_FUNCTIONS(ProjectTreeMenus)
public:
    /// Both arguments outlive this object; the menus belong to the tree.
    ProjectTreeMenus(ProjectTree &tree, const WindowServices &window);

    void showForProject(bool isActive, const QPoint &point);
    void showForFolder(const QPoint &point);
    void showForFile(const QString &name, const QPoint &point);

private:
    PopupMenu *newMenu(const QString &name);
    void addSharedActions(PopupMenu *menu, const QStringList &names);
    void fillProjectMenu();
    void fillFolderMenu();
    void fillFileMenu(PopupMenu *menu);

    ProjectTree &m_tree;
    const WindowServices &m_window;
    PopupMenu *m_projectMenu;
    PopupMenu *m_folderMenu;
    PopupMenu *m_fileMenu;
    PopupMenu *m_pyFileMenu;
    QAction *m_removeProject = nullptr; ///< in m_projectMenu
};
