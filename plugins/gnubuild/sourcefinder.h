#pragma once
#include <QStringList>

/// The absolute paths of the files below @p directory with one of the extensions, sorted by name. Hidden directories,
/// links to directories, the @p excluded directories (absolute) and directories with a project file are skipped.
[[nodiscard]] QStringList findSources(const QString &directory, const QStringList &extensions,
                                      const QStringList &excluded);
