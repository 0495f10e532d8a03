#pragma once
#include <QSize>
#include <QString>
class ListView;

/// The rows that the user sees in a list of names and values, for test drivers: "name = value", a line each. Rows below
/// other rows are indented.
[[nodiscard]] QString gridText(const ListView &list);

/// The names of those rows that are marked because their value has changed, a line each.
[[nodiscard]] QString changedNames(const ListView &list);

/// Keeps a list of names and values at least as large as it must be to be read in a dock window, in each font.
void keepReadable(ListView &list);
/// That size.
[[nodiscard]] QSize readableSize(const ListView &list);
