#pragma once
#include <optional>
#include <QByteArray>
#include <QString>

/// All bytes of a file; nothing if it cannot be read as a whole or is no ordinary file.
[[nodiscard]] std::optional<QByteArray> readFile(const QString &path);

/// Writes @p bytes to the file @p path, which keeps its permissions, owner, extended attributes and links. On failure
/// returns false and the file is what it was: the bytes go to a new file beside it, which then takes its name. Where
/// that is not allowed, or the file has several names, the space is secured before a byte of it is changed.
[[nodiscard]] bool writeFileSafely(const QString &path, const QByteArray &bytes);
