#include "scripttypes.h"
#include <QCoreApplication>
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

void raiseDestroyed()
{
    raisePython(PyExc_RuntimeError, u"Object has been destroyed"_s);
}
