#pragma once
#include <optional>
#include <QByteArray>
#include <QString>

/// All bytes of a file; nothing if it cannot be read as a whole or is no ordinary file.
[[nodiscard]] std::optional<QByteArray> readFile(const QString &fileName);

/// Writes @p content into @p fileName as a whole or not at all: when false comes back, for a full disk as for a file
/// that may not be written, the old file is still there untouched. Symbolic links, permissions and, as far as the
/// system allows it, owner and group stay as they are.
[[nodiscard]] bool saveFile(const QString &fileName, const QByteArray &content);
