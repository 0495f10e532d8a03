#pragma once
#include <QRect>
class QEvent;
class QSettings;
class QWidget;

/// Position and size of the main window at the end of the last run.
struct WindowPlacement
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool maximised = false;

    bool operator==(const WindowPlacement &) const = default;
};

/// Reads the placement from group "Geometry"; defaults follow from @p available, the part of the primary screen that
/// windows may use.
[[nodiscard]] WindowPlacement loadPlacement(QSettings &settings, const QRect &available);
void savePlacement(QSettings &settings, const WindowPlacement &placement);

/// Moves a stored position back onto @p available. Deliberately not a true clamp: positions beyond the far edge are
/// reduced by the size of the area, and one that equals it stays; width and height are never limited.
[[nodiscard]] WindowPlacement restoredPlacement(WindowPlacement stored, const QRect &available);

/// Stores the geometry that a window had before it was maximised.
class NormalGeometry
{
public:
    /// To be called with every event of @p window: stores the old size or position from events while it is maximised.
    void watch(const QWidget *window, const QEvent *event);
    /// The normal placement of @p window: its own geometry, or the stored one while it is maximised.
    [[nodiscard]] WindowPlacement placement(const QWidget *window) const;

private:
    QSize m_size{-1, -1};
    QPoint m_position{0, 0};
};
