#pragma once
#include <optional>
#include <QCollator>
#include <QCoreApplication>
#include <QHash>
#include <QIcon>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QSet>
#include <QTimer>
class ListView;
class ListViewItem;
class Project;
class ProjectFile;
class ProjectFolder;
class ProjectTreeItem;
class ProjectWorkspace;
class QTreeWidgetItem;
class WindowServices;

/// The rows of a project tree, each of which represents an object of the model.
///
/// Below each parent are its folders in the order of the model, then its files sorted by name. The rows of a folder are
/// created when it is first opened, or when one of them is needed, so that large projects are shown at once.
class ProjectRows
{
    Q_DECLARE_TR_FUNCTIONS(ProjectRows)
public:
    enum Kind { WorkspaceRTTI, ProjectRTTI, FolderRTTI, FileRTTI };

    /// Both arguments outlive this object.
    ProjectRows(ListView &view, const WindowServices &window);

    void addWorkspace(ProjectWorkspace *workspace, const QList<QPointer<Project>> &projects, const Project *current);
    void clear(); ///< The next addWorkspace() opens the same folders and closes the same projects.
    void makeChildren(QTreeWidgetItem *item); ///< Creates the rows directly below @p item, unless they exist.
    void makeAll();                           ///< Creates all rows that do not exist yet.

    // Changes of the model. An added object is scrolled to.
    void addFolder(ProjectFolder *parent, ProjectFolder *folder);
    void addFile(ProjectFolder *parent, ProjectFile *file);
    void removeFolder(ProjectFolder *parent, ProjectFolder *folder);
    void removeFile(ProjectFolder *parent, ProjectFile *file);
    void renameFolder(const ProjectFolder *folder, const QString &name);
    void updateActivity();               ///< The pictures of active and of inactive projects.
    void updateMarks();                  ///< Of projects that are modified or could not be loaded.
    void updateFile(ListViewItem *item); ///< Whether the file of a row exists, and is open and modified.
    /// Hides the rows whose name does not contain @p text and that have no such row below or above them. An empty text
    /// shows all rows, and opens and closes them as they were. False if no row contains it.
    bool filter(const QString &text);
    void markCurrent(const Project *project);

    /// The row of an object, which is created if necessary; null if the object is not in the tree.
    [[nodiscard]] ProjectTreeItem *itemOf(ProjectFolder *folder);
    [[nodiscard]] ProjectTreeItem *itemOf(ProjectFile *file);
    /// Whether the object has a row and was not removed.
    [[nodiscard]] bool contains(const ProjectFolder *folder) const { return m_folderItems.value(folder); }
    [[nodiscard]] bool contains(const ProjectFile *file) const { return m_fileItems.value(file); }

    /// The object of an item; null if the item represents another kind of object or one that was deleted.
    [[nodiscard]] Project *projectOf(const ListViewItem *item) const;
    [[nodiscard]] ProjectFolder *folderOf(const ListViewItem *item) const;
    [[nodiscard]] ProjectFile *fileOf(const ListViewItem *item) const;

private:
    /// The rows that are not as they are at first: folders by their names and those above, projects by their files.
    struct OpenRows
    {
        QSet<QString> openFolders;
        QSet<QString> closedProjects;
    };

    [[nodiscard]] OpenRows openRows() const;
    void restore(const OpenRows &rows);
    void openFoldersBelow(QTreeWidgetItem *item, const QSet<QString> &folders);
    bool filterRow(QTreeWidgetItem *item, const QString &name, const QString &text);
    bool filterBelow(QTreeWidgetItem *item, const QString &text);
    ListViewItem *addProject(ListViewItem *root, ListViewItem *after, Project *project);
    ProjectTreeItem *makeItem(ProjectFolder *folder);
    ProjectTreeItem *makeItem(ProjectFile *file);
    void makeAllBelow(QTreeWidgetItem *item);
    [[nodiscard]] QList<ProjectFile *> sortedByName(const QList<ProjectFile *> &files) const;
    [[nodiscard]] int placeFor(const ListViewItem *parent, const ProjectFolder *folder) const;
    [[nodiscard]] int placeFor(const ListViewItem *parent, const ProjectFile *file) const;
    [[nodiscard]] ProjectTreeItem *itemOf(ProjectFolder *parent, Project *project);
    template <typename Child>
    void add(ProjectFolder *parent, Child *child);
    template <typename Child>
    void remove(ProjectFolder *parent, Child *child, QHash<const Child *, ProjectTreeItem *> &items,
                const char *assertion);
    bool stayedUnmade(ProjectFolder *parent, Project *project);
    void deleteItem(ProjectTreeItem *item);
    void forgetChildren(const QTreeWidgetItem *item);
    void makeVisible(ProjectTreeItem *item);

    ListView &m_view;
    const WindowServices &m_window;
    QHash<const Project *, ProjectTreeItem *> m_projectItems;
    QHash<const ProjectFolder *, ProjectTreeItem *> m_folderItems; ///< null: removed since the last clear()
    QHash<const ProjectFile *, ProjectTreeItem *> m_fileItems;     ///< likewise
    QPersistentModelIndex m_itemToShow;                            ///< the item that was added last
    QTimer m_showTimer;                                            ///< scrolls once for all added items
    OpenRows m_openRows;                                           ///< at the last clear()
    std::optional<OpenRows> m_unfiltered;                          ///< before the filter was used

    const QIcon m_folderPicture;
    const QIcon m_openFolderPicture;
    const QIcon m_filePicture;
    const QCollator m_collator;
};
