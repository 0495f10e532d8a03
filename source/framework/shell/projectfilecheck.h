#pragma once
#include <QDateTime>
#include <QHash>
#include <QPointer>
class Activity;
class Project;
class WindowServices;

/// Offers to reload project and workspace files that other programs have changed, if they have no unsaved changes: once
/// for each new time on disk. Saving asks before it overwrites a newer file, so one with changes is safe.
class ProjectFileCheck
{
public:
    /// Both arguments outlive this object.
    ProjectFileCheck(Activity &activity, WindowServices &window) : m_activity(activity), m_window(window) {}

    /// Asks about the projects and reloads them. Returns whether the user wants the workspace to be opened again. Does
    /// nothing while it is asking already, or during a build or a debug session.
    [[nodiscard]] bool run();

private:
    [[nodiscard]] bool wantsReload(const QString &path);
    void reload(const QPointer<Project> &project);

    Activity &m_activity;
    WindowServices &m_window;
    QHash<QString, QDateTime> m_fileTimes; ///< the modification times that were asked about, by path
    bool m_running = false;
};
