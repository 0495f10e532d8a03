#pragma once
#include <QStringList>

struct BuildDescription;

/// What keeps @p description from being built at all, a sentence each: programs that are not there, and texts that
/// ninja cannot take.
[[nodiscard]] QStringList toolProblems(const BuildDescription &description);

/// The files that a build needs and that do not exist, a sentence each, the first twenty of them.
[[nodiscard]] QStringList fileProblems(const BuildDescription &description);

/// The sentence about ninja, which no build can do without.
[[nodiscard]] QString ninjaMissing();
