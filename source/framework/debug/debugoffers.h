#pragma once
class Activity;
class View;

/// What the debugger can do beyond the operations that every execution environment has.
struct DebugOffers
{
    bool programLines = false; ///< the current view has lines at which the program of the current project can be
    bool setNext = false;      ///< the current environment can move the paused program
    bool wakeUp = false;       ///< one of the environments can wake up its processor
};

/// Calls plug-ins. @p view, which may be null, is the current one.
[[nodiscard]] DebugOffers debugOffers(const Activity &activity, View *view);
/// See DebugOffers::programLines. Calls no plug-in.
[[nodiscard]] bool hasProgramLines(const Activity &activity, View *view);
