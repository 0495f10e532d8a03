#pragma once
#include <QString>
class IPluginObject;
class OutputWindow;
class ProjectWorkspace;
class QAction;
class QDockWidget;
class QWidget;

/// What the binding of plug-ins needs of the window around it.
class PluginBinderHost
{
public:
    /// A new object with one reference for the caller; null if no plug-in offers @p feature.
    [[nodiscard]] virtual IPluginObject *createPlugin(const QString &feature) const = 0;
    [[nodiscard]] virtual ProjectWorkspace *projectWorkspace() const = 0; ///< Null while no workspace is open.
    [[nodiscard]] virtual OutputWindow *outputWindow() const = 0;
    [[nodiscard]] virtual QAction *action(const QString &name) const = 0; ///< Null if the UI file does not declare it.
    [[nodiscard]] virtual QWidget *dialogParent() = 0;
    virtual void saveDockLayout() = 0;    ///< For the current state.
    virtual void restoreDockLayout() = 0; ///< For the current state.
    /// A new empty dock window behind the others on the right edge, on no new line there; the caller may delete it.
    [[nodiscard]] virtual QDockWidget *addDockWindow(const QString &objectName) = 0;

protected:
    ~PluginBinderHost() = default;
};
