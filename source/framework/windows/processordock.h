#pragma once
#include <QObject>
class Activity;
class DebugControl;
class DockWindow;
class WindowServices;

/// The dock with the list of processors, hidden at first, and its item in the menu of the debugger's windows.
class ProcessorDock : public QObject
{
    Q_OBJECT
public:
    /// The first three arguments outlive this object; the menus of the window exist.
    ProcessorDock(Activity &activity, WindowServices &services, DebugControl &debug, QObject *parent = nullptr);

    [[nodiscard]] DockWindow *dock() const { return m_dock; }

private:
    DockWindow *const m_dock;
};
