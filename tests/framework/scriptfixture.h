#pragma once
#include "pythoncall.h"
#include "pythonreference.h"
#include "windowfixture.h"
#include <Python.h>

/// A main window, and scripts that use it. They share a namespace, in which "app" and all other names of the module
/// exist. It has two projects, "sample" with folders and files, and "Samba"; openWorkspace() opens them.
class ScriptFixture : public WindowFixture
{
public:
    ScriptFixture()
    {
        m_globals.reset(PyDict_New());
        PyDict_SetItemString(m_globals.get(), "__builtins__", PyEval_GetBuiltins());
        run(Preparation);
        write(QStringLiteral("sample.vnp"), SampleProject);
        writeProject(QStringLiteral("Samba.vnp"));
        writeWorkspace(QStringLiteral("two.vnw"), {QStringLiteral("sample.vnp"), QStringLiteral("Samba.vnp")});
    }
    ~ScriptFixture()
    {
        for (const char *event : {"onWorkspaceLoaded", "onCurrentProjectChanged"})
            run(QByteArray("varnel.app.") + event + " = None");
        run("sys.stdout, sys.stderr = streams");
        m_globals.reset();
    }

    /// Returns what the script prints, with its errors.
    QString run(const QByteArray &script)
    {
        {
            const PythonCall call;
            const PythonReference result(
                PyRun_String(script.constData(), Py_file_input, m_globals.get(), m_globals.get()));
        }
        return printed();
    }
    /// Carries out a statement or an expression. Returns the representation of its value, "done" for a statement, or
    /// the exception: "KeyError: text".
    QString attempt(const QString &code)
    {
        const PythonCall call;
        const PythonReference function = newPythonReference(PyDict_GetItemString(m_globals.get(), "attempt"));
        const PythonReference text(PyObject_CallFunction(function.get(), "s", code.toUtf8().constData()));
        return text ? QString::fromUtf8(PyUnicode_AsUTF8(text.get())) : QString();
    }
    /// What was printed since the last call.
    QString printed()
    {
        const PythonReference text(PyRun_String("taken()", Py_eval_input, m_globals.get(), m_globals.get()));
        return text ? QString::fromUtf8(PyUnicode_AsUTF8(text.get())) : QString();
    }

    void openWorkspace() const { QVERIFY(window->openWorkspace(path(QStringLiteral("two.vnw")), false)); }
    void openFile(const QString &name) const { QVERIFY(window->openFile(write(name, "one\ntwo\nthree\n"), false)); }
    /// A path as a string of Python.
    [[nodiscard]] QByteArray quoted(const QString &name) const { return "'" + path(name).toUtf8() + "'"; }

private:
    static constexpr const char *Preparation = R"py(
import gc, io, sys, varnel
from varnel import *
streams = sys.stdout, sys.stderr
console = sys.stdout = sys.stderr = io.StringIO()

def taken():
    text = console.getvalue()
    console.seek(0)
    console.truncate()
    return text

def attempt(code):
    try:
        try:
            compiled = compile(code, '<test>', 'eval')
        except SyntaxError:
            exec(code, globals())
            return 'done'
        return repr(eval(compiled, globals()))
    except Exception as error:
        return type(error).__name__ + ': ' + str(error.args[0] if error.args else '')
)py";
    static constexpr const char *SampleProject = R"(<project>
<folder name="Sources"><extension name="c"/><extension name="cpp"/>
<folder name="Drivers"><file path="lib/uart.c"/></folder><file path="main.c"/></folder>
<folder name="Headers"><extension name="h"/></folder>
<file path="readme.txt"><properties><configuration name="Debug"><property key="own">1</property></configuration></properties></file>
<properties currentconfiguration="Release">
<configuration name="Release"><property key="level">2</property><property key="define">A</property></configuration>
<configuration name="Debug"><property key="level">0</property></configuration>
</properties></project>)";

    PythonReference m_globals;
};
