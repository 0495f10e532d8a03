#pragma once
#include <QString>
class DockWindow;
class QAction;
class QWidget;

/// An item of the menu of the debugger's windows that the UI file does not declare.
struct DockAction
{
    QString objectName;
    QString text;
    QString key;
    QString statusTip;
};

/// Adds an action that shows and hides @p dock to @p window, and to the menu "debugWindowsMenu" of that window if it
/// has one. Its mark follows the dock.
QAction *addDockAction(DockWindow *dock, QWidget *window, const DockAction &description);
