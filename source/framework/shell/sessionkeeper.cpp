#include "sessionkeeper.h"
#include "activity.h"
#include "applicationpaths.h"
#include "document.h"
#include "projectworkspace.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {
const auto LastWorkspaceKey = u"Session/Workspace"_s;

/// With an entry for each view.
QStringList openFiles(ViewManager &viewManager)
{
    QStringList open;
    for (View *view : viewManager.views())
        open.append(view->document()->filename());
    return open;
}

/// The files of @p session whose views have been closed, where @p open are the open ones.
Session closedSince(Session session, QStringList open)
{
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
} // namespace

SessionKeeper::SessionKeeper(Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window), m_store(stateDirectory().filePath(u"sessions"_s))
{
    connect(&activity, &Activity::workspaceReady, this, &SessionKeeper::restoreFiles);
    connect(&activity, &Activity::workspaceClosing, this, &SessionKeeper::keepOpenFiles);
}

void SessionKeeper::restoreLastFiles()
{
    if (m_enabled && !m_skipped)
        restore(m_store.load(QString()));
}

void SessionKeeper::restore(const Session &session, const QStringList &open)
{
    restoreSession(session, *m_window.workspace(), *m_window.viewManager(), open);
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
    if (!m_closing)
        save(m_activity.workspace()->fileName(), openSession());
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
    m_closingView = m_window.viewManager()->currentView();
    m_closing = true;
}

void SessionKeeper::cancelClosing()
{
    m_closing = false;
    const QStringList open = openFiles(*m_window.viewManager());
    restore(closedSince(m_closingSession, open), open);
    if (m_closingView)
        m_window.viewManager()->activateView(m_closingView, true);
}

void SessionKeeper::endClosing()
{
    m_closing = false;
    if (!m_enabled || (m_skipped && m_closingWorkspace.isEmpty()))
        return;
    save(m_closingWorkspace, m_closingSession);
    m_window.settings().setValue(LastWorkspaceKey, m_closingWorkspace);
}
