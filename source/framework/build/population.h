#pragma once
#include <functional>
class Activity;
class Project;
class QString;

/// Lets the build environment of @p project, which may be null, add the files to the project, if it offers that.
void populate(const Project *project);

/// For a workspace that has just been opened. Populates the current project once for each project whose property
/// "projectAutoPopulate" is set. Returns whether the build environment of any project offers to populate.
bool populateWorkspace(const Activity &activity);

/// Whether runProjectScripts() would run a file.
[[nodiscard]] bool hasProjectScripts(const Activity &activity);

/// For a workspace that has just been opened: calls @p runFile with the absolute path of each Python file whose
/// property "runAtProjectLoad" is set. During the call its project is the current one; at the end the first project is.
void runProjectScripts(const Activity &activity, const std::function<void(const QString &path)> &runFile);
