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

/// A command that an environment offers, with a name that is the same in each run of the program.
struct OfferedCommand
{
    QString name; ///< "plugin_" and what the plug-in calls it
    QString text;
    bool isBuild = false; ///< whether it is in the Build menu; otherwise in the Debug menu
};
/// Those of the current project's build environment, and of all execution environments, the current project's first.
/// Commands of the same name are listed once.
[[nodiscard]] QList<OfferedCommand> offeredCommands(const Activity &activity);
/// Executes the first command of that name that is enabled; nothing if there is none.
void executeOffered(const Activity &activity, const QString &name);
