#include "population.h"
#include "activity.h"
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
    const auto interface = queryPlugin<IProjectPopulate>(project ? project->buildInterface() : nullptr);
    if (!interface)
        return;
    const QString configuration = project->currentConfiguration();
    runPlugin<&IProjectPopulate::populate>(interface, configuration);
}

bool populateWorkspace(const Activity &activity)
{
    bool offered = false;
    for (const QPointer<Project> &project : activity.projects()) { // plug-ins may remove projects
        if (!project)
            continue;
        if (queryPlugin<IProjectPopulate>(project->buildInterface()))
            offered = true;
        if (isSet(project->properties(), u"projectAutoPopulate"_s, *project))
            populate(activity.currentProject());
    }
    return offered;
}

bool hasProjectScripts(const Activity &activity)
{
    return std::ranges::any_of(activity.projects(), [](const auto &project) { return !scriptsOf(*project).isEmpty(); });
}

void runProjectScripts(const Activity &activity, const std::function<void(const QString &path)> &runFile)
{
    const QPointer<ProjectWorkspace> workspace(activity.workspace()); // scripts may close it
    for (const QPointer<Project> &project : activity.projects()) {
        const QStringList scripts = project ? scriptsOf(*project) : QStringList();
        for (const QString &script : scripts) {
            if (!workspace || !project)
                break;
            workspace->setCurrentProject(project);
            runFile(script);
        }
    }
    if (workspace && activity.currentProject())
        workspace->setCurrentProject(0);
}
