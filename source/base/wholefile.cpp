#include "wholefile.h"
#include <cerrno>
#include <fcntl.h>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QSaveFile>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

/// An open file descriptor, which the destructor closes.
class FileDescriptor
{
public:
    explicit FileDescriptor(int fd) : m_fd(fd) {}
    ~FileDescriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Q_DISABLE_COPY_MOVE(FileDescriptor)
    operator int() const { return m_fd; }

private:
    int m_fd;
};

bool writeAll(int fd, const QByteArray &bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t written = ::pwrite(fd, bytes.constData() + done, size_t(bytes.size() - done), done);
        if (written < 0 && errno != EINTR)
            return false;
        done += std::max<ssize_t>(written, 0);
    }
    return true;
}

/// Overwrites an open file of @p oldSize bytes. If it cannot be written to the end, the old bytes are written back.
bool overwrite(const QString &path, int fd, qint64 oldSize, const QByteArray &bytes)
{
    const QByteArray before = readFile(path).value_or(QByteArray());
    // Reserve only the part beyond the old end: file systems that cannot reserve write zeros there.
    const bool hasRoom = bytes.size() <= oldSize || ::posix_fallocate(fd, oldSize, bytes.size() - oldSize) == 0;
    if (hasRoom && writeAll(fd, bytes) && ::ftruncate(fd, bytes.size()) == 0 && ::fsync(fd) == 0)
        return true;
    if (before.size() == oldSize)
        writeAll(fd, before);
    [[maybe_unused]] const int ignored = ::ftruncate(fd, oldSize);
    return false;
}

bool writeInPlace(const QString &path, const QByteArray &bytes, const struct stat &status)
{
    // A pipe without a reader and a busy device would block here.
    const FileDescriptor fd(::open(QFile::encodeName(path).constData(), O_WRONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (fd < 0)
        return false;
    if (!S_ISREG(status.st_mode))
        return ::write(fd, bytes.constData(), size_t(bytes.size())) == bytes.size();
    return overwrite(path, fd, status.st_size, bytes);
}

bool writeNewFile(const QString &path, const QByteArray &bytes)
{
    const FileDescriptor fd(
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666));
    if (fd < 0)
        return false;
    if (writeAll(fd, bytes) && ::fsync(fd) == 0)
        return true;
    QFile::remove(QFileInfo(path).canonicalFilePath()); // the file itself, not a link to it
    return false;
}

bool copyAttributes(const QByteArray &from, int to)
{
    const ssize_t size = ::listxattr(from.constData(), nullptr, 0);
    if (size <= 0)
        return true; // no attributes, or a file system without them
    QByteArray names(size, '\0');
    if (::listxattr(from.constData(), names.data(), size_t(size)) != size)
        return false;
    for (const QByteArray &name : names.chopped(1).split('\0')) {
        QByteArray value(::getxattr(from.constData(), name.constData(), nullptr, 0) + 1, '\0');
        value.chop(1);
        if (::getxattr(from.constData(), name.constData(), value.data(), size_t(value.size())) != value.size()
            || ::fsetxattr(to, name.constData(), value.constData(), size_t(value.size()), 0) != 0)
            return false;
    }
    return true;
}

/// Gives the new file @p fd the permissions, owner and attributes of the file at @p path.
bool takeOver(const QByteArray &path, const struct stat &status, int fd)
{
    struct stat own = {};
    if (::fstat(fd, &own) != 0)
        return false;
    const bool sameOwner = own.st_uid == status.st_uid && own.st_gid == status.st_gid;
    return (sameOwner || ::fchown(fd, status.st_uid, status.st_gid) == 0) && copyAttributes(path, fd)
           && ::fchmod(fd, status.st_mode & 07777) == 0;
}

enum class Beside { Done, Failed, NotAllowed };

Beside writeBeside(const QString &path, const QByteArray &bytes, const struct stat &status)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !takeOver(QFile::encodeName(path), status, file.handle()))
        return Beside::NotAllowed;
    if (file.write(bytes) != bytes.size() || !file.flush()) // commit() does not notice a short write
        return Beside::Failed;
    return file.commit() ? Beside::Done : Beside::NotAllowed; // keep the file of another user in a shared directory
}

} // namespace

std::optional<QByteArray> readFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt; // reading a pipe or a device may never end
    const QByteArray bytes = file.readAll();
    return file.error() == QFileDevice::NoError ? std::optional(bytes) : std::nullopt;
}

QString otherWriteFailure(int error)
{
    const bool isOther = QList{ENOSPC, EDQUOT, EFBIG, EIO, ENOENT, ENOTDIR, ENAMETOOLONG}.contains(error);
    return isOther ? QStringLiteral("\n\n") + qt_error_string(error) : QString();
}

bool writeFileSafely(const QString &path, const QByteArray &bytes)
{
    const QFileInfo info(path);
    const QString target = info.isSymLink() && info.exists() ? info.canonicalFilePath() : path;
    const QByteArray name = QFile::encodeName(target);
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0)
        return writeNewFile(target, bytes);
    if (S_ISDIR(status.st_mode) || S_ISFIFO(status.st_mode) || ::access(name.constData(), W_OK) != 0)
        return false; // do not replace a read-only file, nor write into a pipe, which may never be read
    if (!S_ISREG(status.st_mode) || status.st_nlink > 1)
        return writeInPlace(target, bytes, status);
    const Beside result = writeBeside(target, bytes, status);
    return result == Beside::Done || (result == Beside::NotAllowed && writeInPlace(target, bytes, status));
}
