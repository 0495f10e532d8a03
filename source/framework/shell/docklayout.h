#pragma once
#include "activitystate.h"
#include <functional>
#include <QList>
#include <QRect>
class QMainWindow;
class QSettings;
class QWidget;

/// Where a dock window or a tool bar stands. The edges' numbers are those of the settings.
struct DockPlacement
{
    enum Edge { Unmanaged = 0, TornOff = 1, Top = 2, Bottom = 3, Right = 4, Left = 5 };

    int edge = Unmanaged;
    QRect geometry;       ///< of a window that is torn off, on the screen
    int offset = 0;       ///< of a docked window, in pixels from the start of its edge
    bool newLine = false; ///< a docked window begins a new row or column
    QSize extent{-1, -1}; ///< of a docked window
    bool visible = false;

    /// The entry of the settings, "[edge,...,visible]".
    [[nodiscard]] QString text() const;
    /// Parses @p text; a missing or invalid number is 0.
    [[nodiscard]] static DockPlacement fromText(const QString &text);

    bool operator==(const DockPlacement &) const = default;
};

/// The position of a torn-off window on a desktop of the size @p desktop: a window beyond the far edge is moved back
/// by the size of the desktop, once.
[[nodiscard]] QRect ontoDesktop(QRect geometry, QSize desktop);

/// Saves and restores the positions of the dock windows and tool bars of a window. There are two layouts: one for the
/// states of editing and building, one for those of a debug session.
class DockLayout
{
public:
    using Windows = std::function<QList<QWidget *>()>;

    /// @p windows returns the dock windows and tool bars, always in the same order.
    DockLayout(QMainWindow *window, QSettings *settings, Windows windows);

    void save(ActivityState state) const;
    [[nodiscard]] bool isStored(ActivityState state) const;
    /// Stops at the first window without an entry; that one and the later ones stay as they are.
    void restore(ActivityState state) const;

private:
    [[nodiscard]] DockPlacement placementOf(QWidget *window) const;
    void place(const QList<std::pair<QWidget *, DockPlacement>> &all) const;

    QMainWindow *const m_window;
    QSettings *const m_settings;
    const Windows m_windows;
};
