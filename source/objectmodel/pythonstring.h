#pragma once
#include "pythonreference.h"
#include <QString>

/// The text of a Python string, including lone surrogates. @p text must be a `str`.
[[nodiscard]] QString fromPython(_object *text);

/// A Python string; null and empty texts both become ''.
[[nodiscard]] PythonReference toPython(const QString &text);
