#include "dockaction.h"
#include "dockwindow.h"
#include <QAction>
#include <QMenu>
#include <QPointer>

using namespace Qt::StringLiterals;

QAction *addDockAction(DockWindow *dock, QWidget *window, const DockAction &description)
{
    auto *action = new QAction(description.text, window);
    action->setObjectName(description.objectName);
    action->setShortcut(QKeySequence(description.key));
    action->setStatusTip(description.statusTip);
    action->setCheckable(true);
    window->addAction(action);
    QObject::connect(action, &QAction::triggered, dock, &DockWindow::toggleVisible);
    const auto showState = [action, guarded = QPointer(dock)] { action->setChecked(guarded && guarded->isVisible()); };
    QObject::connect(action, &QAction::triggered, action, showState);
    QObject::connect(dock, &QDockWidget::visibilityChanged, action, showState);
    if (auto *menu = window->findChild<QMenu *>(u"debugWindowsMenu"_s)) {
        menu->addAction(action);
        QObject::connect(menu, &QMenu::aboutToShow, action, showState);
    }
    return action;
}
