#pragma once
#include "activitystate.h"
#include <QString>
class OutputWindow;
class ProjectWorkspace;
class QWidget;
class ViewManager;
class Workspace;

/// What the control of debug sessions needs of the window around it.
class DebugControlHost
{
public:
    [[nodiscard]] virtual ActivityState state() const = 0;
    virtual void setState(ActivityState state) = 0;
    [[nodiscard]] virtual ProjectWorkspace *projectWorkspace() const = 0; ///< Null while no workspace is open.
    [[nodiscard]] virtual Workspace *workspace() const = 0;               ///< The open documents.
    [[nodiscard]] virtual ViewManager *viewManager() const = 0;
    [[nodiscard]] virtual OutputWindow *outputWindow() const = 0;
    [[nodiscard]] virtual QWidget *dialogParent() = 0;
    [[nodiscard]] virtual int currentLine() const = 0; ///< Of the cursor, from 1.
    virtual void showOutputDock() = 0;                 ///< If it is hidden.
    virtual bool fileSaveAll() = 0;                    ///< False if the user or a file refuses.
    /// Opens a file, or what else has a name, in front. False if that fails.
    virtual bool openFile(const QString &path, bool addToRecent) = 0;
    /// Shows what a processor has to say: in the status bar, at a place from 0 on; other places do not exist.
    virtual void showStatusInfo(const QString &text, int position) = 0;
    virtual void fireEvent(const QString &name) = 0; ///< Calls what scripts have set for the event.

protected:
    ~DebugControlHost() = default;
};
