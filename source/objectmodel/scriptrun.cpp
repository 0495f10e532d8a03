#include "scriptrun.h"
#include "pythoncall.h"
#include "pythonerrors.h"
#include "pythonreference.h"
#include "pythonstring.h"
#include "scriptwatch.h"
#include <cstdio>
#include <memory>
#include <Python.h>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

struct FileCloser
{
    void operator()(std::FILE *file) const { std::fclose(file); }
};

PyObject *mainGlobals()
{
    return PyModule_GetDict(PyImport_AddModule("__main__"));
}

/// Runs code of our own. False, with Python's error set, if it fails.
bool runOwnCode(const char *code)
{
    const PythonReference globals(PyDict_New());
    PyDict_SetItemString(globals.get(), "__builtins__", PyEval_GetBuiltins());
    return PythonReference(PyRun_String(code, Py_file_input, globals.get(), globals.get())) != nullptr;
}

/// Output goes to the terminal line by line instead of to the console of the window.
void useStandardStreams()
{
    runOwnCode("import sys\n"
               "for name in ('stdout', 'stderr'):\n"
               "    stream = getattr(sys, '__' + name + '__')\n"
               "    if stream:\n"
               "        stream.reconfigure(line_buffering=True)\n"
               "        setattr(sys, name, stream)\n");
}

void setArguments(const QStringList &arguments)
{
    const PythonReference list(PyList_New(0));
    for (const QString &argument : arguments)
        PyList_Append(list.get(), toPython(argument).get());
    PySys_SetObject("argv", list.get());
}

void searchModulesFirst(const QString &directory)
{
    PyList_Insert(PySys_GetObject("path"), 0, toPython(directory).get());
}

PythonReference runFile(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(name.constData(), "rb"));
    if (!file) {
        PyErr_SetFromErrnoWithFilename(PyExc_OSError, name.constData());
        return nullptr;
    }
    PyObject *globals = mainGlobals();
    PyDict_SetItemString(globals, "__file__", toPython(path).get());
    return PythonReference(PyRun_FileEx(file.get(), name.constData(), Py_file_input, globals, globals, 0));
}

PythonReference runModule(const QString &name)
{
    const PythonReference runpy(PyImport_ImportModule("runpy"));
    const PythonReference run(runpy ? PyObject_GetAttrString(runpy.get(), "run_module") : nullptr);
    const PythonReference arguments(Py_BuildValue("(N)", toPython(name).release()));
    const PythonReference options(Py_BuildValue("{s:s,s:O}", "run_name", "__main__", "alter_sys", Py_True));
    return PythonReference(run ? PyObject_Call(run.get(), arguments.get(), options.get()) : nullptr);
}

/// The exit code of a SystemExit that is set, as Python defines it.
int takeExitCode()
{
    const PythonException exception = takePythonException();
    const PythonReference code(PyObject_GetAttrString(exception.value.get(), "code"));
    if (code.get() == Py_None)
        return 0;
    if (PyLong_Check(code.get()))
        return int(PyLong_AsUnsignedLongMask(code.get()) & 0xFF);
    PySys_FormatStderr("%S\n", code.get());
    return ScriptFailed;
}

int takeError()
{
    if (PyErr_ExceptionMatches(PyExc_SystemExit))
        return takeExitCode();
    const bool interrupted = PyErr_ExceptionMatches(PyExc_KeyboardInterrupt);
    PyErr_Print();
    return interrupted ? ScriptInterrupted : ScriptFailed;
}

} // namespace

int runScriptProgram(const QStringList &arguments, const std::function<bool()> &keepRunning)
{
    const bool isModule = arguments.value(0) == "-m"_L1;
    const QString script = arguments.value(isModule ? 1 : 0);
    if (!isModule && !QFileInfo(script).isFile()) {
        std::fprintf(stderr, "varnel-run: cannot open '%s'\n", qPrintable(script));
        return ScriptNotFound;
    }
    const PythonCall call;
    useStandardStreams();
    setArguments(arguments.mid(isModule ? 1 : 0));
    searchModulesFirst(isModule ? QString() : QFileInfo(script).absolutePath());
    const ScriptWatch watch(keepRunning);
    const int uncaught = deferredPythonErrors(); // of a failed save of a project, for example
    const PythonReference result = isModule ? runModule(script) : runFile(script);
    const int code = !result ? takeError() : deferredPythonErrors() != uncaught ? ScriptFailed : 0;
    runOwnCode("import sys\nsys.stdout.flush()\n");
    PyErr_Clear();
    return code;
}
