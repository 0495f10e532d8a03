#include "debugcontents.h"
#include "debugwindows.h"
#include "multimemorywindow.h"

using namespace Qt::StringLiterals;

namespace {
MultiWidget *named(const QString &name, MultiWidget *content)
{
    content->setObjectName(name);
    return content;
}
} // namespace

void addDebugContents(DebugWindows &windows, const Activity &activity)
{
    windows.setContent(DebugWindows::Memory, named(u"memoryWindow"_s, new MultiMemoryWindow(activity)));
}
