#pragma once
#include "scriptapp.h"

/// Adds the methods of `app` that add and remove macros.
void defineMacroMethods(py::class_<ScriptApp> &type);
