#include "objectmodel.h"
#include "activity.h"
#include "dockedwidgets.h"
#include "project.h"
#include "projectworkspace.h"
#include "pythonruntime.h"
#include "scripthost.h"
#include "scriptmodule.h"
#include "scripttexts.h"
#include <QAction>

using namespace Qt::StringLiterals;

ObjectModel::ObjectModel(Activity &activity, ScriptHost &host)
    : m_activity(activity), m_host(host), m_dockedWidgets(std::make_unique<DockedWidgets>(host))
{}

ObjectModel::~ObjectModel() = default;

bool ObjectModel::startScripting()
{
    if (!startPython())
        return false;
    m_app = offerScriptModule(*this);
    offerTexts();
    return true;
}

bool ObjectModel::doAction(const QString &name)
{
    QAction *action = m_host.action(name);
    if (!action)
        return false;
    // A single-shot connection: an action that a script triggers while a dialog of the first action is open must not
    // run the first action again.
    connect(
        this, &ObjectModel::triggerAction, action, [action] { Q_EMIT action->triggered(); }, Qt::SingleShotConnection);
    Q_EMIT triggerAction();
    return true;
}

int ObjectModel::state() const
{
    switch (m_activity.state()) {
    case StateNoWorkspace:
    case StateIdle:
        return 0;
    case StateBuilding:
        return 1;
    default:
        return 2;
    }
}

QString ObjectModel::saveWorkspace()
{
    const QPointer<ProjectWorkspace> workspace(m_activity.workspace()); // questions may be asked
    for (const QPointer<Project> &project : m_activity.projects()) {
        const QString name = project ? project->name() : QString();
        if (project && !saveProject(project))
            return u"The project '%1' could not be saved"_s.arg(name);
    }
    const bool saved = workspace && (!workspace->isNewerOnDisk() || m_host.mayOverwriteNewer(workspace->fileName()))
                       && workspace && workspace->save();
    return saved ? QString() : u"The workspace could not be saved"_s;
}

bool ObjectModel::saveProject(Project *project)
{
    const QPointer<Project> alive(project);
    if (!project->openedOK()) // it is empty
        return false;
    return (!project->isNewerOnDisk() || m_host.mayOverwriteNewer(project->fileName())) && alive && alive->save();
}

void ObjectModel::stop()
{
    m_host.debugStop();
}

void ObjectModel::restart()
{
    m_host.debugRestart();
}

void ObjectModel::attach()
{
    m_host.debugAttach();
}

void ObjectModel::notifyDebugWindows(int parts)
{
    if (m_updatesEnabled)
        m_host.updateDebugWindows(parts);
}

void ObjectModel::setUpdatesEnabled(bool enabled)
{
    if (enabled == m_updatesEnabled)
        return;
    m_updatesEnabled = enabled;
    notifyDebugWindows(AllParts);
}
