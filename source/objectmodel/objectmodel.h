#pragma once
#include "pythonreference.h"
#include <memory>
#include <QObject>
class Activity;
class DockedWidgets;
class Project;
class ScriptHost;

/// The root of the script interface: offers the module "varnel" to scripts, and has what the objects in it do to the
/// program. It uses the main window through its host.
class ObjectModel : public QObject
{
    Q_OBJECT
public:
    /// Sets of debugger windows that are refreshed together.
    enum DebugPart { DataWindows = 1, RegisterWindow = 2, NextStatement = 4, AllParts = 7 };

    /// Both arguments outlive the model.
    ObjectModel(Activity &activity, ScriptHost &host);
    ~ObjectModel() override;

    /// Starts Python and offers the module, whose object "app" stands for this model. False if Python cannot be
    /// started.
    bool startScripting();

    [[nodiscard]] Activity &activity() const { return m_activity; }
    [[nodiscard]] ScriptHost &host() const { return m_host; }
    [[nodiscard]] DockedWidgets &dockedWidgets() { return *m_dockedWidgets; }
    [[nodiscard]] _object *app() const { return m_app.get(); } ///< The script object; null before startScripting().

    /// Triggers the main window's action @p name, even if it is disabled; a checkable action keeps its state. Returns
    /// false if there is no such action.
    ///
    /// The command of the action has finished when this returns, including the event loops of its dialogs.
    bool doAction(const QString &name);

    [[nodiscard]] int state() const; ///< 0: no activity, 1: a build is running, 2: a debug session.
    /// Saves each project and then the workspace. Returns the message about the first failure; null if there is none.
    [[nodiscard]] QString saveWorkspace();
    /// False if it cannot be written, or if the user does not agree to overwrite a newer file.
    [[nodiscard]] bool saveProject(Project *project);

    // The debugger. A script may switch off the updates of windows while it changes much.
    void stop();
    void restart();
    void attach();
    void notifyDebugWindows(int parts); ///< A script has changed values: a set of DebugPart.
    void setUpdatesEnabled(bool enabled);
    [[nodiscard]] bool updatesEnabled() const { return m_updatesEnabled; }

Q_SIGNALS:
    void triggerAction();

private:
    Activity &m_activity;
    ScriptHost &m_host;
    bool m_updatesEnabled = true;
    const std::unique_ptr<DockedWidgets> m_dockedWidgets;
    PythonReference m_app;
};
