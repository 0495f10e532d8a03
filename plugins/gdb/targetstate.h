#pragma once
#include "iexecutionenvironment.h"
#include "mirecord.h"

/// What became of the target, as far as we know. Fed by what is observed, never by the results of commands.
struct TargetState
{
    enum Phase : long {
        Absent, ///< no session
        Stopped,
        Running,
        Ended, ///< the program, or the emulator with it, has come to its end
        Lost   ///< the connection has gone; what the target does is not known
    };

    Phase phase = Absent;
    bool atBreakpoint = false; ///< stopped by one of the user's

    bool operator==(const TargetState &) const = default;
};

/// What can happen to a target.
enum class TargetEvent {
    Connected, ///< a session begins, or the program begins anew: stopped
    Resumed,
    Stopped,
    BreakpointHit,
    Exited,
    LinkLost,
    Closed ///< the session was ended by us
};

[[nodiscard]] TargetState nextState(TargetState state, TargetEvent event);
[[nodiscard]] IExecutionEnvironment::ProgramStatus programStatus(TargetState state);

/// Why a program stopped.
struct StopReason
{
    TargetEvent event = TargetEvent::Stopped;
    int breakpoint = 0; ///< gdb's number of the breakpoint or watchpoint; 0 for none
    bool temporary = false;
    QString text; ///< for the user; empty where the reason is plain
};

/// Reads a "stopped" record, whose fields may come in any order or be missing.
[[nodiscard]] StopReason stopReason(const MiRecord &record);
