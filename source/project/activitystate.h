#pragma once
#include <QString>

/// The activity of the program.
enum ActivityState {
    StateNoWorkspace = 0,  ///< no workspace is open
    StateIdle = 1,         ///< a workspace is open, no activity
    StateBuilding = 2,     ///< a build is running
    StateInitialising = 3, ///< a debug session is starting
    StateRunning = 4,      ///< the target runs
    StatePaused = 5,       ///< the target is paused
    StateFinished = 6,     ///< the program on the target has finished
    StateUnknown = 7       ///< the target's state is not known
};

/// Properties of the open workspace that do not follow from the state.
struct ActivityContext
{
    bool workspace = false;            ///< a workspace is open
    bool project = false;              ///< it has a current project
    bool buildEnvironment = false;     ///< the current project can be built
    bool executionEnvironment = false; ///< the current project can be run
    bool canAttach = false;            ///< its environment can attach to a running target
    bool startCancellable = false;     ///< a processor is starting in the background
};

/// Which commands are possible. One field for each availability signal that follows the state.
struct ActivityAvailability
{
    bool projectOpen = false;
    bool projectRepopulate = false;
    bool workspaceEditing = false;
    bool projectEditing = false;
    bool build = false;
    bool building = false;
    bool run = false;
    bool stop = false;
    bool pause = false;
    bool start = false;
    bool restart = false;
    bool wakeup = false;
    bool showNext = false;
    bool attach = false;
    bool batchBuild = false;

    bool operator==(const ActivityAvailability &) const = default;
};

[[nodiscard]] ActivityAvailability activityAvailability(ActivityState state, const ActivityContext &context);

/// The states of a debug session have window layouts of their own.
[[nodiscard]] constexpr bool isDebugState(ActivityState state)
{
    return state >= StateInitialising;
}

/// The text for @p state in the caption of the main window; empty for the states that are not shown.
[[nodiscard]] QString captionSuffix(ActivityState state);
