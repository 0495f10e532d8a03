#pragma once
#include <QRect>
class QEvent;
class QSettings;
class QWidget;

/// Place and size of the main window as it was left.
struct WindowPlacement
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool maximised = false;

    bool operator==(const WindowPlacement &) const = default;
};

/// Reads the placement from group "Geometry"; what is missing follows from @p available, the part of the primary
/// screen that windows may use.
[[nodiscard]] WindowPlacement loadPlacement(QSettings &settings, const QRect &available);
void savePlacement(QSettings &settings, const WindowPlacement &placement);

/// Brings a stored position back onto @p available. No true clamp, on purpose: positions beyond the far edge wrap
/// round by the size of the area, and one that equals it stays; width and height are never limited.
[[nodiscard]] WindowPlacement restoredPlacement(WindowPlacement stored, const QRect &available);

/// Remembers the geometry that a window had before it was maximised.
class NormalGeometry
{
public:
    /// To be shown every event of @p window: keeps the old size or position of one that comes while it is maximised.
    void watch(const QWidget *window, const QEvent *event);
    /// Where @p window is to come back: its own geometry, or the remembered one while it is maximised.
    [[nodiscard]] WindowPlacement placement(const QWidget *window) const;

private:
    QSize m_size{-1, -1};
    QPoint m_position{0, 0};
};
