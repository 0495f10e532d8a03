#pragma once
#include <functional>
#include <optional>
#include <QByteArray>
#include <QObject>
#include <QQueue>
#include <QTcpSocket>

/// The memory of a target that OpenOCD controls, by commands for its Tcl port. Probes reach it while the program runs.
///
/// The connection is made in the background, and commands wait for it. OpenOCD answers them in their order.
class OpenOcdPort : public QObject
{
    Q_OBJECT
public:
    using Bytes = std::function<void(const QByteArray &bytes)>;
    using Result = std::function<void(bool success)>;

    static constexpr int AnswerLimit = 100; ///< in ms, for callers in the user interface

    /// readNow() and writeNow() wait for at most @p limit milliseconds.
    OpenOcdPort(const QString &host, quint16 port, bool bigEndian, int limit = AnswerLimit, QObject *parent = nullptr);
    ~OpenOcdPort() override; ///< Answers that are due do not come any more.

    [[nodiscard]] bool isUsable() const { return m_isUsable; } ///< Until the connection fails or ends.
    /// Calls @p done with the bytes, none after a failure. 1, 2 or 4 aligned bytes are read in one access.
    void read(quint64 address, int length, const Bytes &done);
    void write(quint64 address, const QByteArray &bytes, const Result &done);
    /// The same, and waits for the answer. False if it does not come in time, and at once until an answer that was late
    /// has come.
    bool readNow(quint64 address, int length, QByteArray *bytes);
    bool writeNow(quint64 address, const QByteArray &bytes);

Q_SIGNALS:
    void failed(const QString &reason); ///< There is no connection.

private:
    using Answer = std::function<void(const QByteArray &text)>;

    [[nodiscard]] QByteArray readCommand(quint64 address, int length) const;
    [[nodiscard]] QByteArray writeCommand(quint64 address, const QByteArray &bytes) const;
    void send(const QByteArray &command, const Answer &answer);
    [[nodiscard]] std::optional<QByteArray> ask(const QByteArray &command);
    void takeAnswers();
    void giveUp();

    const bool m_bigEndian;
    const int m_limit;
    QTcpSocket m_socket;
    QByteArray m_unsent; ///< until there is a connection
    QByteArray m_received;
    QQueue<Answer> m_answers; ///< that are due
    bool m_isUsable = true;
    bool m_isLate = false; ///< the answer that ask() has waited for
};

/// The bytes of an access to @p length bytes at @p address that can be made in one go: 1, 2 or 4.
[[nodiscard]] int accessWidth(quint64 address, int length);

/// Takes the next answer from what was received; nothing if it is not complete.
[[nodiscard]] std::optional<QByteArray> takeOpenOcdAnswer(QByteArray *received);

/// The @p length bytes that the numbers in an answer stand for; none if it is something else, such as a message.
[[nodiscard]] QByteArray openOcdBytes(const QByteArray &text, int width, int length, bool bigEndian);
