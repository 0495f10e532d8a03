#include "builddecisions.h"
#include "project.h"
#include "projectworkspace.h"
#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

QString compileText(const QString &pattern, const QString &file)
{
    const QString name =
        file.isEmpty() ? QCoreApplication::translate("MainWindow", "file") : QFileInfo(file).fileName();
    return QString(pattern).replace("%1"_L1, name);
}

Project *compilingProject(const ProjectWorkspace *workspace, const QString &file)
{
    return workspace ? workspace->projectsContainingFile(file).value(0) : nullptr;
}

bool mayCompile(ActivityState state, const QString &file, const Project *project)
{
    return state != StateBuilding && !file.isEmpty() && project && project->buildInterface();
}

QString buildMatch(const Project &project)
{
    return project.properties()->property(u"buildMatch"_s, project.currentConfiguration(), false);
}
