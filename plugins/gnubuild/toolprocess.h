#pragma once
#include <QProcess>
#include <QTimer>

/// A program that runs in the background, one at a time. What it writes is told line by line as it comes.
///
/// A stop ends it with all that it has started: kindly first, so that half-made files are cleaned up, then by force.
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
    /// @p grace is how long, in milliseconds, a stopped program may take to end by itself.
    explicit ToolProcess(int grace = 2000, QObject *parent = nullptr);
    ~ToolProcess() override; ///< Ends the program and waits for it; tells nothing any more.

    void start(const Command &command); ///< Nothing may run. finished() comes in every case, but later.
    void stop();                        ///< finished() follows as soon as the program has ended.
    [[nodiscard]] bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

Q_SIGNALS:
    void line(const QString &text); ///< Without its line end.
    void finished(bool success);    ///< False also if the program was not there, or was stopped.

private:
    void readLines();
    void ended(int exitCode, QProcess::ExitStatus status);
    void failed(QProcess::ProcessError error);
    void killByForce();
    void killGroups() const;

    QProcess m_process;
    QByteArray m_pending; ///< the beginning of a line
    QTimer m_killTimer;
    QList<qint64> m_groups; ///< of processes that it had started when the stop came
    bool m_stopping = false;
    bool m_forced = false;
};

/// The processes that @p process has started and that lead process groups, as those of ninja do.
[[nodiscard]] QList<qint64> childGroups(qint64 process);
