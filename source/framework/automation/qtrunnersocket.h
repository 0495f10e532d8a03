#pragma once
#include "runnercommands.h"
#include <QTcpSocket>

/// The connection of one test driver: takes commands line by line, replies, and reports the user's events if asked to.
///
/// It belongs to nobody: it goes when the peer goes. A peer that asks for too much loses its connection.
class QtRunnerSocket : public QTcpSocket
{
    Q_OBJECT
public:
    static constexpr qsizetype MaximumLine = 16 << 20;   ///< bytes, line end included
    static constexpr qsizetype MaximumUnsent = 64 << 20; ///< bytes that the peer has not read yet
    /// How many commands may wait for each other: each of them runs an event loop, as behind a modal dialog.
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
    QByteArray m_line;   ///< what has come of the next line
    int m_executing = 0; ///< commands that have begun and not ended
};
