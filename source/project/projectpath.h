#pragma once
#include <QString>

class QDir;

/// The form in which @p path is stored in a file in the directory @p base: relative if the first parts of both are
/// equal, with leading "../" where needed; otherwise unchanged. Only the texts are compared: @p path is absolute with
/// forward slashes, and "c:" differs from "C:".
[[nodiscard]] QString relativePath(const QDir &base, const QString &path);

/// The path that a stored @p path means: if it is relative, absolute and clean below @p base; otherwise unchanged.
[[nodiscard]] QString absolutePath(const QDir &base, const QString &path);

/// The last part of @p path, after the last slash.
[[nodiscard]] QString fileNameOf(const QString &path);

/// The file name of @p path after its first dot, in lower case: "tar.gz" for "src/A.TAR.gz".
[[nodiscard]] QString completeExtension(const QString &path);
