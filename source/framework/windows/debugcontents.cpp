#include "debugcontents.h"
#include "callstackpane.h"
#include "debugwindows.h"
#include "environmentpanes.h"
#include "interfacepanes.h"
#include "multimemorywindow.h"
#include "multiwatchwindow.h"
#include "peripheralwidget.h"
#include "registerwidget.h"
#include "variablespane.h"

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
    windows.setContent(DebugWindows::CallStack,
                       named(u"callStackWindow"_s, new EnvironmentPanes<CallStackPane>(activity)));
    windows.setContent(DebugWindows::Variables,
                       named(u"variablesWindow"_s, new EnvironmentPanes<VariablesPane>(activity)));
}
