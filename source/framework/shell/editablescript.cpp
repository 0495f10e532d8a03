#include "editablescript.h"
#include "scriptdirectories.h"
#include <QDir>
#include <QFileInfo>

QString editableScript(const ScriptDirectories &directories, const QString &name)
{
    QString file = directories.file(name);
    if (directories.user.isEmpty() || !QFileInfo::exists(file) || QFileInfo(file).isWritable())
        return file;
    QString copy = QDir(directories.user).filePath(name);
    if (!QDir().mkpath(directories.user) || !QFile::copy(file, copy))
        return file;
    QFile::setPermissions(copy, QFile::permissions(copy) | QFile::WriteOwner);
    return copy;
}
