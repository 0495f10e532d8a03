#pragma once
#include "unknown.h"

/// One plug-in object's reach into the environments of the other projects of the workspace.
///
/// The environments are walked in workspace order, build before execution, those of the asking project left out.
class IQueryPluginInterface : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xec1b6b12, 0xd5ce, 0x4961, 0x96, 0x37, 0x8e, 0xca, 0x01, 0x3a, 0x44, 0xa5};

    using QUnknownInterface::queryInterface;
    /// Sets @p out to the interface named @p id of another project's environment, with a reference for the caller, or
    /// to null if no other offers it; the result is QS_OK in both cases, so test @p out. @p index counts from 1, but
    /// the walk does not stop there: the last environment that offers the interface wins, and one that it replaces
    /// keeps a reference for ever. With interfaceCount() as the index nothing is replaced.
    virtual QRESULT queryInterface(const QUuid &id, QUnknownInterface **out, int index) = 0;
    virtual int interfaceCount(const QUuid &id) = 0; ///< How many other environments offer the interface.

protected:
    ~IQueryPluginInterface() = default;
};
