#pragma once
class Activity;
class WindowServices;

/// Lets the build environment of the current project generate Makefiles, and writes them. Asks before a file is
/// overwritten that was not generated from the same project. The page "Build" shows what was written. False if there is
/// no project.
bool generateMakefiles(const Activity &activity, WindowServices &window);
