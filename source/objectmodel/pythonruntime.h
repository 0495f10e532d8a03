#pragma once

enum class PythonEnvironment {
    Ignored, ///< the same Python for all users, independent of PYTHONPATH, PYTHONHOME, PATH and the user's packages
    Used     ///< the user's variables, packages and virtual environment are used, as by an interpreter in a shell
};

/// Starts the embedded Python: UTF-8 mode, `site` on, no signal handlers, no standard input; the locale and streams of
/// the program do not change. Returns true also if it runs already; prints a warning and returns false if it cannot be
/// started. Python is never finalised: objects of scripts may exist until the end of the process.
[[nodiscard]] bool startPython(PythonEnvironment environment = PythonEnvironment::Ignored);
