#include "objectmodel.h"
#include "scripthost.h"
#include <QAction>

ObjectModel::ObjectModel(ScriptHost &host) : m_host(host) {}

bool ObjectModel::doAction(const QString &name)
{
    QAction *action = m_host.action(name);
    if (!action)
        return false;
    // For one shot: an action that the first one's dialog has in its loop must not run the first one again.
    connect(
        this, &ObjectModel::triggerAction, action, [action] { Q_EMIT action->triggered(); }, Qt::SingleShotConnection);
    Q_EMIT triggerAction();
    return true;
}
