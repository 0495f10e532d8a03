#include "largefile.h"
#include <fcntl.h>
#include <QFile>
#include <sys/stat.h>
#include <unistd.h>

namespace {
qint64 nanoseconds(const timespec &time)
{
    return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}
} // namespace

std::shared_ptr<LargeFile> LargeFile::open(const QString &path)
{
    // Non-blocking, for a pipe would wait for its writer.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0)
        return nullptr;
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(descriptor);
        return nullptr;
    }
    const Stamp stamp{status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim)};
    return std::shared_ptr<LargeFile>(new LargeFile(path, descriptor, stamp));
}

LargeFile::LargeFile(const QString &path, int descriptor, const Stamp &stamp)
    : m_path(path), m_descriptor(descriptor), m_stamp(stamp), m_size(stamp.size)
{}

LargeFile::~LargeFile()
{
    close(m_descriptor);
}

QDateTime LargeFile::lastModified() const
{
    return QDateTime::fromMSecsSinceEpoch(m_stamp.modified / 1'000'000);
}

qint64 LargeFile::read(qint64 offset, char *buffer, qint64 length) const
{
    qint64 done = 0;
    while (offset >= 0 && done < length) {
        const ssize_t got = pread(m_descriptor, buffer + done, size_t(length - done), offset + done);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        done += got;
    }
    return done;
}

QByteArray LargeFile::read(qint64 offset, qint64 length) const
{
    QByteArray bytes(std::max<qint64>(0, length), Qt::Uninitialized);
    bytes.truncate(read(offset, bytes.data(), bytes.size()));
    return bytes;
}

qint64 LargeFile::presentSize() const
{
    struct stat status = {};
    return fstat(m_descriptor, &status) == 0 ? status.st_size : 0;
}

LargeFile::Change LargeFile::change() const
{
    struct stat status = {};
    if (stat(QFile::encodeName(m_path).constData(), &status) != 0)
        return Change::Gone;
    if (status.st_dev != m_stamp.device || status.st_ino != m_stamp.inode)
        return Change::Replaced;
    if (status.st_size != m_stamp.size)
        return status.st_size > m_stamp.size ? Change::Grown : Change::Shrunk;
    return nanoseconds(status.st_mtim) != m_stamp.modified ? Change::Rewritten : Change::None;
}
