#pragma once
#include "pythonreference.h"
#include <QString>

/// An exception of Python: its class, the instance, and where it was raised; null if there was none.
struct PythonException
{
    PythonReference type;
    PythonReference value;
    PythonReference traceback;
};

/// Takes the exception that is set, of which the value is an instance then.
[[nodiscard]] PythonException takePythonException();

/// Puts the exception that is set aside, and sets it again at the end: calls of Python need a state without one.
class PythonExceptionAside
{
public:
    PythonExceptionAside();
    ~PythonExceptionAside();
    Q_DISABLE_COPY_MOVE(PythonExceptionAside)

private:
    PythonException m_exception;
};

/// Stores an error until the current call into Python ends: the script itself continues without it. A later error
/// replaces an earlier one. @p type is an exception class; no reference is taken.
void deferPythonError(_object *type, const QString &text);

/// The same for the error that is set now, if there is one.
void deferPythonError();

[[nodiscard]] int deferredPythonErrors(); ///< How many were stored so far.

/// Prints the stored error, then the error that is set, if there are any. As usual in Python, a SystemExit ends the
/// process here.
void printPythonErrors();
