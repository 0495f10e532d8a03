#pragma once
#include <QStringList>

/// The font families whose "X" is as wide as their ".", at the default size.
[[nodiscard]] QStringList fixedPitchFamilies();
