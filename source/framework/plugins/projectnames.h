#pragma once
#include <QString>
class Activity;
class Project;
class QWidget;

// Several projects of a workspace may have one name. Those behind the first one get a number then.

/// The name of @p project as a part of the names of its objects. A project that is not in the workspace yet counts as
/// the last one.
[[nodiscard]] QString objectNameOfProject(const Activity &activity, const Project *project);
/// Project::displayName() of @p project.
[[nodiscard]] QString shownNameOfProject(const Activity &activity, const Project *project);
/// Prefixes the names of @p window and of the parts in it: "project/name". Parts without a name keep none.
void nameByProject(QWidget *window, const QString &project);
