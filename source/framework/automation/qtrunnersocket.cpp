#include "qtrunnersocket.h"
#include "eventtext.h"
#include <QCoreApplication>

namespace {
constexpr auto CommandEventType = QEvent::Type(52343);
constexpr qint64 ReadBuffer = 64 << 10;

class CommandEvent : public QEvent
{
public:
    explicit CommandEvent(QString line) : QEvent(CommandEventType), line(std::move(line)) {}

    const QString line;
};
} // namespace

QtRunnerSocket::QtRunnerSocket(qintptr descriptor, QWidget *mainWidget, ObjectModel *objectModel)
    : m_commands(mainWidget, objectModel)
{
    connect(this, &QIODevice::readyRead, this, &QtRunnerSocket::readClient);
    connect(this, &QAbstractSocket::disconnected, this, &QtRunnerSocket::connectionClosed);
    setReadBufferSize(ReadBuffer); // more data waits in the network
    connect(qApp, &QCoreApplication::aboutToQuit, this, &QtRunnerSocket::applicationQuits);
    if (!setSocketDescriptor(descriptor))
        deleteLater();
    setSocketOption(LowDelayOption, 1);
    qApp->installEventFilter(this);
}

void QtRunnerSocket::readClient()
{
    // Reading line by line would not notify the device that a full buffer has room again.
    const QByteArray received = readAll();
    for (qsizetype begin = 0; begin < received.size();) {
        const qsizetype lineFeed = received.indexOf('\n', begin);
        const qsizetype end = lineFeed < 0 ? received.size() : lineFeed + 1;
        m_line += QByteArrayView(received).sliced(begin, end - begin);
        if (m_line.size() > MaximumLine)
            return abandon("A line is longer than 16 MiB");
        if (lineFeed >= 0)
            postLine();
        begin = end;
    }
}

void QtRunnerSocket::postLine()
{
    // Queued, because a command may run an event loop and this is a notification of the socket.
    QCoreApplication::postEvent(this, new CommandEvent(QString::fromUtf8(m_line)));
    m_line.clear();
}

bool QtRunnerSocket::event(QEvent *event)
{
    if (event->type() != CommandEventType)
        return QTcpSocket::event(event);
    execute(static_cast<CommandEvent *>(event)->line);
    return true;
}

void QtRunnerSocket::execute(const QString &line)
{
    if (m_executing == MaximumNesting)
        return abandon("Too many commands wait for each other");
    const QPointer<QtRunnerSocket> self(this); // the peer may disconnect while the command runs an event loop
    ++m_executing;
    const QString reply = m_commands.execute(line);
    if (!self)
        return;
    --m_executing;
    send(reply);
}

void QtRunnerSocket::send(const QString &text)
{
    if (state() != ConnectedState)
        return;
    if (bytesToWrite() > MaximumUnsent)
        return abandon("The peer does not read its replies");
    write(text.toUtf8());
}

void QtRunnerSocket::abandon(const char *reason)
{
    qWarning("QtRunnerSocket: %s; the connection is closed.", reason);
    QCoreApplication::removePostedEvents(this, CommandEventType);
    abort();
}

void QtRunnerSocket::connectionClosed()
{
    qDebug("QtRunnerSocket:: connection closed");
    deleteLater();
}

void QtRunnerSocket::applicationQuits()
{
    flush(); // the reply to the command that has ended the program
    abort(); // emits the signal that the connection has closed; the destructor would be too late
}

bool QtRunnerSocket::eventFilter(QObject *watched, QEvent *event)
{
    // Windows and styles also receive some events; only those of widgets can be posted again.
    if (m_commands.isRecording() && isRecorded(event->type()) && watched->isWidgetType())
        send(recordedCommand(watched, event) + QLatin1StringView("\r\n"));
    return false;
}
