#include "pythoninterpreter.h"
#include "pythoncall.h"
#include "pythoncompletion.h"
#include "pythonoutput.h"
#include "pythonstring.h"
#include "scriptdirectories.h"
#include "varnelassert.h"
#include <Python.h>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
using namespace Qt::StringLiterals;

namespace {

QString pythonLiteral(const QString &text)
{
    return fromPython(PythonReference(PyObject_Repr(toPython(text).get())).get());
}

void addScriptPath(const ScriptDirectories &directories)
{
    QString script;
    if (!directories.user.isEmpty()) // in front, so that the user's modules replace the installed ones
        script = u"sys.path.append("_s + pythonLiteral(directories.user) + u")\n"_s;
    script += u"sys.path.append("_s + pythonLiteral(directories.installed) + u")\n"_s;
    PyRun_SimpleString(script.toUtf8().constData());
}

/// Where a virtual environment keeps the packages of this Python.
QString packageDirectory(const QString &virtualEnvironment)
{
    return virtualEnvironment + u"/lib/python%1.%2/site-packages"_s.arg(PY_MAJOR_VERSION).arg(PY_MINOR_VERSION);
}

PythonReference createGlobals()
{
    PythonReference globals(PyDict_New());
    PyDict_SetItemString(globals.get(), "__builtins__", PyEval_GetBuiltins());
    PyDict_SetItemString(globals.get(), "__name__", toPython(u"__main__"_s).get());
    return globals;
}

PythonReference compileStatement(const QByteArray &source, int moreFlags)
{
    PyCompilerFlags flags = {PyCF_SOURCE_IS_UTF8 | PyCF_IGNORE_COOKIE | moreFlags, PY_MINOR_VERSION};
    return PythonReference(Py_CompileStringExFlags(source.constData(), "<stdin>", Py_single_input, &flags, -1));
}

/// Clears the error of a failed compilation and returns whether further lines may complete the statement.
bool takeIncompleteError()
{
    PyObject *type = nullptr;
    PyObject *value = nullptr;
    PyObject *traceback = nullptr;
    PyErr_Fetch(&type, &value, &traceback);
    PyErr_NormalizeException(&type, &value, &traceback);
    const PythonReference owned[] = {PythonReference(type), PythonReference(value), PythonReference(traceback)};
    if (!PyErr_GivenExceptionMatches(type, PyExc_SyntaxError))
        return false;
    const PythonReference message(PyObject_GetAttrString(value, "msg"));
    PyErr_Clear();
    return message && PyUnicode_Check(message.get()) && fromPython(message.get()) == "incomplete input"_L1;
}

/// The test for incomplete input has error messages of its own; the user gets the message of a normal compilation.
void printCompileError(const QByteArray &source)
{
    if (!compileStatement(source, 0))
        PyErr_Print();
}

} // namespace

PythonInterpreter::PythonInterpreter(const ScriptDirectories &directories, QObject *parent) : QObject(parent)
{
    VARNEL_ASSERT(Py_IsInitialized());
    if (!Py_IsInitialized())
        return;
    m_output = std::make_unique<PythonOutput>(reinterpret_cast<quintptr>(this));
    connect(m_output.get(), &PythonOutput::written, this, &PythonInterpreter::outputLine);
    addScriptPath(directories);
    addVirtualEnvironment(directories.virtualEnvironment);
    m_globals = createGlobals();
}

PythonInterpreter::~PythonInterpreter() = default;

void PythonInterpreter::addVirtualEnvironment(const QString &directory)
{
    if (directory.isEmpty())
        return;
    const QString packages = packageDirectory(directory);
    if (QFileInfo(packages).isDir())
        PyRun_SimpleString(u"import site; site.addsitedir(%1)\n"_s.arg(pythonLiteral(packages)).toUtf8().constData());
    else
        m_notice = tr("The virtual environment '%1' has no packages for Python %2.%3.\n")
                       .arg(directory, QString::number(PY_MAJOR_VERSION), QString::number(PY_MINOR_VERSION));
}

void PythonInterpreter::start(const QString &startupPath)
{
    sendOutput(tr("Varnel Command Line (Python %1 on %2)\n")
                   .arg(QString::fromUtf8(Py_GetVersion()), QString::fromUtf8(Py_GetPlatform())));
    if (!m_notice.isEmpty())
        sendOutput(m_notice);
    if (QFileInfo::exists(startupPath))
        runFile(startupPath);
    sendOutput(m_primaryPrompt);
}

bool PythonInterpreter::runFile(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    FILE *file = QFileInfo(path).isDir() ? nullptr : std::fopen(name.constData(), "r");
    if (!file || !m_globals) {
        sendOutput(tr("Startup file '%1' could not be opened.\n").arg(path));
        return true;
    }
    sendOutput(tr("Running file '%1'...\n").arg(path));
    const QPointer<PythonInterpreter> self(this);
    bool good = false;
    {
        const PythonCall call;
        const PythonReference globals = newPythonReference(m_globals.get());
        good = PythonReference(PyRun_FileEx(file, name.constData(), Py_file_input, globals.get(), globals.get(), 1))
               != nullptr;
    }
    if (good && self)
        sendOutput(tr("OK\n"));
    return good;
}

QStringList PythonInterpreter::completions(const QString &beginning) const
{
    return m_globals ? pythonCompletions(m_globals.get(), beginning) : QStringList();
}

void PythonInterpreter::inputLine(const QString &line)
{
    const QPointer<PythonInterpreter> self(this);
    if (m_globals && !(line.isEmpty() && m_block.isEmpty()))
        addLine(line);
    if (self)
        sendOutput(m_continuing ? m_continuationPrompt : m_primaryPrompt);
}

void PythonInterpreter::addLine(const QString &line)
{
    m_block += line + u'\n';
    const QByteArray source = m_block.toUtf8();
    const PythonReference code = compileStatement(source, PyCF_ALLOW_INCOMPLETE_INPUT);
    if (!code && takeIncompleteError()) {
        m_continuing = true;
        return;
    }
    if (code && m_continuing && m_block.at(m_block.size() - 2) != u'\n')
        return; // a block ends with an empty line
    m_block.clear();
    m_continuing = false;
    if (code)
        run(code);
    else
        printCompileError(source);
}

void PythonInterpreter::run(const PythonReference &code)
{
    const PythonCall call;
    const PythonReference globals = newPythonReference(m_globals.get()); // the script may delete this object
    const PythonReference result(PyEval_EvalCode(code.get(), globals.get(), globals.get()));
}

void PythonInterpreter::sendOutput(const QString &text)
{
    if (m_output)
        m_output->flush();
    Q_EMIT outputLine(text);
}

void PythonInterpreter::breakExecution()
{
    breakPython();
}
