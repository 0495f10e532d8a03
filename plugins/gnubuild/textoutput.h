#pragma once
#include <QByteArray>
#include <QString>

/// The result of writeIfChanged().
enum class Written { Same, Changed, Failed };

/// Writes @p bytes to the file @p path, unless it has these contents already, so that its time is that of the last
/// change. Creates its directory. On failure sets @p error, if it is not null.
Written writeIfChanged(const QString &path, const QByteArray &bytes, QString *error = nullptr);

/// Whether the file @p path has exactly these contents.
[[nodiscard]] bool hasContents(const QString &path, const QByteArray &bytes);

/// Makes @p link a symbolic link to @p target. An existing file is not replaced.
void updateLink(const QString &link, const QString &target);
