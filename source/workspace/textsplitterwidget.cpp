#include "textsplitterwidget.h"
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

TextSplitterWidget::TextSplitterWidget(QWidget *parent) : QWidget(parent)
{
    setCursor(Qt::SplitVCursor);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setToolTip(tr("Drag down to split the window"));
}

QSize TextSplitterWidget::sizeHint() const
{
    return {style()->pixelMetric(QStyle::PM_ScrollBarExtent), style()->pixelMetric(QStyle::PM_SplitterWidth)};
}

void TextSplitterWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_dragging = true;
    Q_EMIT dragStarted();
}

void TextSplitterWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (m_dragging)
        Q_EMIT dragMoved(event->globalPosition().toPoint());
}

void TextSplitterWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_dragging || event->button() != Qt::LeftButton)
        return;
    m_dragging = false;
    Q_EMIT dragFinished(event->globalPosition().toPoint());
}

void TextSplitterWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    painter.fillRect(rect(), palette().brush(QPalette::Button));
    style()->drawPrimitive(QStyle::PE_PanelButtonCommand, &option, &painter, this);
}
