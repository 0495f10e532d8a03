#include "textoutput.h"
#include "regularfile.h"
#include <filesystem>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

Written writeIfChanged(const QString &path, const QByteArray &bytes, QString *error)
{
    if (hasContents(path, bytes))
        return Written::Same;
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return Written::Changed;
    if (error)
        *error = file.errorString();
    return Written::Failed;
}

bool hasContents(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return openRegularFile(file) && file.size() == bytes.size() && file.readAll() == bytes;
}

void updateLink(const QString &link, const QString &target)
{
    std::error_code error; // also set if the link does not exist
    const std::filesystem::path path = link.toStdString();
    const std::filesystem::path old = std::filesystem::read_symlink(path, error);
    if (!error && old == target.toStdString())
        return;
    if (!error)
        QFile::remove(link);
    QFile::link(target, link); // fails if a file is there
}
