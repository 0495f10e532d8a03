#include "pythonnumber.h"

long asLong(_object *value)
{
    const bool isFloat = PyFloat_Check(value);
    const auto number =
        isFloat ? py::reinterpret_steal<py::object>(PyNumber_Long(value)) : py::reinterpret_borrow<py::object>(value);
    const long result = number ? PyLong_AsLong(number.ptr()) : -1;
    if (PyErr_Occurred())
        throw py::error_already_set();
    return result;
}

uint requireInteger(_object *value)
{
    if (!PyLong_Check(value))
        raisePython(PyExc_ValueError, QStringLiteral("Value must be an integer"));
    return uint(PyLong_AsUnsignedLongMask(value));
}
