#include "scrollview.h"
#include <cmath>
#include <limits>
#include <QScrollBar>

namespace {
constexpr qint64 LongestBar = std::numeric_limits<int>::max() / 2;
}

ScrollView::ScrollView(QWidget *parent, Vertical vertical) : QAbstractScrollArea(parent), m_vertical(vertical) {}

qint64 ScrollView::bottomContentsY() const
{
    return m_vertical == Vertical::Own ? 0 : std::max<qint64>(0, m_height - visibleHeight());
}

void ScrollView::resizeContents(int width, qint64 height)
{
    if (width == m_width && height == m_height)
        return;
    m_width = width;
    m_height = height;
    updateBars();
    viewport()->update();
}

void ScrollView::setSteps(int columnWidth, int lineHeight)
{
    horizontalScrollBar()->setSingleStep(columnWidth);
    m_lineHeight = lineHeight;
    updateBars();
}

void ScrollView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateBars();
}

void ScrollView::updateBars()
{
    m_scale = bottomContentsY() / LongestBar + 1;
    const int x = std::clamp(m_x, 0, std::max(0, m_width - visibleWidth()));
    const qint64 y = std::clamp<qint64>(m_y, 0, bottomContentsY());
    m_settingBars = true; // a bar whose range shrinks moves by itself
    horizontalScrollBar()->setRange(0, std::max(0, m_width - visibleWidth()));
    horizontalScrollBar()->setPageStep(visibleWidth());
    if (m_vertical == Vertical::Pixels) {
        verticalScrollBar()->setRange(0, int(bottomContentsY() / m_scale));
        verticalScrollBar()->setPageStep(int(std::max<qint64>(1, visibleHeight() / m_scale)));
        verticalScrollBar()->setSingleStep(int(std::max<qint64>(1, m_lineHeight / m_scale)));
    }
    m_settingBars = false;
    setContentsPos(x, y);
}

void ScrollView::setContentsPos(int x, qint64 y)
{
    x = std::clamp(x, 0, std::max(0, m_width - visibleWidth()));
    y = std::clamp<qint64>(y, 0, bottomContentsY());
    m_settingBars = true;
    horizontalScrollBar()->setValue(x);
    if (m_vertical == Vertical::Pixels)
        verticalScrollBar()->setValue(int(y / m_scale));
    m_settingBars = false;
    moveTo(x, y);
}

/// The user has moved a bar.
void ScrollView::scrollContentsBy(int, int)
{
    if (m_settingBars)
        return;
    const QScrollBar *bar = verticalScrollBar();
    const bool unmoved =
        m_vertical == Vertical::Own || bar->value() == m_y / m_scale; // keeps a position between two steps of the bar
    const qint64 y = unmoved ? m_y : bar->value() == bar->maximum() ? bottomContentsY() : bar->value() * m_scale;
    moveTo(horizontalScrollBar()->value(), y);
}

void ScrollView::moveTo(int x, qint64 y)
{
    if (x == m_x && y == m_y)
        return;
    Q_EMIT contentsMoving(x, y);
    const int dx = m_x - x;
    const qint64 dy = m_y - y;
    m_x = x;
    m_y = y;
    if (std::abs(dx) < visibleWidth() && std::abs(dy) < visibleHeight())
        viewport()->scroll(dx, int(dy));
    else
        viewport()->update();
}

void ScrollView::ensureVisible(int x, qint64 y, int xMargin, qint64 yMargin)
{
    const auto nearest = [](qint64 position, qint64 size, qint64 point, qint64 margin) {
        margin = std::min(margin, (size - 1) / 2);
        return std::clamp(position, point + margin - size + 1, point - margin);
    };
    setContentsPos(int(nearest(m_x, std::max(1, visibleWidth()), x, xMargin)),
                   nearest(m_y, std::max(1, visibleHeight()), y, yMargin));
}
