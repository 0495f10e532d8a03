#include "project.h"
#include "ibuildenvironment.h"
#include "iexecutionenvironment.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projectpath.h"
#include "projectxmlreader.h"
#include "projectxmlwriter.h"
#include "varnelassert.h"
#include "wholefile.h"
#include <algorithm>
#include <QFileInfo>
using namespace Qt::StringLiterals;

namespace {

/// All existing projects. One list for the whole program: a child that is deleted while it is in a list may be in the
/// list of a project other than its own, and to store all its lists in each child would cost memory for each of 100,000
/// files. Never deleted, because projects may outlive static objects.
QList<Project *> &liveProjects()
{
    static auto &all = *new QList<Project *>;
    return all;
}

} // namespace

struct Project::RootAttribute
{
    QLatin1StringView name;
    QString Project::*field;
};

const Project::RootAttribute Project::rootAttributes[6] = {
    {"buildenvironment"_L1, &Project::m_buildEnvironment},
    {"buildenvironmentname"_L1, &Project::m_buildEnvironmentName},
    {"buildenvironmentoption"_L1, &Project::m_buildEnvironmentOption},
    {"executionenvironment"_L1, &Project::m_executionEnvironment},
    {"executionenvironmentname"_L1, &Project::m_executionEnvironmentName},
    {"executionenvironmentoption"_L1, &Project::m_executionEnvironmentOption},
};

Project::Project(const QString &name, const QString &directory) : m_name(name), m_dir(directory)
{
    liveProjects() += this;
}

Project::~Project()
{
    m_executionInterface.reset();
    m_buildInterface.reset();
    deleteChildren();
    liveProjects().removeOne(this);
}

bool Project::load(const QString &path)
{
    deleteChildren();
    m_properties = ProjectProperties(this);
    m_currentConfiguration.clear();
    const QFileInfo info(path);
    m_fileName = path;
    m_name = info.completeBaseName();
    m_dir.setPath(info.path());
    m_openedOK = false;

    const QDateTime modified = info.lastModified(); // before: what is written meanwhile is newer
    const std::optional<QByteArray> bytes = readFile(path);
    if (!bytes)
        return false;
    ProjectXmlReader xml(*bytes);
    QXmlStreamAttributes attributes;
    QSignalBlocker blocker(this); // viewers are created after a load
    if (!read(xml, &attributes))
        return false;
    for (const RootAttribute &attribute : rootAttributes)
        this->*attribute.field = ProjectXmlReader::valueOf(attributes, attribute.name).toString();
    m_openedOK = true;
    m_stamp = {modified, xml.hasForeignContent()};
    m_modified = true; // set by the insertions
    blocker.unblock();
    setModified(false);
    Q_EMIT contentsReplaced();
    return true;
}

QString Project::problemInXml(const QString &text)
{
    Project scratch({}, {}); // some errors are found only when folders and files are made
    ProjectXmlReader xml(text);
    QXmlStreamAttributes ignored;
    return scratch.read(xml, &ignored) ? QString()
                                       : tr("%1 (line %2)").arg(xml.errorString(), QString::number(xml.lineNumber()));
}

bool Project::loadFromXml(const QString &text)
{
    QSignalBlocker blocker(this);
    const bool wasModified = m_modified;
    deleteChildren();
    for (const QString &configuration : m_properties.configurations())
        m_properties.removeConfiguration(configuration);
    m_openedOK = false;

    ProjectXmlReader xml(text);
    QXmlStreamAttributes ignored; // the text comes from a plug-in, which must not select plug-ins
    const bool isRead = read(xml, &ignored);
    m_modified = wasModified; // marked while the signals were blocked
    blocker.unblock();
    setModified(true);
    if (!isRead)
        return false;
    m_openedOK = true;
    Q_EMIT contentsReplaced();
    return true;
}

bool Project::read(ProjectXmlReader &xml, QXmlStreamAttributes *attributes)
{
    const QString oldConfiguration = m_currentConfiguration;
    xml.readRoot("project"_L1);
    *attributes = xml.attributes();
    xml.noteForeignAttributes(std::ranges::count_if(rootAttributes, [attributes](const RootAttribute &attribute) {
        return attributes->hasAttribute(attribute.name);
    }));
    while (xml.readNextStartElement())
        readChild(xml);
    if (!xml.finish()) {
        deleteChildren();
        m_properties = ProjectProperties(this);
        m_currentConfiguration = oldConfiguration;
        return false;
    }
    if (!m_properties.hasConfigurations())
        m_properties.addConfiguration(u"Default"_s);
    if (m_currentConfiguration.isEmpty())
        m_currentConfiguration = m_properties.configurations().constFirst();
    return true;
}

void Project::readChild(ProjectXmlReader &xml)
{
    if (xml.isAt("folder"_L1)) {
        auto *folder = new ProjectFolder;
        insert(folder, AtEnd);
        folder->read(xml);
    } else if (xml.isAt("file"_L1)) {
        auto *file = new ProjectFile;
        insert(file, AtEnd);
        file->read(xml);
    } else if (xml.isAt("properties"_L1)) {
        const QString current = xml.attribute("currentconfiguration"_L1);
        if (!current.isNull())
            m_currentConfiguration = current;
        m_properties.read(xml);
    } else {
        xml.skipForeignElement();
    }
}

bool Project::isNewerOnDisk() const
{
    return m_stamp.isOlderThan(m_fileName);
}

bool Project::save()
{
    VARNEL_ASSERT(m_openedOK);
    if (isTooDeep()) {
        qWarning("Project::save: Folders are nested too deeply (%s)", qPrintable(m_fileName));
        return false;
    }
    if (!writeProjectFile(m_fileName, toXml(), m_stamp))
        return false;
    setModified(false);
    return true;
}

QString Project::toXml() const
{
    ProjectXmlWriter xml;
    xml.startElement("project"_L1);
    for (const RootAttribute &attribute : rootAttributes)
        xml.attribute(attribute.name, this->*attribute.field);
    for (const ProjectFolder *folder : m_folders.items())
        folder->write(xml);
    for (const ProjectFile *file : m_files.items())
        file->write(xml);
    xml.startElement("properties"_L1);
    xml.attribute("currentconfiguration"_L1, m_currentConfiguration);
    m_properties.write(xml);
    xml.endElement();
    xml.endElement();
    return xml.xml();
}

QString Project::displayName() const
{
    const QStringList words = m_executionEnvironmentName.split(u' ', Qt::SkipEmptyParts);
    return words.value(0) + u" - "_s + m_name;
}

QString Project::relativePath(const QString &path) const
{
    return ::relativePath(m_dir, path);
}

QString Project::absolutePath(const QString &storedPath) const
{
    return ::absolutePath(m_dir, storedPath);
}

QList<ProjectFile *> Project::files(const QString &extensions, ProjectFolder *folder) const
{
    const QStringList wanted = extensions.split(u';', Qt::SkipEmptyParts);
    QList<ProjectFile *> result;
    const auto take = [&](const ProjectChildren<ProjectFile> &files) {
        for (ProjectFile *file : files.items()) {
            if (extensions.isNull() || wanted.contains(completeExtension(file->path())))
                result += file;
        }
    };
    if (!folder)
        take(m_files);
    for (const ProjectFolder *each : folder ? folder->withSubfolders() : allFolders())
        take(each->m_files);
    return result;
}

bool Project::containsFile(const QString &path) const
{
    const QString stored = relativePath(path);
    const QString absolute = absolutePath(stored); // a file that was moved from another project may be stored so
    const QList<ProjectFile *> all = files(QString(), nullptr);
    return std::any_of(all.begin(), all.end(),
                       [&](const ProjectFile *file) { return file->path() == stored || file->path() == absolute; });
}

void Project::addFolder(ProjectFolder *folder, bool prepend)
{
    insertFolder(folder, prepend ? 0 : AtEnd);
}

void Project::insertFolder(ProjectFolder *folder, qsizetype place)
{
    VARNEL_ASSERT(folder);
    if (!folder)
        return;
    VARNEL_ASSERT_TEXT(!m_folders.contains(folder), "m_folders.find(folder) == -1");
    insert(folder, place);
    Q_EMIT folderAdded(nullptr, folder);
    setModified(true);
}

void Project::removeFolder(ProjectFolder *folder)
{
    VARNEL_ASSERT(folder);
    if (!folder)
        return;
    VARNEL_ASSERT_TEXT(m_folders.contains(folder), "m_folders.find(folder) >= 0");
    m_folders.remove(folder);
    Q_EMIT folderRemoved(nullptr, folder);
    setModified(true);
}

void Project::addFile(ProjectFile *file)
{
    insertFile(file, AtEnd);
}

void Project::insertFile(ProjectFile *file, qsizetype place)
{
    VARNEL_ASSERT(file);
    if (!file)
        return;
    VARNEL_ASSERT_TEXT(!m_files.contains(file), "m_files.find(file) == -1");
    insert(file, place);
    Q_EMIT fileAdded(nullptr, file);
    setModified(true);
}

void Project::removeFile(ProjectFile *file)
{
    VARNEL_ASSERT(file);
    if (!file)
        return;
    VARNEL_ASSERT_TEXT(m_files.contains(file), "m_files.find(file) >= 0");
    m_files.remove(file);
    Q_EMIT fileRemoved(nullptr, file);
    setModified(true);
}

void Project::moveFolder(ProjectFolder *folder, ProjectFolder *target)
{
    VARNEL_ASSERT(folder);
    if (!folder || wouldContainItself(folder, target))
        return;
    batch([&] {
        folder->parent() ? folder->parent()->removeFolder(folder) : removeFolder(folder);
        target ? target->addFolder(folder, true) : addFolder(folder, true);
    });
}

void Project::moveFile(ProjectFile *file, ProjectFolder *target)
{
    VARNEL_ASSERT(file);
    if (!file)
        return;
    batch([&] {
        file->folder() ? file->folder()->removeFile(file) : removeFile(file);
        target ? target->addFile(file) : addFile(file);
    });
}

void Project::batch(const std::function<void()> &work)
{
    m_batchPending = false;
    m_batching = true;
    work();
    m_batching = false;
    if (m_batchPending)
        Q_EMIT projectModified(m_modified);
}

void Project::addFiles(const QStringList &paths, ProjectFolder *folder)
{
    for (const QString &path : paths) {
        if (path.isEmpty())
            continue; // would be the project's directory
        const QString stored = relativePath(path);
        auto *file = new ProjectFile(fileNameOf(stored), stored);
        if (ProjectFolder *target = folder ? folder : folderFor(completeExtension(stored)))
            target->addFile(file);
        else
            addFile(file);
    }
}

ProjectFolder *Project::folderFor(const QString &extension) const
{
    for (ProjectFolder *folder : m_folders.items()) {
        for (const QString &entry : folder->m_extensions) {
            if (entry.toLower() == extension)
                return folder;
        }
    }
    return nullptr;
}

void Project::forget(const ProjectFile *file)
{
    for (Project *project : liveProjects()) {
        project->m_files.forget(file);
        for (ProjectFolder *folder : project->allFolders())
            folder->m_files.forget(file);
    }
}

void Project::forget(const ProjectFolder *folder)
{
    for (Project *project : liveProjects()) {
        project->m_folders.forget(folder);
        for (ProjectFolder *each : project->allFolders())
            each->m_folders.forget(folder);
    }
}

void Project::setCurrentConfiguration(const QString &name)
{
    if (name == m_currentConfiguration)
        return;
    m_currentConfiguration = name;
    setModified(true);
    Q_EMIT configurationChanged(name);
}

void Project::setModified(bool modified)
{
    if (modified == m_modified)
        return;
    m_modified = modified;
    if (m_batching)
        m_batchPending = true;
    else
        Q_EMIT projectModified(modified);
}

void Project::setActive(bool active)
{
    if (active == m_active)
        return;
    m_active = active;
    Q_EMIT activityChanged(active);
}

void Project::setBuildInterface(IBuildEnvironment *environment)
{
    m_buildInterface = shareInterface(environment); // the new one first: it may be the same as the old one
}

void Project::setExecutionInterface(IExecutionEnvironment *environment)
{
    ++m_executionBindings;
    m_executionInterface = shareInterface(environment);
}

void Project::deleteChildren()
{
    while (const ProjectFolder *folder = m_folders.takeOwned(nullptr, this))
        delete folder;
    while (const ProjectFile *file = m_files.takeOwned(nullptr, this))
        delete file;
}

void Project::insert(ProjectFolder *folder, qsizetype place)
{
    folder->setProject(this);
    folder->setParent(nullptr);
    m_folders.insert(folder, place);
}

void Project::insert(ProjectFile *file, qsizetype place)
{
    file->setProject(this);
    file->setFolder(nullptr);
    m_files.insert(file, place);
}

QList<ProjectFolder *> Project::allFolders() const
{
    QList<ProjectFolder *> result;
    for (ProjectFolder *folder : m_folders.items())
        result += folder->withSubfolders();
    return result;
}

/// Iterates over the levels, so that a deep tree needs no deep stack.
bool Project::isTooDeep() const
{
    QList<ProjectFolder *> level = m_folders.items();
    for (int depth = 0; depth < ProjectFolder::MaximumDepth && !level.isEmpty(); ++depth) {
        QList<ProjectFolder *> below;
        for (const ProjectFolder *folder : level)
            below += folder->m_folders.items();
        level = below;
    }
    return !level.isEmpty();
}
