#include "population.h"
#include "callplugin.h"
#include "ibuildenvironment.h"
#include "iprojectpopulate.h"
#include "project.h"
#include "projectfile.h"
#include "projectworkspace.h"
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
bool isSet(const ProjectProperties *properties, const QString &key, const Project &project)
{
    return properties->property(key, project.currentConfiguration(), false) == "1"_L1;
}

/// Paths of the files of @p project that are to be run; the files may change while they run.
QStringList scriptsOf(const Project &project)
{
    QStringList paths;
    const QList<ProjectFile *> files = project.files(u"py"_s, nullptr);
    for (const ProjectFile *file : files) {
        if (isSet(file->properties(), u"runAtProjectLoad"_s, project))
            paths.append(project.absolutePath(file->path()));
    }
    return paths;
}
} // namespace

void populate(const Project *project)
{
    const auto interface = queryInterface<IProjectPopulate>(project ? project->buildInterface() : nullptr);
    if (!interface)
        return;
    const QString configuration = project->currentConfiguration();
    runPlugin("IProjectPopulate::populate", [&] { interface->populate(configuration); });
}

bool populateWorkspace(const ProjectWorkspace *workspace)
{
    const QPointer<const ProjectWorkspace> alive(workspace); // plug-ins may do anything
    bool offered = false;
    for (int i = 0; alive && i < alive->count(); ++i) {
        const Project *project = alive->project(i);
        if (queryInterface<IProjectPopulate>(project->buildInterface()))
            offered = true;
        if (isSet(project->properties(), u"projectAutoPopulate"_s, *project))
            populate(alive->currentProject());
    }
    return offered;
}

void runProjectScripts(ProjectWorkspace *workspace, const std::function<void(const QString &path)> &runFile)
{
    const QPointer<ProjectWorkspace> alive(workspace); // so may scripts
    for (int i = 0; alive && i < alive->count(); ++i) {
        const QPointer<Project> project = alive->project(i);
        const QStringList scripts = scriptsOf(*project);
        for (const QString &script : scripts) {
            if (!alive || !project)
                break;
            alive->setCurrentProject(project);
            runFile(script);
        }
    }
    if (alive && alive->count() > 0)
        alive->setCurrentProject(0);
}
