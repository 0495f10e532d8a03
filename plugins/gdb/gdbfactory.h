#pragma once
#include "interfaceobject.h"
#include "pluginfactory.h"
#include "processorgroup.h"
#include <QObject>

/// The feature by which projects name this execution environment.
#define GdbFeature "{27aa5f2d-ef64-4eab-9fda-9693e2e6117f}"

/// The root object of the plug-in library. Owns what all environments share.
class GdbFactory : public QObject, public InterfaceObject<IPluginFactory>
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
    const ProcessorGroup::Registry m_processors = std::make_shared<QList<ProcessorGroup *>>();
};
