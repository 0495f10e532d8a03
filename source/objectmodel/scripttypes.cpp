#include "scripttypes.h"
#include <QCoreApplication>
#include <QThread>
using namespace Qt::StringLiterals;

void raisePython(_object *type, const QString &text)
{
    PyErr_SetObject(type, toPython(text).get());
    throw py::error_already_set();
}

void raiseNothing()
{
    raisePython(PyExc_SystemError, u"error return without exception set"_s);
}

bool isMainThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    return !application || application->thread() == QThread::currentThread();
}

void requireMainThread()
{
    if (!isMainThread())
        raisePython(PyExc_RuntimeError, u"Only the main thread of a script can use the program"_s);
}

void raiseDestroyed()
{
    raisePython(PyExc_RuntimeError, u"Object has been destroyed"_s);
}
