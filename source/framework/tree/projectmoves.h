#pragma once
#include "projectitemdrag.h"
#include "projectundo.h"
#include <functional>
#include <QObject>
class ListView;
class ProjectRows;

/// Moves or deletes the selected folders and files of a project tree: by cut and paste, by drag and drop, by remove.
class ProjectMoves : public QObject
{
    Q_OBJECT
public:
    /// Both arguments outlive this object.
    ProjectMoves(ListView &view, ProjectRows &rows) : m_view(view), m_rows(rows) {}

    void cut(); ///< Then the items are on the clipboard only.
    /// Puts the cut items into @p target or, if that is null, into the root of @p project.
    void paste(Project *project, ProjectFolder *target);
    [[nodiscard]] static bool canPaste(const ProjectFolder *target);
    void remove();
    /// Moves the items of @p data, likewise, and selects them in their new places.
    void drop(const QMimeData &data, Project *project, ProjectFolder *target);
    void noteRename(ProjectFolder *folder, const QString &before); ///< The user has given it another name.
    [[nodiscard]] bool canUndo() const { return !m_undo.isEmpty(); }
    /// Takes back the last of these that is not a removal, and selects the items. False if nothing can be taken back.
    bool undo();

    /// False if the item was deleted, or if its row, one of several, has lost it.
    [[nodiscard]] bool isInTree(const ProjectItemDrag::Item &item) const;
    [[nodiscard]] bool isRunning() const { return m_running; } ///< The selection changes with each item.

Q_SIGNALS:
    void finished(); ///< All items have been moved or deleted.

private:
    [[nodiscard]] QList<ProjectItemDrag::Item> itemsInTree(const QMimeData &data) const;
    void editModel(const std::function<void()> &work);
    void select(const QList<ProjectItemDrag::Item> &items);

    ListView &m_view;
    ProjectRows &m_rows;
    ProjectUndo m_undo;
    bool m_running = false;
};
