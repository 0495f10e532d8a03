#include "dockedwidgets.h"
#include "dockwindow.h"
#include "objectnames.h"
#include "windowservices.h"
#include <QMainWindow>
using namespace Qt::StringLiterals;

namespace {

Qt::DockWidgetArea areaOf(int position)
{
    switch (position) {
    case 0:
        return Qt::TopDockWidgetArea;
    case 2:
        return Qt::BottomDockWidgetArea;
    case 3:
        return Qt::LeftDockWidgetArea;
    default:
        return Qt::RightDockWidgetArea;
    }
}

} // namespace

DockedWidgets::DockedWidgets(WindowServices &window) : m_window(window) {}

void DockedWidgets::dock(QWidget *widget, int position)
{
    if (DockWindow *known = m_docks.value(widget))
        moveDock(known, areaOf(position));
    else
        createDock(widget, areaOf(position));
}

void DockedWidgets::moveDock(DockWindow *dock, Qt::DockWidgetArea area)
{
    if (auto *window = qobject_cast<QMainWindow *>(dock->parentWidget()))
        window->addDockWidget(area, dock);
    dock->setFloating(false);
    dock->bringUp();
}

void DockedWidgets::createDock(QWidget *widget, Qt::DockWidgetArea area)
{
    // What the user has changed since the layout was stored is kept. The layout has no changes while the window is not
    // shown yet and start-up scripts run.
    if (m_window.dialogParent()->isVisible())
        m_window.saveDockLayout();
    const QString caption = widget->windowTitle();
    DockWindow *dock = m_window.addDock(unusedName(u"python"_s + partOfObjectName(caption)), caption, area);
    dock->setWidget(widget);
    widget->show();
    dock->show();
    m_docks.insert(widget, dock);
    connect(widget, &QObject::destroyed, this, &DockedWidgets::dockedWidgetDestroyed);
    m_window.restoreDockLayout();
}

/// The stored layout identifies dock windows by their names.
QString DockedWidgets::unusedName(const QString &name) const
{
    QStringList used;
    for (const QPointer<DockWindow> &dock : m_docks) {
        if (dock)
            used.append(dock->objectName());
    }
    QString unused = name;
    for (int i = 2; used.contains(unused); ++i)
        unused = name + QString::number(i);
    return unused;
}

void DockedWidgets::dockedWidgetDestroyed(QObject *widget)
{
    if (DockWindow *dock = m_docks.take(widget)) {
        dock->hide();
        dock->deleteLater();
    }
}
