#pragma once
#include <QString>

/// What the user can set for a project's debugger, as the property editor wants it told.
[[nodiscard]] QString gdbPropertyDefinitions();
