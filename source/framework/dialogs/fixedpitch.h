#pragma once
#include <QString>

/// Whether "X" is as wide as "." in @p family, at the default size. Measuring loads the font's file, so each family is
/// measured once.
[[nodiscard]] bool isFixedPitch(const QString &family);
