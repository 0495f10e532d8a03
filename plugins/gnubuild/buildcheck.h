#pragma once
#include <QStringList>

struct BuildDescription;

/// The reasons why @p description cannot be built, one sentence each: missing programs, and texts that ninja does not
/// support.
[[nodiscard]] QStringList toolProblems(const BuildDescription &description);

/// The missing input files of a build, one sentence each, at most twenty.
[[nodiscard]] QStringList fileProblems(const BuildDescription &description);

/// The message for a missing ninja.
[[nodiscard]] QString ninjaMissing();
