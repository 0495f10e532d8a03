#include "pythonoutput.h"
#include "pythonstring.h"
#include "scripttypes.h"
#include <Python.h>
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype BatchSize = 1 << 16; // characters

/// The receiver of the output, and the number by which scripts refer to it: only compared, never used as a pointer.
PythonOutput *liveOutput = nullptr;
quintptr liveTarget = 0;

PyObject *write(PyObject *, PyObject *arguments)
{
    PyObject *string = nullptr;
    long long target = 0;
    if (!PyArg_ParseTuple(arguments, "UL", &string, &target))
        return nullptr;
    const QString text = fromPython(string);
    if (text.contains(QChar::Null)) {
        PyErr_SetString(PyExc_ValueError, "embedded null character");
        return nullptr;
    }
    if (liveOutput && quintptr(target) == liveTarget)
        liveOutput->write(text);
    Py_RETURN_NONE;
}

PyObject *readLine(PyObject *, PyObject *arguments)
{
    long long target = 0;
    if (!PyArg_ParseTuple(arguments, "L", &target))
        return nullptr;
    if (!isMainThread()) { // the window would wait for the interpreter, which waits for the window
        PyErr_SetString(PyExc_RuntimeError, "Only the main thread of a script can wait for input");
        return nullptr;
    }
    PythonOutput::Reader reader;
    if (liveOutput && quintptr(target) == liveTarget)
        reader = liveOutput->reader(); // a copy: the object may be deleted while it waits
    const std::optional<QString> line = reader ? reader() : std::nullopt;
    if (PyErr_Occurred())
        return nullptr;
    return toPython(line ? *line + u'\n' : QString()).release();
}

void addOutputModule()
{
    static PyMethodDef functions[] = {{"stdout", write, METH_VARARGS, nullptr},
                                      {"stderr", write, METH_VARARGS, nullptr},
                                      {"readline", readLine, METH_VARARGS, nullptr},
                                      {nullptr, nullptr, 0, nullptr}};
    static PyModuleDef definition = {
        PyModuleDef_HEAD_INIT, "tarnoutput", nullptr, -1, functions, nullptr, nullptr, nullptr, nullptr};
    const PythonReference module(PyModule_Create(&definition));
    PyDict_SetItemString(PyImport_GetModuleDict(), "tarnoutput", module.get());
}

QString redirection(quintptr target)
{
    return uR"(import tarnoutput
class tarnoutput_stdout:
    def write(self, string):
        tarnoutput.stdout(string, self.target)
    def flush(self):
        pass

class tarnoutput_stderr:
    def write(self, string):
        tarnoutput.stderr(string, self.target)

class tarnoutput_stdin:
    def readline(self, size=-1):
        return tarnoutput.readline(self.target)
    def read(self, size=-1):
        return ''.join(self)
    def isatty(self):
        return False
    def __iter__(self):
        return iter(self.readline, '')

import sys
sys.stdin = tarnoutput_stdin()
sys.stdout = tarnoutput_stdout()
sys.stderr = tarnoutput_stderr()
target = %1
sys.stdin.target = target
sys.stdout.target = target
sys.stderr.target = target
)"_s.arg(target);
}

/// When a script ends the process, Python flushes its streams; without a flush function the exit code would be wrong.
void restoreStreamsAtExit()
{
    const PythonReference names(PyDict_New());
    const PythonReference result(PyRun_String("import atexit, sys\n"
                                              "def restore(): sys.stdout, sys.stderr = sys.__stdout__, sys.__stderr__\n"
                                              "atexit.register(restore)\n",
                                              Py_file_input, names.get(), names.get()));
}

} // namespace

PythonOutput::PythonOutput(quintptr target)
{
    liveOutput = this;
    liveTarget = target;
    addOutputModule();
    PyRun_SimpleString(redirection(target).toUtf8().constData());
    restoreStreamsAtExit();
}

PythonOutput::~PythonOutput()
{
    if (liveOutput == this)
        liveOutput = nullptr;
}

void PythonOutput::write(const QString &text)
{
    const bool richText = text.startsWith("<html>"_L1, Qt::CaseInsensitive);
    if (richText || text.startsWith(u'\r') || m_text.size() + text.size() > BatchSize)
        flush(); // the start of a text decides how it is shown
    m_text += text;
    if (richText)
        flush();
    else
        flushSoon();
}

void PythonOutput::flushSoon()
{
    if (std::exchange(m_flushPosted, true))
        return;
    const auto flushNow = [this] {
        m_flushPosted = false;
        flush();
    };
    QMetaObject::invokeMethod(this, flushNow, Qt::QueuedConnection);
}

void PythonOutput::flush()
{
    if (!m_text.isEmpty())
        Q_EMIT written(std::exchange(m_text, QString()));
}

void PythonOutput::flushAll()
{
    if (liveOutput)
        liveOutput->flush();
}
