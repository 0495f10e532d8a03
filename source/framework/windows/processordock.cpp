#include "processordock.h"
#include "dockwindow.h"
#include "processorlist.h"
#include "windowservices.h"
#include <QAction>
#include <QMenu>
#include <QPointer>

using namespace Qt::StringLiterals;

ProcessorDock::ProcessorDock(Activity &activity, WindowServices &services, DebugControl &debug, QObject *parent)
    : QObject(parent), m_dock(services.addDock(u"processorDockWindow"_s, tr("Processors"), Qt::BottomDockWidgetArea))
{
    m_dock->setWidget(new ProcessorList(activity, debug, services));
    m_dock->hide();
    addMenuItem(services.dialogParent());
}

void ProcessorDock::addMenuItem(QWidget *window)
{
    auto *action = new QAction(tr("&Processors"), window);
    action->setObjectName(u"debugToggleProcessorWindow"_s);
    action->setShortcut(QKeySequence(u"Alt+7"_s));
    action->setStatusTip(tr("Shows or hides the list of processors"));
    action->setCheckable(true);
    window->addAction(action);
    connect(action, &QAction::triggered, m_dock, &DockWindow::toggleVisible);
    const auto showState = [action, dock = QPointer(m_dock)] { action->setChecked(dock && dock->isVisible()); };
    connect(action, &QAction::triggered, this, showState);
    connect(m_dock, &QDockWidget::visibilityChanged, action, showState);
    if (auto *menu = window->findChild<QMenu *>(u"debugWindowsMenu"_s)) {
        menu->addAction(action);
        connect(menu, &QMenu::aboutToShow, action, showState);
    }
}
