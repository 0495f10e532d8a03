#include "projecttreemenus.h"
#include "popupmenu.h"
#include "projecttree.h"
#include "windowservices.h"
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
constexpr int SetActiveId = 1;
} // namespace

ProjectTreeMenus::ProjectTreeMenus(ProjectTree &tree, const WindowServices &window) : m_tree(tree), m_window(window)
{
    newMenu(u"workspaceContextMenu"_s);
    m_projectMenu = newMenu(u"projectContextMenu"_s);
    m_folderMenu = newMenu(u"folderContextMenu"_s);
    m_fileMenu = newMenu(u"fileContextMenu"_s);
    m_pyFileMenu = newMenu(u"pyFileContextMenu"_s);
    fillProjectMenu();
    fillFolderMenu();
    fillFileMenu(m_fileMenu);
    fillFileMenu(m_pyFileMenu);
    m_pyFileMenu->addSeparator();
    m_pyFileMenu->addAction(tr("&Run"), &m_tree, [this] { m_tree.runPyFile(); });
}

PopupMenu *ProjectTreeMenus::newMenu(const QString &name)
{
    auto *menu = new PopupMenu(&m_tree);
    menu->setObjectName(name);
    return menu;
}

void ProjectTreeMenus::addSharedActions(PopupMenu *menu, const QStringList &names)
{
    for (const QString &name : names) {
        if (QAction *action = m_window.action(name))
            menu->addAction(action);
    }
}

void ProjectTreeMenus::fillProjectMenu()
{
    addSharedActions(m_projectMenu, {u"projectInsertFilesAlt"_s});
    m_projectMenu->addAction(tr("New Folder"), &m_tree, &ProjectTree::createNewFolder);
    m_projectMenu->addSeparator();
    addSharedActions(m_projectMenu, {u"editPaste"_s});
    m_projectMenu->addSeparator();
    addSharedActions(m_projectMenu, {u"buildBuildAlt"_s, u"buildRebuildAlt"_s, u"buildCleanAlt"_s});
    m_projectMenu->addSeparator();
    m_projectMenu->insertItem(tr("Set as Acti&ve Project"), SetActiveId, [this](int) { m_tree.setActiveProject(); });
    m_removeProject =
        m_projectMenu->addAction(tr("&Remove Project from Workspace"), &m_tree, &ProjectTree::removeProject);
    m_projectMenu->addSeparator();
    addSharedActions(m_projectMenu, {u"projectPropertiesAlt"_s});
    m_projectMenu->addSeparator();
    m_projectMenu->addAction(tr("Save as &Template..."), &m_tree, [this] {
        if (Project *project = m_tree.selectedProject())
            Q_EMIT m_tree.saveAsTemplate(project);
    });
}

void ProjectTreeMenus::fillFolderMenu()
{
    m_folderMenu->addAction(tr("Add &Files to Folder..."), &m_tree, &ProjectTree::addFilesToFolder);
    m_folderMenu->addAction(tr("&New Folder"), &m_tree, &ProjectTree::createNewFolder);
    m_folderMenu->addSeparator();
    addSharedActions(m_folderMenu, {u"editCut"_s, u"editPaste"_s, u"editRemove"_s});
    m_folderMenu->addAction(tr("Rena&me"), &m_tree, &ProjectTree::renameFolder);
    m_folderMenu->addSeparator();
    m_folderMenu->addAction(tr("&Properties..."), &m_tree, &ProjectTree::folderProperties);
}

void ProjectTreeMenus::fillFileMenu(PopupMenu *menu)
{
    menu->addAction(tr("&Open"), &m_tree, [this] { m_tree.openFile(); });
    menu->addSeparator();
    addSharedActions(menu, {u"buildCompileFile"_s});
    menu->addSeparator();
    addSharedActions(menu, {u"editCut"_s, u"editRemove"_s});
    menu->addSeparator();
    addSharedActions(menu, {u"fileProperties"_s});
}

void ProjectTreeMenus::showForProject(bool isActive, const QPoint &point)
{
    m_projectMenu->item(SetActiveId)->setEnabled(isActive);
    // While a build or a session runs, projects are neither added nor removed.
    const QAction *insertProject = m_window.action(u"projectInsertProject"_s);
    m_removeProject->setEnabled(!insertProject || insertProject->isEnabled());
    m_projectMenu->popup(point);
}

void ProjectTreeMenus::showForFolder(const QPoint &point)
{
    m_folderMenu->popup(point);
}

void ProjectTreeMenus::showForFile(const QString &name, const QPoint &point)
{
    const bool isPython = QFileInfo(name).completeSuffix() == "py"_L1;
    (isPython ? m_pyFileMenu : m_fileMenu)->popup(point);
}
