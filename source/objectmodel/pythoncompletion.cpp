#include "pythoncompletion.h"
#include "pythonstring.h"
#include <pybind11/pybind11.h>
namespace py = pybind11;

namespace {

/// The module "rlcompleter" would configure the line editor of the terminal, which the program does not use.
py::module_ importCompleter()
{
    const py::dict modules = py::module_::import("sys").attr("modules");
    if (modules.contains("rlcompleter") || modules.contains("readline"))
        return py::module_::import("rlcompleter");
    modules["readline"] = py::none(); // an import of it fails
    py::module_ completer = py::module_::import("rlcompleter");
    modules.attr("pop")("readline");
    return completer;
}

QStringList findCompletions(const py::handle &globals, const QString &beginning)
{
    const py::object completer = importCompleter().attr("Completer")(globals);
    const auto text = py::reinterpret_steal<py::object>(toPython(beginning).release());
    QStringList names;
    for (int i = 0;; ++i) {
        const py::object name = completer.attr("complete")(text, i);
        if (!py::isinstance<py::str>(name))
            return names;
        names.append(fromPython(name.ptr()));
    }
}

} // namespace

QStringList pythonCompletions(_object *globals, const QString &beginning)
{
    if (beginning.trimmed().isEmpty())
        return {};
    try {
        QStringList names = findCompletions(globals, beginning);
        names.removeIf([&beginning](const QString &name) { return !name.startsWith(beginning); });
        names.sort();
        names.removeDuplicates();
        return names;
    } catch (const std::exception &) {
        return {}; // an object that cannot be inspected has no names
    }
}
