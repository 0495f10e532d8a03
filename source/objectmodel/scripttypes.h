#pragma once
#include "pythonstring.h"
#include <pybind11/pybind11.h>
#include <QPointer>
#include <QStringList>
namespace py = pybind11;

// What all types of the script interface share: the conversion of texts, exceptions, and the definition of a type.

/// Raises a Python exception of the class @p type in the script that made the call.
[[noreturn]] void raisePython(_object *type, const QString &text);
/// For operations that fail without an exception of their own: Python itself raises SystemError then.
[[noreturn]] void raiseNothing();
/// For objects that scripts have kept longer than the program.
[[noreturn]] void raiseDestroyed();

/// For all that is not safe in a thread that the script has started: raises RuntimeError there.
void requireMainThread();
[[nodiscard]] bool isMainThread();

/// The object, if it still exists.
template <typename T>
T &requireAlive(const QPointer<T> &object)
{
    if (!object)
        raiseDestroyed();
    return *object;
}

namespace pybind11::detail {
/// `str` and QString. As in Python's own functions, arguments cannot contain a null character.
template <>
struct type_caster<QString>
{
    PYBIND11_TYPE_CASTER(QString, const_name("str"));
    bool load(handle source, bool)
    {
        if (!PyUnicode_Check(source.ptr()))
            return false;
        value = fromPython(source.ptr());
        if (value.contains(QChar::Null))
            throw value_error("embedded null character");
        return true;
    }
    static handle cast(const QString &text, return_value_policy, handle) { return toPython(text).release(); }
};

/// Results only: a new list of `str`.
template <>
struct type_caster<QStringList>
{
    static constexpr auto name = const_name("list[str]");
    static handle cast(const QStringList &texts, return_value_policy, handle)
    {
        list result;
        for (const QString &text : texts)
            result.append(reinterpret_steal<object>(toPython(text).release()));
        return result.release();
    }
};

/// Results only: null becomes None.
template <>
struct type_caster<PythonReference>
{
    static constexpr auto name = const_name("object");
    static handle cast(PythonReference object, return_value_policy, handle)
    {
        return object ? handle(object.release()) : none().release();
    }
};
} // namespace pybind11::detail

/// A new type. Scripts cannot create instances of it or derive from it. @p name is the one of the type; the module may
/// offer it under another one. @p extra are further options of py::class_.
template <typename T, typename... Extra>
py::class_<T> newScriptType(const char *name, const char *documentation, const Extra &...extra)
{
    py::class_<T> type(py::handle(), name, documentation, py::is_final(), py::module_local(), extra...);
    type.attr("__module__") = "varnel";
    auto *record = reinterpret_cast<PyTypeObject *>(type.ptr());
    record->tp_new = nullptr;
    PyType_Modified(record);
    return type;
}

/// A new script object with the C++ object T(@p arguments...).
template <typename T, typename... Arguments>
PythonReference newScriptObject(Arguments &&...arguments)
{
    return PythonReference(py::cast(std::make_unique<T>(std::forward<Arguments>(arguments)...)).release().ptr());
}
