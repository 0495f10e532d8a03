#include "pythonerrors.h"
#include "pythonstring.h"
#include <Python.h>

namespace {

/// An exception as returned by Python. It must not be released at the end of the process, so no destructor does.
struct Error
{
    PyObject *type = nullptr;
    PyObject *value = nullptr;
    PyObject *traceback = nullptr;

    static Error fetch()
    {
        Error error;
        PyErr_Fetch(&error.type, &error.value, &error.traceback);
        return error;
    }
    void print() const
    {
        if (!type)
            return;
        PyErr_Restore(type, value, traceback);
        PyErr_Print();
    }
    void drop() const
    {
        Py_XDECREF(type);
        Py_XDECREF(value);
        Py_XDECREF(traceback);
    }
};

Error deferredError;
int deferredErrors = 0;

PythonException owned(const Error &error)
{
    return {PythonReference(error.type), PythonReference(error.value), PythonReference(error.traceback)};
}

} // namespace

PythonException takePythonException()
{
    Error error = Error::fetch();
    PyErr_NormalizeException(&error.type, &error.value, &error.traceback);
    return owned(error);
}

PythonExceptionAside::PythonExceptionAside() : m_exception(owned(Error::fetch())) {}

PythonExceptionAside::~PythonExceptionAside()
{
    PyErr_Restore(m_exception.type.release(), m_exception.value.release(), m_exception.traceback.release());
}

void deferPythonError(_object *type, const QString &text)
{
    PyErr_SetObject(type, toPython(text).get());
    deferPythonError();
}

void deferPythonError()
{
    if (!PyErr_Occurred())
        return;
    ++deferredErrors;
    std::exchange(deferredError, Error::fetch()).drop();
}

int deferredPythonErrors()
{
    return deferredErrors;
}

void printPythonErrors()
{
    const Error error = Error::fetch();
    std::exchange(deferredError, Error()).print();
    error.print();
}
