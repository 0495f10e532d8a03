#include "timeplot.h"
#include <cmath>
#include <QMouseEvent>

// The mouse and the keys of a plot.

namespace {
constexpr double ZoomStep = 1.25; ///< of one key or wheel step
constexpr int WheelStep = 120;    ///< in eighths of a degree
} // namespace

void TimePlot::wheelEvent(QWheelEvent *event)
{
    const double steps = double(event->angleDelta().y()) / WheelStep;
    const double factor = std::pow(ZoomStep, -steps);
    if (event->modifiers() & Qt::ControlModifier)
        zoomValues(factor, valueAtHeight(event->position().y()));
    else if (steps != 0)
        zoomTime(factor, timeAt(event->position().x()));
    event->accept();
}

void TimePlot::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_dragged = event->position().toPoint();
}

void TimePlot::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    setReadingTime(canvas().contains(position) ? std::optional(timeAt(position.x())) : std::nullopt);
    if (!m_dragged || position == *m_dragged)
        return;
    const QPoint distance = position - *m_dragged;
    m_dragged = position;
    if (m_fixedRange)
        moveValues(double(distance.y()) / std::max(1, canvas().height()));
    if (distance.x() != 0)
        moveTime(-qint64(double(distance.x()) / std::max(1, canvas().width()) * double(m_span)));
}

void TimePlot::mouseReleaseEvent(QMouseEvent *)
{
    m_dragged.reset();
}

void TimePlot::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_following = true;
    setFixedRange({});
}

void TimePlot::leaveEvent(QEvent *)
{
    setReadingTime({});
}

void TimePlot::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    update();
}

void TimePlot::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    update();
}

bool TimePlot::moveByKey(int key)
{
    constexpr double Share = 0.1;
    switch (key) {
    case Qt::Key_Left:
        return moveTime(-m_span / 10), true;
    case Qt::Key_Right:
        return moveTime(m_span / 10), true;
    case Qt::Key_PageUp:
        return moveTime(-m_span), true;
    case Qt::Key_PageDown:
        return moveTime(m_span), true;
    case Qt::Key_Up:
        return moveValues(Share), true;
    case Qt::Key_Down:
        return moveValues(-Share), true;
    case Qt::Key_Home:
        return goTo(0), true;
    case Qt::Key_End:
        return setFollowing(true), true;
    case Qt::Key_Space:
        return setFollowing(!m_following), true;
    case Qt::Key_0:
        return setFixedRange({}), true;
    default:
        return false;
    }
}

/// "+" may need Shift, so that Shift has no meaning with it.
bool TimePlot::zoomByKey(const QKeyEvent &event)
{
    const ValueRange range = shownRange();
    const double middle = range.low / 2 + range.high / 2;
    const qint64 time = m_following ? end() : end() - m_span / 2;
    const bool isShifted = (event.modifiers() & ~Qt::KeypadModifier) == Qt::ShiftModifier;
    if (isShifted && event.key() == Qt::Key_Up)
        zoomValues(1 / ZoomStep, middle);
    else if (isShifted && event.key() == Qt::Key_Down)
        zoomValues(ZoomStep, middle);
    else if (event.key() == Qt::Key_Plus || event.key() == Qt::Key_Equal)
        zoomTime(1 / ZoomStep, time);
    else if (event.key() == Qt::Key_Minus)
        zoomTime(ZoomStep, time);
    else
        return false;
    return true;
}

void TimePlot::moveReading(int direction)
{
    const qint64 time = m_reading.value_or(end()) + direction * std::max<qint64>(1, m_span / 100);
    setReadingTime(std::clamp(time, end() - m_span, end()));
}

void TimePlot::keyPressEvent(QKeyEvent *event)
{
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (event->modifiers() == Qt::ControlModifier && (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right))
        moveReading(event->key() == Qt::Key_Left ? -1 : 1);
    else if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)
             || (!zoomByKey(*event) && !(isPlain && moveByKey(event->key()))))
        QWidget::keyPressEvent(event);
}
