#pragma once
#include <QString>
class Activity;
class IExecutionEnvironment;
class Project;
class ViewManager;

// What debugging shows in the margins of the views.

/// The path by which the environment of @p project names what @p file shows: relative to the project, or the name of a
/// disassembly as it is.
[[nodiscard]] QString debugPath(const Project &project, const QString &file);
/// The same for the current project and the document in front; empty if there is none of one of them.
[[nodiscard]] QString currentDebugPath(const Activity &activity, ViewManager &views);
/// Whether @p file is the disassembly of an environment other than @p environment, which may be null.
[[nodiscard]] bool isForeignDisassembly(const QString &file, const IExecutionEnvironment *environment);

/// Marks where the program of @p project, which may be null, stands, in every view that shows the place.
void refreshExecutionMarker(const Project *project, const ViewManager &views);
void clearExecutionMarker(const ViewManager &views);
/// Marks the breakpoints of all projects of the open workspace. Those of the current one are marked last, so they win.
void refreshBreakpointMarkers(const Activity &activity, const ViewManager &views);
/// How the breakpoints at a line, which counts from 1, stand in each project, as rich text. Empty with one project, or
/// if there are none.
[[nodiscard]] QString breakpointToolTip(const Activity &activity, const QString &file, int line);
