#include "selectiondrag.h"
#include <QWidget>

namespace {
constexpr int Interval = 100; ///< milliseconds

/// How many units @p position is before 0 or behind @p end.
int stepsBeyond(int position, int end, int unit)
{
    if (position < 0)
        return (position - unit + 1) / unit;
    return position < end ? 0 : (position - end) / unit + 1;
}
} // namespace

SelectionDrag::SelectionDrag()
{
    connect(&m_timer, &QTimer::timeout, this, &SelectionDrag::timeout);
}

void SelectionDrag::begin(const QPoint &position)
{
    m_start = position;
    m_columns = m_lines = 0;
    m_timer.start(Interval);
}

bool SelectionDrag::moveTo(const QPoint &position, const QWidget &viewport, int charWidth, int lineHeight)
{
    m_columns = stepsBeyond(position.x(), viewport.width(), charWidth);
    m_lines = stepsBeyond(position.y(), viewport.height(), lineHeight);
    return !isOutside();
}

void SelectionDrag::end()
{
    m_timer.stop();
}
