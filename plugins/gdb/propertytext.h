#pragma once
#include <QString>

/// The debugger options of a project, in the format of IPropertyDefinitions.
[[nodiscard]] QString gdbPropertyDefinitions();
