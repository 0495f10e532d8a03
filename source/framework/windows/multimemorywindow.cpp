#include "multimemorywindow.h"
#include "callplugin.h"
#include "iexecutionenvironment.h"
#include "memorywindow.h"

DebugPane *MultiMemoryWindow::createWidget(QWidget *parent, IExecutionEnvironment *environment, bool force)
{
    const auto memory = queryPlugin<IMemory>(environment);
    if (!memory && !force)
        return nullptr;
    auto *window = new MemoryWindow(parent);
    window->setInterface(memory.get());
    window->setLive(environment);
    return window;
}
