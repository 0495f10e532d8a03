#pragma once
#include <memory>
#include <QObject>
#include <QStringList>
class ChildProcess;
class LockedDirectory;
class QLocalServer;
class QLocalSocket;

/// An emulated board: a QEMU process, connected by sockets in a private directory and stopped before its first
/// instruction.
///
/// In addition to gdb's socket there is one that reads and writes memory and devices also while the board runs.
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
        int startLimit = 10000; ///< in milliseconds
    };

    explicit QemuMachine(const Setup &setup, QObject *parent = nullptr);
    ~QemuMachine() override;

    bool start(QString *error); ///< Waits until gdb can connect. False with @p error set if the start fails.
    void end();                 ///< Ends the emulator; no signal follows.
    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] qint64 processId() const;
    [[nodiscard]] QString gdbAddress() const;

    /// Reads bytes from the bus; empty if that fails. QEMU chooses the width of accesses to devices.
    [[nodiscard]] QByteArray read(quint64 address, int length);
    bool write(quint64 address, const QByteArray &bytes);
    /// A single access of 1, 2 or 4 bytes.
    bool readWord(quint64 address, int width, uint *value);
    bool writeWord(quint64 address, int width, uint value);
    [[nodiscard]] QString monitor(const QString &command); ///< The output of a command of QEMU's monitor.
    void writeSerial(const QByteArray &bytes);
    bool readOutput(); ///< Emits what the program has written so far. False if there was nothing.

Q_SIGNALS:
    void output(const QByteArray &bytes); ///< from the serial port and from semihosting
    void complaint(const QString &text);  ///< complete lines of QEMU's standard error
    void died(const QString &reason);     ///< QEMU ended without a call of end()

private:
    QStringList commandLine() const;
    bool listen(QString *error);
    bool waitUntilReady(QString *error);
    void takeSockets();
    QByteArray askQtest(const QByteArray &line);
    QByteArray askQmp(const QByteArray &line);
    void readStreams();
    void readComplaints();
    void readLastOutput();
    void processEnded();

    const Setup m_setup;
    std::unique_ptr<LockedDirectory> m_directory;
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
