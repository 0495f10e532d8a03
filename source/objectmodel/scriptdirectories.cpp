#include "scriptdirectories.h"
#include <QDir>
#include <QFileInfo>

QString ScriptDirectories::file(const QString &name) const
{
    if (!user.isEmpty() && QFileInfo::exists(QDir(user).filePath(name)))
        return QDir(user).filePath(name);
    return QDir(installed).filePath(name);
}
