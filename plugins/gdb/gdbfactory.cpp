#include "gdbfactory.h"
#include "gdbenvironment.h"
#include <QPainter>

using namespace Qt::StringLiterals;

QStringList GdbFactory::featureList()
{
    return {QStringLiteral(GdbFeature)};
}

IPluginObject *GdbFactory::create(const QString &feature)
{
    return featureList().contains(feature) ? new GdbEnvironment(m_processors) : nullptr;
}

QString GdbFactory::name()
{
    return u"GDB"_s;
}

/// A chip with its pins and the arrow of a paused program.
QPixmap GdbFactory::logo()
{
    QPixmap picture(32, 32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xb0, 0xb4, 0xbc));
    for (int pin = 6; pin < 28; pin += 6) {
        painter.drawRect(1, pin, 30, 2);
        painter.drawRect(pin, 1, 2, 30);
    }
    painter.setBrush(QColor(0x24, 0x3b, 0x53));
    painter.drawRoundedRect(4, 4, 24, 24, 3, 3);
    painter.setBrush(QColor(0xf2, 0xb8, 0x2f));
    painter.drawPolygon(QPolygon({{12, 9}, {22, 16}, {12, 23}}));
    return picture;
}
