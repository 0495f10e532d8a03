#include "nextstatement.h"
#include "activity.h"
#include "breakpoints.h"
#include "callplugin.h"
#include "currentlocation.h"
#include "debugmarkers.h"
#include "document.h"
#include "environmentkey.h"
#include "idisassembly.h"
#include "inextstatement.h"
#include "messages.h"
#include "project.h"
#include "viewinterfaces.h"
#include "viewmanager.h"
#include "windowservices.h"
#include "workspace.h"
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
constexpr int ClearDelay = 500; ///< in ms; a step takes less, and its marker should not flicker
} // namespace

NextStatement::NextStatement(Activity &activity, WindowServices &window, Breakpoints &breakpoints, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window), m_breakpoints(breakpoints)
{
    m_clearTimer.setObjectName(u"markerTimer"_s);
    m_clearTimer.setSingleShot(true);
    m_clearTimer.setInterval(ClearDelay);
    connect(&m_clearTimer, &QTimer::timeout, this, &NextStatement::clearMarker);
}

void NextStatement::show()
{
    if (m_activity.currentEnvironment() && !goToLocation())
        showInformation(m_window.dialogParent(),
                        tr("Cannot display next statment.\n\nNo corresponding source file found."));
    refreshMarker();
}

/// A place without source is shown in the disassembly.
bool NextStatement::goToLocation()
{
    const Activity::Environment environment = m_activity.currentEnvironment();
    QString file = currentFile();
    if (isForeignDisassembly(file, environment.get()))
        file.clear();
    int line = 0;
    if (!currentLocation(environment.get(), file, line) || !openSource(file)) {
        viewDisassembly();
        file = currentFile();
        if (!isDisassemblyName(file) || isForeignDisassembly(file, environment.get())
            || !currentLocation(environment.get(), file, line))
            return false;
    }
    if (auto *navigation = viewInterface<ITextNavigation>(m_window.viewManager()->currentView()))
        navigation->gotoLine(line);
    return true;
}

bool NextStatement::openSource(const QString &file)
{
    const QPointer<Project> project = m_activity.currentProject();
    if (!project || isDisassemblyName(file))
        return false;
    const QString path = project->absolutePath(file);
    if (!QFileInfo(path).isFile())
        return false;
    const bool wasOpen = m_window.workspace()->findDocument(path);
    if (!m_window.openFile(path, false))
        return false;
    if (!wasOpen)
        m_breakpoints.refreshMarkers();
    return true;
}

void NextStatement::viewDisassembly()
{
    const Activity::Environment environment = m_activity.currentEnvironment();
    if (!queryPlugin<IDisassembly>(environment.get()))
        return;
    const QString name = disassemblyName(environment.get(), m_activity.currentProject()->name());
    const bool wasOpen = m_window.workspace()->findDocument(name);
    m_window.workspace()->openDocument(name, true);
    if (!wasOpen && m_activity.state() == StatePaused && currentFile() == name)
        goToInstruction();
    refreshMarker();
    m_breakpoints.refreshMarkers();
}

/// In the disassembly in front. A plug-in that is asked may close it.
void NextStatement::goToInstruction()
{
    QString file = currentFile();
    int line = 0;
    if (!currentLocation(m_activity.currentEnvironment().get(), file, line) || !isDisassemblyName(file))
        return;
    if (auto *navigation = viewInterface<ITextNavigation>(m_window.viewManager()->currentView()))
        navigation->gotoLine(line);
}

void NextStatement::refreshDisassemblies()
{
    for (const QPointer<View> &view : m_window.viewManager()->views().guarded()) {
        if (view && isDisassemblyName(view->document()->filename()))
            view->update(nullptr, false);
    }
}

void NextStatement::showSource()
{
    const Activity::Environment environment = m_activity.currentEnvironment();
    QString file = currentFile();
    int line = 0;
    const bool known = environment && currentLocation(environment.get(), file, line);
    auto *markers = viewInterface<IViewWithMarkers>(m_window.viewManager()->currentView());
    if (!known || !markers || !markers->hasMarker(line, IViewWithMarkers::ExecutionMarkers))
        return;
    file.clear(); // requests the place in the source
    if (currentLocation(environment.get(), file, line))
        (void)openSource(file);
}

/// The environment reports where the program is then, and why it cannot be moved.
void NextStatement::setAtCursor()
{
    const Activity::Environment environment = m_activity.currentEnvironment();
    const QString file = currentFile();
    if (m_activity.state() != StatePaused || file.isEmpty() || isForeignDisassembly(file, environment.get()))
        return;
    const auto mover = queryPlugin<INextStatement>(environment.get());
    if (askPlugin<&INextStatement::setNextStatement>(mover, file, m_window.currentLine()))
        return;
    showInformation(m_window.dialogParent(),
                    mover ? tr("The next statement cannot be set here.\n\nPlease see Debug Output window for details.")
                          : tr("The next statement cannot be set.\n\nThe execution environment does not support it."));
}

void NextStatement::refreshMarker()
{
    refreshExecutionMarker(m_activity.currentProject(), *m_window.viewManager());
}

void NextStatement::clearMarker()
{
    m_clearTimer.stop();
    clearExecutionMarker(*m_window.viewManager());
}

void NextStatement::closeOrphanedDisassemblies()
{
    for (const QPointer<View> &view : m_window.viewManager()->views().guarded()) {
        const uint key = view ? keyOfDisassembly(view->document()->filename()) : 0;
        if (key && !environmentOfKey(key))
            view->close();
    }
}

QString NextStatement::currentFile() const
{
    return currentDebugPath(m_activity, *m_window.viewManager());
}
