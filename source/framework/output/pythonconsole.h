#pragma once
#include "scriptdirectories.h"
#include <QObject>
class OutputWindow;
class PythonInterpreter;

/// The embedded Python and its console, as a page of the output window.
class PythonConsole : public QObject
{
    Q_OBJECT
public:
    /// Starts Python if it does not run yet. Without Python there is no page, and a warning tells why.
    PythonConsole(OutputWindow &window, const ScriptDirectories &directories, QObject *parent = nullptr);
    ~PythonConsole() override;

    /// Greets and runs "startup.py".
    void start();

private:
    const ScriptDirectories m_directories;
    std::unique_ptr<PythonInterpreter> m_interpreter; ///< null without Python
};
