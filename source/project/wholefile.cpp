#include "wholefile.h"
#include <QFileInfo>
#include <QSaveFile>
#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

bool writeDevice(const QString &fileName, const QByteArray &content)
{
    QFile device(fileName);
    return device.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && device.write(content) == content.size();
}

/// Gives the new file to those who had the old one, or people who share a project would shut each other out.
void keepOwner(const QSaveFile &file, const QString &fileName)
{
#ifdef Q_OS_UNIX
    struct stat old;
    if (stat(QFile::encodeName(fileName).constData(), &old) != 0)
        return;
    if (fchown(file.handle(), old.st_uid, old.st_gid) != 0 && fchown(file.handle(), uid_t(-1), old.st_gid) != 0)
        return; // not allowed: then it belongs to whoever saves
#else
    Q_UNUSED(file);
    Q_UNUSED(fileName);
#endif
}

} // namespace

std::optional<QByteArray> readFile(const QString &fileName)
{
    QFile file(fileName);
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt; // a pipe or a device may never come to an end
    const QByteArray bytes = file.readAll();
    return file.error() == QFileDevice::NoError ? std::optional(bytes) : std::nullopt;
}

bool saveFile(const QString &fileName, const QByteArray &content)
{
    const QFileInfo target(fileName);
    if (target.exists() && !target.isFile())
        return writeDevice(fileName, content); // nothing to protect, and a rename would replace the device
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    keepOwner(file, fileName);
    // commit() alone overlooks a short write, of a large text in write() as of a small one in flush()
    return file.write(content) == content.size() && file.flush() && file.commit();
}
