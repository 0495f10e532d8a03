#include "gnubuild.h"
#include "buildcheck.h"
#include "iproject.h"
#include "propertytable.h"
#include "sizereport.h"
#include "sourcefinder.h"
#include "uptodate.h"
#include <QDir>
#include <QPointer>
using namespace Qt::StringLiterals;

namespace {
const QString ShowSizes = u"sizes"_s;
}

GnuBuild::GnuBuild(const ToolChain &toolChain, const GnuProject::Registry &projects)
    : m_toolChain(toolChain), m_projects(projects)
{
    connect(&m_run, &BuildRun::line, this, &GnuBuild::feedback);
    // The receiver may release this object, so none of its functions may be on the stack then.
    connect(&m_run, &BuildRun::finished, this, &GnuBuild::buildEnded, Qt::QueuedConnection);
    connect(&m_sizeTool, &ToolProcess::line, this, [this](const QString &line) { m_sizes += line + u'\n'; });
    connect(&m_sizeTool, &ToolProcess::finished, this, &GnuBuild::showSizes);
}

bool GnuBuild::initialise(IBuildEvents *events, const QString &option)
{
    m_events = shareInterface(events);
    m_option = option;
    if (isProgram(u"ninja"_s))
        return true;
    feedback(ninjaMissing());
    return false;
}

void GnuBuild::setProject(IProject *project)
{
    m_project = std::make_unique<GnuProject>(m_toolChain, m_option, m_projects);
    m_project->setProject(project);
}

/// The host waits for the end of the command that runs.
bool GnuBuild::isBusy()
{
    if (m_run.isRunning())
        feedback(tr("The last command has not ended yet. The new one is not carried out."));
    return m_run.isRunning();
}

void GnuBuild::compile(const QString &file, const QString &configuration)
{
    if (isBusy())
        return;
    m_run.addCompile(m_project.get(), configuration, file);
    start();
}

bool GnuBuild::canCompile(const QString &file, const QString &)
{
    return languageOf(file) != Language::None;
}

void GnuBuild::build(const QStringList &configurations, bool rebuild)
{
    if (isBusy())
        return;
    for (const QString &configuration : configurations)
        m_run.addBuild(m_project.get(), configuration, rebuild);
    start();
}

void GnuBuild::clean(const QStringList &configurations)
{
    if (isBusy())
        return;
    for (const QString &configuration : configurations)
        m_run.addClean(m_project.get(), configuration);
    start();
}

void GnuBuild::stop()
{
    m_run.stop();
}

bool GnuBuild::isUpToDate(const QString &configuration)
{
    m_declined.clear();
    const bool upToDate = allBuilt(configuration);
    if (!upToDate)
        m_declined = configuration;
    return upToDate;
}

/// The event loop runs meanwhile, so projects may be closed.
bool GnuBuild::allBuilt(const QString &configuration) const
{
    const QList<GnuProject *> order = m_project->buildOrder(configuration);
    const QList<QPointer<GnuProject>> projects(order.begin(), order.end());
    for (const QPointer<GnuProject> &project : projects) {
        QStringList problems;
        if (!project)
            return false;
        const BuildDescription description = project->describe(configuration, problems);
        if (!problems.isEmpty() || !isBuilt(description))
            return false;
    }
    return true;
}

void GnuBuild::buildForDebug(const QString &configuration)
{
    if (isBusy())
        return;
    const BuildDescription target = m_project->describeTarget(configuration);
    const bool exists = QFileInfo::exists(target.absolute(target.output));
    if (m_declined == configuration && exists)
        feedback(tr("'%1' is used as it is, older than its sources.").arg(target.output));
    else
        m_run.addBuild(m_project.get(), configuration, false);
    start();
}

void GnuBuild::start()
{
    m_declined.clear();
    m_run.start();
}

void GnuBuild::buildEnded(bool success)
{
    const auto events = shareInterface(m_events.get()); // stays valid if the host releases this object
    events->buildFinished(success);
}

void GnuBuild::populate(const QString &configuration)
{
    IProject *project = m_project->project();
    const QStringList extensions =
        m_project->option(PropertyKey::PopulateExtensions, configuration).split(u';', Qt::SkipEmptyParts);
    QStringList added;
    const QSet<QString> known = ProjectReader::filePaths(project);
    for (const QString &path : findSources(project->basePath(), extensions, buildDirectories())) {
        if (!known.contains(path))
            added += path;
    }
    if (!added.isEmpty())
        project->addFiles(added);
    feedback(tr("Files added to the project '%1': %2").arg(project->name(), QString::number(added.size())));
}

QStringList GnuBuild::buildDirectories() const
{
    QStringList directories;
    const InterfacePtr<IProjectProperties> store(m_project->project()->properties());
    for (const QString &configuration : store->configurations()) {
        const BuildDescription target = m_project->describeTarget(configuration);
        directories += target.absolute(target.buildDirectory);
    }
    return directories;
}

QString GnuBuild::propertyDefinitions()
{
    return propertyDefinitionsXml(tr("Build (%1)").arg(m_toolChain.name), {}, propertyPages(m_toolChain));
}

QList<ExtensionCommand> GnuBuild::commands()
{
    const BuildDescription target = m_project->describeTarget(m_project->project()->currentConfiguration());
    const bool exists = QFileInfo::exists(target.absolute(target.output));
    return {{ShowSizes, tr("Show Sizes"),
             tr("Shows on the page \"Build\" how much flash and RAM the sections of the program take."),
             exists && !m_run.isRunning() && !m_sizeTool.isRunning(), false}};
}

void GnuBuild::execute(const QString &id)
{
    if (id != ShowSizes || m_run.isRunning() || m_sizeTool.isRunning())
        return;
    const BuildDescription target = m_project->describeTarget(m_project->project()->currentConfiguration());
    m_sizes.clear();
    feedback(tr("Sizes of '%1':").arg(target.output));
    m_sizeTool.start(sectionsCommand(target));
}

void GnuBuild::showSizes(bool success)
{
    const BuildDescription target = m_project->describeTarget(m_project->project()->currentConfiguration());
    const QString text = success ? sizeReport(readSections(m_sizes), readRegionsOf(target)) : m_sizes;
    for (const QString &line : text.split(u'\n', Qt::SkipEmptyParts))
        feedback(line);
}

QList<GeneratedFile> GnuBuild::makefiles()
{
    QList<GeneratedFile> files;
    for (GnuProject *project : withUsedProjects()) {
        QStringList problems;
        const QString text = project->makefile(problems);
        for (const QString &problem : std::as_const(problems))
            feedback(problem);
        if (!text.isEmpty())
            files += {project->makefilePath(), text};
    }
    return files;
}

/// The project, and then those that it uses in any configuration.
QList<GnuProject *> GnuBuild::withUsedProjects() const
{
    QList<GnuProject *> projects = {m_project.get()};
    const InterfacePtr<IProjectProperties> store(m_project->project()->properties());
    for (const QString &configuration : store->configurations()) {
        for (GnuProject *used : m_project->buildOrder(configuration)) {
            if (!projects.contains(used))
                projects += used;
        }
    }
    return projects;
}

void GnuBuild::setQueryInterface(IQueryPluginInterface *)
{
    m_project->joinWorkspace();
}

void GnuBuild::workspaceChanged()
{
    const QString configuration = m_project->project()->currentConfiguration();
    for (const QString &missing : m_project->missingLibraries(configuration))
        feedback(
            tr("The project '%1' needs the library project '%2' in the workspace.").arg(m_project->name(), missing));
}

void GnuBuild::feedback(const QString &line) const
{
    m_events->feedback(line + u'\n');
}
