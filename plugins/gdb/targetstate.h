#pragma once
#include "iexecutionenvironment.h"
#include "mirecord.h"

/// The state of the target as far as it is known. It follows from observed events, never from the results of commands.
struct TargetState
{
    enum Phase : long {
        Absent, ///< no session
        Stopped,
        Running,
        Ended, ///< the program, or the emulator with it, has ended
        Lost   ///< the connection is lost; the state of the target is unknown
    };

    Phase phase = Absent;
    bool atBreakpoint = false; ///< stopped at a breakpoint of the user

    bool operator==(const TargetState &) const = default;
};

/// What can happen to a target.
enum class TargetEvent {
    Connected, ///< a session starts, or the program is back at its start: stopped
    Resumed,
    Stopped,
    BreakpointHit,
    Exited,
    LinkLost,
    Closed ///< the session was ended by a command
};

[[nodiscard]] TargetState nextState(TargetState state, TargetEvent event);
[[nodiscard]] IExecutionEnvironment::ProgramStatus programStatus(TargetState state);

/// What the session has requested of the program, in addition to what the target reports (TargetState). It decides
/// whether a stop is reported to the host.
struct RunRequest
{
    enum class Motion { Continue, Step };
    enum class Pause {
        None,
        ByUser, ///< requested by the user; the program has not stopped yet
        Own,    ///< requested for an operation of our own; the program has not stopped yet
        Hidden  ///< the program has stopped for that operation; the stop is not reported
    };

    Motion motion = Motion::Continue;
    Pause pause = Pause::None;

    bool operator==(const RunRequest &) const = default;
};

/// What changes a RunRequest.
enum class RunEvent {
    StepStarted,
    PauseRequested,    ///< by the user
    OwnPauseRequested, ///< does not replace a pause that the user has requested
    OwnPauseEnded,
    Paused, ///< the program stopped without a reason of its own
    Stopped ///< the program stopped for a reason of its own, or could not run
};

[[nodiscard]] RunRequest nextRequest(RunRequest request, RunEvent event);

/// Why a program stopped.
struct StopReason
{
    TargetEvent event = TargetEvent::Stopped;
    int breakpoint = 0; ///< gdb's number of the breakpoint or watchpoint; 0 for none
    bool temporary = false;
    QString text;         ///< for the user; empty if the user knows the reason
    bool isPause = false; ///< no breakpoint, no end of a step or of the program
};

/// Whether gdb reports with this text that the target is lost.
[[nodiscard]] bool reportsLostTarget(const QString &text);

/// The end of a program with the exit code of @p record.
[[nodiscard]] StopReason exitReason(const MiRecord &record);

/// Reads a "stopped" record, whose fields may come in any order or be missing.
[[nodiscard]] StopReason stopReason(const MiRecord &record);
