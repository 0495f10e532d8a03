#pragma once
#include "unknown.h"

/// Implements the three common operations for a class that offers @p Interfaces; their own are left to the class.
///
/// The object answers for these interfaces and for QUnknownInterface, and deletes itself with its last reference. What
/// IPluginFactory::create makes has a first reference, the caller's. An object that is handed out through its own
/// queryInterface() starts with @p references 0 instead.
template <typename... Interfaces>
class InterfaceObject : public Interfaces...
{
public:
    explicit InterfaceObject(unsigned long references = 1) : m_references(references) {}
    Q_DISABLE_COPY_MOVE(InterfaceObject)

    using Interfaces::queryInterface...; // for an interface that has another function of this name
    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override
    {
        *out = nullptr;
        (offer<Interfaces>(id, out) || ...);
        if (!*out)
            return QE_NOINTERFACE;
        ++m_references;
        return QS_OK;
    }
    unsigned long addRef() override { return m_references++; }
    unsigned long release() override
    {
        const unsigned long left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~InterfaceObject() = default; // NOLINT(modernize-use-override): not every interface has a virtual one

private:
    /// Each interface has a QUnknownInterface of its own. The first one stands for all when that is asked for.
    template <typename T>
    bool offer(const QUuid &id, QUnknownInterface **out)
    {
        if (id == T::Iid || id == QUnknownInterface::Iid)
            *out = static_cast<T *>(this);
        return *out;
    }

    unsigned long m_references;
};
