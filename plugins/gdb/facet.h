#pragma once
#include "unknown.h"

/// A part of an object that implements some of its interfaces, in a class of its own.
class FacetBase
{
public:
    virtual ~FacetBase() = default;
    /// The interface named @p id, without a new reference; null if it is not of this part.
    virtual QUnknownInterface *offer(const QUuid &id) = 0;
};

/// References, and questions for other interfaces, go to the whole object, which owns the part.
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
