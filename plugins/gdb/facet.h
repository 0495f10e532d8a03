#pragma once
#include "unknown.h"

/// A part of an object: a class that implements some of the object's interfaces.
class FacetBase
{
public:
    virtual ~FacetBase() = default;
    /// The interface @p id, without a new reference; null if this part does not implement it.
    virtual QUnknownInterface *offer(const QUuid &id) = 0;
};

/// Passes references and queries for other interfaces to the whole object, which owns the part.
template <typename... Interfaces>
class Facet : public FacetBase, public Interfaces...
{
public:
    explicit Facet(QUnknownInterface *whole) : m_whole(whole) {}
    Q_DISABLE_COPY_MOVE(Facet)

    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override
    {
        return m_whole->queryInterface(id, out);
    }
    unsigned long addRef() override { return m_whole->addRef(); }
    unsigned long release() override { return m_whole->release(); }
    QUnknownInterface *offer(const QUuid &id) override
    {
        QUnknownInterface *found = nullptr;
        ((id == Interfaces::Iid ? void(found = static_cast<Interfaces *>(this)) : void()), ...);
        return found;
    }

private:
    QUnknownInterface *const m_whole;
};
