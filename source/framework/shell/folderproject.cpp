#include "folderproject.h"
#include "project.h"
#include <algorithm>
#include <QDirIterator>
#include <QDomDocument>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {
constexpr int MostEntries = 20000; // less than 100 ms on a local disk
constexpr int MostSources = 2000;

const QStringList cppSuffixes{u"cpp"_s, u"cc"_s, u"cxx"_s, u"hpp"_s, u"hh"_s, u"hxx"_s};
const QStringList otherSuffixes{u"c"_s, u"h"_s, u"s"_s, u"ld"_s};

bool hasSuffix(const QString &path, const QStringList &suffixes)
{
    return suffixes.contains(QFileInfo(path).suffix().toLower());
}

/// Other build systems mark the directories into which they generate files.
bool isGenerated(const QDir &directory)
{
    return directory.exists(u"CMakeCache.txt"_s) || directory.exists(u"build.ninja"_s);
}

QStringList paths(const QDir &directory, const QString &pattern)
{
    QStringList result;
    for (const QString &name : directory.entryList({pattern}, QDir::Files, QDir::Name | QDir::IgnoreCase))
        result.append(directory.absoluteFilePath(name));
    return result;
}

QString readText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void removeFiles(const QDomDocument &document)
{
    const QDomNodeList files = document.elementsByTagName(u"file"_s);
    while (!files.isEmpty())
        files.at(0).parentNode().removeChild(files.at(0));
}

/// The directories of the headers, as the compiler must search them.
QString includeDirectories(const QDir &directory, const QStringList &sources)
{
    QStringList result;
    for (const QString &path : sources) {
        const QString folder = directory.relativeFilePath(QFileInfo(path).path());
        if (QFileInfo(path).suffix().startsWith(u'h', Qt::CaseInsensitive) && folder != "."_L1
            && !result.contains(folder))
            result.append(folder);
    }
    return result.join(u';');
}

void setIncludes(QDomDocument &document, const QString &directories)
{
    const QDomNodeList configurations = document.elementsByTagName(u"configuration"_s);
    for (int i = 0; i < configurations.size() && !directories.isEmpty(); ++i) {
        QDomElement property = document.createElement(u"property"_s);
        property.setAttribute(u"key"_s, u"buildIncludes"_s);
        property.appendChild(document.createTextNode(directories));
        configurations.at(i).appendChild(property);
    }
}

/// The text of a project without files.
QByteArray emptyProject(const QString &templateFile, const QString &includes)
{
    QDomDocument document;
    if (!document.setContent(readText(templateFile)))
        document.setContent(u"<project><properties/></project>"_s);
    removeFiles(document);
    setIncludes(document, includes);
    return document.toByteArray(1);
}

bool writeNew(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::NewOnly) && file.write(content) == content.size() && file.flush();
}
} // namespace

QStringList openableFiles(const QString &directory)
{
    QStringList result = paths(QDir(directory), u"*.vnw"_s);
    QStringList projects = paths(QDir(directory), u"*.vnp"_s);
    projects.removeIf([&result](const QString &project) { return result.contains(project.chopped(1) + u'w'); });
    return result + projects;
}

QStringList sourcesBelow(const QString &directory)
{
    QStringList result;
    QStringList waiting{directory};
    int entries = 0;
    while (!waiting.isEmpty() && entries < MostEntries) {
        QDirIterator it(waiting.takeFirst(), QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks);
        while (it.hasNext() && entries < MostEntries && result.size() < MostSources) {
            const QFileInfo entry(it.next());
            ++entries;
            if (entry.isDir() && !isGenerated(QDir(entry.filePath())))
                waiting.append(entry.filePath());
            else if (entry.isFile() && hasSuffix(entry.filePath(), cppSuffixes + otherSuffixes))
                result.append(entry.absoluteFilePath());
        }
    }
    result.sort();
    return result;
}

QString createFolderProject(const QString &directory, const QString &templates)
{
    const QDir folder(directory);
    const QStringList sources = sourcesBelow(directory);
    const bool isCpp = std::ranges::any_of(sources, [](const QString &path) { return hasSuffix(path, cppSuffixes); });
    const QString kind = isCpp ? u"native/cpp/project.vnp"_s : u"native/c/project.vnp"_s;
    const QString name = folder.dirName().isEmpty() ? u"project"_s : folder.dirName();
    const QString path = folder.absoluteFilePath(name + u".vnp"_s);
    if (!writeNew(path, emptyProject(QDir(templates).filePath(kind), includeDirectories(folder, sources))))
        return {};
    Project project{QString(), QString()};
    if (!project.load(path))
        return {};
    project.addFiles(sources, nullptr);
    return project.save() ? path : QString();
}
