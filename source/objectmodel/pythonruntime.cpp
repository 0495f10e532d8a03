#include "pythonruntime.h"
#include "pythonreference.h"
#include <csignal>
#include <Python.h>
#include <QtGlobal>

namespace {

PyStatus preinitialise(bool environment)
{
    PyPreConfig config;
    PyPreConfig_InitPythonConfig(&config);
    config.parse_argv = 0;
    config.use_environment = environment;
    config.configure_locale = 0;
    config.coerce_c_locale = 0;
    config.utf8_mode = 1;
#ifdef __SANITIZE_ADDRESS__
    config.allocator = PYMEM_ALLOCATOR_MALLOC; // the sanitizer knows each object then
#endif
    return Py_PreInitialize(&config);
}

PyStatus initialise(PyConfig &config, bool environment)
{
    config.parse_argv = 0;
    config.use_environment = environment;
    config.user_site_directory = environment;
    config.install_signal_handlers = 0;
    config.configure_c_stdio = 0;
    if (!environment) {
        // Left to itself, Python takes the first "python3" of PATH for its own and looks for its library beside that.
        const PyStatus status = PyConfig_SetBytesString(&config, &config.program_name, VARNEL_PYTHON_PROGRAM);
        if (PyStatus_Exception(status))
            return status;
    }
    return Py_InitializeFromConfig(&config);
}

/// The signal module takes SIGINT for Python when a script first imports it, unless somebody else handles it then.
void keepInterrupts()
{
    const PyOS_sighandler_t ours = PyOS_setsig(SIGINT, [](int) {});
    const PythonReference signals(PyImport_ImportModule("_signal"));
    PyOS_setsig(SIGINT, ours);
}

/// A script that asks for input would wait for the terminal that the program was started from, and the program with it.
void closeInput()
{
    PySys_SetObject("stdin", Py_None);
}

} // namespace

bool startPython(PythonEnvironment environment)
{
    if (Py_IsInitialized())
        return true;
    const bool heard = environment == PythonEnvironment::Heard;
    PyStatus status = preinitialise(heard);
    if (!PyStatus_Exception(status)) {
        PyConfig config;
        PyConfig_InitPythonConfig(&config);
        status = initialise(config, heard);
        PyConfig_Clear(&config);
    }
    if (PyStatus_Exception(status)) {
        qWarning("startPython: Cannot start Python (%s)", status.err_msg ? status.err_msg : "no reason given");
        return false;
    }
    keepInterrupts();
    closeInput();
    return true;
}
