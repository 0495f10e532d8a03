#pragma once
#include "mirecord.h"
#include <functional>
#include <memory>
#include <QElapsedTimer>
#include <QHash>
#include <QObject>
class ChildProcess;

/// A running gdb. Commands go out at once; answers come back by token, in whatever order.
///
/// A gdb that let a time limit pass counts as stuck until it answers: ask() then fails without waiting once more, so
/// that a window which asks a hundred times does not stand still a hundred times as long.
class MiConnection : public QObject
{
    Q_OBJECT
public:
    using Handler = std::function<void(const MiRecord &answer)>;

    explicit MiConnection(QObject *parent = nullptr);
    ~MiConnection() override;

    /// Starts gdb and waits for its first prompt; false with @p error set if that fails.
    bool open(const QString &program, QString *error);
    void close(); ///< Asks gdb to end, and makes it end. No signal follows.
    [[nodiscard]] bool isOpen() const;
    [[nodiscard]] qint64 processId() const;

    /// Sends a command, without token and end of line. @p handler gets its first answer, or an error when gdb ends.
    void send(const QByteArray &command, const Handler &handler = {});
    /// Sends a command and waits for its answer, @p limit milliseconds at most. A command that got no answer gives an
    /// error that says so.
    [[nodiscard]] MiRecord ask(const QByteArray &command, int limit = 3000);
    /// Reads until @p condition holds; false if it does not within @p limit milliseconds or gdb ends.
    bool waitUntil(const std::function<bool()> &condition, int limit);
    /// As ask(), for a command of gdb's console: what it printed is put into @p output.
    [[nodiscard]] MiRecord askConsole(const QString &command, QString *output, int limit = 3000);

Q_SIGNALS:
    void asyncRecord(const MiRecord &record); ///< of the kinds Exec, Status and Notify
    void failed(const QString &text);         ///< what an answer that is an error says
    void console(const QString &text);
    void targetText(const QString &text);
    void logText(const QString &text);
    void strayText(const QString &text);             ///< a line that is no record
    void dialogue(const QString &line, bool fromUs); ///< every line, for a log
    void closed();                                   ///< gdb ended by itself

private:
    void readLines();
    void dispatch(const MiRecord &record);
    void answer(const MiRecord &record);
    void processEnded();

    std::unique_ptr<ChildProcess> m_process;
    QByteArray m_buffer;
    QHash<int, Handler> m_pending;
    int m_lastToken = 0;
    bool m_prompted = false;
    bool m_stuck = false;
};
