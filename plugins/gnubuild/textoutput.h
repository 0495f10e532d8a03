#pragma once
#include <QByteArray>
#include <QString>

/// What became of a file that was to have a certain text.
enum class Written { Same, Changed, Failed };

/// Gives the file @p path the contents @p bytes, and leaves it alone if it has them already, so that its time tells
/// when it changed. Makes its directory. On a failure @p error says why, if it is given.
Written writeIfChanged(const QString &path, const QByteArray &bytes, QString *error = nullptr);

/// Whether the file @p path has just these contents.
[[nodiscard]] bool hasContents(const QString &path, const QByteArray &bytes);

/// Makes @p link a symbolic link with the text @p target. A file of the user's in its place stays.
void updateLink(const QString &link, const QString &target);
