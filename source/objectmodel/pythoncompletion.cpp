#include "pythoncompletion.h"
#include "pyqtwrapper.h"
#include "pythonstring.h"
#include <pybind11/eval.h>
#include <QRegularExpression>
namespace py = pybind11;
using namespace Qt::StringLiterals;

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

/// The attributes of a wrapped object of the toolkit. The completer reads them, and has none if one cannot be read,
/// such as a property of a type that scripts cannot use.
QStringList listedAttributes(const py::handle &globals, const QString &beginning)
{
    static const QRegularExpression path(u"\\A\\w+(\\.\\w+)*\\z"_s, QRegularExpression::UseUnicodePropertiesOption);
    const QString owner = beginning.left(beginning.lastIndexOf(u'.'));
    if (owner == beginning || !path.match(owner).hasMatch()) // no expression that could call a function
        return {};
    const py::object value = py::eval(owner.toStdString(), py::reinterpret_borrow<py::object>(globals));
    QStringList names;
    if (!py::isinstance(value, pyQtWrapperType()))
        return names;
    for (const py::handle &name : py::module_::import("builtins").attr("dir")(value))
        names.append(owner + u'.' + fromPython(name.ptr()));
    return names;
}

QStringList allCompletions(const py::handle &globals, const QString &beginning)
{
    try {
        return findCompletions(globals, beginning);
    } catch (const py::error_already_set &) {
        return listedAttributes(globals, beginning);
    }
}

} // namespace

QStringList pythonCompletions(_object *globals, const QString &beginning)
{
    if (beginning.trimmed().isEmpty())
        return {};
    try {
        QStringList names = allCompletions(globals, beginning);
        names.removeIf([&beginning](const QString &name) { return !name.startsWith(beginning); });
        names.sort();
        names.removeDuplicates();
        return names;
    } catch (const std::exception &) {
        return {}; // an object that cannot be inspected has no names
    }
}
