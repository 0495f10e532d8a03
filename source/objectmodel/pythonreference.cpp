#include "pythonreference.h"
#include <Python.h>

void PythonRelease::operator()(_object *object) const
{
    Py_XDECREF(object);
}

PythonReference newPythonReference(_object *object)
{
    Py_XINCREF(object);
    return PythonReference(object);
}
