#pragma once
#include "ihost.h"
#include "interfaceobject.h"
#include "iqueryplugininterface.h"
#include <QPointer>
class Activity;
class Project;

/// Gives one project access to the environments of the others in its workspace. Starts with no reference. After the
/// project was deleted it finds nothing.
class IQueryPluginInterfaceImpl : public InterfaceObject<IQueryPluginInterface>
{
public:
    /// @p selfProject, which must not be null, is the project that gets access.
    /// @p host, which may be null, is returned as the interface IHost of this object.
    IQueryPluginInterfaceImpl(const Activity *activity, Project *selfProject, IHost *host = nullptr);
    ~IQueryPluginInterfaceImpl() override;

    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override;
    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out, int index) override;
    int interfaceCount(const QUuid &id) override;

private:
    [[nodiscard]] QList<QUnknownInterface *> offers(const QUuid &id) const;

    const QPointer<const Activity> m_activity;
    const QPointer<Project> m_selfProject;
    const InterfacePtr<IHost> m_host;
};
