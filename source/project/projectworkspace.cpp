#include "projectworkspace.h"
#include "project.h"
#include "projectpath.h"
#include "projectxmlreader.h"
#include "projectxmlwriter.h"
#include "varnelassert.h"
#include "wholefile.h"
#include <QFileInfo>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

/// The paths in a workspace file, in its order; nothing if it is not XML.
std::optional<QStringList> readPaths(ProjectXmlReader &xml)
{
    QStringList paths;
    xml.readRoot("workspace"_L1);
    xml.noteForeignAttributes(0);
    while (xml.readNextStartElement()) {
        if (xml.isAt("project"_L1)) {
            paths += xml.attribute("path"_L1);
            xml.skipCurrentElement();
        } else {
            xml.skipForeignElement();
        }
    }
    return xml.finish() ? std::optional(paths) : std::nullopt;
}

} // namespace

ProjectWorkspace::ProjectWorkspace(const QString &fileName) : m_fileName(fileName)
{
    if (!fileName.isEmpty())
        setLocation(fileName);
}

ProjectWorkspace::~ProjectWorkspace()
{
    deleteProjects();
}

void ProjectWorkspace::deleteProjects()
{
    m_current = -1;
    std::exchange(m_projects, {}).clear(); // plug-ins that call back during deletion find an empty list
}

void ProjectWorkspace::setLocation(const QString &fileName)
{
    const QFileInfo info(fileName);
    m_name = info.completeBaseName();
    m_dir.setPath(info.path());
}

bool ProjectWorkspace::load(const QString &fileName)
{
    deleteProjects();
    m_fileName = fileName;
    const QDateTime modified = QFileInfo(fileName).lastModified(); // before: what is written meanwhile is newer
    const std::optional<QByteArray> bytes = readFile(fileName);
    ProjectXmlReader xml(bytes.value_or(QByteArray()));
    const std::optional<QStringList> paths = bytes ? readPaths(xml) : std::nullopt;
    if (!paths)
        return false;
    m_stamp = {modified, xml.hasForeignContent()};
    setLocation(fileName);
    for (const QString &path : *paths) {
        auto project = std::make_unique<Project>(QString(), QString());
        project->load(QDir::isRelativePath(path) ? QDir::cleanPath(m_dir.filePath(path)) : path);
        append(project.release());
    }
    m_current = paths->isEmpty() ? -1 : 0;
    m_modified = false;
    return true;
}

bool ProjectWorkspace::save()
{
    ProjectXmlWriter xml;
    xml.startElement("workspace"_L1);
    for (const auto &project : m_projects) {
        xml.startElement("project"_L1);
        xml.attribute("path"_L1, relativePath(project->directory().filePath(project->name() + u".vnp"_s)));
        xml.endElement();
    }
    xml.endElement();
    if (!writeProjectFile(m_fileName, xml.xml(), m_stamp))
        return false;
    setModified(false);
    return true;
}

bool ProjectWorkspace::isNewerOnDisk() const
{
    return m_stamp.isOlderThan(m_fileName);
}

QString ProjectWorkspace::relativePath(const QString &path) const
{
    return ::relativePath(m_dir, path);
}

void ProjectWorkspace::setModified(bool modified)
{
    m_modified = modified;
    if (modified)
        Q_EMIT workspaceChanged();
}

Project *ProjectWorkspace::project(int index) const
{
    VARNEL_ASSERT(index >= 0 && index < count());
    return index >= 0 && index < count() ? m_projects[size_t(index)].get() : nullptr;
}

Project *ProjectWorkspace::currentProject() const
{
    return m_current < 0 ? nullptr : m_projects[size_t(m_current)].get();
}

void ProjectWorkspace::setCurrentProject(int index)
{
    VARNEL_ASSERT(index >= 0 && index < count());
    if (index < 0 || index >= count() || index == m_current)
        return;
    m_current = index;
    Q_EMIT currentProjectChanged();
}

void ProjectWorkspace::setCurrentProject(const Project *project)
{
    VARNEL_ASSERT(project);
    const int index = indexOf(project);
    if (index >= 0)
        setCurrentProject(index);
}

void ProjectWorkspace::addProject(Project *project)
{
    VARNEL_ASSERT(project);
    if (!project)
        return;
    append(project);
    m_current = count() - 1;
    setModified(true);
    Q_EMIT currentProjectChanged();
}

void ProjectWorkspace::append(Project *project)
{
    m_projects.emplace_back(project);
    connect(project, &Project::activityChanged, this, &ProjectWorkspace::slotProjectActivityChanged);
}

void ProjectWorkspace::removeProject(const Project *project)
{
    VARNEL_ASSERT(project);
    const QPointer<ProjectWorkspace> alive(this); // a receiver may close the workspace or remove projects
    if (const int present = indexOf(project); present >= 0)
        Q_EMIT projectRemoving(m_projects[size_t(present)].get());
    const int index = alive ? indexOf(project) : -1;
    if (index < 0)
        return;
    const bool wasCurrent = index == m_current;
    auto removed = std::move(m_projects[size_t(index)]);
    m_projects.erase(m_projects.begin() + index);
    if (index < m_current || m_current == count())
        --m_current;
    removed.reset(); // plug-ins that call back during deletion find a consistent list
    setModified(true);
    if (wasCurrent)
        Q_EMIT currentProjectChanged();
}

QList<Project *> ProjectWorkspace::projectsContainingFile(const QString &path) const
{
    QList<Project *> result;
    for (const auto &project : m_projects) {
        if (!project->containsFile(path))
            continue;
        if (project.get() == currentProject())
            result.prepend(project.get());
        else
            result.append(project.get());
    }
    return result;
}

void ProjectWorkspace::slotProjectActivityChanged()
{
    if (currentProject() && !currentProject()->isActive()) {
        const auto active =
            std::find_if(m_projects.begin(), m_projects.end(), [](const auto &project) { return project->isActive(); });
        if (active != m_projects.end())
            setCurrentProject(active->get());
    }
    Q_EMIT projectActivityChanged();
}

int ProjectWorkspace::indexOf(const Project *project) const
{
    const auto found =
        std::find_if(m_projects.begin(), m_projects.end(), [&](const auto &each) { return each.get() == project; });
    return found == m_projects.end() ? -1 : int(found - m_projects.begin());
}
