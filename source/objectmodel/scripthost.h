#pragma once
#include "windowservices.h"
class EventHandlers;
class MacroManager;
struct ScriptDirectories;
class PythonOutputPanel;

/// The part of the main window for scripts: the services of its commands, the commands themselves, and the event
/// handlers.
class ScriptHost : public WindowServices
{
public:
    [[nodiscard]] virtual EventHandlers &eventHandlers() = 0;
    [[nodiscard]] virtual MacroManager &macros() = 0;
    [[nodiscard]] virtual ScriptDirectories scriptDirectories() const = 0;
    [[nodiscard]] virtual PythonOutputPanel *pythonOutput() const = 0; ///< In a dock window.

    /// Closes the open workspace, with its questions, and opens another one. False if one of both fails.
    virtual bool replaceWorkspace(const QString &path) = 0;
    virtual bool closeOpenWorkspace() = 0; ///< False if the user or a document refuses.
    /// Whether the user agrees to overwrite a file that another program has written meanwhile.
    virtual bool mayOverwriteNewer(const QString &path) = 0;
    virtual void build(bool rebuild) = 0; ///< The current project; returns while the build runs.
    virtual void debugStop() = 0;
    virtual void debugRestart() = 0;
    virtual void debugAttach() = 0;
    virtual void updateDebugWindows(int parts) = 0; ///< See ObjectModel::DebugPart.

protected:
    ~ScriptHost() = default;
};
