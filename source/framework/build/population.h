#pragma once
#include <functional>
class Activity;
class Project;
class QString;

/// Has the build environment of @p project, which may be null, fill the project with its files, if it offers that.
void populate(const Project *project);

/// For a workspace that has just been opened. For each project that asks for it by its property "projectAutoPopulate"
/// the current project is populated. Returns whether the build environment of any project offers to populate.
bool populateWorkspace(const Activity &activity);

/// Whether runProjectScripts() would run a file.
[[nodiscard]] bool hasProjectScripts(const Activity &activity);

/// For a workspace that has just been opened: calls @p runFile with the absolute path of each Python file that asks for
/// it by its property "runAtProjectLoad". Its project is the current one then; in the end the first one is.
void runProjectScripts(const Activity &activity, const std::function<void(const QString &path)> &runFile);
