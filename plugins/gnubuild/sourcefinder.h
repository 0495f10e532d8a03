#pragma once
#include <QStringList>

/// The absolute paths of the files below @p directory that have one of the extensions, in the order of their names.
/// Left out are hidden directories, links to directories, the @p excluded directories (absolute) and directories with
/// a project file of their own.
[[nodiscard]] QStringList findSources(const QString &directory, const QStringList &extensions,
                                      const QStringList &excluded);
