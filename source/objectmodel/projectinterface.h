#pragma once
#include "handout.h"
#include "scripttypes.h"
#include "unknown.h"
#include "varnelassert.h"

/// The interface of a part of a project in a script object. Raises RuntimeError when that part was deleted.
template <typename Interface, typename Impl>
class ProjectInterface
{
public:
    /// @p theIface was made by @p Impl.
    explicit ProjectInterface(InterfacePtr<Interface> theIface) : m_interface(std::move(theIface))
    {
        VARNEL_ASSERT_TEXT(m_interface, "theIface");
    }
    Interface *operator->() const
    {
        (void)object();
        return m_interface.get();
    }
    [[nodiscard]] auto &object() const
    {
        requireMainThread();
        auto *object = m_interface ? static_cast<Impl *>(m_interface.get())->object() : nullptr;
        if (!object)
            raiseDestroyed();
        return *object;
    }

private:
    InterfacePtr<Interface> m_interface;
};

/// A list of new script objects of the class @p T, one for each of @p interfaces, which have a reference each.
template <typename T, typename Interface>
py::list newScriptObjects(const QList<Interface *> &interfaces)
{
    py::list list;
    for (InterfacePtr<Interface> &theIface : takeInterfaces(interfaces))
        list.append(py::cast(std::make_unique<T>(std::move(theIface))));
    return list;
}
