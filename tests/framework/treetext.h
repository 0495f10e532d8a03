#pragma once
#include "../project/modeltext.h"
#include "activity.h"
#include "fakeservices.h"
#include "lastdirectories.h"
#include "projecttree.h"
#include "projecttreeitem.h"
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QSettings>
#include <QTemporaryDir>

/// A window around a project tree that has every action and records its calls.
class FakeTreeHost : public QWidget, public FakeServices
{
public:
    using QWidget::QWidget;

    /// Adds a shared action for the menus of the tree.
    QAction *addAction(const QString &name, const QKeySequence &shortcut = {})
    {
        auto *action = new QAction(name, this);
        action->setObjectName(name);
        action->setShortcut(shortcut);
        QWidget::addAction(action);
        return action;
    }

    QAction *action(const QString &name) const override { return findChild<QAction *>(name); }
    QWidget *dialogParent() override { return this; }
    QIcon icon(const QString &name) const override
    {
        QPixmap pixmap(16, 16);
        pixmap.fill(colors.value(name));
        return pixmap;
    }
    QString sourceFilter() const override { return QStringLiteral("Source Files (*.c *.h);;All Files (*.*)"); }
    LastDirectories &directories() override { return m_directories; }
    void showMessage(const QString &text, int) override { message = text; }
    [[nodiscard]] QString directory() const { return m_directories.directory(QStringLiteral("Files")); }

    QString message;
    const QHash<QString, QColor> colors{
        {QStringLiteral("treeworkspace.png"), Qt::black},      {QStringLiteral("treeproject.png"), Qt::blue},
        {QStringLiteral("treeprojectinactive.png"), Qt::gray}, {QStringLiteral("treefolder.png"), Qt::yellow},
        {QStringLiteral("treefolderopen.png"), Qt::red},       {QStringLiteral("treesourcefile.png"), Qt::green}};

private:
    QTemporaryDir m_home;
    QSettings m_settings{m_home.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat};
    LastDirectories m_directories{&m_settings, m_home.path()};
};

/// The name of the FakeTreeHost's picture in @p item.
inline QString pictureOf(const FakeTreeHost &host, const QTreeWidgetItem *item)
{
    return host.colors.key(item->icon(0).pixmap(16).toImage().pixelColor(8, 8));
}

/// The rows as on an endless screen: "+" before closed branches, "-" before open ones, bold ones between asterisks.
inline QString shown(const ProjectTree &tree)
{
    QString text;
    for (const ListViewItem *item = tree.firstChild(); item; item = item->itemBelow()) {
        int depth = 0;
        for (const ListViewItem *above = item->parent(); above; above = above->parent())
            ++depth;
        const bool canOpen = tree.model()->hasChildren(tree.indexFromItem(item));
        const bool bold = static_cast<const ProjectTreeItem *>(item)->isBold();
        const QString mark = bold ? QStringLiteral("*") : QString();
        text += QString(2 * depth, u' ')
                + QChar(!canOpen         ? u' '
                        : item->isOpen() ? u'-'
                                         : u'+')
                + u' ' + mark + item->text(0) + mark + u'\n';
    }
    return text;
}

/// The visible row with @p text, in open branches only.
inline ProjectTreeItem *row(const ProjectTree &tree, const QString &text)
{
    for (ListViewItem *item = tree.firstChild(); item; item = item->itemBelow()) {
        if (item->text(0) == text)
            return static_cast<ProjectTreeItem *>(item);
    }
    return nullptr;
}

inline void open(const ProjectTree &tree, const QStringList &texts)
{
    for (const QString &text : texts)
        row(tree, text)->setOpen(true);
}

/// Selects exactly these rows; the last one becomes the current one.
inline void select(ProjectTree &tree, const QStringList &texts)
{
    tree.clearSelection();
    for (const QString &text : texts) {
        tree.setCurrentItem(row(tree, text), 0, QItemSelectionModel::NoUpdate);
        row(tree, text)->setSelected(true);
    }
}

inline QStringList selected(const ProjectTree &tree)
{
    QStringList texts;
    for (const ListViewItem *item : tree.selectedItemsInOrder())
        texts += item->text(0);
    return texts;
}

/// A menu line by line, with "---" for separators.
inline QString textOf(const QMenu *menu)
{
    QString text;
    for (const QAction *action : menu->actions())
        text += (action->isSeparator() ? QStringLiteral("---") : action->text()) + u'\n';
    return text;
}

/// Creates items in the given order: "src/" is a folder, "src/a.c" a file in it, "src/lib/" a subfolder, "a.c" a file
/// in the root.
inline void fill(Project *project, const QStringList &paths)
{
    QHash<QString, ProjectFolder *> folders{{QString(), nullptr}};
    for (const QString &path : paths) {
        const bool isFolder = path.endsWith(u'/');
        const QString inner = isFolder ? path.chopped(1) : path;
        const QString name = inner.section(u'/', -1);
        ProjectFolder *parent = folders.value(inner.section(u'/', 0, -2));
        if (isFolder) {
            auto *folder = new ProjectFolder(name);
            folders.insert(inner, folder);
            parent ? parent->addFolder(folder, false) : project->addFolder(folder, false);
        } else {
            auto *file = new ProjectFile(name, name);
            parent ? parent->addFile(file) : project->addFile(file);
        }
    }
}

inline ProjectFolder *folderIn(const QList<ProjectFolder *> &folders, const QString &name)
{
    for (ProjectFolder *folder : folders) {
        if (folder->name() == name)
            return folder;
    }
    return nullptr;
}

inline ProjectFile *fileIn(const QList<ProjectFile *> &files, const QString &name)
{
    for (ProjectFile *file : files) {
        if (file->name() == name)
            return file;
    }
    return nullptr;
}
