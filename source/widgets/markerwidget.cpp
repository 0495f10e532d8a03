#include "markerwidget.h"
#include "accessibleviews.h"
#include "scrollview.h"
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

using namespace Qt::StringLiterals;

MarkerWidget::MarkerWidget(ScrollView *view, QWidget *parent) : QWidget(parent), m_view(view)
{
    installAccessibleViews();
    setCursor(Qt::ArrowCursor);
}

void MarkerWidget::setPictures(const std::function<QPixmap(const QString &)> &pictures)
{
    m_pictures = pictures;
    m_loaded.clear();
    update();
}

void MarkerWidget::setLineHeight(int height)
{
    m_lineHeight = std::max(1, height);
    update();
}

void MarkerWidget::setPosition(int, qint64 y)
{
    m_offset = y;
    update();
}

// Marks -------------------------------------------------------------------

void MarkerWidget::setMarker(int line, int mask, bool on, bool alternate)
{
    m_markers.set(line, mask, on, alternate);
    update();
}

void MarkerWidget::setMarkers(const QMap<int, int> &markers)
{
    m_markers.setBits(markers);
    update();
}

void MarkerWidget::clearMarkers(int mask)
{
    m_markers.clear(mask);
    update();
}

bool MarkerWidget::hasMarker(int line, int mask) const
{
    return m_markers.has(line, mask);
}

// Painting ----------------------------------------------------------------

void MarkerWidget::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().brush(QPalette::Button));
    paintMarkers(painter);
}

void MarkerWidget::paintMarkers(QPainter &painter)
{
    const qint64 first = m_offset / m_lineHeight + 1;
    const qint64 count = (height() + m_lineHeight) / m_lineHeight;
    const QMap<int, int> &bits = markers();
    for (auto it = bits.lowerBound(int(first)); it != bits.cend() && it.key() <= first + count; ++it)
        paintLine(painter, it.key(), int(qint64(it.key() - 1) * m_lineHeight - m_offset));
}

void MarkerWidget::paintLine(QPainter &painter, int line, int top)
{
    const int bits = markers().value(line);
    const QString suffix = bits & Alternate ? u"2.png"_s : u".png"_s;
    if (bits & EnabledBreakpoint)
        drawPicture(painter, u"markerenabledbreak"_s + suffix, top);
    if (bits & DisabledBreakpoint)
        drawPicture(painter, u"markerdisabledbreak"_s + suffix, top);
    if (bits & MultipleBreakpoint)
        drawPicture(painter, u"markermultiplebreak"_s + suffix, top);
    if (bits & CurrentLine)
        drawPicture(painter, u"markercurrent.png"_s, top);
    if (bits & Caller)
        drawPicture(painter, u"markercaller.png"_s, top);
    if (bits & Lookup)
        drawPicture(painter, u"markerlookup.png"_s, top);
}

void MarkerWidget::drawPicture(QPainter &painter, const QString &name, int top)
{
    if (!m_pictures)
        return;
    if (m_loadedRatio != devicePixelRatio()) {
        m_loaded.clear();
        m_loadedRatio = devicePixelRatio();
    }
    if (!m_loaded.contains(name))
        m_loaded.insert(name, m_pictures(name));
    const QPixmap &picture = m_loaded[name];
    painter.drawPixmap(1, top + (m_lineHeight - qRound(picture.deviceIndependentSize().height())) / 2, picture);
}

void MarkerWidget::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        m_loaded.clear();
    QWidget::changeEvent(event);
}

// Mouse -------------------------------------------------------------------

int MarkerWidget::lineAt(int y) const
{
    return int((m_offset + y) / m_lineHeight + 1);
}

void MarkerWidget::mouseReleaseEvent(QMouseEvent *event)
{
    const int line = lineAt(int(event->position().y()));
    if (event->button() == Qt::LeftButton && line > 0)
        Q_EMIT toggleBreakpoint(line);
}

void MarkerWidget::wheelEvent(QWheelEvent *event)
{
    m_view->scrollByWheel(event);
}

bool MarkerWidget::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    showToolTip(static_cast<QHelpEvent *>(event)->pos());
    return true;
}

void MarkerWidget::showToolTip(const QPoint &position)
{
    const int line = lineAt(position.y());
    const bool hasBreakpoint = hasMarker(line, EnabledBreakpoint | DisabledBreakpoint | MultipleBreakpoint);
    const QString text = hasBreakpoint && m_toolTips ? m_toolTips(line) : QString();
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(mapToGlobal(position), text, this, QRect(position + QPoint(0, 20), QSize(300, 20)));
}
