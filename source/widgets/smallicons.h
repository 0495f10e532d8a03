#pragma once
#include <QIcon>
class QPalette;

// Icons of 12 by 12 pixels in the colours of a palette, sharp on every screen.

[[nodiscard]] QIcon plusIcon(const QPalette &palette);
[[nodiscard]] QIcon crossIcon(const QPalette &palette);
[[nodiscard]] QIcon currentPageIcon(const QPalette &palette); ///< A triangle that points to the right.
[[nodiscard]] QIcon noIcon();                                 ///< A blank of the same size.
