#include "sessionkeeper.h"
#include "activity.h"
#include "applicationpaths.h"
#include "document.h"
#include "project.h"
#include "projectworkspace.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <QFileInfo>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {
const auto LastWorkspaceKey = u"Session/Workspace"_s;

/// The files of @p session whose views have been closed.
Session closedSince(Session session, ViewManager &viewManager)
{
    QStringList open;
    for (View *view : viewManager.views())
        open.append(view->document()->filename());
    Session closed;
    for (int i = 0; i < session.files.size(); ++i) {
        if (open.removeOne(session.files[i].path))
            continue;
        if (i == session.active)
            closed.active = int(closed.files.size());
        closed.files.append(session.files[i]);
    }
    return closed;
}

/// The file that opens @p workspace again: its own, or that of its project if it could not be saved.
QString pathToOpen(const ProjectWorkspace &workspace)
{
    const bool isSaved = QFileInfo::exists(workspace.fileName()) || workspace.count() == 0;
    return isSaved ? workspace.fileName() : workspace.project(0)->fileName();
}
} // namespace

SessionKeeper::SessionKeeper(Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window), m_store(stateDirectory().filePath(u"sessions"_s))
{
    connect(&activity, &Activity::workspaceReady, this, &SessionKeeper::restoreFiles);
    connect(&activity, &Activity::workspaceReady, this,
            [this] { rememberWorkspace(pathToOpen(*m_activity.workspace())); });
    connect(&activity, &Activity::workspaceClosing, this, &SessionKeeper::keepOpenFiles);
}

void SessionKeeper::restoreLastFiles()
{
    if (m_enabled && !m_skipped)
        restore(m_store.load(QString()));
}

void SessionKeeper::restore(const Session &session, OpenFiles openFiles)
{
    restoreSession(session, *m_window.workspace(), *m_window.viewManager(), openFiles);
    Q_EMIT filesRestored();
}

QString SessionKeeper::lastWorkspace() const
{
    return m_enabled && !m_skipped ? m_window.settings().value(LastWorkspaceKey).toString() : QString();
}

void SessionKeeper::restoreFiles()
{
    if (!m_enabled)
        return;
    const Session session = m_store.load(m_activity.workspace()->fileName());
    for (const SessionPart &part : std::as_const(m_parts))
        part.restore(session.parts.value(part.name));
    restore(session);
}

Session SessionKeeper::openSession() const
{
    Session session = currentSession(*m_window.viewManager());
    if (!m_activity.workspace())
        return session;
    for (const SessionPart &part : m_parts)
        session.parts.insert(part.name, part.value());
    return session;
}

/// Does nothing while the window closes, because its views are closed before the workspace.
void SessionKeeper::keepOpenFiles()
{
    if (m_closing)
        return;
    save(m_activity.workspace()->fileName(), openSession());
    rememberWorkspace({});
}

/// At once: the program may end without closing its window.
void SessionKeeper::rememberWorkspace(const QString &path) const
{
    if (m_enabled)
        m_window.settings().setValue(LastWorkspaceKey, path);
}

void SessionKeeper::save(const QString &workspace, const Session &session) const
{
    if (m_enabled && !m_store.save(workspace, session))
        qWarning("SessionKeeper::save: the open files cannot be remembered");
}

void SessionKeeper::beginClosing()
{
    const ProjectWorkspace *workspace = m_activity.workspace();
    m_closingSession = openSession();
    m_closingWorkspace = workspace ? workspace->fileName() : QString();
    m_closingPath = workspace ? pathToOpen(*workspace) : QString();
    m_closingView = m_window.viewManager()->currentView();
    m_closing = true;
}

void SessionKeeper::cancelClosing()
{
    m_closing = false;
    restore(closedSince(m_closingSession, *m_window.viewManager()), OpenFiles::GetFurtherView);
    if (m_closingView)
        m_window.viewManager()->activateView(m_closingView, true);
}

void SessionKeeper::endClosing()
{
    m_closing = false;
    if (!m_enabled || (m_skipped && m_closingWorkspace.isEmpty()))
        return;
    save(m_closingWorkspace, m_closingSession);
    rememberWorkspace(m_closingPath);
}
