#include "dockwindow.h"

DockWindow::DockWindow(const QString &objectName, const QString &caption, QWidget *parent)
    : QDockWidget(caption, parent)
{
    setObjectName(objectName);
}

void DockWindow::toggleVisible()
{
    const bool isBehind = isVisible() && visibleRegion().isEmpty(); // the tab of another one is in front
    if (isHidden() || isBehind)
        bringUp();
    else
        hide();
}

void DockWindow::bringUp()
{
    show();
    raise();
}
