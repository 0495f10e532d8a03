#pragma once
#include <QObject>
class AvailabilityWindow;
class View;
class WindowServices;

/// Disables the edit commands while the keyboard focus is in a part of the window where they do nothing. Views, the
/// output window and the navigator report what they can do when they get the focus. It belongs to the view manager.
class EditAvailability : public QObject
{
    Q_OBJECT
public:
    EditAvailability(AvailabilityWindow &window, const WindowServices &services);

private:
    void viewActivated(const View *view);
    void focusMoved(const QWidget *focus);
    /// Passes a report of a view on, unless another part has the focus.
    void report(bool available, void (AvailabilityWindow::*signal)(bool));
    [[nodiscard]] bool isElsewhere(const QWidget *focus) const;

    AvailabilityWindow &m_window;
    const WindowServices &m_services;
};
