#include "folderproject.h"
#include "projectscript.h"
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
QStringList paths(const QDir &directory, const QString &pattern)
{
    QStringList result;
    for (const QString &name : directory.entryList({pattern}, QDir::Files, QDir::Name | QDir::IgnoreCase))
        result.append(directory.absoluteFilePath(name));
    return result;
}
} // namespace

bool isWorkspaceFile(const QString &path)
{
    return QFileInfo(path).suffix().compare("vnw"_L1, Qt::CaseInsensitive) == 0;
}

bool isProjectFile(const QString &path)
{
    return QFileInfo(path).suffix() == "vnp"_L1;
}

QStringList openableFiles(const QString &directory)
{
    QStringList result = paths(QDir(directory), u"*.vnw"_s);
    QStringList projects = paths(QDir(directory), u"*.vnp"_s);
    projects.removeIf([&result](const QString &project) {
        return !isProjectFile(project) || result.contains(project.chopped(1) + u'w', Qt::CaseInsensitive);
    });
    return result + projects;
}

QString createFolderProject(const QString &directory, const QString &templates,
                            const std::function<bool()> &keepRunning)
{
    const QString folder = QDir::cleanPath(QDir(directory).absolutePath());
    const QString name = QDir(folder).dirName().isEmpty() ? u"project"_s : QDir(folder).dirName();
    const ProjectScriptResult result =
        runProjectScript(u"folderproject"_s, name, QDir(templates).filePath(u"existing/folder"_s), folder, keepRunning);
    return result.outcome == ProjectScriptResult::Path ? result.path : QString();
}
