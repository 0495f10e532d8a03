#include "scriptapp.h"
#include "activity.h"
#include "handlerattribute.h"
#include "project.h"
#include "projectcollection.h"
#include "projectworkspace.h"
#include "scriptdebugger.h"
#include "scriptdialogs.h"
#include "scripteditor.h"
#include "scriptevents.h"
#include "scriptmacros.h"
#include "scriptoutputwindow.h"
#include "scriptproject.h"
#include "scriptwidgets.h"
#include <limits>
using namespace Qt::StringLiterals;

namespace {
void processEvents(const ScriptApp &, long time)
{
    requireMainThread();
    handleEvents(std::chrono::milliseconds(eventTime(time)));
}
} // namespace

int eventTime(long time)
{
    constexpr long Default = 3000;
    return int(std::min<long>(time < 0 ? Default : time, std::numeric_limits<int>::max()));
}

// Methods

void ScriptApp::doAction(const QString &name) const
{
    if (!model().doAction(name))
        raiseNothing();
}

void ScriptApp::openWorkspace(const QString &path) const
{
    if (!model().host().replaceWorkspace(path))
        raisePython(PyExc_OSError, u"Cannot open workspace '%1'"_s.arg(path));
}

void ScriptApp::closeWorkspace() const
{
    if (!model().host().closeOpenWorkspace())
        raisePython(PyExc_OSError, u"Could not close workspace"_s);
}

void ScriptApp::saveWorkspace() const
{
    if (!model().activity().workspace())
        raisePython(PyExc_RuntimeError, u"No workspace is open"_s);
    const QString failure = model().saveWorkspace();
    if (!failure.isNull())
        raisePython(PyExc_OSError, failure);
}

// Projects

/// The object of the open workspace in @p kept, which may be that of an earlier one; null if none is open.
template <typename T>
static PythonReference currentObject(ObjectModel &model, PythonReference &kept)
{
    ProjectWorkspace *workspace = model.activity().workspace();
    const auto isCurrent = [&] { return py::cast<T &>(py::handle(kept.get())).workspace() == workspace; };
    if (kept && !(workspace && isCurrent()))
        kept.reset();
    if (workspace && !kept)
        kept = newScriptObject<T>(model, workspace);
    return newPythonReference(kept.get());
}

PythonReference ScriptApp::projects()
{
    return currentObject<ProjectCollection>(model(), m_projects);
}

PythonReference ScriptApp::debugger()
{
    return currentObject<ScriptDebugger>(model(), m_debugger);
}

PythonReference ScriptApp::objectOf(Project &project)
{
    const PythonReference collection = projects();
    return collection ? py::cast<ProjectCollection &>(py::handle(collection.get())).objectOf(project) : nullptr;
}

PythonReference ScriptApp::currentProject()
{
    Project *project = model().activity().currentProject();
    return project ? objectOf(*project) : nullptr;
}

/// The projects of a workspace are compared by name.
void ScriptApp::setCurrentProject(const py::handle &value) const
{
    if (!py::isinstance<ScriptProject>(value))
        raisePython(PyExc_TypeError, u"Project expected"_s);
    ProjectWorkspace *workspace = model().activity().workspace();
    if (!workspace)
        raisePython(PyExc_RuntimeError, u"No workspace is open"_s);
    const QString name = py::cast<ScriptProject &>(value).name();
    for (const QPointer<Project> &project : model().activity().projects()) {
        if (project->name() != name)
            continue;
        if (!project->isActive())
            raisePython(PyExc_AttributeError, u"Project is not active"_s);
        return workspace->setCurrentProject(project);
    }
    raisePython(PyExc_RuntimeError, u"Project not found in workspace"_s);
}

// The type: the order of its methods and attributes is the one in which they are listed

namespace {
void defineMethods(py::class_<ScriptApp> &type)
{
    type.def("processEvents", processEvents, py::arg("time") = 0, py::pos_only(),
             "processEvents([time]) - processes UI events");
    type.def("doAction", &ScriptApp::doAction, py::arg("actionName"), py::pos_only(),
             "doAction(actionName) - performs a menu or toolbar action. Not supported");
    defineDialogMethods(type);
    defineMacroMethods(type);
    type.def("openWorkspace", &ScriptApp::openWorkspace, py::arg("filename"), py::pos_only(),
             "openWorkspace(filename) - opens a workspace file");
    type.def("closeWorkspace", &ScriptApp::closeWorkspace, "closeWorkspace() - closes the workspace");
    type.def("saveWorkspace", &ScriptApp::saveWorkspace, "saveWorkspace() - saves the workspace");
    defineWidgetMethods(type);
}

void defineAttributes(py::class_<ScriptApp> &type)
{
    type.def_property_readonly(
        "state", [](const ScriptApp &app) { return app.model().state(); }, "The current application state");
    type.def_property("currentProject", &ScriptApp::currentProject, &ScriptApp::setCurrentProject,
                      "The currently active project [RW]");
    type.def_property_readonly("projects", &ScriptApp::projects,
                               "A list of projects in the currently-open workspace [R]");
    type.def_property_readonly(
        "editor", [](const ScriptApp &app) { return newScriptObject<ScriptEditor>(app.model()); },
        "The editor object [R]");
    type.def_property_readonly(
        "outputWindow", [](const ScriptApp &app) { return newScriptObject<ScriptOutputWindow>(app.model()); },
        "The Python output window [R]");
    type.def_property_readonly("debugger", &ScriptApp::debugger,
                               "The debugger object. This is 'None' if no workspace is loaded [R]");
    defineHandler(type, "onCurrentProjectChanged", "Event handler called when current project changes [RW]");
    defineHandler(type, "onWorkspaceLoaded", "Event handler called after workspace loaded successfully[RW]");
}
} // namespace

py::object bindApp()
{
    auto type = newScriptType<ScriptApp>("App", "The root of the Varnel object model. A single instance of this object "
                                                "called 'app' is available at program startup.");
    defineMethods(type);
    defineAttributes(type);
    return type;
}
