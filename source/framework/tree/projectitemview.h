#pragma once
#include "listview.h"
#include "projectdroptarget.h"
#include "projectmoves.h"
#include "projectrows.h"
#include <QTimer>
class WindowServices;

/// The rows of projects, folders and files as a list: what is selected in it, its filter, and drag and drop.
class ProjectItemView : public ListView
{
    Q_OBJECT
public:
    /// @p window outlives this object.
    explicit ProjectItemView(const WindowServices &window, QWidget *parent = nullptr);

    [[nodiscard]] Project *
    selectedProject() const; ///< That of the first selected item; null if none or the root is selected.
    [[nodiscard]] ProjectTreeItem *selectedItem() const; ///< the first one from the top
    [[nodiscard]] ProjectFile *selectedFile() const;     ///< null if the first selected item is not a file
    void setFilter(const QString &text);                 ///< As ProjectRows::filter().

public Q_SLOTS:
    // Hide those of the toolkit, which expand without a signal; here the rows are created before.
    void expandAll();
    void expandToDepth(int depth);

Q_SIGNALS:
    void filtered(bool any); ///< whether a row contains the text of the filter

protected:
    void refreshLater(); ///< Filters new rows and marks those on screen, once after all changes.
    [[nodiscard]] ProjectRows &rows() { return m_rows; }
    [[nodiscard]] const ProjectRows &rows() const { return m_rows; }
    [[nodiscard]] ProjectMoves &moves() { return m_moves; }

    bool event(QEvent *event) override;
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void refreshRows();
    [[nodiscard]] ProjectItemDrag *dragObject() const;

    ProjectRows m_rows;
    ProjectMoves m_moves;
    ProjectDropTarget m_dropTarget;
    QString m_filter;
    bool m_rowsAdded = false; ///< since the filter was applied
    QTimer m_refreshTimer;
};
