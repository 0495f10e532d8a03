#include "scriptrecorder.h"
#include "activity.h"
#include "callplugin.h"
#include "document.h"
#include "ibreakpoints.h"
#include "programplace.h"
#include "project.h"
#include "projectworkspace.h"
#include "scriptdirectories.h"
#include "scripthost.h"
#include "scriptreplay.h"
#include "textview.h"
#include "viewmanager.h"
#include "workspace.h"
#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace {
const auto OwnAction = u"toolsRecordScript"_s;

/// Commands whose effects are recorded instead: files and workspaces that are opened or closed, breakpoints.
bool isRecordedByEffect(const QString &action)
{
    static const QStringList actions{
        OwnAction,        u"fileOpen"_s,     u"fileExit"_s,         u"projectNew"_s,
        u"projectOpen"_s, u"projectClose"_s, u"debugBreakpoints"_s, u"debugToggleBreakpoint"_s};
    return actions.contains(action);
}

/// A name in @p directory that neither a file nor a document has.
QString unusedName(const QDir &directory, const Workspace &documents)
{
    for (int i = 1;; ++i) {
        QString name = u"recorded%1"_s.arg(i);
        const QString path = directory.filePath(name + u".py"_s);
        if (!QFileInfo::exists(path) && !documents.findDocument(path))
            return name;
    }
}

QStringList texts(const QJsonValue &value)
{
    QStringList literals;
    for (const auto &text : value.toArray())
        literals += pythonLiteral(text.toString());
    return literals;
}
} // namespace

ScriptRecorder::ScriptRecorder(Activity &activity, ScriptHost &window, Watches watches, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window), m_watches(std::move(watches))
{
    if (const QAction *action = m_window.action(OwnAction))
        connect(action, &QAction::toggled, this, &ScriptRecorder::setRecording);
    connect(&m_activity, &Activity::stateEntering, this, [this] { m_entering = true; });
    connect(&m_activity, &Activity::stateEntered, this, &ScriptRecorder::enterState);
    connect(&m_activity, &Activity::workspaceReady, this, &ScriptRecorder::workspaceReady);
    connect(&m_activity, &Activity::workspaceClosing, this, &ScriptRecorder::workspaceClosing);
}

void ScriptRecorder::setRecording(bool recording)
{
    if (!recording)
        return finish();
    m_script.clear();
    m_workspace = workspaceFile();
    takeSnapshot();
    m_recording = true;
    m_window.showMessage(tr("Recording. Choose Record Script again to stop."));
}

void ScriptRecorder::finish()
{
    note();
    add({});
    m_recording = false;
    if (m_script.isEmpty())
        m_window.showMessage(tr("Nothing was recorded."));
    else
        showSource(m_workspace);
}

void ScriptRecorder::showSource(const QString &workspace)
{
    const QString user = m_window.scriptDirectories().user;
    const QDir directory(user.isEmpty() ? QDir::homePath() : user);
    directory.mkpath(u"."_s);
    const QString name = unusedName(directory, *m_window.workspace());
    const bool shown = m_window.workspace()->openOrCreate(directory.filePath(name + u".py"_s));
    if (auto *view = shown ? qobject_cast<TextView *>(m_window.viewManager()->currentView()) : nullptr)
        view->insertText(m_script.source(name, workspace));
    m_window.showMessage(tr("The recording is in the editor."));
}

// Statements

/// Precedes @p statement, unless that is empty, by the wait for the state in which the user has made it.
void ScriptRecorder::add(const QString &statement)
{
    if (m_wait)
        m_script.add(u"replay.waitFor(%1)"_s.arg(pythonLiteral(replayStateName(*m_wait))));
    m_wait.reset();
    if (!statement.isEmpty())
        m_script.add(statement);
}

void ScriptRecorder::actionTriggered(const QAction &action)
{
    if (!m_recording)
        return;
    note();
    if (!isRecordedByEffect(action.objectName()))
        addCommand(action);
}

void ScriptRecorder::addCommand(const QAction &action)
{
    const QString name = action.objectName();
    const QString literal = pythonLiteral(name);
    if (name == "debugRunToCursor"_L1 && qobject_cast<TextView *>(m_window.viewManager()->currentView()))
        add(u"app.editor.currentDocument.gotoLine(%1)"_s.arg(m_window.currentLine()));
    if (action.isCheckable())
        add(u"replay.setChecked(%1, %2)"_s.arg(literal, action.isChecked() ? u"True"_s : u"False"_s));
    else
        add(u"replay.trigger(%1)"_s.arg(literal));
}

// Changes

void ScriptRecorder::note()
{
    if (!m_recording || m_entering)
        return;
    noteProject();
    noteFile();
    noteBreakpoints();
    noteWatches();
}

void ScriptRecorder::noteFile()
{
    const QString file = frontFile();
    if (file == m_file)
        return;
    m_file = file;
    if (QFileInfo(file).isFile())
        add(u"app.editor.openDocument(%1)"_s.arg(pythonPath(file, folder())));
}

void ScriptRecorder::noteProject()
{
    Project *project = m_activity.currentProject();
    if (!project || project == m_project)
        return;
    m_project = project;
    add(u"app.currentProject = app.projects[%1]"_s.arg(m_activity.projects().indexOf(project)));
}

/// While the target runs, only the environment itself changes breakpoints.
void ScriptRecorder::noteBreakpoints()
{
    const QList<QPointer<Project>> projects = m_activity.projects();
    const bool byUser = m_activity.state() != StateRunning && m_activity.state() != StateInitialising;
    const QStringList names = projectNames();
    for (qsizetype i = 0; i < projects.size(); ++i) {
        if (!projects[i])
            continue;
        const QString key = projects[i]->fileName();
        const Breakpoints now = breakpointsOf(*projects[i]);
        const Breakpoints before = std::exchange(m_breakpoints[key], now);
        if (byUser)
            noteBreakpointsOf(pythonProcessor(names, i), before, now);
    }
}

void ScriptRecorder::noteBreakpointsOf(const QString &processor, const Breakpoints &before, const Breakpoints &now)
{
    const auto change = [&](const QString &method, const std::pair<QString, int> &place) {
        const bool isAddress = isDisassemblyName(place.first);
        const QString file = isAddress ? u'"' + anyDisassembly() + u'"' : pythonPath(place.first, folder());
        // The line of an address is that of the environment, which counts from 1, except where it is set.
        const uint line = uint(place.second) - (isAddress && method == "setBreakpoint"_L1 ? 1 : 0);
        add(u"%1.%2(%3, %4)"_s.arg(processor, method, file).arg(line));
    };
    for (auto it = before.begin(); it != before.end(); ++it) {
        if (!now.contains(it.key()))
            change(u"removeBreakpoint"_s, it.key());
    }
    for (auto it = now.begin(); it != now.end(); ++it) {
        const int old = before.value(it.key(), BreakpointRemoved);
        if (old == *it)
            continue;
        if (old == BreakpointRemoved || *it != BreakpointDisabled)
            change(u"setBreakpoint"_s, it.key());
        if (*it == BreakpointDisabled)
            change(u"disableBreakpoint"_s, it.key());
    }
}

void ScriptRecorder::noteWatches()
{
    const QJsonObject now = m_watches();
    const QJsonObject before = std::exchange(m_knownWatches, now);
    for (const QPointer<Project> &project : m_activity.projects()) {
        const QString file = project->fileName();
        if (now.value(file) != before.value(file))
            add(u"replay.setWatches(%1, [%2])"_s.arg(pythonLiteral(project->name()),
                                                     texts(now.value(file)).join(u", "_s)));
    }
}

// States

void ScriptRecorder::takeSnapshot()
{
    skipProgramChanges();
    m_knownWatches = m_watches();
}

/// Notes the present file, project and breakpoints without recording them: the program itself may have changed them.
void ScriptRecorder::skipProgramChanges()
{
    m_file = frontFile(); // the next statement may have been shown, in the project of another processor
    m_project = m_activity.currentProject();
    m_breakpoints.clear();
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project)
            m_breakpoints.insert(project->fileName(), breakpointsOf(*project));
    }
}

void ScriptRecorder::enterState(ActivityState state, ActivityState previous)
{
    ++m_stateChanges;
    m_entering = false;
    if (!m_recording)
        return;
    if (state != StateNoWorkspace)
        skipProgramChanges();
    const auto isBusy = [](ActivityState each) { return isDebugState(each) || each == StateBuilding; };
    if (isBusy(state) || (isBusy(previous) && state == StateIdle))
        m_wait = state;
}

void ScriptRecorder::workspaceReady()
{
    if (!m_recording)
        return;
    add(u"app.openWorkspace(%1)"_s.arg(pythonLiteral(workspaceFile())));
    takeSnapshot();
}

/// The environments may already have been notified of the closing, so their breakpoints are not requested.
void ScriptRecorder::workspaceClosing()
{
    if (!m_recording)
        return;
    noteWatches();
    add(u"app.closeWorkspace()"_s);
}

// The present state of the program

QString ScriptRecorder::frontFile() const
{
    Document *document = m_window.viewManager()->currentDocument();
    return document ? document->filename() : QString();
}

QString ScriptRecorder::workspaceFile() const
{
    const ProjectWorkspace *workspace = m_activity.workspace();
    return workspace ? QFileInfo(workspace->fileName()).absoluteFilePath() : QString();
}

QString ScriptRecorder::folder() const
{
    const QString file = workspaceFile();
    return file.isEmpty() ? QString() : QFileInfo(file).absolutePath();
}

QStringList ScriptRecorder::projectNames() const
{
    QStringList names;
    for (const QPointer<Project> &project : m_activity.projects())
        names += project ? project->name() : QString();
    return names;
}

ScriptRecorder::Breakpoints ScriptRecorder::breakpointsOf(const Project &project)
{
    Breakpoints found;
    const auto breakpoints = queryPlugin<IBreakpoints>(project.executionInterface());
    for (const BreakpointRecord &record : askPlugin<&IBreakpoints::breakpoints>(breakpoints)) {
        if (!record.locations.isEmpty())
            found.insert({record.locations.first().file, record.locations.first().line}, record.state);
    }
    return found;
}
