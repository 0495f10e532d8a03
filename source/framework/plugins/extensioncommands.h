#pragma once
#include "dynamicmenus.h"

class Activity;
class Project;

/// Menu entries for the commands that the build environment of @p project, which may be null, adds.
[[nodiscard]] QList<MenuEntry> buildExtensionEntries(const Project *project);
/// Menu entries for the commands that execution environments add: one group for each project whose environment offers
/// commands.
[[nodiscard]] QList<QList<MenuEntry>> debugExtensionEntries(const Activity &activity);

/// Executes the command at @p index of the build environment of @p project, if it is enabled.
void executeBuildExtension(const Project *project, int index);
/// Executes the command at @p index of all that debugExtensionEntries() lists, if it is enabled. If a later project has
/// a command at the same position in its own list, that command is executed as well.
void executeDebugExtension(const Activity &activity, int index);
