#include "scriptdebugger.h"
#include "activity.h"
#include "handlerattribute.h"
#include "processorcollection.h"
#include "projectworkspace.h"
#include "pythonnumber.h"

ScriptDebugger::ScriptDebugger(ObjectModel &model, ProjectWorkspace *workspace)
    : ScriptObject(model), m_workspace(workspace)
{}

ProjectWorkspace *ScriptDebugger::workspace() const
{
    return m_workspace;
}

PythonReference ScriptDebugger::currentProcessor()
{
    Project *project = m_workspace ? model().activity().currentProject() : nullptr;
    if (!project)
        return nullptr;
    const PythonReference collection = processors();
    return py::cast<ProcessorCollection &>(py::handle(collection.get())).objectOf(*project);
}

PythonReference ScriptDebugger::processors()
{
    if (!m_processors)
        m_processors = newScriptObject<ProcessorCollection>(model(), m_workspace.data());
    return newPythonReference(m_processors.get());
}

namespace {
void addHandlers(py::class_<ScriptDebugger> &type)
{
    defineHandler(type, "onRestart", "Event handler called when the debugger is restarted [RW]");
    defineHandler(type, "onAttach", "Event handler called when the debugger is attched [RW]");
    defineHandler(type, "onPreAttach",
                  "Event handler called before the debugger is attached, but after the user has selected Debug/Attach "
                  "[RW]");
    defineHandler(type, "onBreakpointHit", "Event handler called after a breakpoint is hit [RW]");
    defineHandler(type, "onStopped", "Event handler called when the debugger is stopped [RW]");
}
} // namespace

py::object bindDebugger()
{
    auto type = newScriptType<ScriptDebugger>("Debugger", "An object providing access to the Varnel debugger");
    type.def(
        "stop", [](const ScriptDebugger &self) { self.model().stop(); }, "Stops the debugger.");
    type.def(
        "restart", [](const ScriptDebugger &self) { self.model().restart(); }, "Restarts the debugger.");
    type.def(
        "attach", [](const ScriptDebugger &self) { self.model().attach(); },
        "Attaches the debugger. Takes Varnel into debugging mode.");
    type.def_property(
        "uiUpdatesEnabled", [](const ScriptDebugger &self) { return int(self.model().updatesEnabled()); },
        [](const ScriptDebugger &self, py::handle value) { self.model().setUpdatesEnabled(asLong(value.ptr()) != 0); },
        "Set to 0 to disable UI updates, 1 to enable UI updates [RW] ");
    type.def_property_readonly("currentProcessor", &ScriptDebugger::currentProcessor,
                               "Processor object representing the current active processor [R]");
    type.def_property_readonly("processors", &ScriptDebugger::processors,
                               "Collection of 'Processor' objects under control of the debugger [R]");
    addHandlers(type);
    return type;
}
