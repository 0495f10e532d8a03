#pragma once
#include <QtGlobal>

/// Encloses every call from the program into Python. Its destructor prints the errors that the call left, so that no
/// exception of a script reaches the caller.
class PythonCall
{
public:
    PythonCall();
    ~PythonCall();

    /// True while a script runs, also while it waits in its own event loop.
    [[nodiscard]] static bool isRunning();

private:
    Q_DISABLE_COPY_MOVE(PythonCall)
};

/// Raises KeyboardInterrupt in the running script as soon as it gets control. If none runs, the interrupt is printed
/// after the next call.
void breakPython();

/// For the end of the program, when everything is saved: raises KeyboardInterrupt in the running scripts whenever they
/// handle events, until they have ended. If they ignore that, the process ends some seconds later. Nothing happens if
/// none runs.
void endPython();
/// Whether a script runs that has to end.
[[nodiscard]] bool isPythonEnding();
