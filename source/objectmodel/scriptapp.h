#pragma once
#include "scriptobject.h"
#include "scripttypes.h"
class ProjectCollection;

/// The object "app" of the module, from which scripts reach all others.
class ScriptApp : public ScriptObject
{
public:
    explicit ScriptApp(ObjectModel &model) : ScriptObject(model) {}

    void doAction(const QString &name) const;
    void openWorkspace(const QString &path) const;
    void closeWorkspace() const;
    void saveWorkspace() const;

    [[nodiscard]] PythonReference currentProject();
    void setCurrentProject(const py::handle &value) const;
    /// The collection of the open workspace, always the same object; null if none is open.
    [[nodiscard]] PythonReference projects();
    [[nodiscard]] PythonReference debugger();                 ///< The same for the debugger.
    [[nodiscard]] PythonReference objectOf(Project &project); ///< Its object in projects(); null if none is open.

private:
    PythonReference m_projects;
    PythonReference m_debugger;
};

/// For how many milliseconds app.processEvents(@p time) handles events; 0: only those that wait.
[[nodiscard]] int eventTime(long time);

[[nodiscard]] py::object bindApp();
