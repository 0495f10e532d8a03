#pragma once
#include "mirecord.h"
#include <functional>
#include <memory>
#include <QElapsedTimer>
#include <QHash>
#include <QObject>
class ChildProcess;

/// A gdb process. Commands are sent at once; answers are matched by token and can arrive in any order.
///
/// After a time limit has passed, gdb counts as stuck until it answers: ask() then fails without waiting, so that a
/// window with many queries waits only once.
class MiConnection : public QObject
{
    Q_OBJECT
public:
    using Handler = std::function<void(const MiRecord &answer)>;
    /// What the limit of a wait counts: all of the time, or the time since the last sign of life of gdb or the target.
    enum class Limit { Total, Silence };

    explicit MiConnection(QObject *parent = nullptr);
    ~MiConnection() override;

    /// Starts gdb and waits for its first prompt; false with @p error set if that fails.
    bool open(const QString &program, QString *error);
    void close(); ///< Ends gdb, if necessary by a signal of the system. Emits nothing.
    [[nodiscard]] bool isOpen() const;
    [[nodiscard]] qint64 processId() const;

    /// Sends a command, given without token and line end. @p handler is called with its first answer, or with an error
    /// when gdb ends. It is called again if the answer was "running" and an error follows before the next stop: gdb
    /// answers a run command before it has inserted the breakpoints.
    void send(const QByteArray &command, const Handler &handler = {});
    /// Sends a command and waits for its answer, at most @p limit milliseconds. Returns an error if there is no answer.
    [[nodiscard]] MiRecord ask(const QByteArray &command, int limit = 3000, Limit kind = Limit::Total);
    /// Reads until @p condition is true. False after @p limit milliseconds, when gdb ends, or when the BackgroundTask
    /// that waits was cancelled.
    bool waitUntil(const std::function<bool()> &condition, int limit, Limit kind = Limit::Total);
    void noteSignOfLife() { m_silence.restart(); } ///< Something has happened in the target.
    /// Sets what is done repeatedly while a function of this class waits: @p work returns whether it had something to
    /// do. A program that writes more than the system buffers would otherwise wait for us.
    void setWorkWhileWaiting(const std::function<bool()> &work) { m_workWhileWaiting = work; }
    /// Like ask(), for a command of gdb's console, whose output is appended to @p output.
    [[nodiscard]] MiRecord askConsole(const QString &command, QString *output, int limit = 3000);

Q_SIGNALS:
    void asyncRecord(const MiRecord &record); ///< of the kinds Exec, Status and Notify
    void failed(const QString &text);         ///< the text of an answer that is an error
    void console(const QString &text);
    void targetText(const QString &text);
    void logText(const QString &text);
    void strayText(const QString &text);             ///< a line that is not a record
    void dialogue(const QString &line, bool fromUs); ///< each line sent or received, for a log
    void closed();                                   ///< gdb ended without a call of close()

private:
    void readLines();
    void dispatch(const MiRecord &record);
    void answer(const MiRecord &record);
    void processEnded();

    std::unique_ptr<ChildProcess> m_process;
    QByteArray m_buffer;
    QHash<int, Handler> m_pending;
    QHash<int, Handler> m_running; ///< of run commands that gdb has accepted, until the program stops
    std::function<bool()> m_workWhileWaiting;
    QElapsedTimer m_silence; ///< since the last sign of life
    int m_lastToken = 0;
    bool m_prompted = false;
    bool m_stuck = false;
};
