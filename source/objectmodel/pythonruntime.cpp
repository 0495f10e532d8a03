#include "pythonruntime.h"
#include "pythonreference.h"
#include <csignal>
#include <Python.h>
#include <QtGlobal>

#ifdef __SANITIZE_ADDRESS__ // gcc
#define WITH_ADDRESS_SANITIZER
#elif defined(__has_feature) // clang
#if __has_feature(address_sanitizer)
#define WITH_ADDRESS_SANITIZER
#endif
#endif

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
#ifdef WITH_ADDRESS_SANITIZER
    config.allocator = PYMEM_ALLOCATOR_MALLOC; // so that the sanitizer sees each object
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
        // By default Python takes the first "python3" of PATH as its own path and searches for its library beside it.
        const PyStatus status = PyConfig_SetBytesString(&config, &config.program_name, VARNEL_PYTHON_PROGRAM);
        if (PyStatus_Exception(status))
            return status;
    }
    return Py_InitializeFromConfig(&config);
}

/// The signal module installs a handler for SIGINT on its first import, unless there is one already.
void keepInterrupts()
{
    const PyOS_sighandler_t ours = PyOS_setsig(SIGINT, [](int) {});
    const PythonReference signals(PyImport_ImportModule("_signal"));
    PyOS_setsig(SIGINT, ours);
}

/// A script that asks for input would block, waiting for the terminal from which the program was started.
void closeInput()
{
    PySys_SetObject("stdin", Py_None);
}

} // namespace

bool startPython(PythonEnvironment environment)
{
    if (Py_IsInitialized())
        return true;
    const bool used = environment == PythonEnvironment::Used;
    PyStatus status = preinitialise(used);
    if (!PyStatus_Exception(status)) {
        PyConfig config;
        PyConfig_InitPythonConfig(&config);
        status = initialise(config, used);
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
