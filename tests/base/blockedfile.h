#pragma once
#include <csignal>
#include <fcntl.h>
#include <QFile>
#include <unistd.h>

/// While this object exists, no one else can open the file, a regular one: the call blocks, as on a disk or a server
/// that does not answer. The system ends that after 45 seconds. Only the owner of the file can do this.
class BlockedFile
{
public:
    explicit BlockedFile(const QString &path)
        : m_previous(std::signal(SIGIO, SIG_IGN)) // by which the system reports that another one waits
        , m_fd(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC))
        , m_blocks(m_fd >= 0 && ::fcntl(m_fd, F_SETLEASE, F_WRLCK) == 0)
    {}
    ~BlockedFile()
    {
        if (m_fd >= 0)
            ::close(m_fd);
        std::signal(SIGIO, m_previous);
    }
    Q_DISABLE_COPY_MOVE(BlockedFile)

    [[nodiscard]] bool blocks() const { return m_blocks; } ///< Not all file systems support it.
    /// Whether another one tries to open the file.
    [[nodiscard]] bool isWantedByOthers() const { return m_blocks && ::fcntl(m_fd, F_GETLEASE) != F_WRLCK; }

private:
    void (*const m_previous)(int);
    const int m_fd;
    const bool m_blocks;
};
