#include "pythoncall.h"
#include "pythonerrors.h"
#include "pythonoutput.h"
#include "pythonthreads.h"
#include <Python.h>

namespace {

int callDepth = 0;
bool breakQueued = false;
bool ending = false;

int raiseKeyboardInterrupt(void *)
{
    breakQueued = false;
    PyErr_SetNone(PyExc_KeyboardInterrupt);
    return -1;
}

/// An interrupt that came too late for its script must not hit the next one.
void takeLateBreak()
{
    if (breakQueued && Py_MakePendingCalls() < 0)
        printPythonErrors();
}

} // namespace

PythonCall::PythonCall()
{
    ++callDepth;
}

PythonCall::~PythonCall()
{
    printPythonErrors();
    if (callDepth == 1)
        takeLateBreak();
    PythonOutput::flushAll();
    if (--callDepth > 0)
        return;
    ending = false;
    letPythonThreadsRun();
}

bool PythonCall::isRunning()
{
    return callDepth > 0;
}

void breakPython()
{
    if (!PythonCall::isRunning())
        deferPythonError(PyExc_KeyboardInterrupt, QString());
    else if (!breakQueued)
        breakQueued = Py_AddPendingCall(raiseKeyboardInterrupt, nullptr) == 0;
}

void endPython()
{
    ending = PythonCall::isRunning();
}

bool isPythonEnding()
{
    return ending;
}
