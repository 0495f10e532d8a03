#pragma once
#include <QString>
class WindowServices;

/// The command "New Macro": opens the file of the user's macros and appends a function with its registration. The
/// cursor is put on what the function does. False if the file does not exist or is no text.
bool addMacroTo(const QString &file, WindowServices &window);

/// Python source of a macro that does nothing, to be appended to @p script. Its name does not occur there.
[[nodiscard]] QString newMacroSource(const QString &script);
