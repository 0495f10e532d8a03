#include "gnuproject.h"
#include "propertytable.h"
using namespace Qt::StringLiterals;

GnuProject::GnuProject(const ToolChain &toolChain, const QString &option, const Registry &registry)
    : m_registry(registry), m_reader(toolChain, option, [this](const QString &project, const QString &configuration) {
        return libraryOf(project, configuration);
    })
{}

GnuProject::~GnuProject()
{
    m_registry->removeOne(this);
}

std::optional<QString> GnuProject::libraryOf(const QString &project, const QString &configuration) const
{
    const GnuProject *found = find(project);
    if (!found)
        return std::nullopt;
    const BuildDescription target = found->describeTarget(configuration);
    if (target.target != BuildDescription::Target::Library)
        return std::nullopt;
    return target.absolute(target.output);
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
    if (m_project && !m_registry->contains(this))
        m_registry->append(this);
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
        return; // also for projects that use each other
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

GnuProject *GnuProject::find(const QString &name) const
{
    for (GnuProject *project : std::as_const(*m_registry)) {
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
