#include "windowgeometry.h"
#include <QMoveEvent>
#include <QResizeEvent>
#include <QSettings>
#include <QWidget>

using namespace Qt::StringLiterals;

WindowPlacement loadPlacement(QSettings &settings, const QRect &available)
{
    const auto number = [&settings](const QString &key, int fallback) {
        bool isNumber = false;
        const int value = settings.value(u"Geometry/"_s + key).toString().toInt(&isNumber);
        return isNumber ? value : fallback;
    };
    return {
        .x = number(u"MainWindowX"_s, available.left() + 50),
        .y = number(u"MainWindowY"_s, available.top() + 50),
        .width = number(u"MainWindowWidth"_s, available.right() - available.left() - 99),
        .height = number(u"MainWindowHeight"_s, available.bottom() - available.top() - 99),
        .maximised = settings.value(u"Geometry/MainWindowMax"_s, false).toBool(),
    };
}

void savePlacement(QSettings &settings, const WindowPlacement &placement)
{
    settings.setValue(u"Geometry/MainWindowMax"_s, placement.maximised);
    settings.setValue(u"Geometry/MainWindowX"_s, placement.x);
    settings.setValue(u"Geometry/MainWindowY"_s, placement.y);
    settings.setValue(u"Geometry/MainWindowWidth"_s, placement.width);
    settings.setValue(u"Geometry/MainWindowHeight"_s, placement.height);
}

WindowPlacement restoredPlacement(WindowPlacement stored, const QRect &available)
{
    if (available.isEmpty())
        return stored; // no screen is connected
    stored.x = std::max(stored.x, available.left());
    stored.y = std::max(stored.y, available.top());
    if (stored.x > available.width())
        stored.x %= available.width();
    if (stored.y > available.height())
        stored.y %= available.height();
    return stored;
}

void NormalGeometry::watch(const QWidget *window, const QEvent *event)
{
    if (!window->isMaximized())
        return;
    if (event->type() == QEvent::Resize)
        m_size = static_cast<const QResizeEvent *>(event)->oldSize();
    else if (event->type() == QEvent::Move)
        m_position = static_cast<const QMoveEvent *>(event)->oldPos();
}

WindowPlacement NormalGeometry::placement(const QWidget *window) const
{
    if (window->isMaximized())
        return {m_position.x(), m_position.y(), m_size.width(), m_size.height(), true};
    const QRect geometry = window->geometry();
    return {geometry.x(), geometry.y(), geometry.width(), geometry.height(), false};
}
