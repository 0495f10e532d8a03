#include "pythoninterpreter.h"
#include "pythoncall.h"
#include "pythoncompletion.h"
#include "pythonerrors.h"
#include "pythonoutput.h"
#include "pythonstring.h"
#include "scriptdirectories.h"
#include "scriptpump.h"
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

/// Ignores all warnings of Python during its life. An error that is set stays.
class NoWarnings
{
public:
    NoWarnings()
    {
        const PythonReference module(PyImport_ImportModule("warnings"));
        if (module)
            m_context = PythonReference(PyObject_CallMethod(module.get(), "catch_warnings", nullptr));
        if (m_context)
            m_entered = PythonReference(PyObject_CallMethod(m_context.get(), "__enter__", nullptr));
        if (m_entered)
            PythonReference(PyObject_CallMethod(module.get(), "simplefilter", "s", "ignore"));
        PyErr_Clear();
    }
    ~NoWarnings()
    {
        const PythonExceptionAside exception;
        if (m_entered)
            PythonReference(PyObject_CallMethod(m_context.get(), "__exit__", "OOO", Py_None, Py_None, Py_None));
    }
    Q_DISABLE_COPY_MOVE(NoWarnings)

private:
    PythonReference m_context;
    PythonReference m_entered;
};

/// Compiles what may be the beginning of a statement.
PythonReference tryStatement(const QByteArray &source)
{
    const NoWarnings quiet; // each line of a statement is compiled again
    return compileStatement(source, PyCF_ALLOW_INCOMPLETE_INPUT);
}

/// Clears the error of a failed compilation and returns whether further lines may complete the statement.
bool takeIncompleteError()
{
    const PythonException exception = takePythonException();
    if (!PyErr_GivenExceptionMatches(exception.type.get(), PyExc_SyntaxError))
        return false;
    const PythonReference message(PyObject_GetAttrString(exception.value.get(), "msg"));
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
    m_output->setReader([self = QPointer(this)] { return self ? self->readLine() : std::nullopt; });
    addScriptPath(directories);
    addVirtualEnvironment(directories.virtualEnvironment);
    m_globals = createGlobals();
}

PythonInterpreter::~PythonInterpreter()
{
    for (Waiting *waiting : std::as_const(m_waiting))
        waiting->loop.quit();
}

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
    FILE *file = QFileInfo(path).isFile() ? std::fopen(name.constData(), "r") : nullptr; // a pipe would block
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
        good = interruptible([&] {
                   return PythonReference(
                       PyRun_FileEx(file, name.constData(), Py_file_input, globals.get(), globals.get(), 1));
               })
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
    if (!m_waiting.isEmpty()) {
        m_waiting.last()->line = line;
        return m_waiting.last()->loop.quit();
    }
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
    PythonReference code = tryStatement(source);
    if (!code && takeIncompleteError()) {
        m_continuing = true;
        return;
    }
    if (code && m_continuing && m_block.at(m_block.size() - 2) != u'\n')
        return; // a block ends with an empty line
    m_block.clear();
    m_continuing = false;
    if (code)
        code = compileStatement(source, 0); // with its warnings
    if (code)
        run(code);
    else
        printCompileError(source);
}

/// Waits for the user. The script, and with it this object, may end meanwhile.
std::optional<QString> PythonInterpreter::readLine()
{
    if (!m_inputAvailable || !m_inputAvailable())
        return {};
    m_output->flush();
    Q_EMIT inputRequested();
    const QPointer<PythonInterpreter> self(this);
    Waiting waiting;
    m_waiting.append(&waiting);
    waiting.loop.exec();
    if (self)
        m_waiting.removeOne(&waiting);
    if (waiting.interrupted)
        PyErr_SetNone(PyExc_KeyboardInterrupt);
    return waiting.line;
}

void PythonInterpreter::run(const PythonReference &code)
{
    const PythonCall call;
    const PythonReference globals = newPythonReference(m_globals.get()); // the script may delete this object
    (void)interruptible([&] { return PythonReference(PyEval_EvalCode(code.get(), globals.get(), globals.get())); });
}

/// Runs Python so that the user can interrupt it, if there is a user.
PythonReference PythonInterpreter::interruptible(const std::function<PythonReference()> &work)
{
    const QPointer<PythonInterpreter> self(this);
    PythonReference result;
    if (++m_running == 1)
        Q_EMIT runningChanged(true);
    {
        std::optional<ScriptPump> pump;
        if (m_inputAvailable && m_inputAvailable())
            connect(&pump.emplace(m_interruptWidgets), &ScriptPump::inputRefused, this,
                    &PythonInterpreter::inputRefused);
        result = work();
    }
    if (self && --m_running == 0)
        Q_EMIT runningChanged(false);
    return result;
}

void PythonInterpreter::sendOutput(const QString &text)
{
    if (m_output)
        m_output->flush();
    Q_EMIT outputLine(text);
}

void PythonInterpreter::interrupt()
{
    if (!m_waiting.isEmpty()) {
        m_waiting.last()->interrupted = true;
        return m_waiting.last()->loop.quit();
    }
    if (PythonCall::isRunning())
        return breakPython();
    m_block.clear();
    m_continuing = false;
    sendOutput(u"\nKeyboardInterrupt\n"_s + m_primaryPrompt);
}

void PythonInterpreter::breakExecution()
{
    breakPython();
}
