#pragma once
class Project;
class ProjectFile;
class QWidget;

// The commands that show the property dialog. They return when the user has closed it, or when the project or the file
// has gone away. What was accepted is in the project then, which counts as modified.

/// @p project must not be null.
void editProjectProperties(Project *project, QWidget *parent);
/// @p file must be part of a project.
void editFileProperties(ProjectFile *file, QWidget *parent);
