#include "openocdport.h"
#include "memorycell.h"
#include <memory>
#include <QDeadlineTimer>

using namespace Qt::StringLiterals;

namespace {
constexpr char EndOfCommand = '\x1a';
constexpr qsizetype LongestAnswer = 1 << 20;

QByteArray number(quint64 value)
{
    return "0x" + QByteArray::number(value, 16);
}
} // namespace

int accessWidth(quint64 address, int length)
{
    for (const int width : {4, 2}) {
        if (address % quint64(width) == 0 && length % width == 0)
            return width;
    }
    return 1;
}

std::optional<QByteArray> takeOpenOcdAnswer(QByteArray *received)
{
    const qsizetype end = received->indexOf(EndOfCommand);
    if (end < 0)
        return std::nullopt;
    const QByteArray text = received->first(end);
    received->remove(0, end + 1);
    return text;
}

QByteArray openOcdBytes(const QByteArray &text, int width, int length, bool bigEndian)
{
    QByteArray bytes;
    for (const QByteArray &word : text.simplified().split(' ')) {
        bool valid = false;
        const uint value = word.toUInt(&valid, 0);
        const bool fits = width >= 4 || value >> (8 * width) == 0;
        if (!valid || !fits || bytes.size() >= length)
            return {};
        bytes += memoryCellBytes(value, width, bigEndian);
    }
    return bytes.size() == length ? bytes : QByteArray();
}

OpenOcdPort::OpenOcdPort(const QString &host, quint16 port, bool bigEndian, int limit, QObject *parent)
    : QObject(parent), m_bigEndian(bigEndian), m_limit(limit)
{
    connect(&m_socket, &QTcpSocket::connected, this, [this] { m_socket.write(std::exchange(m_unsent, {})); });
    connect(&m_socket, &QTcpSocket::readyRead, this, &OpenOcdPort::takeAnswers);
    connect(&m_socket, &QTcpSocket::errorOccurred, this, [this](QAbstractSocket::SocketError error) {
        if (error != QAbstractSocket::SocketTimeoutError) // a late answer
            giveUp();
    });
    m_socket.connectToHost(host, port);
}

OpenOcdPort::~OpenOcdPort()
{
    m_socket.disconnect(this);
}

// Commands ------------------------------------------------------------------------------------------------------------

QByteArray OpenOcdPort::readCommand(quint64 address, int length) const
{
    const int width = accessWidth(address, length);
    return "read_memory " + number(address) + ' ' + QByteArray::number(8 * width) + ' '
           + QByteArray::number(length / width);
}

QByteArray OpenOcdPort::writeCommand(quint64 address, const QByteArray &bytes) const
{
    const int width = accessWidth(address, int(bytes.size()));
    QByteArrayList values;
    for (qsizetype at = 0; at < bytes.size(); at += width)
        values += number(memoryCellValue(QByteArrayView(bytes).sliced(at, width), m_bigEndian));
    return "write_memory " + number(address) + ' ' + QByteArray::number(8 * width) + " {" + values.join(' ') + '}';
}

void OpenOcdPort::read(quint64 address, int length, const Bytes &done)
{
    send(readCommand(address, length),
         [this, done, length, width = accessWidth(address, length)](const QByteArray &text) {
             done(openOcdBytes(text, width, length, m_bigEndian));
         });
}

void OpenOcdPort::write(quint64 address, const QByteArray &bytes, const Result &done)
{
    send(writeCommand(address, bytes), [this, done](const QByteArray &text) { done(m_isUsable && text.isEmpty()); });
}

bool OpenOcdPort::readNow(quint64 address, int length, QByteArray *bytes)
{
    const std::optional<QByteArray> text = length > 0 ? ask(readCommand(address, length)) : std::nullopt;
    *bytes = text ? openOcdBytes(*text, accessWidth(address, length), length, m_bigEndian) : QByteArray();
    return !bytes->isEmpty();
}

bool OpenOcdPort::writeNow(quint64 address, const QByteArray &bytes)
{
    const std::optional<QByteArray> text = ask(writeCommand(address, bytes));
    return text && m_isUsable && text->isEmpty();
}

// Connection ----------------------------------------------------------------------------------------------------------

void OpenOcdPort::send(const QByteArray &command, const Answer &answer)
{
    if (!m_isUsable)
        return answer({});
    m_answers.enqueue(answer);
    if (m_socket.state() == QAbstractSocket::ConnectedState)
        m_socket.write(command + EndOfCommand);
    else
        m_unsent += command + EndOfCommand;
}

/// Nothing if there is no answer in time. The late answer stays in the queue, since answers are matched by their order.
std::optional<QByteArray> OpenOcdPort::ask(const QByteArray &command)
{
    if (m_isLate || !m_isUsable)
        return std::nullopt;
    const auto text = std::make_shared<std::optional<QByteArray>>();
    send(command, [this, text](const QByteArray &answer) {
        *text = answer;
        m_isLate = false;
    });
    const QDeadlineTimer limit(m_limit);
    while (!text->has_value() && m_isUsable && !limit.hasExpired()) {
        const auto left = int(limit.remainingTime());
        if (m_socket.state() == QAbstractSocket::ConnectedState)
            m_socket.waitForReadyRead(left);
        else if (!m_socket.waitForConnected(left))
            giveUp();
        takeAnswers(); // no signal is emitted inside a receiver of the same signal
    }
    m_isLate = !text->has_value();
    return *text;
}

void OpenOcdPort::takeAnswers()
{
    m_received += m_socket.readAll();
    while (const std::optional<QByteArray> text = takeOpenOcdAnswer(&m_received)) { // a receiver may call this again
        if (!m_answers.isEmpty())
            m_answers.dequeue()(*text);
    }
    if (m_received.size() > LongestAnswer) { // it is no OpenOCD
        m_socket.abort();
        giveUp();
    }
}

void OpenOcdPort::giveUp()
{
    if (!std::exchange(m_isUsable, false))
        return;
    Q_EMIT failed(m_socket.errorString());
    for (const Answer &answer : std::exchange(m_answers, {}))
        answer({});
}
