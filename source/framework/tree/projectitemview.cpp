#include "projectitemview.h"
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projecttreeitem.h"
#include "windowservices.h"
#include "workspace.h"
#include <QDrag>
#include <QDropEvent>
#include <QScrollBar>

using namespace Qt::StringLiterals;

ProjectItemView::ProjectItemView(const WindowServices &window, QWidget *parent)
    : ListView(parent), m_rows(*this, window), m_moves(*this, m_rows), m_dropTarget(*this)
{
    setHeaderLabel(u"Column1"_s);
    setHeaderHidden(true);
    setItemMargin(1);
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setDragEnabled(true);
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);

    connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem *item) { m_rows.makeChildren(item); });
    m_refreshTimer.setSingleShot(true);
    m_refreshTimer.setInterval(0);
    connect(&m_refreshTimer, &QTimer::timeout, this, &ProjectItemView::refreshRows);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ProjectItemView::refreshLater);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, // also when rows are opened
            &ProjectItemView::refreshLater);
    connect(model(), &QAbstractItemModel::rowsInserted, this, [this] {
        m_rowsAdded = true;
        refreshLater();
    });
    if (const Workspace *documents = window.workspace())
        connect(documents, &Workspace::modificationChanged, this, &ProjectItemView::refreshLater);
}

// Rows --------------------------------------------------------------------

void ProjectItemView::refreshLater()
{
    m_refreshTimer.start();
}

/// Only the rows on screen are marked: looking for thousands of files takes long.
void ProjectItemView::refreshRows()
{
    if (m_rowsAdded && !m_filter.isEmpty())
        Q_EMIT filtered(m_rows.filter(m_filter));
    m_rowsAdded = false;
    const int bottom = viewport()->height();
    ListViewItem *item = itemAt(QPoint(0, 0));
    for (; item && itemRect(item).top() < bottom; item = item->itemBelow())
        m_rows.updateFile(item);
}

void ProjectItemView::setFilter(const QString &text)
{
    m_filter = text;
    Q_EMIT filtered(m_rows.filter(text));
}

void ProjectItemView::expandAll()
{
    m_rows.makeAll();
    ListView::expandAll();
}

void ProjectItemView::expandToDepth(int depth)
{
    m_rows.makeAll();
    ListView::expandToDepth(depth);
}

/// Another program may have created or deleted files while it had the focus.
bool ProjectItemView::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        refreshLater();
    return ListView::event(event);
}

// Selection ---------------------------------------------------------------

ProjectTreeItem *ProjectItemView::selectedItem() const
{
    return static_cast<ProjectTreeItem *>(firstSelectedItem());
}

ProjectFile *ProjectItemView::selectedFile() const
{
    return m_rows.fileOf(selectedItem());
}

Project *ProjectItemView::selectedProject() const
{
    const ProjectTreeItem *item = selectedItem();
    if (const ProjectFolder *folder = m_rows.folderOf(item))
        return folder->project();
    if (const ProjectFile *file = m_rows.fileOf(item))
        return file->project();
    return m_rows.projectOf(item);
}

// Drag and drop -----------------------------------------------------------

ProjectItemDrag *ProjectItemView::dragObject() const
{
    return new ProjectItemDrag(*this);
}

void ProjectItemView::startDrag(Qt::DropActions)
{
    auto *drag = new QDrag(this);
    drag->setMimeData(dragObject());
    drag->exec(Qt::MoveAction);
}

void ProjectItemView::dragEnterEvent(QDragEnterEvent *event)
{
    m_dropTarget.dragEnter(*event);
}

void ProjectItemView::dragMoveEvent(QDragMoveEvent *event)
{
    m_dropTarget.dragMove(*event);
}

void ProjectItemView::dragLeaveEvent(QDragLeaveEvent *)
{
    m_dropTarget.dragLeave();
}

void ProjectItemView::dropEvent(QDropEvent *event)
{
    const ListViewItem *item = m_dropTarget.take();
    event->ignore();
    ProjectFolder *target = m_rows.folderOf(item);
    Project *project = target ? target->project() : m_rows.projectOf(item);
    if (!project || !m_dropTarget.isOwnDrag(*event))
        return;
    m_moves.drop(*event->mimeData(), project, target);
    event->setDropAction(Qt::MoveAction);
    event->accept();
}
