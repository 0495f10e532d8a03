#pragma once
#include <QStringList>
struct _object;

/// The possible completions of @p beginning, such as "os.pa", from the names in the dictionary @p globals, sorted.
/// Attributes of objects are read, functions are not called. None for an empty beginning.
[[nodiscard]] QStringList pythonCompletions(_object *globals, const QString &beginning);
