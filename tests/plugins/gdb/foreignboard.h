#pragma once
#include "livesession.h"

/// A QEMU that does not belong to the session, with a debug server on a socket.
class ForeignBoard
{
public:
    explicit ForeignBoard(const QString &image, const QStringList &more = {})
    {
        m_process.start(u"qemu-system-arm"_s,
                        QStringList{u"-M"_s, u"mps2-an385"_s, u"-display"_s, u"none"_s, u"-monitor"_s, u"none"_s,
                                    u"-serial"_s, u"null"_s, u"-kernel"_s, image, u"-chardev"_s,
                                    u"socket,id=g,path=%1,server=on,wait=off"_s.arg(address()), u"-gdb"_s,
                                    u"chardev:g"_s}
                            + more);
    }
    ~ForeignBoard() { end(); }
    Q_DISABLE_COPY_MOVE(ForeignBoard)

    QString address() const { return m_directory.filePath(u"gdb"_s); }
    bool isUp() const { return QFile::exists(address()); }
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    void end()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QTemporaryDir m_directory;
    QProcess m_process;
};
