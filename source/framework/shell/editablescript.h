#pragma once
#include <QString>
struct ScriptDirectories;

/// The path of the script @p name for the user to edit. Where the installed file cannot be written and the user has no
/// copy yet, one is made.
[[nodiscard]] QString editableScript(const ScriptDirectories &directories, const QString &name);
