#pragma once
#include <memory>
struct _object; // a Python object; headers of ours do without Python's own

struct PythonRelease
{
    void operator()(_object *object) const;
};

/// One counted reference on a Python object, given back by itself.
using PythonReference = std::unique_ptr<_object, PythonRelease>;

/// A reference of its own on an object that somebody else holds; null for null.
[[nodiscard]] PythonReference newPythonReference(_object *object);
