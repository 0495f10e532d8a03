#pragma once
#include "pythonreference.h"
#include <functional>
#include <optional>
#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QWidget>
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

    /// Whether the user can enter lines now; without it, scripts that read from sys.stdin find its end.
    void setInputAvailable(const std::function<bool()> &available) { m_inputAvailable = available; }

    /// Adds a widget that gets clicks while a statement runs, to interrupt it.
    void addInterruptWidget(QWidget *widget) { m_interruptWidgets.append(widget); }

    /// The possible completions of @p beginning: names of the console, keywords, attributes after a dot.
    [[nodiscard]] QStringList completions(const QString &beginning) const;

public Q_SLOTS:
    /// Returns one line to a script that waits for it. Otherwise adds the line to the statement, runs the statement if
    /// it is complete, and prints the next prompt.
    void inputLine(const QString &line);
    void sendOutput(const QString &text);
    /// Interrupts the running script. This can only be called from an event loop of the script itself.
    void breakExecution();
    /// Interrupts the running script or, if none runs, drops the lines of the present statement.
    void interrupt();

Q_SIGNALS:
    void inputRequested();             ///< a script waits for a line
    void inputRefused();               ///< the user has pressed a key or a button, which waits for the end of a script
    void runningChanged(bool running); ///< a statement or a file
    /// A part of the output: part of a line, a line or several lines.
    void outputLine(const QString &text);

private:
    void addVirtualEnvironment(const QString &directory);
    void addLine(const QString &line);
    [[nodiscard]] std::optional<QString> readLine();
    void run(const PythonReference &code);
    [[nodiscard]] PythonReference interruptible(const std::function<PythonReference()> &work);

    /// A script that waits for a line.
    struct Waiting
    {
        QEventLoop loop;
        std::optional<QString> line;
        bool interrupted = false;
    };

    std::unique_ptr<PythonOutput> m_output;
    std::function<bool()> m_inputAvailable;
    QList<QPointer<QWidget>> m_interruptWidgets;
    QList<Waiting *> m_waiting; ///< the innermost is last
    PythonReference m_globals;  ///< a dictionary other than that of the module __main__
    QString m_block;            ///< the lines of the current statement, each with its line break
    QString m_notice;           ///< printed at the start
    int m_running = 0;          ///< statements and files; one may process events in which another is started
    bool m_continuing = false;  ///< the current statement has more than one line
    const QString m_primaryPrompt = QStringLiteral(">>> ");
    const QString m_continuationPrompt = QStringLiteral("... ");
};
