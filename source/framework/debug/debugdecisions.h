#pragma once
#include "activitystate.h"
#include "ibreakpoints.h"
#include "iexecutionenvironment.h"
#include "imultiprocessorsync.h"
#include <functional>
#include <optional>

/// The state for a program's status; none for a number that is not a status.
[[nodiscard]] std::optional<ActivityState> stateForStatus(IExecutionEnvironment::ProgramStatus status);

/// The state to be set when the environment of the current project has reported @p status; none outside a debug
/// session, where a report changes nothing.
[[nodiscard]] std::optional<ActivityState> stateAfterReport(ActivityState state,
                                                            IExecutionEnvironment::ProgramStatus status);

/// The actions after a breakpoint hit, before the state changes.
struct BreakpointReaction
{
    bool pauseOthers = false;   ///< pause the processors of the other projects
    bool switchProject = false; ///< show a message and make the project that was hit the current one

    bool operator==(const BreakpointReaction &) const = default;
};

/// @p projects is the number of projects, @p current whether the current one has reported, @p pauseAll the user's
/// choice for the event.
[[nodiscard]] BreakpointReaction breakpointReaction(IExecutionEnvironment::ProgramStatus status, int projects,
                                                    bool current, bool pauseAll);

/// Whether there is a session that the stop command ends. A session that is still starting is not ended.
[[nodiscard]] bool mayStop(ActivityState state);
[[nodiscard]] bool mayRestart(ActivityState state);

/// One environment in synchronised run control.
struct SyncMember
{
    QString group;                                      ///< the group that it belongs to
    std::function<int(const QString &group)> supported; ///< IMultiProcessorSync::supportedOperations()
};

/// The index of the member that starts @p operation for all: the first of @p members that can lead it in its own group,
/// provided that all members, itself included, can follow. -1 if it is not possible for all processors at once.
[[nodiscard]] int syncLeader(const QList<SyncMember> &members, IMultiProcessorSync::Operation operation);

/// The state of the breakpoint at a place; BreakpointRemoved if there is none.
[[nodiscard]] int breakpointStateAt(const QList<BreakpointRecord> &records, const BreakpointLocation &place);

/// The next state when a breakpoint is toggled: set, then disabled, then removed. Mixed states do not change.
[[nodiscard]] int toggledBreakpoint(int state);

/// The changes of a line's markers: sets of IViewWithMarkers::Marker.
struct MarkerChange
{
    int clear = 0;
    int set = 0;

    bool operator==(const MarkerChange &) const = default;
};

/// The change of a line that has @p markers when a breakpoint in @p state is added. Enabled and disabled ones together
/// are mixed, which does not change any more.
[[nodiscard]] MarkerChange markerChange(int markers, int state);

/// A breakpoint at a place, as one of the projects has it.
struct ProjectBreakpoint
{
    QString project; ///< its name
    int state = BreakpointRemoved;
    QString remark = {}; ///< why it is not set, its condition or its text
};

/// Rich text with the state of the breakpoints at one place in each project; empty without any.
[[nodiscard]] QString breakpointToolTip(const QList<ProjectBreakpoint> &breakpoints);
