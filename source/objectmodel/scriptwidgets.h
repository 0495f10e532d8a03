#pragma once
#include "scriptapp.h"

/// Adds the methods of `app` that create windows, widgets and timers, and that dock widgets.
void defineWidgetMethods(py::class_<ScriptApp> &type);

/// The types of the objects that these methods return.
[[nodiscard]] py::object bindQtWrapper();
[[nodiscard]] py::object bindQtSlot();
