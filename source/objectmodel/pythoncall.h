#pragma once
#include <QtGlobal>

/// Stands around every call from the program into Python. At its end it prints the errors that the call left, so
/// nothing of a script reaches the caller.
class PythonCall
{
public:
    PythonCall();
    ~PythonCall();

    /// True while a script runs, be it that it waits in an event loop of its own.
    [[nodiscard]] static bool isRunning();

private:
    Q_DISABLE_COPY_MOVE(PythonCall)
};

/// Raises KeyboardInterrupt in the running script as soon as it gets control again. While none runs, the interrupt is
/// kept back and shows after the next call.
void breakPython();
