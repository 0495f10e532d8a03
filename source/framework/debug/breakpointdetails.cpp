#include "breakpointdetails.h"
#include "callplugin.h"

BreakpointDetails detailsOf(IExecutionEnvironment *environment, const BreakpointRecord &breakpoint)
{
    BreakpointDetails details;
    const auto offered = queryPlugin<IBreakpointDetails>(environment);
    if (!offered || breakpoint.locations.isEmpty())
        return details;
    const BreakpointLocation &place = breakpoint.locations.first();
    const bool known = askPlugin<&IBreakpointDetails::details>(offered, place.file, place.line, details);
    return known ? details : BreakpointDetails();
}

bool isRefused(const BreakpointDetails &details)
{
    return !details.set && !details.problem.isEmpty();
}

QString remarkOf(const BreakpointDetails &details)
{
    if (isRefused(details))
        return details.problem;
    return details.condition.isEmpty() ? details.logText : details.condition;
}
