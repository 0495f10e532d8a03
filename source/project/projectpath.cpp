#include "projectpath.h"
#include <QDir>

QString relativePath(const QDir &base, const QString &path)
{
    const QStringList from = base.path().split(u'/');
    const QStringList to = path.split(u'/');
    const qsizetype both = std::min(from.size(), to.size());
    qsizetype common = 0;
    while (common < both && from[common] == to[common])
        ++common;
    if (common == 0)
        return path;
    QString result;
    for (qsizetype i = common; i < from.size(); ++i)
        result += u"../";
    result += u'.';
    for (qsizetype i = common; i < to.size(); ++i)
        result += u'/' + to[i];
    return QDir::cleanPath(result);
}

QString absolutePath(const QDir &base, const QString &path)
{
    return QDir::isRelativePath(path) ? QDir::cleanPath(base.absoluteFilePath(path)) : path;
}

QString fileNameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(u'/') + 1); // without a slash the result shares the memory of the path
}

QString completeExtension(const QString &path)
{
    const qsizetype dot = path.indexOf(u'.', path.lastIndexOf(u'/') + 1);
    return dot < 0 ? QString() : path.sliced(dot + 1).toLower();
}
