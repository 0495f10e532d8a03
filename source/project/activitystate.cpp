#include "activitystate.h"

using namespace Qt::StringLiterals;

ActivityAvailability activityAvailability(ActivityState state, const ActivityContext &context)
{
    const bool quiet = state == StateNoWorkspace || state == StateIdle;
    const bool target = context.executionEnvironment;
    return {
        .projectOpen = quiet,
        .projectRepopulate = context.project && quiet,
        .workspaceEditing = context.workspace && quiet,
        .projectEditing = context.project && quiet,
        .build = context.project && state == StateIdle,
        .building = context.project && state == StateBuilding,
        .run = target && (state == StateIdle || state == StatePaused),
        .stop = target
                && (state == StateRunning || state == StatePaused || state == StateFinished || state == StateUnknown
                    || (state == StateInitialising && context.startCancellable)),
        .pause = target && state == StateRunning,
        .start = target && state == StateIdle,
        .restart = target && (state == StatePaused || state == StateFinished || state == StateIdle),
        .wakeup = target && (state == StatePaused || state == StateRunning),
        .showNext = target && state == StatePaused,
        .attach = target && context.canAttach && state == StateIdle,
        .batchBuild = context.project && context.buildEnvironment && state == StateIdle,
    };
}

QString captionSuffix(ActivityState state)
{
    switch (state) {
    case StateRunning:
        return u" [running]"_s;
    case StatePaused:
        return u" [paused]"_s;
    case StateFinished:
        return u" [finished]"_s;
    case StateUnknown:
        return u" [unknown]"_s;
    default:
        return {};
    }
}
