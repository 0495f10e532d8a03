#include "scriptmacros.h"
#include "macromanager.h"
#include "pythonnumber.h"
#include "scripthost.h"
using namespace Qt::StringLiterals;

namespace {
PythonReference requireFunction(const py::handle &object)
{
    if (!PyFunction_Check(object.ptr()))
        raisePython(PyExc_TypeError, u"Function expected"_s);
    return newPythonReference(object.ptr());
}

/// The warning, which a script may have turned into an exception, is shown in the console.
void warnOfTakenShortcut(const MacroDescription &macro)
{
    const QString text = u"The shortcut %1 of the macro '%2' is in use"_s.arg(macro.shortcut, macro.name);
    if (PyErr_WarnEx(PyExc_UserWarning, text.toUtf8().constData(), 1) < 0)
        throw py::error_already_set();
}

void addMacro(const ScriptApp &app, const py::handle &function, const QString &name, const QString &description,
              const QString &shortcut, const QString &iconFile)
{
    const PythonReference checked = requireFunction(function);
    MacroDescription macro{name, description, shortcut, iconFile};
    if (app.model().host().macros().isTaken(shortcut)) {
        warnOfTakenShortcut(macro);
        macro.shortcut.clear();
    }
    app.model().host().macros().addMacro(checked.get(), macro);
}

/// What follows a name is not looked at.
void clearMacro(const ScriptApp &app, const py::args &arguments)
{
    MacroManager &macros = app.model().host().macros();
    if (!arguments.empty() && py::isinstance<py::str>(arguments[0]))
        return macros.clearMacro(py::cast<QString>(arguments[0]));
    PyObject *function = nullptr;
    parseArguments(arguments, "O:clearMacro", &function);
    macros.clearMacro(requireFunction(function).get());
}
} // namespace

void defineMacroMethods(py::class_<ScriptApp> &type)
{
    const QString none;
    type.def("addMacro", addMacro, py::arg("function"), py::arg("name"), py::arg("description") = none,
             py::arg("shortcutKey") = none, py::arg("iconFile") = none, py::pos_only(),
             "addMacro(function, name, [description], [shortcutKey], [iconFile]) - adds a macro to the Tools menu and "
             "Macro toolbar");
    type.def("clearMacro", clearMacro, "clearMacro(name)- removes a macro");
    type.def(
        "clearMacros", [](const ScriptApp &app) { app.model().host().macros().clearMacros(); },
        "clearMacros() - clears all macros");
}
