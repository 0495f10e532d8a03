#include "sourcefinder.h"
#include <QDir>
using namespace Qt::StringLiterals;

namespace {

bool isAnotherProject(const QDir &directory)
{
    return !directory.entryList({u"*.vnp"_s}, QDir::Files).isEmpty();
}

void findBelow(const QDir &directory, const QStringList &extensions, const QStringList &excluded, QStringList &found)
{
    for (const QFileInfo &file : directory.entryInfoList(QDir::Files, QDir::Name)) {
        if (extensions.contains(file.suffix()))
            found += file.absoluteFilePath();
    }
    for (const QFileInfo &each :
         directory.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks, QDir::Name)) {
        const QDir child(each.absoluteFilePath());
        if (!excluded.contains(child.path()) && !isAnotherProject(child))
            findBelow(child, extensions, excluded, found);
    }
}

} // namespace

QStringList findSources(const QString &directory, const QStringList &extensions, const QStringList &excluded)
{
    QStringList found;
    findBelow(QDir(directory), extensions, excluded, found);
    return found;
}
