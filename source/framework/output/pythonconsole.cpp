#include "pythonconsole.h"
#include "commandlinewindow.h"
#include "outputwindow.h"
#include "pythoninterpreter.h"
#include "pythonruntime.h"

using namespace Qt::StringLiterals;

PythonConsole::PythonConsole(OutputWindow &window, const ScriptDirectories &directories, QObject *parent)
    : QObject(parent), m_directories(directories)
{
    if (!startPython())
        return;
    m_interpreter = std::make_unique<PythonInterpreter>(directories);
    PythonInterpreter *interpreter = m_interpreter.get();
    auto *console = new CommandLineWindow;
    console->setObjectName(u"commandLineWindow"_s);
    connect(console, &CommandLineWindow::inputLine, interpreter, &PythonInterpreter::inputLine);
    connect(interpreter, &PythonInterpreter::outputLine, console, &CommandLineWindow::outputLine);
    connect(console, &CommandLineWindow::breakExecution, interpreter, &PythonInterpreter::breakExecution);
    console->setCompleter([interpreter](const QString &beginning) { return interpreter->completions(beginning); });
    window.setCommandWindow(console, [interpreter](const QString &path) { return interpreter->runFile(path); });
}

PythonConsole::~PythonConsole() = default;

void PythonConsole::start()
{
    if (m_interpreter)
        m_interpreter->start(m_directories.file(u"startup.py"_s));
}
