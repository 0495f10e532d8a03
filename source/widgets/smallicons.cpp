#include "smallicons.h"
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace {
constexpr int Size = 12;

QIcon icon(const std::function<void(QPainter &)> &paint)
{
    QIcon icon;
    for (const int ratio : {1, 2, 3}) {
        QPixmap pixmap(Size * ratio, Size * ratio);
        pixmap.setDevicePixelRatio(ratio);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        paint(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

QIcon strokes(const QPalette &palette, const QList<QLineF> &lines)
{
    return icon([&](QPainter &painter) {
        painter.setPen(QPen(palette.color(QPalette::ButtonText), 2, Qt::SolidLine, Qt::RoundCap));
        painter.drawLines(lines);
    });
}
} // namespace

QIcon plusIcon(const QPalette &palette)
{
    return strokes(palette, {{6, 1.5, 6, 10.5}, {1.5, 6, 10.5, 6}});
}

QIcon crossIcon(const QPalette &palette)
{
    return strokes(palette, {{2, 2, 10, 10}, {2, 10, 10, 2}});
}

QIcon currentPageIcon(const QPalette &palette)
{
    return icon([&](QPainter &painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette.color(QPalette::Text)); // also seen on a selected row
        painter.drawPolygon(QPolygonF({{3, 1}, {10, 6}, {3, 11}}));
    });
}

QIcon noIcon()
{
    return icon([](QPainter &) {});
}
