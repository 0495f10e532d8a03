#pragma once
#include <QString>

class QDir;

/// The form in which @p path is stored in a file that lies in @p base: relative as soon as the first parts of both
/// agree, with leading "../" where needed; otherwise unchanged. Works on the texts alone: @p path is absolute with
/// forward slashes, and "c:" differs from "C:".
[[nodiscard]] QString relativePath(const QDir &base, const QString &path);

/// What a stored @p path means: absolute and clean when it is relative to @p base, unchanged otherwise.
[[nodiscard]] QString absolutePath(const QDir &base, const QString &path);

/// The last part of @p path, all after the last slash.
[[nodiscard]] QString fileNameOf(const QString &path);

/// All after the first dot of the file name of @p path, in lower case: "tar.gz" for "src/A.TAR.gz".
[[nodiscard]] QString completeExtension(const QString &path);
