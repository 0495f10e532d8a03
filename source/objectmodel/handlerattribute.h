#pragma once
#include "eventhandlers.h"
#include "objectmodel.h"
#include "scripthost.h"
#include "scripttypes.h"

/// Adds an attribute to a type: the function that is called for the event of that name.
template <typename T>
void defineHandler(py::class_<T> &type, const char *event, const char *documentation)
{
    const QString name = QString::fromLatin1(event);
    type.def_property(
        event, [name](const T &self) { return self.model().host().eventHandlers().handler(name); },
        [name](const T &self, py::handle handler) {
            if (!self.model().host().eventHandlers().setHandler(name, handler.ptr()))
                raisePython(PyExc_TypeError, QStringLiteral("Function expected"));
        },
        documentation);
}
