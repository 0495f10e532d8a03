#pragma once
#include <QObject>
class Activity;
class DebugControl;
class DockWindow;
class LiveWindow;
class WindowServices;

/// The dock with the live values of all processors, hidden at first, and its item in the menu of the debugger's
/// windows.
class LiveDock : public QObject
{
    Q_OBJECT
public:
    /// The first three arguments outlive this object; the menus of the window exist.
    LiveDock(Activity &activity, WindowServices &services, DebugControl &debug, QObject *parent = nullptr);

    [[nodiscard]] DockWindow *dock() const { return m_dock; }
    [[nodiscard]] LiveWindow *window() const { return m_window; }

private:
    LiveWindow *const m_window;
    DockWindow *const m_dock;
};
