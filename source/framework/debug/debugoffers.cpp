#include "debugoffers.h"
#include "activity.h"
#include "callplugin.h"
#include "debugmarkers.h"
#include "document.h"
#include "inextstatement.h"
#include "iwakeup.h"
#include "largetextview.h"
#include "programplace.h"
#include "textview.h"
#include <algorithm>

namespace {
/// An environment without the interface is assumed to do it.
bool canWakeUp(const Activity::Environment &environment)
{
    const auto offer = queryPlugin<IWakeUp>(environment);
    return !offer || askPlugin<&IWakeUp::canWakeUp>(offer);
}
} // namespace

DebugOffers debugOffers(const Activity &activity, View *view)
{
    const auto environments = activity.environments();
    return {.programLines = hasProgramLines(activity, view),
            .setNext = queryPlugin<INextStatement>(activity.currentEnvironment()) != nullptr,
            .wakeUp = std::ranges::any_of(environments, canWakeUp)};
}

bool hasProgramLines(const Activity &activity, View *view)
{
    if (qobject_cast<TextView *>(view) || qobject_cast<LargeTextView *>(view))
        return true;
    const QString name = view ? view->document()->filename() : QString();
    return isDisassemblyName(name) && viewInterface<ITextNavigation>(view)
           && !isForeignDisassembly(name, activity.currentEnvironment().get());
}
