#pragma once
#include "pythonreference.h"
#include <QString>
class QtWrapper;

// The Python types "PyQtWrapper", the object of a QtWrapper, and "PySlotWrapper", a slot that was read from one. All
// attributes of both are computed, so they are made with Python's own interface.

[[nodiscard]] _object *pyQtWrapperType();
[[nodiscard]] _object *pySlotWrapperType();

/// A new object. It does not own @p wrapper.
[[nodiscard]] PythonReference newPyQtWrapper(QtWrapper *wrapper);
/// Called when the wrapper is deleted: scripts may keep the object.
void detachPyQtWrapper(_object *object);
/// Null for a detached object and for one of another type.
[[nodiscard]] QtWrapper *wrapperOf(_object *object);

/// A method of @p object, a PyQtWrapper: a PySlotWrapper that is bound to it.
[[nodiscard]] PythonReference newBoundSlot(_object *object, const QString &name);
