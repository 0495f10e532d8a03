#include "breakpointsdock.h"
#include "breakpointspane.h"
#include "dockaction.h"
#include "dockwindow.h"
#include "windowservices.h"

using namespace Qt::StringLiterals;

BreakpointsDock::BreakpointsDock(Activity &activity, WindowServices &services, DebugControl &debug, QObject *parent)
    : QObject(parent), m_dock(services.addDock(u"breakpointsDockWindow"_s, tr("Breakpoints"), Qt::BottomDockWidgetArea))
{
    m_dock->setWidget(new BreakpointsPane(activity, debug, services));
    m_dock->hide();
    addDockAction(m_dock, services.dialogParent(),
                  {u"debugToggleBreakpointsWindow"_s, tr("&Breakpoints"), u"Ctrl+Alt+B"_s,
                   tr("Shows or hides the list of breakpoints")});
}
