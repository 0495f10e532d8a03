#pragma once
#include <optional>
#include <QByteArray>
#include <QString>

/// All bytes of a file; nothing if it cannot be read as a whole or is not a regular file.
[[nodiscard]] std::optional<QByteArray> readFile(const QString &path);

/// Writes @p bytes to the file @p path, which keeps its permissions, owner, extended attributes and links. On failure
/// returns false and leaves the file unchanged: the bytes are written to a new file in the same directory, which is
/// then renamed. If that is not allowed, or the file has several hard links, the space is reserved before the file is
/// overwritten.
[[nodiscard]] bool writeFileSafely(const QString &path, const QByteArray &bytes);
/// For a message that asks the user to check the file's permissions, after a failed write: the system's words for
/// another reason, behind an empty line. Empty if there is none. @p error is errno, which the caller had set to 0.
[[nodiscard]] QString otherWriteFailure(int error);
