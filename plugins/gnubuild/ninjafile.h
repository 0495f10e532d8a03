#pragma once
#include <QByteArray>

struct BuildDescription;

/// The text of the file by which ninja builds what @p description tells. Ninja is run in the project's directory.
[[nodiscard]] QByteArray ninjaFile(const BuildDescription &description);

/// The compilation database of @p description, which tells editors and checkers how each file is compiled.
[[nodiscard]] QByteArray compilationDatabase(const BuildDescription &description);

/// A path as it stands in a build statement of ninja.
[[nodiscard]] QString ninjaPath(const QString &path);

/// A text as it stands in a variable of ninja.
[[nodiscard]] QString ninjaValue(const QString &text);

/// Whether ninja has a way to write @p text as a path, or as a value.
[[nodiscard]] bool isPossibleNinjaPath(const QString &text);
[[nodiscard]] bool isPossibleNinjaValue(const QString &text);
