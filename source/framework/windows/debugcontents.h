#pragma once
class Activity;
class DebugWindows;

/// Puts the panes into the debugger's docks. Both arguments outlive these.
void addDebugContents(DebugWindows &windows, const Activity &activity);
