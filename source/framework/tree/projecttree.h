#pragma once
#include "listview.h"
#include "projectdroptarget.h"
#include "projectmoves.h"
#include "projectrows.h"
#include "projecttreemenus.h"
#include <QPointer>
#include <QTimer>
class Activity;
class ProjectWorkspace;
class WindowServices;

/// Shows the workspace with its projects, folders and files. It changes the model through the model's functions only,
/// and follows the model's signals.
class ProjectTree : public ListView
{
    Q_OBJECT
public:
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
    /// Selects the file at an absolute path and scrolls to it; in the current project if several contain it. False if
    /// no project contains it.
    bool selectFile(const QString &path);
    void setFilter(const QString &text); ///< As ProjectRows::filter().

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
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void rebuild();
    void refreshRows();
    void activateItem(ListViewItem *item);
    [[nodiscard]] bool mayRemove();
    void connectProject(Project *project);
    void disconnectProjects();
    [[nodiscard]] bool canPaste() const;
    [[nodiscard]] ProjectItemDrag *dragObject() const;

    const Activity &m_activity;
    WindowServices &m_window;
    QPointer<ProjectWorkspace> m_workspace;
    QList<QPointer<Project>> m_projects; ///< those that are shown
    ProjectRows m_rows;
    ProjectTreeMenus m_menus;
    ProjectMoves m_moves;
    ProjectDropTarget m_dropTarget;
    QString m_filter;
    bool m_rowsAdded = false; ///< since the filter was applied
    QTimer m_refreshTimer;    ///< filters and marks rows once after all changes
};
