#pragma once
#include "dynamicmenus.h"

class Activity;
class Project;

/// Menu entries for the commands that the build environment of @p project, which may be null, adds.
[[nodiscard]] QList<MenuEntry> buildExtensionEntries(const Project *project);
/// Menu entries for the commands that execution environments add: one group for each project whose environment has
/// commands to offer.
[[nodiscard]] QList<QList<MenuEntry>> debugExtensionEntries(const Activity &activity);

/// Carries out the command at @p index of the build environment of @p project, if it is enabled.
void executeBuildExtension(const Project *project, int index);
/// Carries out the command at @p index of all that debugExtensionEntries() lists, if it is enabled. A later project
/// whose list is long enough has its command at the same place carried out as well.
void executeDebugExtension(const Activity &activity, int index);
