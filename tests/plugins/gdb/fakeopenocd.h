#pragma once
#include "livesession.h"

/// A program that answers like OpenOCD on its Tcl port, with memory of its own or with that of an emulated board.
class FakeOpenOcd
{
public:
    enum class Memory { Own, Board };

    explicit FakeOpenOcd(Memory memory = Memory::Own)
    {
        QStringList line{Programs::source(u"fakeopenocd.py"_s), m_directory.path()};
        if (memory == Memory::Board)
            line.append(u"qemu"_s);
        m_process.start(u"python3"_s, line);
        while (!m_process.canReadLine() && m_process.waitForReadyRead()) {
        }
        m_port = quint16(m_process.readLine().trimmed().toUInt());
    }
    ~FakeOpenOcd() { end(); }
    Q_DISABLE_COPY_MOVE(FakeOpenOcd)

    quint16 port() const { return m_port; }
    QString qtest() const { return m_directory.filePath(u"qtest"_s); } ///< where a QEMU connects its qtest channel
    void delay(int milliseconds) const                                 ///< All further answers are late.
    {
        QFile file(m_directory.filePath(u"delay"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray::number(milliseconds));
    }
    /// The commands since the last call, those included that are still on their way.
    QString commands()
    {
        while (m_process.waitForReadyRead(1)) {
        }
        return QString::fromUtf8(m_process.readAllStandardError());
    }
    void end()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QTemporaryDir m_directory;
    QProcess m_process;
    quint16 m_port = 0;
};
