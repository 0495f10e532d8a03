#pragma once
#include <QProcess>
#include <QTimer>

/// A program that runs in the background, one at a time. Its output is emitted line by line.
///
/// A stop ends it with all its child processes: first by SIGTERM, so that they remove incomplete files, then by
/// SIGKILL.
class ToolProcess : public QObject
{
    Q_OBJECT
public:
    struct Command
    {
        QString program;
        QStringList arguments;
        QString directory;
        QProcessEnvironment environment;
    };
    /// @p grace is the time in milliseconds between SIGTERM and SIGKILL.
    explicit ToolProcess(int grace = 2000, QObject *parent = nullptr);
    ~ToolProcess() override; ///< Ends the program and waits for it; emits nothing.

    void start(const Command &command); ///< No program may run. finished() follows in any case, after this call.
    void stop();                        ///< finished() follows when the program has ended.
    [[nodiscard]] bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

Q_SIGNALS:
    void line(const QString &text); ///< Without its line end.
    void finished(bool success);    ///< False also if the program could not be started or was stopped.

private:
    void readLines();
    void ended(int exitCode, QProcess::ExitStatus status);
    void failed(QProcess::ProcessError error);
    void killByForce();
    void killGroups() const;

    QProcess m_process;
    QByteArray m_pending; ///< the beginning of a line
    QTimer m_killTimer;
    QList<qint64> m_groups; ///< process groups of its children at the time of the stop
    bool m_stopping = false;
    bool m_forced = false;
};

/// The environment of the tools: messages are not translated, because their text is parsed;
/// ninja shows finished and total steps.
[[nodiscard]] QProcessEnvironment toolEnvironment();

/// The child processes of @p process that lead process groups, as those of ninja do.
[[nodiscard]] QList<qint64> childGroups(qint64 process);
