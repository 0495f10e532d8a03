#include "multimemorywindow.h"
#include "callplugin.h"
#include "iexecutionenvironment.h"
#include "memorywindow.h"

DebugPane *MultiMemoryWindow::createWidget(QWidget *parent, IExecutionEnvironment *environment, bool force)
{
    const auto memory = queryPlugin<IMemory>(environment);
    if (!memory && !force)
        return nullptr;
    auto wide = queryPlugin<IMemory64>(memory.get());
    if (!wide)
        wide = queryPlugin<IMemory64>(environment);
    auto requests = queryPlugin<IMemoryRequests>(memory.get());
    if (!requests)
        requests = queryPlugin<IMemoryRequests>(environment);
    auto *window = new MemoryWindow(parent);
    window->setInterfaces(memory.get(), wide.get(), requests.get());
    window->setLive(environment);
    return window;
}
