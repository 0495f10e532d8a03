#pragma once
#include "pythonreference.h"
#include <QObject>
class PythonOutput;
struct ScriptDirectories;

/// The interactive Python of the console: gathers lines to statements, runs them and script files in a namespace of its
/// own, and hands on everything that scripts print. Python must run already. The latest instance gets the output.
class PythonInterpreter : public QObject
{
    Q_OBJECT
public:
    /// Redirects sys.stdout and sys.stderr to this object and puts the directories at the end of sys.path.
    explicit PythonInterpreter(const ScriptDirectories &directories, QObject *parent = nullptr);
    ~PythonInterpreter() override;

    /// Prints the banner, runs the file if it exists and prints the first prompt.
    void start(const QString &startupPath);

    /// Runs a script in the console's namespace. Returns false if it raised an exception, which is printed; a file that
    /// cannot be opened is reported in the output and counts as good.
    bool runFile(const QString &path);

    /// What the word @p beginning may be completed to: names of the console, keywords, attributes after a dot.
    [[nodiscard]] QStringList completions(const QString &beginning) const;

public Q_SLOTS:
    /// Takes one line of a statement, runs the statement when it is complete, and prints the prompt that is due.
    void inputLine(const QString &line);
    void sendOutput(const QString &text);
    /// Interrupts the running script. It can come only from an event loop that the script itself drives.
    void breakExecution();

Q_SIGNALS:
    /// A piece of output: part of a line, a line or several.
    void outputLine(const QString &text);

private:
    void addLine(const QString &line);
    void run(const PythonReference &code);

    std::unique_ptr<PythonOutput> m_output;
    PythonReference m_globals; ///< a dictionary that is not the one of the module __main__
    QString m_block;           ///< the lines of the statement under entry, each with its line break
    bool m_continuing = false; ///< the statement under entry has more than one line
    const QString m_primaryPrompt = QStringLiteral(">>> ");
    const QString m_continuationPrompt = QStringLiteral("... ");
};
