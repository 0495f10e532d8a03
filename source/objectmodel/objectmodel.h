#pragma once
#include <QObject>
class ScriptHost;

/// The root object of the script interface. It uses the main window through its host.
class ObjectModel : public QObject
{
    Q_OBJECT
public:
    /// @p host must outlive the model.
    explicit ObjectModel(ScriptHost &host);

    /// Triggers the main window's action @p name, even if it is disabled; a checkable action keeps its state. Returns
    /// false if there is no such action.
    ///
    /// The command of the action has finished when this returns, including the event loops of its dialogs.
    bool doAction(const QString &name);

Q_SIGNALS:
    void triggerAction();

private:
    ScriptHost &m_host;
};
