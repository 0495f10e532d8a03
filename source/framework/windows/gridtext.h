#pragma once
#include <QSize>
#include <QString>
class ListView;

/// The rows that the user sees in a list of names and values, for test drivers: "name = value", a line each. Rows below
/// other rows are indented.
[[nodiscard]] QString gridText(const ListView &list);

/// The size below which a list of names and values cannot be read in a dock window.
[[nodiscard]] QSize readableSize(const ListView &list);
