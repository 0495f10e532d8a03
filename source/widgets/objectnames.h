#pragma once
#include <QString>

/// @p text as a part of an object's name: a path of names is separated by dots, and a command by blanks, so letters,
/// digits, "_" and "-" remain and all other characters become "-".
[[nodiscard]] QString partOfObjectName(QString text);
/// The name of a file up to its first dot, as a part of an object's name. Dots at its start, which hide it, do not
/// count.
[[nodiscard]] QString objectNameOfFile(const QString &filename);
