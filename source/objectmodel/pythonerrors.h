#pragma once
#include <QString>
struct _object;

/// Stores an error until the current call into Python ends: the script itself continues without it. A later error
/// replaces an earlier one. @p type is an exception class; no reference is taken.
void deferPythonError(_object *type, const QString &text);

/// The same for the error that is set now, if there is one.
void deferPythonError();

[[nodiscard]] int deferredPythonErrors(); ///< How many were stored so far.

/// Prints the stored error, then the error that is set, if there are any. As usual in Python, a SystemExit ends the
/// process here.
void printPythonErrors();
