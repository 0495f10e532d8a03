#include "dockwindow.h"

DockWindow::DockWindow(const QString &objectName, const QString &caption, QWidget *parent)
    : QDockWidget(caption, parent)
{
    setObjectName(objectName);
}

void DockWindow::toggleVisible()
{
    if (isHidden())
        bringUp();
    else
        hide();
}

void DockWindow::bringUp()
{
    show();
    raise();
}
