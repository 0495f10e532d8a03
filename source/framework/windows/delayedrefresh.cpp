#include "delayedrefresh.h"
#include <QEvent>
#include <QPointer>
#include <QWidget>
#include <utility>

DelayedRefresh::DelayedRefresh(QWidget *widget, int delay, std::function<void()> read)
    : m_widget(widget), m_read(std::move(read)), m_timer(widget)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(delay);
    connect(&m_timer, &QTimer::timeout, this, &DelayedRefresh::refresh);
    widget->installEventFilter(this);
}

void DelayedRefresh::schedule()
{
    m_outdated = true;
    if (m_widget->isVisible() && !m_reading && !m_timer.isActive())
        m_timer.start();
}

bool DelayedRefresh::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_widget && event->type() == QEvent::Show && m_outdated)
        schedule();
    return QObject::eventFilter(watched, event);
}

void DelayedRefresh::refresh()
{
    if (m_reading || !m_widget->isVisible())
        return;
    m_outdated = false;
    m_reading = true;
    const QPointer<QWidget> widget(m_widget);
    const auto read = m_read; // this object may be destroyed during the call
    read();
    if (!widget)
        return;
    m_reading = false;
    if (m_outdated)
        schedule();
}
