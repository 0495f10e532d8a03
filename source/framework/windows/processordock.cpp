#include "processordock.h"
#include "dockaction.h"
#include "dockwindow.h"
#include "processorlist.h"
#include "windowservices.h"

using namespace Qt::StringLiterals;

ProcessorDock::ProcessorDock(Activity &activity, WindowServices &services, DebugControl &debug, QObject *parent)
    : QObject(parent), m_dock(services.addDock(u"processorDockWindow"_s, tr("Processors"), Qt::BottomDockWidgetArea))
{
    m_dock->setWidget(new ProcessorList(activity, debug, services));
    m_dock->hide();
    addDockAction(
        m_dock, services.dialogParent(),
        {u"debugToggleProcessorWindow"_s, tr("&Processors"), u"Alt+7"_s, tr("Shows or hides the list of processors")});
}
