#pragma once

enum class PythonEnvironment {
    Ignored, ///< the same Python for everybody, whatever PYTHONPATH, PYTHONHOME, PATH and the user's packages say
    Heard    ///< the user's variables, packages and virtual environment take part, as for an interpreter in a shell
};

/// Starts the embedded Python: UTF-8 mode, `site` on, no signal handlers, no standard input, nothing changed in the
/// program's own locale and streams. Returns true as well when it runs already, and false after a warning when it
/// cannot be started. Python is never finalised: objects of scripts may live as long as the process.
[[nodiscard]] bool startPython(PythonEnvironment environment = PythonEnvironment::Ignored);
