#pragma once
#include <QStringList>
struct _object;

/// The names that @p beginning, such as "os.pa", may grow to with the names of the dictionary @p globals, sorted.
/// Attributes of objects are asked for, functions are not called. None for an empty beginning.
[[nodiscard]] QStringList pythonCompletions(_object *globals, const QString &beginning);
