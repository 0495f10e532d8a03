#pragma once
#include <QObject>
class ScriptHost;

/// The one root of what scripts see. It reaches the main window through its host.
class ObjectModel : public QObject
{
    Q_OBJECT
public:
    /// @p host must outlive the model.
    explicit ObjectModel(ScriptHost &host);

    /// Has the main window's action @p name tell that it was chosen, even if it is disabled; one that can be checked
    /// keeps its state. Returns false if there is no such action.
    ///
    /// The action's command has run when this returns, event loops of its dialogs included.
    bool doAction(const QString &name);

Q_SIGNALS:
    void triggerAction();

private:
    ScriptHost &m_host;
};
