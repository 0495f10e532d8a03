#pragma once
#include "interfaceobject.h"
#include "pluginfactory.h"

/// What the library offers: a build environment for each of the tool chains.
class GnuBuildFactory : public QObject, public InterfaceObject<IPluginFactory>
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID VarnelPluginFactoryIid)
    Q_INTERFACES(IPluginFactory)
public:
    QStringList featureList() override;
    IPluginObject *create(const QString &feature) override;
    QString name() override;
    QPixmap logo() override;
};
