#pragma once
#include "activitystate.h"
#include "ibreakpoints.h"
#include "iexecutionenvironment.h"
#include "imultiprocessorsync.h"
#include <functional>
#include <optional>

/// The state that a program's status stands for; none for a number that is no status.
[[nodiscard]] std::optional<ActivityState> stateForStatus(IExecutionEnvironment::ProgramStatus status);

/// The state to be set when the environment of the current project has reported @p status; none outside a debug
/// session, where a report changes nothing.
[[nodiscard]] std::optional<ActivityState> stateAfterReport(ActivityState state,
                                                            IExecutionEnvironment::ProgramStatus status);

/// What the hit of a breakpoint leads to before the state changes.
struct BreakpointReaction
{
    bool pauseOthers = false;   ///< pause the processors of the other projects
    bool switchProject = false; ///< tell the user and make the project that was hit the current one

    bool operator==(const BreakpointReaction &) const = default;
};

/// @p projects is how many there are, @p current whether the current one has reported, @p pauseAll what the user has
/// chosen for the event.
[[nodiscard]] BreakpointReaction breakpointReaction(IExecutionEnvironment::ProgramStatus status, int projects,
                                                    bool current, bool pauseAll);

/// Whether there is a session that the stop command ends. One that only starts is left alone.
[[nodiscard]] bool mayStop(ActivityState state);
[[nodiscard]] bool mayRestart(ActivityState state);

/// One environment in synchronised run control.
struct SyncMember
{
    QString group;                                      ///< the group that it belongs to
    std::function<int(const QString &group)> supported; ///< IMultiProcessorSync::supportedOperations()
};

/// Which of @p members leads @p operation: the first that can do so in its own group, provided that all of them, itself
/// included, can follow it there. -1 if the operation is not possible for all processors at once.
[[nodiscard]] int syncLeader(const QList<SyncMember> &members, IMultiProcessorSync::Operation operation);

/// The state of the breakpoint at a place; BreakpointRemoved if there is none.
[[nodiscard]] int breakpointStateAt(const QList<BreakpointRecord> &records, const BreakpointLocation &place);

/// What toggling makes of a breakpoint: it is set, then disabled, then removed. What stands for several ones stays.
[[nodiscard]] int toggledBreakpoint(int state);

/// Which markers of a line change: sets of IViewWithMarkers::Marker.
struct MarkerChange
{
    int clear = 0;
    int set = 0;

    bool operator==(const MarkerChange &) const = default;
};

/// What one more breakpoint in @p state does to a line that has @p markers. Enabled and disabled ones together are
/// mixed, and stay so.
[[nodiscard]] MarkerChange markerChange(int markers, int state);

/// A breakpoint at a place, as one of the projects has it.
struct ProjectBreakpoint
{
    QString project; ///< its name
    int state = BreakpointRemoved;
};

/// Rich text that tells how the breakpoints at one place stand in each project; empty without any.
[[nodiscard]] QString breakpointToolTip(const QList<ProjectBreakpoint> &breakpoints);
