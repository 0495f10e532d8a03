#pragma once
#include <memory>
#include <QObject>
#include <QStringList>
#include <QTemporaryDir>
class ChildProcess;
class QLocalServer;
class QLocalSocket;

/// An emulated board: a QEMU of our own, connected by sockets in a private directory, stopped before its first
/// instruction.
///
/// Besides gdb's it has a channel by which memory and devices are read and written whether the board runs or not.
class QemuMachine : public QObject
{
    Q_OBJECT
public:
    struct Setup
    {
        QString program; ///< "qemu-system-arm" and the like
        QString machine;
        QString image;
        QString secondImage; ///< empty for none
        int uart = 0;
        bool semihosting = true;
        QStringList arguments;
    };

    explicit QemuMachine(const Setup &setup, QObject *parent = nullptr);
    ~QemuMachine() override;

    bool start(QString *error); ///< Waits until gdb can connect. False with @p error set if the board does not come up.
    void end();                 ///< Ends the emulator; no signal follows.
    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] qint64 processId() const;
    [[nodiscard]] QString gdbAddress() const;

    /// Reads bytes as the bus has them; empty if that fails. Devices see accesses of a width we do not choose.
    [[nodiscard]] QByteArray read(quint64 address, int length);
    bool write(quint64 address, const QByteArray &bytes);
    /// One access of 1, 2 or 4 bytes, as a device sees it.
    bool readWord(quint64 address, int width, uint *value);
    bool writeWord(quint64 address, int width, uint value);
    [[nodiscard]] QString monitor(const QString &command); ///< What the emulator's monitor says to a command.
    void writeSerial(const QByteArray &bytes);

Q_SIGNALS:
    void output(const QByteArray &bytes); ///< from the serial port and from semihosting
    void complaint(const QString &text);  ///< what the emulator printed as errors: whole lines
    void died(const QString &reason);     ///< it ended by itself

private:
    QStringList commandLine() const;
    bool listen(QString *error);
    bool waitUntilReady(QString *error);
    void takeSockets();
    QByteArray askQtest(const QByteArray &line);
    QByteArray askQmp(const QByteArray &line);
    void readComplaints();
    void readLastOutput();
    void processEnded();

    const Setup m_setup;
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<ChildProcess> m_process;
    std::unique_ptr<QLocalServer> m_serialServer;
    std::unique_ptr<QLocalServer> m_semihostingServer;
    std::unique_ptr<QLocalServer> m_qtestServer;
    std::unique_ptr<QLocalServer> m_qmpServer;
    QLocalSocket *m_serial = nullptr; ///< sockets belong to their servers
    QLocalSocket *m_semihosting = nullptr;
    QLocalSocket *m_qtest = nullptr;
    QLocalSocket *m_qmp = nullptr;
    QString m_complaints;
};
