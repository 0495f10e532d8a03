#include "objectmodel.h"
#include "scripthost.h"
#include <QAction>

ObjectModel::ObjectModel(ScriptHost &host) : m_host(host) {}

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
