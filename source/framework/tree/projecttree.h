#pragma once
#include "listview.h"
#include "projectitemdrag.h"
#include <functional>
#include <QCollator>
#include <QElapsedTimer>
#include <QIcon>
#include <QPointer>
#include <QTimer>
class Activity;
class PopupMenu;
class Project;
class ProjectTreeItem;
class ProjectWorkspace;
class WindowServices;

/// Shows the workspace with its projects, folders and files. It changes the model through the model's functions only,
/// and follows the model's signals.
///
/// Below each parent are its folders in the order of the model, then its files sorted by name. The rows of a folder are
/// created when it is first opened, or when one of them is needed, so that large projects are shown at once.
class ProjectTree : public ListView
{
    Q_OBJECT
public:
    enum ItemKind { WorkspaceRTTI, ProjectRTTI, FolderRTTI, FileRTTI };

    /// Both arguments outlive this object.
    ProjectTree(const Activity &activity, WindowServices &window, QWidget *parent = nullptr);
    ~ProjectTree() override;

    /// Shows the open workspace of the activity, which must not be null, from the start.
    void showWorkspace();
    /// Disconnects from the workspace and removes all rows.
    void releaseWorkspace();

    /// These act on the selected folders and files. After cut() the items are on the clipboard only.
    void cut();
    void paste();
    void remove();
    void showFileProperties();
    [[nodiscard]] Project *
    selectedProject() const; ///< That of the first selected item; null if none or the root is selected.
    [[nodiscard]] ProjectTreeItem *selectedItem() const; ///< the first one from the top
    [[nodiscard]] ProjectFile *selectedFile() const;     ///< null if the first selected item is not a file

public Q_SLOTS:
    void slotContextMenuRequested(ListViewItem *item, const QPoint &point);
    void openFile();
    void createNewFolder();
    void addFilesToFolder();
    void renameFolder();
    void folderRenamed(ListViewItem *item);
    void folderProperties();
    void runPyFile();
    void workspaceChanged();
    void activityChanged();
    void currentProjectChanged();
    void slotSelectionChanged();
    void slotFolderAdded(ProjectFolder *parent, ProjectFolder *folder);
    void slotFolderRemoved(ProjectFolder *parent, ProjectFolder *folder);
    void slotFileAdded(ProjectFolder *parent, ProjectFile *file);
    void slotFileRemoved(ProjectFolder *parent, ProjectFile *file);
    void setActiveProject();
    void removeProject();
    // Hide those of the toolkit, which expand without a signal; here the rows are created before.
    void expandAll();
    void expandToDepth(int depth);

Q_SIGNALS:
    void openFile(const QString &path);
    void runPyFile(const QString &path);
    void cutAvailable(bool available);
    void pasteAvailable(bool available);
    void fileSelected(const QString &path); ///< As stored, possibly relative; empty if no file is selected.
    void displayFileProperties(ProjectFile *file);
    void saveAsTemplate(Project *project);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    // Set-up
    PopupMenu *newMenu(const QString &name);
    void addSharedActions(PopupMenu *menu, const QStringList &names);
    void fillProjectMenu();
    void fillFolderMenu();
    void fillFileMenu(PopupMenu *menu);

    // Rows
    void rebuild();
    void clearItems();
    ProjectTreeItem *addProject(ListViewItem *root, ListViewItem *after, Project *project);
    void disconnectProjects();
    ProjectTreeItem *makeItem(ProjectFolder *folder);
    ProjectTreeItem *makeItem(ProjectFile *file);
    void makeChildren(QTreeWidgetItem *item);
    void makeAll(QTreeWidgetItem *item);
    [[nodiscard]] QList<ProjectFile *> sortedByName(const QList<ProjectFile *> &files) const;
    [[nodiscard]] int placeFor(const ProjectTreeItem *parent, const ProjectFolder *folder) const;
    [[nodiscard]] int placeFor(const ProjectTreeItem *parent, const ProjectFile *file) const;
    [[nodiscard]] ProjectTreeItem *itemOf(ProjectFolder *parent, Project *project);
    [[nodiscard]] ProjectTreeItem *itemOf(ProjectFolder *folder);
    [[nodiscard]] ProjectTreeItem *itemOf(ProjectFile *file);
    template <typename Child>
    void childAdded(ProjectFolder *parent, Child *child);
    template <typename Child>
    void childRemoved(ProjectFolder *parent, Child *child, QHash<const Child *, ProjectTreeItem *> &items,
                      const char *assertion);
    bool stayedUnmade(ProjectFolder *parent, Project *project);
    void deleteItem(ProjectTreeItem *item);
    void forgetChildren(const QTreeWidgetItem *item);
    void makeVisible(ProjectTreeItem *item);

    // The object of an item; null if the item represents another kind of object or one that was deleted
    [[nodiscard]] Project *projectOf(const ProjectTreeItem *item) const;
    [[nodiscard]] ProjectFolder *folderOf(const ProjectTreeItem *item) const;
    [[nodiscard]] ProjectFile *fileOf(const ProjectTreeItem *item) const;
    [[nodiscard]] QString selectedPath() const;

    // Clipboard, drag and drop
    [[nodiscard]] static bool allFitInto(const QList<ProjectItemDrag::Item> &items, const ProjectFolder *target);
    [[nodiscard]] bool canPaste() const;
    [[nodiscard]] bool isInTree(const ProjectItemDrag::Item &item) const;
    [[nodiscard]] QList<ProjectItemDrag::Item> itemsInTree(const QMimeData &data) const;
    void editModel(const std::function<void()> &work);
    [[nodiscard]] ProjectItemDrag *dragObject() const;
    [[nodiscard]] bool isOwnDrag(const QDropEvent *event) const;
    [[nodiscard]] ProjectTreeItem *dropItemAt(const QPoint &position) const;
    void setDropItem(ProjectTreeItem *item);
    void scrollWhileDragging(int y);
    void selectItems(const QList<ProjectItemDrag::Item> &items);
    void drop(const ProjectItemDrag::Item &item, Project *project, ProjectFolder *target);

    const Activity &m_activity;
    WindowServices &m_window;
    QPointer<ProjectWorkspace> m_workspace;
    QList<QPointer<Project>> m_projects; ///< those that are shown
    QHash<const Project *, ProjectTreeItem *> m_projectItems;
    QHash<const ProjectFolder *, ProjectTreeItem *> m_folderItems; ///< null: removed since the last rebuild
    QHash<const ProjectFile *, ProjectTreeItem *> m_fileItems;     ///< likewise

    PopupMenu *m_workspaceMenu;
    PopupMenu *m_projectMenu;
    PopupMenu *m_folderMenu;
    PopupMenu *m_fileMenu;
    PopupMenu *m_pyFileMenu;
    const QIcon m_folderPicture;
    const QIcon m_openFolderPicture;
    const QIcon m_filePicture;
    const QCollator m_collator;

    bool m_editing = false;             ///< several items are being changed; commands are updated after the last one
    QPersistentModelIndex m_itemToShow; ///< the item that was added last
    QTimer m_showTimer;                 ///< scrolls once for all added items
    QPersistentModelIndex m_dropItem;   ///< highlighted while items are dragged over it
    bool m_dropItemWasSelected = false;
    QElapsedTimer m_dragScrollTime;
};
