#include "gnuproject.h"
#include "propertytable.h"
using namespace Qt::StringLiterals;

namespace {

QList<GnuProject *> &workspaceProjects()
{
    static QList<GnuProject *> projects;
    return projects;
}

/// The library of a project, by an absolute path.
std::optional<QString> libraryOf(const QString &project, const QString &configuration)
{
    const GnuProject *found = GnuProject::find(project);
    if (!found)
        return std::nullopt;
    const BuildDescription target = found->describeTarget(configuration);
    if (target.target != BuildDescription::Target::Library)
        return std::nullopt;
    return target.absolute(target.output);
}

} // namespace

GnuProject::GnuProject(const ToolChain &toolChain, const QString &option) : m_reader(toolChain, option, libraryOf) {}

GnuProject::~GnuProject()
{
    workspaceProjects().removeOne(this);
}

void GnuProject::setProject(IProject *project)
{
    m_project = shareInterface(project);
    const InterfacePtr<IProjectProperties> store(project->properties());
    for (const QString &configuration : store->configurations()) {
        if (store->property(PropertyKey::Match, configuration, false).isNull())
            store->setProperty(PropertyKey::Match, m_reader.defaultOf(PropertyKey::Match), configuration);
    }
}

void GnuProject::joinWorkspace()
{
    if (m_project && !workspaceProjects().contains(this))
        workspaceProjects() += this;
}

BuildDescription GnuProject::describe(const QString &configuration, QStringList &problems) const
{
    return m_reader.read(m_project.get(), configuration, problems);
}

BuildDescription GnuProject::describeTarget(const QString &configuration) const
{
    return m_reader.readTarget(m_project.get(), configuration);
}

QString GnuProject::option(const QString &key, const QString &configuration) const
{
    QStringList ignored;
    const InterfacePtr<IProjectProperties> store(m_project->properties());
    return PropertyReader(store.get(), configuration, m_reader.defaults(), ignored).text(key);
}

QList<GnuProject *> GnuProject::buildOrder(const QString &configuration)
{
    QList<GnuProject *> visited;
    QList<GnuProject *> order;
    appendBuildOrder(configuration, visited, order);
    return order;
}

void GnuProject::appendBuildOrder(const QString &configuration, QList<GnuProject *> &visited,
                                  QList<GnuProject *> &order)
{
    if (visited.contains(this))
        return; // also when projects use each other in a ring
    visited += this;
    for (const QString &used : usedProjects(configuration)) {
        if (GnuProject *project = find(used))
            project->appendBuildOrder(configuration, visited, order);
    }
    order += this;
}

QStringList GnuProject::missingLibraries(const QString &configuration) const
{
    QStringList missing;
    for (const QString &used : usedProjects(configuration)) {
        if (!libraryOf(used, configuration))
            missing += used;
    }
    return missing;
}

GnuProject *GnuProject::find(const QString &name)
{
    for (GnuProject *project : workspaceProjects()) {
        if (project->name() == name)
            return project;
    }
    return nullptr;
}

QStringList GnuProject::usedProjects(const QString &configuration) const
{
    QStringList ignored;
    const InterfacePtr<IProjectProperties> store(m_project->properties());
    return PropertyReader(store.get(), configuration, m_reader.defaults(), ignored).list(PropertyKey::UsedProjects);
}
