#include "textparamarkerwidget.h"
#include "textparaview.h"
#include <QPainter>
#include <QPainterPath>

TextParaMarkerWidget::TextParaMarkerWidget(TextParaView *view, QWidget *parent)
    : MarkerWidget(view, parent), m_paraView(view)
{
    connect(view, &TextParaView::rowsLoaded, this, qOverload<>(&QWidget::update));
}

void TextParaMarkerWidget::setArrow(int fromPara, int toPara)
{
    if (m_arrowFrom == fromPara && m_arrowTo == toPara)
        return;
    m_arrowFrom = fromPara;
    m_arrowTo = toPara;
    update();
}

int TextParaMarkerWidget::lineAt(int y) const
{
    int para = 0;
    int line = 0;
    return m_paraView->rowToPara(y / lineHeight(), &para, &line) ? para + 1 : 0;
}

void TextParaMarkerWidget::paintMarkers(QPainter &painter)
{
    for (int row = 0; row < m_paraView->rowCount(); ++row) {
        int para = 0;
        int line = 0;
        if (m_paraView->isLastLine(row) && m_paraView->rowToPara(row, &para, &line))
            paintLine(painter, para + 1, row * lineHeight());
    }
    if (m_arrowFrom >= 0 && m_arrowTo >= 0)
        paintArrow(painter);
}

/// The middle of a paragraph's row; beyond the edge if it is not on screen.
int TextParaMarkerWidget::arrowEnd(int para) const
{
    if (const int row = m_paraView->rowOf(para); row >= 0)
        return row * lineHeight() + lineHeight() / 2;
    return para < m_paraView->topPara() ? -lineHeight() : height() + lineHeight();
}

/// At the right edge, beside the pictures.
void TextParaMarkerWidget::paintArrow(QPainter &painter)
{
    constexpr qreal Head = 3.5;
    const qreal from = arrowEnd(m_arrowFrom) + 0.5;
    const qreal to = arrowEnd(m_arrowTo) + 0.5;
    const qreal spine = width() - 3.5;
    const qreal tip = width() - 0.5;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor colour = palette().color(QPalette::Highlight);
    painter.setPen(QPen(colour, 1.5));
    painter.drawPolyline(QPolygonF{{tip, from}, {spine, from}, {spine, to}, {tip - 1, to}});
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(QPolygonF{{tip, to}, {tip - Head, to - Head}, {tip - Head, to + Head}});
    painter.restore();
}
