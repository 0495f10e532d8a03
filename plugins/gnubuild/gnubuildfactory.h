#pragma once
#include "gnuproject.h"
#include "interfaceobject.h"
#include "pluginfactory.h"

/// The root object of the plug-in library: a build environment for each tool chain. Owns what all of them share.
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

private:
    const GnuProject::Registry m_projects = std::make_shared<QList<GnuProject *>>();
};
