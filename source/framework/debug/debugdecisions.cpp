#include "debugdecisions.h"
#include "viewinterfaces.h"
#include <algorithm>
#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)
};
} // namespace

std::optional<ActivityState> stateForStatus(IExecutionEnvironment::ProgramStatus status)
{
    switch (status) {
    case IExecutionEnvironment::ProgramPaused:
    case IExecutionEnvironment::ProgramBreakpointHit:
        return StatePaused;
    case IExecutionEnvironment::ProgramRunning:
    case IExecutionEnvironment::ProgramSleeping:
        return StateRunning;
    case IExecutionEnvironment::ProgramUnknown:
        return StateUnknown;
    case IExecutionEnvironment::ProgramFinished:
        return StateFinished;
    }
    return std::nullopt; // a plug-in may return any number
}

std::optional<ActivityState> stateAfterReport(ActivityState state, IExecutionEnvironment::ProgramStatus status)
{
    return isDebugState(state) ? stateForStatus(status) : std::nullopt;
}

BreakpointReaction breakpointReaction(IExecutionEnvironment::ProgramStatus status, int projects, bool current,
                                      bool pauseAll)
{
    if (status != IExecutionEnvironment::ProgramBreakpointHit || projects < 2)
        return {};
    return {.pauseOthers = pauseAll, .switchProject = !current};
}

bool mayStop(ActivityState state)
{
    return isDebugState(state) && state != StateInitialising;
}

bool mayRestart(ActivityState state)
{
    return state == StatePaused || state == StateFinished || state == StateIdle;
}

int syncLeader(const QList<SyncMember> &members, IMultiProcessorSync::Operation operation)
{
    const auto leads = [&](const SyncMember &member) { return member.supported(member.group) & operation; };
    const auto leader = std::ranges::find_if(members, leads);
    if (leader == members.end())
        return -1;
    const int follow = operation << IMultiProcessorSync::FollowShift;
    const auto follows = [&](const SyncMember &member) { return member.supported(leader->group) & follow; };
    return std::ranges::all_of(members, follows) ? int(leader - members.begin()) : -1;
}

int breakpointStateAt(const QList<BreakpointRecord> &records, const BreakpointLocation &place)
{
    const auto isPlace = [&](const BreakpointLocation &each) {
        return each.file == place.file && each.line == place.line;
    };
    const auto found = std::ranges::find_if(
        records, [&](const BreakpointRecord &record) { return std::ranges::any_of(record.locations, isPlace); });
    return found == records.end() ? BreakpointRemoved : found->state;
}

int toggledBreakpoint(int state)
{
    switch (state) {
    case BreakpointRemoved:
        return BreakpointEnabled;
    case BreakpointEnabled:
        return BreakpointDisabled;
    case BreakpointDisabled:
        return BreakpointRemoved;
    default:
        return state;
    }
}

MarkerChange markerChange(int markers, int state)
{
    if (state != BreakpointEnabled && state != BreakpointDisabled)
        return {};
    using enum IViewWithMarkers::Marker;
    if (markers & MultipleBreakpointMarker)
        return {};
    const int own = state == BreakpointEnabled ? EnabledBreakpointMarker : DisabledBreakpointMarker;
    const int other = state == BreakpointEnabled ? DisabledBreakpointMarker : EnabledBreakpointMarker;
    if (markers & other)
        return {.clear = other, .set = MultipleBreakpointMarker};
    return {.set = own};
}

QString breakpointToolTip(const QList<ProjectBreakpoint> &breakpoints)
{
    if (breakpoints.isEmpty())
        return {};
    const QStringList words{Text::tr("Removed"), Text::tr("Enabled"), Text::tr("Disabled"), Text::tr("Multiple")};
    QString text = Text::tr("<b>Breakpoint status</b><br>");
    for (const ProjectBreakpoint &breakpoint : breakpoints) {
        text += u"%1 [%2]<br>"_s.arg(words.value(breakpoint.state), breakpoint.project.toHtmlEscaped());
        if (!breakpoint.remark.isEmpty())
            text += breakpoint.remark.toHtmlEscaped() + u"<br>"_s;
    }
    return text;
}
