#include "gnuproject.h"
#include "propertytable.h"
#include <QDir>
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

std::optional<ProjectReader::Library> GnuProject::libraryOf(const QString &project, const QString &configuration) const
{
    const GnuProject *found = find(project);
    return found ? found->m_reader.readLibrary(found->project(), configuration) : std::nullopt;
}

void GnuProject::setProject(IProject *project)
{
    m_project = shareInterface(project);
}

void GnuProject::joinWorkspace()
{
    if (m_project && !m_registry->contains(this))
        m_registry->append(this);
}

BuildDescription GnuProject::describe(const QString &configuration, QStringList &problems) const
{
    const InterfacePtr<IProjectProperties> store(m_project->properties());
    const QStringList configurations = store->configurations();
    if (!configurations.contains(configuration)) // of a library, which is built in the configuration of its user
        problems += tr("The project '%1' has no configuration '%2'.").arg(name(), configuration);
    BuildDescription description = m_reader.read(m_project.get(), configuration, problems);
    if (const QString problem = collision(description); !problem.isEmpty())
        problems += problem;
    return description;
}

QString GnuProject::collision(const BuildDescription &description) const
{
    const QString directory = description.absolute(description.configurationDirectory);
    const QString output = description.absolute(description.output);
    for (const GnuProject *other : std::as_const(*m_registry)) {
        if (other == this)
            continue;
        const InterfacePtr<IProjectProperties> store(other->m_project->properties());
        for (const QString &configuration : store->configurations()) {
            const BuildDescription target = other->describeTarget(configuration);
            if (target.absolute(target.configurationDirectory) == directory)
                return tr("The projects '%1' and '%2' both build in the directory '%3'. Give one of them another build "
                          "directory.")
                    .arg(name(), other->name(), directory);
            if (target.absolute(target.output) == output)
                return tr("The projects '%1' and '%2' both build the file '%3'. Give one of them another output name.")
                    .arg(name(), other->name(), output);
        }
    }
    return {};
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

QString GnuProject::makefilePath() const
{
    return directory() + u'/' + makefileName(name(), directory());
}

QString GnuProject::makefile(QStringList &problems)
{
    Makefile makefile{name(), makefileName(name(), directory()), {}};
    const InterfacePtr<IProjectProperties> store(m_project->properties());
    for (const QString &configuration : store->configurations()) {
        QStringList reasons;
        const MakefilePart part = makefilePart(configuration, reasons);
        reasons += makefileProblems(makefile, part);
        if (reasons.isEmpty())
            makefile.parts += part;
        else
            problems += tr("The configuration '%1' of the project '%2' is left out.").arg(configuration, name());
        problems += reasons;
    }
    return makefile.parts.isEmpty() ? QString() : makefile.text();
}

MakefilePart GnuProject::makefilePart(const QString &configuration, QStringList &problems)
{
    MakefilePart part{describe(configuration, problems), {}};
    for (const GnuProject *used : buildOrder(configuration)) {
        if (used == this)
            continue;
        part.used +=
            {QDir(directory()).relativeFilePath(used->directory()), makefileName(used->name(), used->directory())};
        useRelativePaths(part.description, used->directory());
    }
    return part;
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
