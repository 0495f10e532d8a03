#pragma once
#include <functional>
#include <QStringList>

// A directory as the user names it on the command line: the workspaces and projects in it, or a project made of it.

/// By the ending of the name. That of a workspace may be in capitals; that of a project may not, because workspaces
/// contain the name of a project without its ending.
[[nodiscard]] bool isWorkspaceFile(const QString &path);
[[nodiscard]] bool isProjectFile(const QString &path);

/// The paths of what can be opened in @p directory: its workspaces, then its projects without a workspace of their
/// name.
[[nodiscard]] QStringList openableFiles(const QString &directory);

/// A project named like @p directory in @p directory, with all sources below it and the settings of its build system.
/// The module "folderproject" of the template "existing/folder" in @p templates makes it; no program of the directory
/// is run. Returns its path; empty if it cannot be written. Nothing is overwritten. @p keepRunning is called several
/// times per second and ends the search when it returns false.
[[nodiscard]] QString createFolderProject(const QString &directory, const QString &templates,
                                          const std::function<bool()> &keepRunning = {});
