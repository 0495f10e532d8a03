#pragma once
#include <array>
#include <QObject>
class Activity;
class DockWindow;
class IExecutionEnvironment;
class MultiWidget;
class WindowServices;
struct PaneAppearance;

/// The dock windows that show the state of processors: registers, peripherals, watches, memory and so on. Each holds
/// one pane per project, and is refreshed only while it is visible; a hidden one is refreshed when it appears.
class DebugWindows : public QObject
{
    Q_OBJECT
public:
    enum Window { Registers, Peripherals, Watches, Memory, CallStack, Variables };
    static constexpr int WindowCount = Variables + 1;

    /// Both arguments outlive this object. The docks are hidden at first.
    DebugWindows(const Activity &activity, WindowServices &services, QObject *parent = nullptr);

    /// Puts the panes of a window into its dock, which takes over @p content.
    void setContent(Window window, MultiWidget *content);
    [[nodiscard]] DockWindow *dock(Window window) const { return m_windows[window].dock; }
    void setAppearance(const PaneAppearance &appearance);
    void toggle(Window window);
    /// Shows the call stack, the variables, the watches and the registers in a column.
    void showFirstLayout();
    void updateCheckMarks(); ///< Has the menu items show which docks are visible.

public Q_SLOTS:
    void updateRegisters();
    void updateData(); ///< All other windows.

Q_SIGNALS:
    void placeChosen(IExecutionEnvironment *environment); ///< See DebugPane::placeChosen().
    void valuesWritten();                                 ///< By the user, in one of the windows.

private:
    struct Entry
    {
        DockWindow *dock = nullptr;
        MultiWidget *content = nullptr; ///< null for a window without panes
        bool outdated = false;          ///< to be refreshed when it appears
    };

    void update(Window window);
    void updateOthers(Window written);
    void visibilityChanged(Window window, bool visible);
    void setPaused(bool paused);

    const Activity &m_activity;
    WindowServices &m_services;
    std::array<Entry, WindowCount> m_windows;
    bool m_updating = false; ///< a window is refreshed from here; otherwise a pane has written values
};
