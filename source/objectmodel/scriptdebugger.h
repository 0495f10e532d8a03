#pragma once
#include "scriptobject.h"
#include "scripttypes.h"
class ProjectWorkspace;

/// The debugger in scripts (`app.debugger`): the commands for all processors of a workspace, its processors, and the
/// handlers of events.
class ScriptDebugger : public ScriptObject
{
public:
    ScriptDebugger(ObjectModel &model, ProjectWorkspace *workspace);

    [[nodiscard]] ProjectWorkspace *workspace() const; ///< Null when it was closed.
    /// The processor of the current project; None if it has none, or if the workspace was closed.
    [[nodiscard]] PythonReference currentProcessor();
    [[nodiscard]] PythonReference processors(); ///< Always the same object.

private:
    const QPointer<ProjectWorkspace> m_workspace;
    PythonReference m_processors;
};

[[nodiscard]] py::object bindDebugger();
