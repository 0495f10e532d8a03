#include "branding.h"
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace {
constexpr QSize SplashSize(480, 300);

void drawText(QPainter &painter, QPoint baseline, const QString &text, int pixels, QFont::Weight weight, QColor colour)
{
    QFont font = painter.font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(baseline, text);
}
} // namespace

QPixmap *splashScreenPixmap(const QString &version)
{
    const qreal ratio = QGuiApplication::primaryScreen()->devicePixelRatio();
    auto *pixmap = new QPixmap(SplashSize * ratio);
    pixmap->setDevicePixelRatio(ratio);
    QPainter painter(pixmap);
    QSvgRenderer(u":/branding/splash.svg"_s).render(&painter, QRectF(QPointF(), SplashSize));
    QSvgRenderer(u":/branding/appicon.svg"_s).render(&painter, QRectF(328, 54, 128, 128));
    drawText(painter, {36, 122}, u"Varnel"_s, 52, QFont::Bold, Qt::white);
    drawText(painter, {38, 150}, QCoreApplication::translate("Branding", "Embedded development environment"), 13,
             QFont::Normal, QColor(0x9fd3dc));
    drawText(painter, {38, 176}, QCoreApplication::translate("Branding", "Version %1").arg(version), 13, QFont::Normal,
             QColor(0xfdbc4b));
    return pixmap;
}
