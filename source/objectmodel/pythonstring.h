#pragma once
#include "pythonreference.h"
#include <QString>

/// The text of a Python string, lone surrogates included. @p text must be a `str`.
[[nodiscard]] QString fromPython(_object *text);

/// A Python string; null and empty texts are both ''.
[[nodiscard]] PythonReference toPython(const QString &text);
