#pragma once
#include "interfaceobject.h"
#include "iqueryplugininterface.h"
#include <QPointer>
class Project;
class ProjectWorkspace;

/// One project's reach into the environments of the others. Begins without a reference. When the workspace has gone it
/// finds nothing.
class IQueryPluginInterfaceImpl : public InterfaceObject<IQueryPluginInterface>
{
public:
    /// @p selfProject is the one that asks; it must not be null.
    IQueryPluginInterfaceImpl(ProjectWorkspace *workspace, Project *selfProject);
    ~IQueryPluginInterfaceImpl() override;

    using InterfaceObject::queryInterface;
    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out, int index) override;
    int interfaceCount(const QUuid &id) override;

private:
    [[nodiscard]] QList<QUnknownInterface *> offers(const QUuid &id) const;

    const QPointer<ProjectWorkspace> m_workspace;
    const QPointer<Project> m_selfProject;
};
