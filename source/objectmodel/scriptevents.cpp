#include "scriptevents.h"
#include "pythoncall.h"
#include "pythonoutput.h"
#include "scripttypes.h"
#include <algorithm>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>
using namespace std::chrono_literals;

namespace {
constexpr std::chrono::milliseconds Slice = 20ms; ///< between two looks at what interrupts the script

void handleEventsOfSlice(std::chrono::milliseconds time)
{
    PythonOutput::flushAll();
    QTimer end;
    end.setSingleShot(true);
    end.setTimerType(Qt::PreciseTimer);
    end.start(time);
    const QDeadlineTimer deadline(time); // handlers of events may need longer
    while (end.isActive() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void letThreadsWork()
{
    Py_BEGIN_ALLOW_THREADS Py_END_ALLOW_THREADS
}

void raiseInterrupts()
{
    if (PyErr_CheckSignals() != 0 || Py_MakePendingCalls() != 0)
        throw py::error_already_set();
}

/// A script that waits for something would go on without a window.
void raiseIfProgramEnds()
{
    if (!isPythonEnding())
        return;
    PyErr_SetNone(PyExc_KeyboardInterrupt);
    throw py::error_already_set();
}
} // namespace

void handleEvents(std::chrono::milliseconds time)
{
    if (time <= 0ms) {
        PythonOutput::flushAll();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 0);
        raiseIfProgramEnds();
    }
    const QDeadlineTimer end(std::max(time, 0ms));
    while (!end.hasExpired()) {
        handleEventsOfSlice(std::clamp(std::chrono::milliseconds(end.remainingTime()), 1ms, Slice));
        letThreadsWork();
        raiseInterrupts();
        raiseIfProgramEnds();
    }
}
