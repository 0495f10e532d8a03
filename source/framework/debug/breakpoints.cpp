#include "breakpoints.h"
#include "activity.h"
#include "breakpointdialog.h"
#include "callplugin.h"
#include "debugdecisions.h"
#include "debugmarkers.h"
#include "document.h"
#include "environmentkey.h"
#include "messages.h"
#include "project.h"
#include "projectworkspace.h"
#include "viewinterfaces.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
constexpr int MessageMilliseconds = 20000; ///< time to read it after the message box

/// For the status bar: the message box says nothing of what to change.
QString reasonOfMissingBreakpoints(const Project &project)
{
    return project.executionInterface()
               ? Breakpoints::tr("The execution environment of the project '%1' does not support breakpoints.")
                     .arg(project.name())
               : Breakpoints::tr("The project '%1' has no execution environment that could set breakpoints.")
                     .arg(project.name());
}
} // namespace

Breakpoints::Breakpoints(Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window), m_lines(activity, window)
{
    connect(&m_lines, &BreakpointLines::moved, this, &Breakpoints::refreshMarkers);
}

void Breakpoints::edit()
{
    if (!m_activity.workspace())
        return inform(tr("Cannot edit breakpoints.\n\nOpen a project that supports breakpoints first."));
    BreakpointDialog(m_activity, m_window.dialogParent(), u"breakpointDialog"_s).exec();
    refreshMarkers();
}

void Breakpoints::toggleAtCursor()
{
    View *view = m_window.viewManager()->currentView();
    auto *navigation = viewInterface<ITextNavigation>(view);
    if (!navigation || !viewInterface<IViewWithMarkers>(view))
        return;
    int line = 0;
    int column = 0;
    navigation->getCursorPosition(&line, &column);
    toggle(line + 1);
}

void Breakpoints::toggle(int line)
{
    Document *document = m_window.viewManager()->currentDocument();
    if (!m_activity.workspace() || !document)
        return;
    if (m_activity.stateOfWork() == StateRunning)
        return inform(tr("Breakpoints cannot be modified while the processor is running.\n\nPlease pause the processor "
                         "and try again."));
    const ProgramPlace place =
        ProgramPlace::fromDocument(document->filename(), m_lines.programLine(document->filename(), line));
    const QString file = place.withoutEnvironment().fileName();
    Activity::Environment environment;
    const QPointer<Project> project = place.isDisassembly() ? nullptr : projectOfDocument(file);
    if (place.isDisassembly())
        environment = shareInterface(environmentOfKey(place.environmentKey()));
    else if (project)
        environment = shareInterface(project->executionInterface());
    const auto breakpoints = queryPlugin<IBreakpoints>(environment.get());
    if (!breakpoints) {
        if (project)
            m_window.showMessage(reasonOfMissingBreakpoints(*project), MessageMilliseconds);
        return inform(tr("The breakpoint cannot be set.\n\nBreakpoints are not supported in this file."));
    }
    const auto records = askPlugin<&IBreakpoints::breakpoints>(breakpoints);
    const int state = toggledBreakpoint(breakpointStateAt(records, {file, place.line()}));
    int result = -1;
    readPlugin<&IBreakpoints::setBreakpoint>(result, breakpoints, file, place.line(), state);
    if (result != 0)
        inform(tr("The breakpoint could not be modified."));
}

void Breakpoints::refreshMarkers()
{
    if (m_activity.workspace())
        refreshBreakpointMarkers(m_activity, *m_window.viewManager(), &m_lines);
}

QString Breakpoints::toolTip(const QString &file, int line) const
{
    return m_activity.workspace() ? breakpointToolTip(m_activity, file, m_lines.programLine(file, line)) : QString();
}

Project *Breakpoints::projectOfDocument(const QString &file) const
{
    const QList<Project *> containing = m_activity.workspace()->projectsContainingFile(file);
    return containing.isEmpty() ? m_activity.currentProject() : containing.first();
}

void Breakpoints::inform(const QString &text) const
{
    showInformation(m_window.dialogParent(), text);
}
