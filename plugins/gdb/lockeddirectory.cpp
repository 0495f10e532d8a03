#include "lockeddirectory.h"
#include <fcntl.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
/// A locked file; -1 if it does not exist, or if another process has locked it.
int lockedFile(const QString &path, int flags)
{
    const int fd = ::open(QFile::encodeName(path).constData(), flags | O_RDWR | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (fd >= 0 && ::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return -1;
    }
    return fd;
}

/// A lock by that name is complete: no other process can take it between its creation and the lock.
int lockDirectory(const QString &directory)
{
    const int fd = lockedFile(directory + u"/new"_s, O_CREAT);
    if (fd >= 0)
        QFile::rename(directory + u"/new"_s, directory + u"/lock"_s);
    return fd;
}

void removeAbandoned(const QString &prefix)
{
    const QFileInfoList found =
        QDir(QDir::tempPath()).entryInfoList({prefix + u"-??????"_s}, QDir::Dirs | QDir::Hidden);
    for (const QFileInfo &each : found) {
        if (each.isSymLink() || each.ownerId() != ::getuid())
            continue;
        const int fd = lockedFile(each.filePath() + u"/lock"_s, 0);
        if (fd < 0)
            continue;
        QDir(each.filePath()).removeRecursively();
        ::close(fd);
    }
}
} // namespace

LockedDirectory::LockedDirectory(const QString &prefix)
    : m_directory(QDir::tempPath() + u'/' + prefix + u"-XXXXXX"_s)
    , m_lock(m_directory.isValid() ? lockDirectory(m_directory.path()) : -1)
{
    removeAbandoned(prefix);
}

LockedDirectory::~LockedDirectory()
{
    m_directory.remove(); // before the lock is released: another process must not remove it at the same time
    if (m_lock >= 0)
        ::close(m_lock);
}
