#pragma once
#include <QJsonObject>
#include <QObject>
class Activity;
class BreakpointLines;
class Project;

/// The breakpoints of all projects, as they are kept with the session of a workspace: execution environments are
/// deleted with their project, and their breakpoints with them. Those of texts with changes are kept for both ends:
/// that the text is saved, and that its changes are dropped.
class StoredBreakpoints : public QObject
{
    Q_OBJECT
public:
    /// Both arguments outlive this object.
    StoredBreakpoints(Activity &activity, const BreakpointLines &lines, QObject *parent = nullptr);

    [[nodiscard]] QJsonObject value() const; ///< of the open workspace
    /// Gives the environments what value() has returned for this workspace. Anything else is ignored.
    void restore(const QJsonObject &stored);

Q_SIGNALS:
    void restored();
    /// An environment has refused a breakpoint. @p text is a line for the user.
    void refused(const QString &text);

private:
    void restore(Project *project, const QJsonObject &stored);

    Activity &m_activity;
    const BreakpointLines &m_lines;
    QJsonObject m_stored; ///< also what projects without an environment had
};
