#pragma once
#include <QString>
struct _object;

/// Keeps an error back until the call into Python that is under way ends: the script itself goes on as if nothing had
/// happened. A later one takes the place of an earlier one. @p type is an exception class, looked at only.
void deferPythonError(_object *type, const QString &text);

/// The same for the error that is set now; with none set nothing happens.
void deferPythonError();

/// Prints the error kept back, then the one that is set, each if there is one. As everywhere in Python, a SystemExit
/// ends the process here.
void printPythonErrors();
