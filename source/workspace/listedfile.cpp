#include "listedfile.h"
#include <fcntl.h>
#include <QFile>
#include <unistd.h>
#include <utility>

namespace {
QString joined(const QString &folder, const QString &name)
{
    return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}
} // namespace

OpenFolder::OpenFolder(const QString &path, int descriptor)
    : m_path(path), m_descriptor(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0))
{}

OpenFolder::~OpenFolder()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

ListedFile::ListedFile(const QString &path) : m_name(QFile::encodeName(path)) {}

ListedFile::ListedFile(std::shared_ptr<const OpenFolder> folder, QByteArray name)
    : m_folder(std::move(folder)), m_name(std::move(name))
{}

QString ListedFile::path() const
{
    const QString name = QFile::decodeName(m_name);
    return m_folder ? joined(m_folder->path(), name) : name;
}

int ListedFile::open(int flags) const
{
    if (m_folder && m_folder->descriptor() >= 0)
        return ::openat(m_folder->descriptor(), m_name.constData(), flags | O_CLOEXEC);
    return ::open(m_folder ? QFile::encodeName(path()).constData() : m_name.constData(), flags | O_CLOEXEC);
}
