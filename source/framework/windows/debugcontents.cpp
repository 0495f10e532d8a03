#include "debugcontents.h"
#include "debugwindows.h"
#include "interfacepanes.h"
#include "multimemorywindow.h"
#include "multiwatchwindow.h"
#include "peripheralwidget.h"
#include "registerwidget.h"

using namespace Qt::StringLiterals;

using MultiRegisterWindow = InterfacePanes<IRegisters, RegisterWidget, &RegisterWidget::setRegisters>;
using MultiPeripheralWindow = InterfacePanes<IPeripherals, PeripheralWidget, &PeripheralWidget::setPeripherals>;

namespace {
MultiWidget *named(const QString &name, MultiWidget *content)
{
    content->setObjectName(name);
    return content;
}
} // namespace

void addDebugContents(DebugWindows &windows, const Activity &activity)
{
    windows.setContent(DebugWindows::Registers, named(u"registerWidget"_s, new MultiRegisterWindow(activity)));
    windows.setContent(DebugWindows::Peripherals, named(u"peripheralWidget"_s, new MultiPeripheralWindow(activity)));
    windows.setContent(DebugWindows::Watches, named(u"watchWindow"_s, new MultiWatchWindow(activity)));
    windows.setContent(DebugWindows::Memory, named(u"memoryWindow"_s, new MultiMemoryWindow(activity)));
}
