#include "projectscript.h"
#include "pythoncall.h"
#include "pythonerrors.h"
#include "pythonstring.h"
#include "scriptwatch.h"
#include <Python.h>
#include <QDir>

namespace {
using Outcome = ProjectScriptResult::Outcome;

/// A directory at the head of `sys.path`, as long as this object exists.
class SearchedFirst
{
public:
    explicit SearchedFirst(const QString &directory) : m_directory(toPython(directory))
    {
        if (PyObject *path = searchPath())
            PyList_Insert(path, 0, m_directory.get());
    }
    ~SearchedFirst()
    {
        PyObject *path = searchPath(); // the script may have replaced or changed it
        for (Py_ssize_t i = 0; path && i < PyList_Size(path); ++i) {
            if (PyList_GET_ITEM(path, i) == m_directory.get()) {
                PyList_SetSlice(path, i, i + 1, nullptr);
                return;
            }
        }
    }
    Q_DISABLE_COPY_MOVE(SearchedFirst)

private:
    static PyObject *searchPath()
    {
        PyObject *path = PySys_GetObject("path");
        return path && PyList_Check(path) ? path : nullptr;
    }

    PythonReference m_directory;
};

/// Takes modules out of `sys.modules` at the end that were not there at the start: one by its name, and those from the
/// files of a directory.
class ImportedForOnce
{
public:
    ImportedForOnce(_object *name, _object *directory)
        : m_name(newPythonReference(name))
        , m_directory(newPythonReference(directory))
        , m_before(PyDict_Copy(PyImport_GetModuleDict()))
    {}
    ~ImportedForOnce()
    {
        const PythonExceptionAside exception; // of the script, which is shown later
        PyObject *modules = PyImport_GetModuleDict();
        const PythonReference now(PyDict_Copy(modules));
        PyObject *name = nullptr;
        PyObject *module = nullptr;
        for (Py_ssize_t i = 0; m_before && now && PyDict_Next(now.get(), &i, &name, &module);) {
            if (PyDict_Contains(m_before.get(), name) == 0 && isForgotten(name, module))
                PyDict_DelItem(modules, name);
        }
    }
    Q_DISABLE_COPY_MOVE(ImportedForOnce)

private:
    [[nodiscard]] bool isForgotten(PyObject *name, PyObject *module) const
    {
        PyObject *file = PyModule_Check(module) ? PyDict_GetItemString(PyModule_GetDict(module), "__file__") : nullptr;
        return PyObject_RichCompareBool(name, m_name.get(), Py_EQ) == 1
               || (file && PyUnicode_Check(file)
                   && PyUnicode_Tailmatch(file, m_directory.get(), 0, PY_SSIZE_T_MAX, -1) == 1);
    }

    PythonReference m_name;
    PythonReference m_directory;
    PythonReference m_before;
};

/// Keeps imports from writing compiled files, since the directories of templates belong to the product or are copied.
class WithoutCompiledFiles
{
public:
    WithoutCompiledFiles() : m_before(newPythonReference(PySys_GetObject(Option))) { PySys_SetObject(Option, Py_True); }
    ~WithoutCompiledFiles() { PySys_SetObject(Option, m_before.get()); }
    Q_DISABLE_COPY_MOVE(WithoutCompiledFiles)

private:
    static constexpr const char *Option = "dont_write_bytecode";
    PythonReference m_before;
};

/// An exit is an error like any other: printing it would end the program, with unsaved files.
void replaceExit()
{
    if (PyErr_ExceptionMatches(PyExc_SystemExit) != 0)
        PyErr_SetString(PyExc_RuntimeError, "The script has called exit()");
}

ProjectScriptResult resultOf(_object *value)
{
    if (value == Py_None)
        return {Outcome::Nothing};
    if (PyUnicode_Check(value))
        return {Outcome::Path, fromPython(value)};
    return {Outcome::OtherType};
}
} // namespace

ProjectScriptResult runProjectScript(const QString &module, const QString &name, const QString &templateDirectory,
                                     const QString &projectPath, const std::function<bool()> &keepRunning)
{
    if (!Py_IsInitialized())
        return {Outcome::NoModule};
    const PythonCall call; // prints the errors
    const QString directory = QDir::toNativeSeparators(templateDirectory);
    const SearchedFirst searched(directory);
    const WithoutCompiledFiles withoutCompiledFiles;
    const PythonReference moduleName = toPython(module);
    const ImportedForOnce once(moduleName.get(), toPython(directory + QDir::separator()).get());
    const ScriptWatch watch(keepRunning);
    const PythonReference imported(PyImport_Import(moduleName.get()));
    if (!imported) {
        replaceExit();
        return {Outcome::NoModule};
    }
    PyObject *functions = PyModule_Check(imported.get()) ? PyModule_GetDict(imported.get()) : nullptr;
    const PythonReference function =
        newPythonReference(functions ? PyDict_GetItemString(functions, "createProject") : nullptr);
    if (!function || !PyCallable_Check(function.get()))
        return {Outcome::NoFunction};
    const PythonReference value(
        PyObject_CallFunctionObjArgs(function.get(), toPython(name).get(), toPython(directory).get(),
                                     toPython(QDir::toNativeSeparators(projectPath)).get(), nullptr));
    if (value)
        return resultOf(value.get());
    replaceExit();
    return {Outcome::Failed};
}
