#include "modelpointer.h"
#include <QMultiHash>

namespace {

using Pointers = QMultiHash<const void *, ModelPointerBase *>;

/// Never deleted: scripts may hold pointers until the very end of the program.
Pointers &pointers()
{
    static auto &all = *new Pointers;
    return all;
}

} // namespace

ModelPointerBase::ModelPointerBase(const void *object) : m_object(object)
{
    if (m_object)
        pointers().insert(m_object, this);
}

ModelPointerBase::~ModelPointerBase()
{
    if (m_object)
        pointers().remove(m_object, this);
}

void ModelPointerBase::objectDeleted(const void *object)
{
    Pointers &all = pointers();
    if (all.isEmpty())
        return;
    for (auto [it, end] = all.equal_range(object); it != end; ++it)
        it.value()->m_object = nullptr;
    all.remove(object);
}
