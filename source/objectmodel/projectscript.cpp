#include "projectscript.h"
#include "pythoncall.h"
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

/// Takes a module out of `sys.modules` at the end, unless it was there at the start.
class ImportedForOnce
{
public:
    explicit ImportedForOnce(_object *name)
        : m_name(newPythonReference(name)), m_wasThere(PyDict_Contains(PyImport_GetModuleDict(), name) == 1)
    {}
    ~ImportedForOnce()
    {
        PyObject *modules = PyImport_GetModuleDict();
        if (!m_wasThere && PyDict_Contains(modules, m_name.get()) == 1)
            PyDict_DelItem(modules, m_name.get());
    }
    Q_DISABLE_COPY_MOVE(ImportedForOnce)

private:
    PythonReference m_name;
    bool m_wasThere;
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
    const ImportedForOnce once(moduleName.get());
    const ScriptWatch watch(keepRunning);
    const PythonReference imported(PyImport_Import(moduleName.get()));
    if (!imported)
        return {Outcome::NoModule};
    PyObject *functions = PyModule_Check(imported.get()) ? PyModule_GetDict(imported.get()) : nullptr;
    const PythonReference function =
        newPythonReference(functions ? PyDict_GetItemString(functions, "createProject") : nullptr);
    if (!function || !PyCallable_Check(function.get()))
        return {Outcome::NoFunction};
    const PythonReference value(
        PyObject_CallFunctionObjArgs(function.get(), toPython(name).get(), toPython(directory).get(),
                                     toPython(QDir::toNativeSeparators(projectPath)).get(), nullptr));
    return value ? resultOf(value.get()) : ProjectScriptResult{Outcome::Failed};
}
