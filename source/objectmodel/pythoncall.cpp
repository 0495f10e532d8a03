#include "pythoncall.h"
#include "pythonerrors.h"
#include "pythonoutput.h"
#include "pythonthreads.h"
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <Python.h>
#include <thread>

using namespace std::chrono_literals;

namespace {

int callDepth = 0;
bool breakQueued = false;
bool ending = false;

constexpr auto EndLimit = 5s; ///< for scripts to end after the window has closed
std::jthread endLimit;        ///< runs during that time

/// On a thread of its own, since the script may handle no events. Everything has been saved by now, and the interpreter
/// cannot be left from outside, so no destructors run.
void endProcessLater(const std::stop_token &stop)
{
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any cancelled;
    cancelled.wait_for(lock, stop, EndLimit, [] { return false; });
    if (stop.stop_requested())
        return;
    std::fputs("Varnel: a script ignores KeyboardInterrupt, so it was ended.\n", stderr);
    std::_Exit(EXIT_SUCCESS);
}

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
    endLimit = {};
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
    if (ending && !endLimit.joinable())
        endLimit = std::jthread(endProcessLater);
}

bool isPythonEnding()
{
    return ending;
}
