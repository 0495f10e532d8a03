#pragma once
#include <QPalette>

/// @p palette with disabled and placeholder texts that differ from their background in the direction in which normal
/// text does. Dark colour schemes of desktops that do not name these colours leave them black.
[[nodiscard]] QPalette readablePalette(QPalette palette);
