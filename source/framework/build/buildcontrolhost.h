#pragma once
#include "activitystate.h"
class Navigator;
class OutputWindow;
class ProjectWorkspace;
class QWidget;
class Workspace;

/// What the control of builds needs of the window around it.
class BuildControlHost
{
public:
    [[nodiscard]] virtual ActivityState state() const = 0;
    virtual void setState(ActivityState state) = 0;
    [[nodiscard]] virtual ProjectWorkspace *projectWorkspace() const = 0; ///< Null while no workspace is open.
    [[nodiscard]] virtual Workspace *workspace() const = 0;               ///< The open documents.
    [[nodiscard]] virtual Navigator *navigator() const = 0;
    [[nodiscard]] virtual OutputWindow *outputWindow() const = 0;
    [[nodiscard]] virtual QWidget *dialogParent() = 0;
    virtual void showOutputDock() = 0;   ///< If it is hidden.
    virtual bool fileSaveAll() = 0;      ///< False if the user or a file refuses.
    virtual void checkFileChanges() = 0; ///< Asks about documents whose files others have changed.

protected:
    ~BuildControlHost() = default;
};
