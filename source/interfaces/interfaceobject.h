#pragma once
#include "unknown.h"

/// Implements the three functions of QUnknownInterface for a class that offers @p Interfaces.
///
/// queryInterface() finds these interfaces and QUnknownInterface; the object deletes itself with its last reference. An
/// object that IPluginFactory::create returns starts with one reference for the caller. An object that is returned by
/// its own queryInterface() starts with @p references 0 instead.
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
    virtual ~InterfaceObject() = default; // NOLINT(modernize-use-override): some interfaces have no virtual one

private:
    /// Each interface has its own QUnknownInterface base. The first one represents all.
    template <typename T>
    bool offer(const QUuid &id, QUnknownInterface **out)
    {
        if (id == T::Iid || id == QUnknownInterface::Iid)
            *out = static_cast<T *>(this);
        return *out;
    }

    unsigned long m_references;
};
