#pragma once
#include <QStringList>

// A directory as the user names it on the command line: the workspaces and projects in it, or a project made of it.

/// The paths of what can be opened in @p directory: its workspaces, then its projects without a workspace of their
/// name.
[[nodiscard]] QStringList openableFiles(const QString &directory);

/// The source files below @p directory, absolute and sorted. Hidden directories, links and trees of generated files are
/// left out. The search ends after a fixed number of entries, so that it is quick everywhere.
[[nodiscard]] QStringList sourcesBelow(const QString &directory);

/// A project named like @p directory in @p directory, with all sources below it and the settings of the template
/// "native/c" or "native/cpp" in @p templates. Returns its path; empty if it cannot be written. Nothing is overwritten.
[[nodiscard]] QString createFolderProject(const QString &directory, const QString &templates);
