#pragma once
#include <QString>
struct ScriptDirectories;

/// The path of the script @p name for the user to edit. If the installed file cannot be written and the user has no
/// copy yet, creates a copy.
[[nodiscard]] QString editableScript(const ScriptDirectories &directories, const QString &name);
