#include "projectfilecheck.h"
#include "activity.h"
#include "messages.h"
#include "navigator.h"
#include "project.h"
#include "projectworkspace.h"
#include "windowservices.h"
#include <QDir>
#include <QFileInfo>
#include <QScopedValueRollback>

bool ProjectFileCheck::run()
{
    if (m_running || m_activity.state() != StateIdle)
        return false;
    const QScopedValueRollback<bool> running(m_running, true); // a message box gives the window the focus back
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project && !project->isModified() && project->isNewerOnDisk() && wantsReload(project->fileName()))
            reload(project);
    }
    const QPointer<ProjectWorkspace> workspace(m_activity.workspace());
    return workspace && !workspace->isModified() && workspace->isNewerOnDisk() && wantsReload(workspace->fileName())
           && workspace;
}

bool ProjectFileCheck::wantsReload(const QString &path)
{
    const QDateTime time = QFileInfo(path).lastModified();
    if (m_fileTimes.value(path) == time)
        return false;
    m_fileTimes.insert(path, time);
    const QString question =
        QObject::tr("%1\n\nThis file has been modified outside of the editor. Do you want to reload it?")
            .arg(QDir::toNativeSeparators(path));
    return showMessage(QMessageBox::Question, m_window.dialogParent(), question, {QMessageBox::Yes, QMessageBox::No})
           == QMessageBox::Yes;
}

void ProjectFileCheck::reload(const QPointer<Project> &project)
{
    if (!project || m_activity.state() != StateIdle)
        return;
    if (!Project({}, {}).load(project->fileName()))
        return m_window.showMessage(
            QObject::tr("The project %1 could not be opened.").arg(QDir::toNativeSeparators(project->fileName())));
    m_activity.reloadProject(project);
    m_window.navigator()->showWorkspace();
}
