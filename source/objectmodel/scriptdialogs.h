#pragma once
#include "scripttypes.h"
class ScriptApp;

/// Adds the methods that show a dialog to the type of "app".
void defineDialogMethods(py::class_<ScriptApp> &type);
