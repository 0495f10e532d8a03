#pragma once
#include "activitystate.h"
#include "scriptobject.h"
#include "scripttypes.h"
#include <functional>
class QAction;

/// What the replay of a recorded script needs of the window besides the object model.
struct ReplayHooks
{
    std::function<int()> stateChanges; ///< how often the state of the program was entered so far
    /// Replaces the watches of the project in that file.
    std::function<void(const QString &projectFile, const QStringList &expressions)> setWatches;
};

/// The object "replay" of the module "varnelreplay", which recorded scripts use for what "app" does not offer. Unlike
/// app.doAction() it refuses commands that are not available.
class ScriptReplay : public ScriptObject
{
public:
    ScriptReplay(ObjectModel &model, ReplayHooks hooks);

    void trigger(const QString &name);
    void setChecked(const QString &name, bool checked) const;
    /// Runs the event loop until the state @p name is entered that follows from the last trigger().
    void waitFor(const QString &name, double seconds);
    void useWorkspace(const QString &path) const; ///< Opens it unless it is open.
    [[nodiscard]] QString path(const QString &relative) const;
    void setWatches(const QString &project, const py::list &expressions) const;

private:
    [[nodiscard]] QAction *availableAction(const QString &name) const;
    [[nodiscard]] int changes() const;

    ReplayHooks m_hooks;
    int m_changes; ///< the number of state changes before the last command
};

/// The name of a state in recorded scripts, "paused".
[[nodiscard]] QString replayStateName(ActivityState state);

/// Offers the module "varnelreplay", which replaces that of an earlier window. Python must have been started.
void offerReplay(ObjectModel &model, const ReplayHooks &hooks);
