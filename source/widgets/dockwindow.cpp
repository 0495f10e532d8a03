#include "dockwindow.h"
#include "dockfit.h"
#include <QLayout>
#include <QMainWindow>

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

/// Among the others of the main window, which does not grow for it.
void DockWindow::bringUp()
{
    auto *window = qobject_cast<QMainWindow *>(parentWidget());
    if (!isHidden() || isFloating() || !window || !window->isVisible()) {
        show();
    } else {
        const QLayout::SizeConstraint constraint = window->layout()->sizeConstraint();
        window->layout()->setSizeConstraint(QLayout::SetNoConstraint); // otherwise show() enlarges the window
        show();
        fitDocks(*window, this);
        window->layout()->setSizeConstraint(constraint);
    }
    raise();
}
