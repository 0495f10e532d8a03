#pragma once
#include <QByteArray>

struct BuildDescription;

/// The contents of the file with which ninja builds @p description in the project's directory.
[[nodiscard]] QByteArray ninjaFile(const BuildDescription &description);

/// The compilation database of @p description: the compile command of each file, for editors and analysis tools.
[[nodiscard]] QByteArray compilationDatabase(const BuildDescription &description);

/// A path, escaped for a build statement of ninja.
[[nodiscard]] QString ninjaPath(const QString &path);

/// A text, escaped for a variable of ninja.
[[nodiscard]] QString ninjaValue(const QString &text);

/// Whether ninja supports @p text as a path, or as a value.
[[nodiscard]] bool isPossibleNinjaPath(const QString &text);
[[nodiscard]] bool isPossibleNinjaValue(const QString &text);
