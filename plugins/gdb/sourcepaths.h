#pragma once
#include <QString>
#include <QStringList>

/// Of @p candidates, the path of the same file name that agrees with @p path in most folders, counted from the end;
/// empty if none has the name. Of equals the first one counts.
[[nodiscard]] QString bestPathMatch(const QString &path, const QStringList &candidates);

/// Whether a file text names a place in the disassembly instead of a source file.
[[nodiscard]] bool isDisassembly(const QString &file);

/// @p path as the host names files of a project: relative if it lies below @p basePath, otherwise as it is.
[[nodiscard]] QString projectPath(const QString &path, const QString &basePath);
