#pragma once
#include <memory>
struct _object; // a Python object; our headers do not include Python's header

struct PythonRelease
{
    void operator()(_object *object) const;
};

/// One counted reference to a Python object, released by its destructor.
using PythonReference = std::unique_ptr<_object, PythonRelease>;

/// A new reference to an object; null for null.
[[nodiscard]] PythonReference newPythonReference(_object *object);
