#pragma once
#include "unknown.h"

class IQueryPluginInterface;

/// Optional interface of either environment: for plug-ins that use the environments of other projects.
class IWorkspaceClient : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xb6835d9e, 0x6712, 0x4d30, 0xbc, 0x45, 0x24, 0x51, 0x3d, 0x7d, 0x45, 0x1d};

    virtual void setQueryInterface(IQueryPluginInterface *query) = 0; ///< Called once, after initialise().
    /// Projects were added or removed. Release all references to interfaces of other projects' environments here.
    virtual void workspaceChanged() = 0;

protected:
    ~IWorkspaceClient() = default;
};
