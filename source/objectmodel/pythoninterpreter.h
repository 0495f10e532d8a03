#pragma once
#include "pythonreference.h"
#include <QObject>
class PythonOutput;
struct ScriptDirectories;

/// The interactive Python of the console: collects lines into statements, runs them and script files in a namespace of
/// its own, and emits everything that scripts print. Python must run already. The newest instance gets the output.
class PythonInterpreter : public QObject
{
    Q_OBJECT
public:
    /// Redirects sys.stdout and sys.stderr to this object, and appends the directories to sys.path, the packages of the
    /// virtual environment behind them.
    explicit PythonInterpreter(const ScriptDirectories &directories, QObject *parent = nullptr);
    ~PythonInterpreter() override;

    /// Prints the banner, runs the file if it exists and prints the first prompt.
    void start(const QString &startupPath);

    /// Runs a script in the console's namespace. Returns false if it raised an exception, which is printed; for a file
    /// that cannot be opened, prints a message and returns true.
    bool runFile(const QString &path);

    /// The possible completions of @p beginning: names of the console, keywords, attributes after a dot.
    [[nodiscard]] QStringList completions(const QString &beginning) const;

public Q_SLOTS:
    /// Adds one line to the statement, runs the statement if it is complete, and prints the next prompt.
    void inputLine(const QString &line);
    void sendOutput(const QString &text);
    /// Interrupts the running script. This can only be called from an event loop of the script itself.
    void breakExecution();

Q_SIGNALS:
    /// A part of the output: part of a line, a line or several lines.
    void outputLine(const QString &text);

private:
    void addVirtualEnvironment(const QString &directory);
    void addLine(const QString &line);
    void run(const PythonReference &code);

    std::unique_ptr<PythonOutput> m_output;
    PythonReference m_globals; ///< a dictionary other than that of the module __main__
    QString m_block;           ///< the lines of the current statement, each with its line break
    QString m_notice;          ///< printed at the start
    bool m_continuing = false; ///< the current statement has more than one line
    const QString m_primaryPrompt = QStringLiteral(">>> ");
    const QString m_continuationPrompt = QStringLiteral("... ");
};
