#pragma once
#include "projectitemview.h"
#include "projecttreemenus.h"
#include <QPointer>
class Activity;
class ProjectWorkspace;
class WindowServices;

/// Shows the workspace with its projects, folders and files. It changes the model through the model's functions only,
/// and follows the model's signals.
class ProjectTree : public ProjectItemView
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
    void undo(); ///< Takes back the last cut, paste, drag or renaming.
    void showFileProperties();
    /// Selects the file at an absolute path and scrolls to it; in the current project if several contain it. False if
    /// no project contains it.
    bool selectFile(const QString &path);

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

Q_SIGNALS:
    void openFile(const QString &path);
    void runPyFile(const QString &path);
    void cutAvailable(bool available);
    void pasteAvailable(bool available);
    void fileSelected(const QString &path); ///< As stored, possibly relative; empty if no file is selected.
    void displayFileProperties(ProjectFile *file);
    void saveAsTemplate(Project *project);
    void undoAvailable(bool available); ///< While the tree has the keyboard focus.
    void redoAvailable(bool available);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    void rebuild();
    void activateItem(ListViewItem *item);
    [[nodiscard]] bool mayRemove();
    void rename(ProjectFolder *folder, const QString &name);
    void connectProject(Project *project);
    void disconnectProjects();
    [[nodiscard]] bool canPaste() const;

    const Activity &m_activity;
    WindowServices &m_window;
    QPointer<ProjectWorkspace> m_workspace;
    QList<QPointer<Project>> m_projects; ///< those that are shown
    ProjectTreeMenus m_menus;
};
