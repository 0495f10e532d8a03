#pragma once
#include <functional>
#include <memory>
#include <QtGlobal>

/// Calls a function several times per second while a script runs, from within the script, so that one that runs for
/// ever can be interrupted. A script that waits in a function of C is not interrupted before that function returns.
class ScriptWatch
{
public:
    /// @p keepRunning is called on this thread until the destructor. When it returns false, KeyboardInterrupt is raised
    /// in the script; again if the script goes on. Nothing is called if it is empty.
    explicit ScriptWatch(const std::function<bool()> &keepRunning);
    ~ScriptWatch();

private:
    struct State;
    Q_DISABLE_COPY_MOVE(ScriptWatch)

    const std::shared_ptr<State> m_state; ///< null without a function
};
