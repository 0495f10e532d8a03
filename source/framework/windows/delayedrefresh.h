#pragma once
#include <functional>
#include <QObject>
#include <QTimer>
class QWidget;

/// Reads the contents of a widget again a short time after a change, because plug-ins may report often.
///
/// A hidden widget is read when it appears. A change during the reading, in which a plug-in may call back, is followed
/// by another reading.
class DelayedRefresh : public QObject
{
public:
    /// @p read may destroy the widget, which owns this object. The delay is in milliseconds.
    DelayedRefresh(QWidget *widget, int delay, std::function<void()> read);

    /// There is a change.
    void schedule();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void refresh();

    QWidget *const m_widget;
    const std::function<void()> m_read;
    QTimer m_timer; ///< active while a reading is due
    bool m_reading = false;
    bool m_outdated = true; ///< changed while hidden, or during the reading
};
