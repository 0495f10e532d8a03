#pragma once
#include "runnercommands.h"
#include <QTcpSocket>

/// The connection of one test driver: executes commands line by line, replies, and reports the user's events on
/// request.
///
/// It owns itself: it is deleted when the peer disconnects. A peer that exceeds the limits is disconnected.
class QtRunnerSocket : public QTcpSocket
{
    Q_OBJECT
public:
    static constexpr qsizetype MaximumLine = 16 << 20;   ///< bytes, including the line end
    static constexpr qsizetype MaximumUnsent = 64 << 20; ///< bytes that the peer has not read yet
    /// Limit for nested commands: each runs an event loop, for example of a modal dialog.
    static constexpr int MaximumNesting = 16;

    QtRunnerSocket(qintptr descriptor, QWidget *mainWidget, ObjectModel *objectModel);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    bool event(QEvent *event) override;

private Q_SLOTS:
    void readClient();
    void connectionClosed();
    void applicationQuits();

private:
    void postLine();
    void execute(const QString &line);
    void send(const QString &text);
    void abandon(const char *reason);

    RunnerCommands m_commands;
    QByteArray m_line;   ///< the received part of the next line
    int m_executing = 0; ///< commands that have started and not ended
};
