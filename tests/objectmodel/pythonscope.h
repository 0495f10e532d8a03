#pragma once
#include "pythoncall.h"
#include "pythonoutput.h"
#include "pythonruntime.h"
#include "pythonstring.h"
#include <Python.h>
#include <QRegularExpression>

/// A namespace for the scripts of a test, and what they print.
class PythonScope : public QObject
{
public:
    PythonScope()
    {
        if (!startPython())
            qFatal("Python does not start");
        m_output = std::make_unique<PythonOutput>(reinterpret_cast<quintptr>(this));
        connect(m_output.get(), &PythonOutput::written, this, [this](const QString &text) { m_shown += text; });
        m_globals = PythonReference(PyDict_New());
        PyDict_SetItemString(m_globals.get(), "__builtins__", PyEval_GetBuiltins());
    }

    [[nodiscard]] _object *globals() const { return m_globals.get(); }
    void set(const char *name, const PythonReference &value) const
    {
        PyDict_SetItemString(m_globals.get(), name, value.get());
    }
    [[nodiscard]] PythonReference get(const char *name) const
    {
        return newPythonReference(PyDict_GetItemString(m_globals.get(), name));
    }

    /// Runs a script and returns what was printed since the last call.
    QString run(const QByteArray &script)
    {
        {
            const PythonCall call;
            const PythonReference globals = newPythonReference(m_globals.get());
            const PythonReference result(PyRun_String(script.constData(), Py_file_input, globals.get(), globals.get()));
        }
        return shown();
    }
    QString shown()
    {
        m_output->flush();
        return std::exchange(m_shown, {});
    }

    /// The value of an expression as the console shows it, or what is printed if it fails.
    QString value(const QByteArray &expression) { return run("print(repr((" + expression + ")), end='')"); }

    /// The exception that a script raises, as "TypeError: the text".
    QString error(const QByteArray &script)
    {
        static const QRegularExpression name(QStringLiteral("\\w+(Error|Warning): .*"));
        const QStringList lines = run(script).split(u'\n');
        const qsizetype last = lines.lastIndexOf(name); // a text of several lines begins there
        return last < 0 ? QString() : lines[last];
    }

private:
    std::unique_ptr<PythonOutput> m_output;
    PythonReference m_globals;
    QString m_shown;
};
