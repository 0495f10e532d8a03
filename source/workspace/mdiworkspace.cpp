#include "mdiworkspace.h"
#include "view.h"
#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QMouseEvent>

MDIFrame::MDIFrame(View *view) : m_view(view)
{
    setWidget(view);
    if (const QMenu *menu = systemMenu()) {
        for (QAction *action : menu->actions())
            action->setShortcuts(QList<QKeySequence>()); // Ctrl+W would be ambiguous with that of the program
    }
}

void MDIFrame::closeEvent(QCloseEvent *event)
{
    event->ignore(); // the view deletes its frame when it closes
    if (m_view)
        m_view->close();
}

void MDIFrame::mousePressEvent(QMouseEvent *event)
{
    if (m_view && event->position().y() < m_view->y())
        Q_EMIT titleBarClicked();
    QMdiSubWindow::mousePressEvent(event);
}

MDIFrame *MDIWorkspace::addFrame(View *view)
{
    auto *frame = new MDIFrame(view);
    connect(frame, &MDIFrame::titleBarClicked, this, &MDIWorkspace::titleBarClicked);
    addSubWindow(frame);
    return frame;
}

View *MDIWorkspace::activeView() const
{
    auto *frame = qobject_cast<MDIFrame *>(currentSubWindow());
    return frame ? frame->view() : nullptr;
}

MDIFrame *MDIWorkspace::frameOf(View *view)
{
    return qobject_cast<MDIFrame *>(view->parentWidget());
}
