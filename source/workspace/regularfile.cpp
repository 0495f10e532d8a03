#include "regularfile.h"
#include "listedfile.h"
#include <cerrno>
#include <fcntl.h>
#include <QFile>
#include <sys/stat.h>
#include <unistd.h>

namespace {
/// A pipe does not block here. A regular file that another process keeps locked does, but only at the second attempt,
/// which is made for regular files only.
int openFile(const ListedFile &file)
{
    const int fd = file.open(O_RDONLY | O_NONBLOCK | O_NOCTTY);
    struct stat status = {};
    if (fd >= 0 || errno != EWOULDBLOCK || ::stat(QFile::encodeName(file.path()).constData(), &status) != 0
        || !S_ISREG(status.st_mode))
        return fd;
    return file.open(O_RDONLY);
}
} // namespace

RegularFile::RegularFile(const ListedFile &file) : m_fd(openFile(file))
{
    struct stat status = {};
    if (m_fd < 0) {
        const bool isFound = ::stat(QFile::encodeName(file.path()).constData(), &status) == 0;
        m_isUnreadable = !isFound || S_ISREG(status.st_mode);
        return;
    }
    if (::fstat(m_fd, &status) == 0 && S_ISREG(status.st_mode)) {
        m_size = status.st_size;
        return;
    }
    ::close(m_fd);
    m_fd = -1;
}

RegularFile::~RegularFile()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

qsizetype RegularFile::read(char *bytes, qsizetype size)
{
    for (;;) {
        const ssize_t count = ::read(m_fd, bytes, size_t(size));
        if (count >= 0 || errno != EINTR)
            return count;
    }
}
