#pragma once
#include "toolentry.h"
#include <memory>
#include <QMap>
#include <QObject>
#include <QProcess>
#include <QStringDecoder>

/// One entry of the Tools menu, and its process while it runs.
class ExternalTool : public QObject
{
    Q_OBJECT
public:
    using Macros = QMap<QString, QString>;
    // Limits for the output of one run. The output window keeps all of it.
    static constexpr int MostLines = 100'000;
    static constexpr int LongestLine = 10'000; ///< characters; the rest of a line is shown as a new one

    explicit ExternalTool(const ToolEntry &entry, QObject *parent = nullptr);
    /// Does not end a running process: it may be an editor with unsaved text. Its output is dropped.
    ~ExternalTool() override;

    [[nodiscard]] const ToolEntry &entry() const { return m_entry; }
    [[nodiscard]] QString name() const { return m_entry.name; }
    [[nodiscard]] QString command() const { return m_entry.command; }
    [[nodiscard]] QString arguments() const { return m_entry.arguments; }
    [[nodiscard]] QString initialDir() const { return m_entry.initialDir; }
    void setEntry(const ToolEntry &entry) { m_entry = entry; } ///< A running process is not affected.

    [[nodiscard]] bool isRunning() const { return m_process != nullptr; }
    [[nodiscard]] qint64 processId() const { return m_process ? m_process->processId() : 0; }
    /// Starts the command. Returns false if it is still running or cannot be started.
    bool execute(const Macros &macros);
    /// Terminates the process and its child processes; kills them after two seconds, or at the second call.
    void stop();

public Q_SLOTS:
    void readStdout();
    void processExited();

Q_SIGNALS:
    void output(const QString &text);
    void runningChanged(bool running);

private:
    void createProcess();
    void startFailed();
    [[nodiscard]] QString withinLimits(const QString &text);

    ToolEntry m_entry;
    std::unique_ptr<QProcess> m_process; ///< null while nothing runs
    QStringDecoder m_decoder;            ///< a character may arrive in two pieces
    int m_lines = 0;                     ///< that this run has printed
    int m_column = 0;                    ///< characters of its last line so far
    bool m_stopping = false;
};

/// Replaces each "$(name)" of @p macros in @p text, in the order of the names; unknown names stay as they are.
[[nodiscard]] QString expandMacros(QString text, const ExternalTool::Macros &macros);
