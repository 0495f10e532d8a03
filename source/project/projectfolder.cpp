#include "projectfolder.h"
#include "project.h"
#include "projectfile.h"
#include "projectxmlreader.h"
#include "projectxmlwriter.h"
#include "varnelassert.h"
using namespace Qt::StringLiterals;

ProjectFolder::~ProjectFolder()
{
    // Deletes single folders without recursion: a deep tree must not need a deep stack.
    std::vector<ProjectFolder *> branch{this};
    while (true) {
        ProjectFolder *folder = branch.back();
        if (ProjectFolder *child = folder->m_folders.takeOwned(folder, nullptr)) {
            branch.push_back(child);
            continue;
        }
        if (folder == this)
            break;
        branch.pop_back();
        delete folder;
    }
    while (const ProjectFile *file = m_files.takeOwned(this, nullptr))
        delete file;
    if (m_listings > 0)
        Project::forget(this);
}

QList<ProjectFolder *> ProjectFolder::withSubfolders()
{
    QList<ProjectFolder *> result;
    QList<ProjectFolder *> pending{this};
    while (!pending.isEmpty()) {
        ProjectFolder *folder = pending.takeLast();
        result += folder;
        const QList<ProjectFolder *> &children = folder->m_folders.items();
        std::copy(children.rbegin(), children.rend(), std::back_inserter(pending));
    }
    return result;
}

void ProjectFolder::addFolder(ProjectFolder *folder, bool prepend)
{
    insertFolder(folder, prepend ? 0 : AtEnd);
}

void ProjectFolder::insertFolder(ProjectFolder *folder, qsizetype place)
{
    VARNEL_ASSERT(folder);
    if (!folder)
        return;
    VARNEL_ASSERT_TEXT(!m_folders.contains(folder), "m_folders.find(folder) == -1");
    const bool isRing = wouldContainItself(folder, this);
    VARNEL_ASSERT(!isRing);
    if (isRing)
        return; // a folder in itself would be walked for ever
    insert(folder, place);
    if (m_project) {
        Q_EMIT m_project->folderAdded(this, folder);
        m_project->setModified(true);
    }
}

void ProjectFolder::removeFolder(ProjectFolder *folder)
{
    VARNEL_ASSERT(folder);
    if (!folder)
        return;
    VARNEL_ASSERT_TEXT(m_folders.contains(folder), "m_folders.find(folder) >= 0");
    if (m_folders.remove(folder))
        folder->setParent(nullptr);
    if (m_project) {
        Q_EMIT m_project->folderRemoved(this, folder);
        m_project->setModified(true);
    }
}

void ProjectFolder::addFile(ProjectFile *file)
{
    insertFile(file, AtEnd);
}

void ProjectFolder::insertFile(ProjectFile *file, qsizetype place)
{
    VARNEL_ASSERT(file);
    if (!file)
        return;
    VARNEL_ASSERT_TEXT(!m_files.contains(file), "m_files.find(file) == -1");
    insert(file, place);
    if (m_project) {
        Q_EMIT m_project->fileAdded(this, file);
        m_project->setModified(true);
    }
}

void ProjectFolder::removeFile(ProjectFile *file)
{
    VARNEL_ASSERT(file);
    if (!file)
        return;
    VARNEL_ASSERT_TEXT(m_files.contains(file), "m_files.find(file) >= 0");
    if (m_files.remove(file))
        file->setFolder(nullptr);
    if (m_project) {
        Q_EMIT m_project->fileRemoved(this, file);
        m_project->setModified(true);
    }
}

void ProjectFolder::rename(const QString &newName)
{
    VARNEL_ASSERT(newName.length() > 0);
    m_name = newName;
    if (m_project) {
        Q_EMIT m_project->folderRenamed(this, newName);
        m_project->setModified(true);
    }
}

void ProjectFolder::setExtensions(const QStringList &extensions)
{
    m_extensions = extensions;
    if (m_project)
        m_project->setModified(true);
}

void ProjectFolder::setProject(Project *project)
{
    if (!project)
        return;
    for (ProjectFolder *folder : withSubfolders()) {
        folder->m_project = project;
        for (ProjectFile *file : folder->m_files.items())
            file->setProject(project);
    }
}

void ProjectFolder::rebase(const QString &from, const Project &to, bool staysInOther)
{
    for (ProjectFile *file : m_files.items())
        file->rebase(from, to, staysInOther || file->listings() > 1);
    for (ProjectFolder *folder : m_folders.items())
        folder->rebase(from, to, staysInOther || folder->listings() > 1);
}

void ProjectFolder::read(ProjectXmlReader &xml)
{
    m_name = xml.attribute("name"_L1);
    ProjectFolder *folder = this;
    for (int depth = 1; depth > 0 && !xml.hasError();) {
        if (!xml.readNextStartElement()) {
            folder = folder->m_parent;
            --depth;
        } else if (xml.isAt("file"_L1)) {
            auto *file = new ProjectFile;
            folder->insert(file, AtEnd);
            file->read(xml);
        } else if (xml.isAt("folder"_L1)) {
            auto *child = new ProjectFolder(xml.attribute("name"_L1));
            folder->insert(child, AtEnd);
            folder = child;
            if (++depth > MaximumDepth)
                xml.raiseError(u"Folders are nested too deeply."_s);
        } else if (xml.isAt("extension"_L1)) {
            folder->m_extensions += xml.sharedAttribute("name"_L1);
            xml.skipCurrentElement();
        } else {
            xml.skipForeignElement();
        }
    }
}

void ProjectFolder::write(ProjectXmlWriter &xml) const
{
    xml.startElement("folder"_L1);
    xml.attribute("name"_L1, m_name);
    for (const QString &extension : m_extensions) {
        xml.startElement("extension"_L1);
        xml.attribute("name"_L1, extension);
        xml.endElement();
    }
    for (const ProjectFolder *folder : m_folders.items())
        folder->write(xml);
    for (const ProjectFile *file : m_files.items())
        file->write(xml);
    xml.endElement();
}

bool ProjectFolder::isChildOf(const ProjectFolder *parent, const Project *project) const
{
    return m_parent == parent && (parent || m_project == project);
}

void ProjectFolder::insert(ProjectFolder *folder, qsizetype place)
{
    m_folders.insert(folder, place);
    folder->setProject(m_project);
    folder->setParent(this);
}

void ProjectFolder::insert(ProjectFile *file, qsizetype place)
{
    m_files.insert(file, place);
    file->setProject(m_project);
    file->setFolder(this);
}

/// Searches the lists below @p folder, because the parent pointers above @p target may not agree with them.
bool wouldContainItself(ProjectFolder *folder, const ProjectFolder *target)
{
    return target && folder->withSubfolders().contains(target);
}
