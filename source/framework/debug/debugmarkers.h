#pragma once
#include <QString>
class Activity;
class BreakpointLines;
class IExecutionEnvironment;
class Project;
class ViewManager;

// The markers of the debugger in the margins of the views.

/// The name of @p file for the environment of @p project: relative to the project; the name of a disassembly is not
/// changed.
[[nodiscard]] QString debugPath(const Project &project, const QString &file);
/// The same for the current project and the document in front; empty if either does not exist.
[[nodiscard]] QString currentDebugPath(const Activity &activity, ViewManager &views);
/// Whether @p file is the disassembly of an environment other than @p environment, which may be null.
[[nodiscard]] bool isForeignDisassembly(const QString &file, const IExecutionEnvironment *environment);

/// Marks the position of the program of @p project, which may be null, in every view that shows it.
void refreshExecutionMarker(const Project *project, const ViewManager &views);
void clearExecutionMarker(const ViewManager &views);
/// Marks the breakpoints of all projects of the open workspace; those of the current one last, so that they take
/// precedence. @p lines, which may be null, follows them from now on, and knows where they are in texts that have been
/// changed.
void refreshBreakpointMarkers(const Activity &activity, const ViewManager &views, BreakpointLines *lines = nullptr);
/// Rich text with the state of the breakpoints at a line, counted from 1, in each project. Empty if there are none, and
/// with one project, unless there is a reason, a condition or a text to be shown.
[[nodiscard]] QString breakpointToolTip(const Activity &activity, const QString &file, int line);
