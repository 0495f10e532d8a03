#pragma once
#include <QString>

/// The expression of a C-like language at a column of a line, counted from 0, that has a value: the name there, and
/// what it is a member or an element of. "b" in "a.b[i].c" gives "a.b". Empty for calls, which would run the program,
/// for numbers, and between names.
[[nodiscard]] QString expressionAt(const QString &line, int column);
