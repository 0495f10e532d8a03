#include "gnubuildfactory.h"
#include "gnubuild.h"
#include <QPainter>
using namespace Qt::StringLiterals;

QStringList GnuBuildFactory::featureList()
{
    QStringList features;
    for (const ToolChain &toolChain : toolChains())
        features += toolChain.feature;
    return features;
}

IPluginObject *GnuBuildFactory::create(const QString &feature)
{
    const ToolChain *toolChain = findToolChain(feature);
    return toolChain ? new GnuBuild(*toolChain, m_projects) : nullptr;
}

QString GnuBuildFactory::name()
{
    return u"GNU Build"_s;
}

QPixmap GnuBuildFactory::logo()
{
    QPixmap picture(32, 32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int layer = 0; layer < 3; ++layer) { // three layers of bricks
        painter.setBrush(QColor(0xb0 - 0x20 * layer, 0x60, 0x30 + 0x18 * layer));
        painter.drawRoundedRect(2 + 4 * layer, 22 - 9 * layer, 28 - 8 * layer, 8, 2, 2);
    }
    return picture;
}
