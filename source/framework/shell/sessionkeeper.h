#pragma once
#include "session.h"
#include <functional>
#include <QObject>
#include <QPointer>
class Activity;
class View;
class WindowServices;

/// What a part of the window keeps with the session of a workspace. The value is undefined where nothing was kept.
struct SessionPart
{
    QString name; ///< in the file
    std::function<QJsonValue()> value;
    std::function<void(const QJsonValue &)> restore;
};

/// Stores which files are open in each workspace, and which workspace and files were open when the program ended.
class SessionKeeper : public QObject
{
    Q_OBJECT
public:
    /// Both arguments outlive this object.
    SessionKeeper(Activity &activity, WindowServices &window, QObject *parent = nullptr);

    /// The parts of a workspace are restored when it is opened.
    void addPart(const SessionPart &part) { m_parts.append(part); }
    /// From now on nothing is stored or opened again: a test driver decides what is open.
    void disable() { m_enabled = false; }
    /// The command line has named what to open: what was open at the last exit stays closed. It is still remembered if
    /// no workspace is opened in this run.
    void skipLastRun() { m_skipped = true; }
    /// Opens the files that were open when the program ended without a workspace.
    void restoreLastFiles();
    /// The workspace that was open when the program ended; empty for none, and if it is not to be opened again.
    [[nodiscard]] QString lastWorkspace() const;

    /// The window is about to close its views: the next start opens the files that are open now.
    void beginClosing();
    /// The user has cancelled: opens again what has been closed since beginClosing().
    void cancelClosing();
    void endClosing(); ///< Everything is closed.

Q_SIGNALS:
    void filesRestored(); ///< The files of a session are open again.

private:
    void keepOpenFiles();
    void restore(const Session &session, const QStringList &open = {});
    void restoreFiles();
    [[nodiscard]] Session openSession() const;
    void save(const QString &workspace, const Session &session) const;

    Activity &m_activity;
    WindowServices &m_window;
    SessionStore m_store;
    QList<SessionPart> m_parts;
    bool m_enabled = true;
    bool m_skipped = false;
    bool m_closing = false;
    Session m_closingSession;
    QString m_closingWorkspace;   ///< its file; empty for none
    QPointer<View> m_closingView; ///< the current one
};
