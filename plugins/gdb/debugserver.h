#pragma once
#include <functional>
#include <memory>
#include <QObject>
#include <QStringList>
class ChildProcess;
class MiConnection;
class NativeTerminal;
class QDeadlineTimer;
class QProgressDialog;

/// The last line of a text that goes on.
struct OpenLine
{
    QString held;       ///< its beginning, if that is not shown yet
    bool begun = false; ///< its beginning has been shown
};

/// A debug server that a session starts and ends, such as simavr or OpenOCD.
///
/// It gets a terminal for its standard output, since programs that write to a pipe buffer their output.
class DebugServer : public QObject
{
    Q_OBJECT
public:
    struct Setup
    {
        QStringList command; ///< the program and its arguments
        QString directory;
        QString address;             ///< where gdb connects: "host:port", or the path of a socket
        bool repeatsAnswers = false; ///< OpenOCD writes what it answers on its Tcl port; that is not shown
    };

    explicit DebugServer(const Setup &setup, QObject *parent = nullptr);
    ~DebugServer() override;

    /// Starts the server. False with @p error set if that fails.
    bool start(QString *error);
    /// Connects gdb as soon as the server accepts it, and processes events until then; outside of a BackgroundTask a
    /// dialog offers to stop after half a second. False with @p error set if that lasts longer than @p limit
    /// milliseconds, if the server ends or the user stops. A call of end() meanwhile makes it return false.
    bool connectGdb(MiConnection *gdb, int limit, QString *error);
    /// Ends the server and its children. Emits no signal.
    void end();
    [[nodiscard]] bool isRunning() const;
    bool readOutput(); ///< Emits what has been written so far. False if there was nothing.

Q_SIGNALS:
    void output(const QByteArray &bytes); ///< without the control sequences for colours
    void complaint(const QString &text);  ///< from the standard error
    void died(const QString &reason);     ///< ended after gdb was connected, without a call of end()

private:
    [[nodiscard]] QString name() const;
    [[nodiscard]] QString lastWords() const;
    [[nodiscard]] QString failure(const QString &answer, int limit) const;
    bool tryToConnect(MiConnection *gdb, const QDeadlineTimer &deadline, QString *answer);
    bool waitForFreePort(QString *error);
    void waitUntil(const std::function<bool()> &condition, const QDeadlineTimer &deadline);
    QProgressDialog *showDialog();
    void takeOutput(const QByteArray &bytes);
    void takeComplaint();
    void processEnded();
    void remember(const QString &text);
    void endGroup();

    const Setup m_setup;
    std::unique_ptr<NativeTerminal> m_terminal;
    std::unique_ptr<ChildProcess> m_process;
    qint64 m_group = 0; ///< the process group of the server and its children; 0 if they have ended
    // Of the two outputs: the beginning of a control sequence, and the last line
    QByteArray m_outputSequence;
    QByteArray m_complaintSequence;
    OpenLine m_outputLine;
    OpenLine m_complaintLine;
    QString m_words; ///< the last lines of both outputs
    bool m_connected = false;
    bool m_stopped = false; ///< by the user
    bool m_ended = true;    ///< by end()
};

/// A port of this computer that no program listens at; 0 if there is none.
[[nodiscard]] int freePort();

/// @p bytes without the sequences that set colours. The beginning of one at the end is left in @p incomplete, which is
/// put in front of the next bytes.
[[nodiscard]] QByteArray withoutColours(const QByteArray &bytes, QByteArray *incomplete);

/// @p text without the lines that consist of hexadecimal numbers. @p line is the one that the next text continues.
[[nodiscard]] QString withoutNumbers(const QString &text, OpenLine *line);
