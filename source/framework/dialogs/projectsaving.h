#pragma once
#include <QMessageBox>
class Project;
class ProjectWorkspace;

// Saving projects and workspaces, with the questions and warnings that it needs.

using SaveAnswer = QMessageBox::StandardButton;

/// Asks whether to save the changes of the projects of the workspace @p name: Yes, No or Cancel.
[[nodiscard]] SaveAnswer askToSaveChanges(QWidget *parent, const QString &name);

/// Whether the user agrees to overwrite files that other programs have written meanwhile; true without a question if
/// there are none.
[[nodiscard]] bool mayOverwriteNewer(QWidget *parent, const QStringList &paths);

enum class IfNewer { Ask, Overwrite };

/// Saves @p project, which may be null. False if the user or the file refuses; a failure is shown. A project that could
/// not be loaded is not saved: it is empty.
bool saveProject(QWidget *parent, Project *project, IfNewer ifNewer = IfNewer::Ask);
/// The same for a workspace file.
bool saveWorkspace(QWidget *parent, ProjectWorkspace *workspace, IfNewer ifNewer = IfNewer::Ask);
