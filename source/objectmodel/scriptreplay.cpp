#include "scriptreplay.h"
#include "activity.h"
#include "project.h"
#include "projectworkspace.h"
#include "scriptevents.h"
#include "scripthost.h"
#include <algorithm>
#include <QAction>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
constexpr std::chrono::milliseconds Interval{20}; ///< between two looks at the state
constexpr double DefaultWait = 60;                ///< seconds

const QStringList &stateNames()
{
    static const QStringList names{u"closed"_s,  u"idle"_s,   u"building"_s, u"starting"_s,
                                   u"running"_s, u"paused"_s, u"finished"_s, u"unknown"_s};
    return names;
}

bool isSameFile(const QString &first, const QString &second)
{
    return QFileInfo(first).absoluteFilePath() == QFileInfo(second).absoluteFilePath();
}
} // namespace

QString replayStateName(ActivityState state)
{
    return stateNames().value(state);
}

ScriptReplay::ScriptReplay(ObjectModel &model, ReplayHooks hooks)
    : ScriptObject(model), m_hooks(std::move(hooks)), m_changes(m_hooks.stateChanges())
{}

int ScriptReplay::changes() const
{
    (void)model(); // raises an exception without a window, with which the hooks end
    return m_hooks.stateChanges();
}

QAction *ScriptReplay::availableAction(const QString &name) const
{
    QAction *action = model().host().action(name);
    if (!action)
        raisePython(PyExc_KeyError, u"There is no command '%1'"_s.arg(name));
    if (!action->isEnabled())
        raisePython(PyExc_RuntimeError, u"The command '%1' is not available in the state '%2'"_s.arg(
                                            name, replayStateName(model().activity().state())));
    return action;
}

void ScriptReplay::trigger(const QString &name)
{
    (void)availableAction(name);
    m_changes = changes();
    (void)model().doAction(name);
}

void ScriptReplay::setChecked(const QString &name, bool checked) const
{
    QAction *action = availableAction(name);
    if (!action->isCheckable())
        raisePython(PyExc_ValueError, u"The command '%1' cannot be switched on and off"_s.arg(name));
    action->setChecked(checked);
}

void ScriptReplay::waitFor(const QString &name, double seconds)
{
    if (!stateNames().contains(name))
        raisePython(PyExc_ValueError, u"There is no state '%1'"_s.arg(name));
    const auto state = [this] { return replayStateName(model().activity().state()); };
    const QDeadlineTimer deadline(qint64(std::clamp(seconds, 0.0, 1e9) * 1000));
    while (state() != name || changes() == m_changes) {
        if (deadline.hasExpired())
            raisePython(PyExc_TimeoutError, u"The program has not become '%1' in %2 seconds: it is '%3'"_s.arg(
                                                name, QString::number(seconds), state()));
        handleEvents(Interval);
    }
}

void ScriptReplay::useWorkspace(const QString &path) const
{
    const ProjectWorkspace *open = model().activity().workspace();
    if (open && isSameFile(open->fileName(), path))
        return;
    if (!model().host().replaceWorkspace(path))
        raisePython(PyExc_OSError, u"Cannot open workspace '%1'"_s.arg(path));
}

QString ScriptReplay::path(const QString &relative) const
{
    const ProjectWorkspace *open = model().activity().workspace();
    if (!open)
        raisePython(PyExc_RuntimeError, u"No workspace is open"_s);
    return QDir::cleanPath(QFileInfo(open->fileName()).absoluteDir().absoluteFilePath(relative));
}

void ScriptReplay::setWatches(const QString &project, const py::list &expressions) const
{
    QStringList texts;
    for (const py::handle &expression : expressions)
        texts += expression.cast<QString>();
    for (const QPointer<Project> &open : model().activity().projects()) {
        if (open && open->name() == project)
            return m_hooks.setWatches(open->fileName(), texts);
    }
    raisePython(PyExc_KeyError, u"There is no project '%1'"_s.arg(project));
}

// The module

namespace {
py::object bindReplay()
{
    py::options options;
    options.disable_function_signatures(); // the documentation is the given text
    auto type = newScriptType<ScriptReplay>("Replay", "Carries out what the recorder has written");
    type.attr("__module__") = "varnelreplay";
    type.def("trigger", &ScriptReplay::trigger, py::arg("name"), py::pos_only(),
             "trigger(name) - performs a command; RuntimeError if it is disabled");
    type.def("setChecked", &ScriptReplay::setChecked, py::arg("name"), py::arg("checked"), py::pos_only(),
             "setChecked(name, checked) - switches a command on or off");
    type.def("waitFor", &ScriptReplay::waitFor, py::arg("state"), py::arg("seconds") = DefaultWait, py::pos_only(),
             "waitFor(state, [seconds]) - waits for a state after the last command; TimeoutError after 60 seconds");
    type.def("useWorkspace", &ScriptReplay::useWorkspace, py::arg("path"), py::pos_only(),
             "useWorkspace(path) - opens a workspace unless it is open");
    type.def("path", &ScriptReplay::path, py::arg("relative"), py::pos_only(),
             "path(relative) - a path in the folder of the open workspace");
    type.def("setWatches", &ScriptReplay::setWatches, py::arg("project"), py::arg("expressions"), py::pos_only(),
             "setWatches(project, expressions) - replaces the watches of a project");
    return type;
}

void fillReplayModule(ObjectModel &model, const ReplayHooks &hooks)
{
    static const py::handle type = bindReplay().release();
    static PyModuleDef definition;
    static const py::handle module =
        py::module_::create_extension_module("varnelreplay", nullptr, &definition).release();
    const PythonReference replay = newScriptObject<ScriptReplay>(model, hooks);
    py::setattr(module, "Replay", type);
    py::setattr(module, "replay", replay.get());
    PyDict_SetItemString(PyImport_GetModuleDict(), "varnelreplay", module.ptr());
}
} // namespace

void offerReplay(ObjectModel &model, const ReplayHooks &hooks)
{
    try {
        fillReplayModule(model, hooks);
    } catch (const std::exception &error) {
        qWarning("offerReplay: %s", error.what());
    }
}
