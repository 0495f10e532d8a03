#pragma once
#include "unknown.h"

/// Finds interfaces of the environments of the other projects in the workspace.
///
/// The order is that of the workspace, in each project build before execution environment, without those of the calling
/// project.
class IQueryPluginInterface : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xec1b6b12, 0xd5ce, 0x4961, 0x96, 0x37, 0x8e, 0xca, 0x01, 0x3a, 0x44, 0xa5};

    using QUnknownInterface::queryInterface;
    /// Sets @p out to the interface @p id of another project's environment, with a reference for the caller, or to null
    /// if no other environment offers it; the result is QS_OK in both cases, so test @p out. @p index counts from 1,
    /// but the search does not stop there: the last environment that offers the interface is returned, and an interface
    /// that it replaces keeps a reference that is never released. With interfaceCount() as the index nothing is
    /// replaced.
    virtual QRESULT queryInterface(const QUuid &id, QUnknownInterface **out, int index) = 0;
    virtual int interfaceCount(const QUuid &id) = 0; ///< The number of other environments that offer the interface.

protected:
    ~IQueryPluginInterface() = default;
};
