#pragma once
#include "session.h"
#include <QObject>
#include <QPointer>
class Activity;
class View;
class WindowServices;

/// Stores which files are open in each workspace, and which workspace and files were open when the program ended.
class SessionKeeper : public QObject
{
    Q_OBJECT
public:
    /// Both arguments outlive this object.
    SessionKeeper(Activity &activity, WindowServices &window, QObject *parent = nullptr);

    /// From now on nothing is stored or opened again: the command line has named the files to open.
    void disable() { m_enabled = false; }
    /// Opens the files that were open when the program ended without a workspace.
    void restoreLastFiles();
    /// The workspace that was open when the program ended; empty for none, and if sessions are disabled.
    [[nodiscard]] QString lastWorkspace() const;

    /// The window is about to close its views: the next start opens the files that are open now.
    void beginClosing();
    /// The user has cancelled: opens again what has been closed since beginClosing().
    void cancelClosing();
    void endClosing(); ///< Everything is closed.

private:
    void keepOpenFiles();
    void restoreFiles();
    void save(const QString &workspace, const Session &session) const;

    Activity &m_activity;
    WindowServices &m_window;
    SessionStore m_store;
    bool m_enabled = true;
    bool m_closing = false;
    Session m_closingSession;
    QString m_closingWorkspace;   ///< its file; empty for none
    QPointer<View> m_closingView; ///< the current one
};
