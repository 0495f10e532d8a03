#pragma once
#include <QObject>
class Activity;
class DebugControl;
class DockWindow;
class WindowServices;

/// The dock with the list of breakpoints, hidden at first, and its item in the menu of the debugger's windows.
class BreakpointsDock : public QObject
{
    Q_OBJECT
public:
    /// The first three arguments outlive this object; the menus of the window exist.
    BreakpointsDock(Activity &activity, WindowServices &services, DebugControl &debug, QObject *parent = nullptr);

    [[nodiscard]] DockWindow *dock() const { return m_dock; }

private:
    DockWindow *const m_dock;
};
