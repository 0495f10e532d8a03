#pragma once
#include "scripttypes.h"

// Conversions of arguments and values that differ from those of pybind11.

/// Python's own conversion of the arguments of a function; @p format as in PyArg_ParseTuple().
template <typename... Targets>
void parseArguments(const py::args &arguments, const char *format, Targets *...targets)
{
    if (!PyArg_ParseTuple(arguments.ptr(), format, targets...))
        throw py::error_already_set();
}

/// The number of an int, or the integer part of a float; raises an exception for other objects.
[[nodiscard]] long asLong(_object *value);
/// The lowest 32 bits of an int; raises ValueError for other objects.
[[nodiscard]] uint requireInteger(_object *value);
