#include "projectsaving.h"
#include "document.h"
#include "messages.h"
#include "project.h"
#include "projectworkspace.h"
#include "wholefile.h"
#include <cerrno>
#include <QCoreApplication>
#include <QPointer>

namespace {
struct ProjectSaving
{
    Q_DECLARE_TR_FUNCTIONS(ProjectSaving)
};

/// Whether the file of @p object, a project or a workspace that is still there, may be written.
template <typename Object>
bool mayWrite(QWidget *parent, const QPointer<Object> &object, IfNewer ifNewer)
{
    return ifNewer == IfNewer::Overwrite || !object->isNewerOnDisk() || mayOverwriteNewer(parent, object->fileName());
}
} // namespace

SaveAnswer askToSaveChanges(QWidget *parent, const QString &name)
{
    return showInformation(
        parent,
        ProjectSaving::tr("You have made changes to the '%1' workspace and/or one of the projects it "
                          "contains.\n\nDo you want to save the changes?")
            .arg(name),
        {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel});
}

bool mayOverwriteNewer(QWidget *parent, const QStringList &paths)
{
    const QString question = ProjectSaving::tr("Newer versions of the following files exists on disk:\n\n%1\n\n"
                                               "Are you sure that you want to overwrite them?");
    return paths.isEmpty()
           || showInformation(parent, question.arg(paths.join(u'\n')), {QMessageBox::Ok, QMessageBox::Cancel})
                  == QMessageBox::Ok;
}

bool saveProject(QWidget *parent, Project *project, IfNewer ifNewer)
{
    const QPointer<Project> alive(project);
    if (!project)
        return true;
    if (project->openedOK() && !mayWrite(parent, alive, ifNewer))
        return false;
    errno = 0;
    if (!alive || (project->openedOK() && project->save()))
        return true;
    const QString reason = otherWriteFailure(errno);
    showWarning(parent, ProjectSaving::tr("The project '%1' could not be saved.\n\n"
                                          "Please make sure that the project file is not read-only.")
                                .arg(project->displayName())
                            + reason);
    return false;
}

bool saveWorkspace(QWidget *parent, ProjectWorkspace *workspace, IfNewer ifNewer)
{
    const QPointer<ProjectWorkspace> alive(workspace);
    if (!workspace)
        return true;
    if (!mayWrite(parent, alive, ifNewer))
        return false;
    errno = 0;
    if (!alive || workspace->save())
        return true;
    const QString reason = otherWriteFailure(errno);
    showWarning(parent, ProjectSaving::tr("The workspace could not be saved.\n\n"
                                          "Please make sure that the workspace file is not read-only.")
                            + reason);
    return false;
}
