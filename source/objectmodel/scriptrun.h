#pragma once
#include <functional>
#include <QStringList>

/// The exit codes of a script besides those that it chooses itself.
enum ScriptExit {
    ScriptFailed = 1,        ///< by an exception
    ScriptNotFound = 2,      ///< the file cannot be opened
    ScriptInterrupted = 130, ///< by KeyboardInterrupt
};

/// Runs a script as its own program, as the module `__main__`, with its output on the streams of the process.
/// @p arguments becomes sys.argv: the path of the script, or "-m" and the name of a module, and what the script gets.
/// @p keepRunning is called several times per second; when it returns false, KeyboardInterrupt is raised in the script.
/// Returns the exit code, of `sys.exit()` or of the errors above, which are printed.
[[nodiscard]] int runScriptProgram(const QStringList &arguments, const std::function<bool()> &keepRunning);
