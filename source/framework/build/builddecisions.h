#pragma once
#include "activitystate.h"
#include <QString>
class Project;
class ProjectWorkspace;

/// The text of the compile command: "%1" in @p pattern stands for the name of @p file, or for "file" if it is empty.
[[nodiscard]] QString compileText(const QString &pattern, const QString &file);

/// The project that compiles @p file: the current one if the file is among its files, else the first that has it, else
/// null. @p workspace may be null.
[[nodiscard]] Project *compilingProject(const ProjectWorkspace *workspace, const QString &file);

/// Whether the environment of @p project, which may be null, is to be asked if it can compile @p file.
[[nodiscard]] bool mayCompile(ActivityState state, const QString &file, const Project *project);

/// The default value of the property @p key in @p definitions, an XML text of IPropertyDefinitions.
[[nodiscard]] QString defaultOfProperty(const QString &definitions, const QString &key);

/// The pattern of source lines in the build output, in the current configuration of @p project: its property or, if it
/// has none, the default of its build environment.
[[nodiscard]] QString buildMatch(const Project &project);
