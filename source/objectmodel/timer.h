#pragma once
#include <QTimer>

/// A timer for scripts. Its interval can be set before it starts.
class Timer : public QTimer
{
    Q_OBJECT
    Q_PROPERTY(int interval READ interval WRITE setInterval)
public:
    using QTimer::QTimer;

    [[nodiscard]] int interval() const { return m_interval; } ///< In milliseconds.
    void setInterval(int milliseconds);                       ///< A running timer begins a new interval.

public Q_SLOTS:
    void start(bool singleShot);
    void stop();

private:
    int m_interval = 1000;
};
