#include "livedock.h"
#include "debugcontrol.h"
#include "dockaction.h"
#include "dockwindow.h"
#include "livewindow.h"
#include "windowservices.h"

using namespace Qt::StringLiterals;

LiveDock::LiveDock(Activity &activity, WindowServices &services, DebugControl &debug, QObject *parent)
    : QObject(parent)
    , m_window(new LiveWindow(activity, services))
    , m_dock(services.addDock(u"liveDockWindow"_s, tr("Live"), Qt::BottomDockWidgetArea))
{
    m_dock->setWidget(m_window);
    m_dock->hide();
    connect(&debug, &DebugControl::processorReported, m_window, &LiveWindow::schedule);
    connect(&debug, &DebugControl::updateDataWindows, m_window, &LiveWindow::schedule);
    addDockAction(m_dock, services.dialogParent(),
                  {u"debugToggleLiveWindow"_s, tr("&Live"), u"Alt+8"_s,
                   tr("Shows or hides the values of all processors over time")});
}
