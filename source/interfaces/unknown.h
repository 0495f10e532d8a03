#pragma once
#include <memory>
#include <QList>
#include <QUuid>
#include <vector>

using QRESULT = unsigned long;
inline constexpr QRESULT QS_OK = 0;
inline constexpr QRESULT QE_NOINTERFACE = 0x80000004;

/// Base of every interface between Varnel and its plug-ins: reference counted, asked for others by UUID.
///
/// The order of the virtual functions of an interface is the binary contract, so an interface declares them in that
/// order and inherits from this class alone. All calls, in both directions, are made on the user-interface thread, and
/// no exception may leave one. A pointer that a function returns carries a reference for the caller, who releases it;
/// a pointer that a function is given is only lent: to keep it, take a reference.
class QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x1d8518cd, 0xe8f5, 0x4366, 0x99, 0xe8, 0x87, 0x9f, 0xd7, 0xe4, 0x82, 0xde};

    /// Sets @p out to the interface named @p id, with a reference that the caller releases, and returns QS_OK;
    /// otherwise sets it to null and returns QE_NOINTERFACE.
    virtual QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) = 0;
    /// Counts one reference more. The result is for logs only: some objects give the old count, some the new one.
    virtual unsigned long addRef() = 0;
    virtual unsigned long release() = 0; ///< Returns the new count; at 0 the object has deleted itself.

protected:
    ~QUnknownInterface() = default; // an interface is released, never deleted
};

/// Gives back the reference that an InterfacePtr holds.
struct InterfaceReleaser
{
    void operator()(QUnknownInterface *object) const { object->release(); }
};

/// One reference on an interface, given back at the end of its life. Nobody counts by hand.
template <typename T>
using InterfacePtr = std::unique_ptr<T, InterfaceReleaser>;

/// Asks @p object, which may be null, for the interface T; null if it does not offer it.
template <typename T>
[[nodiscard]] InterfacePtr<T> queryInterface(QUnknownInterface *object)
{
    QUnknownInterface *found = nullptr;
    if (!object || object->queryInterface(T::Iid, &found) != QS_OK)
        return nullptr;
    return InterfacePtr<T>(static_cast<T *>(found));
}

/// Takes over the references that came with a list of interfaces.
template <typename T>
[[nodiscard]] std::vector<InterfacePtr<T>> takeInterfaces(const QList<T *> &list)
{
    return std::vector<InterfacePtr<T>>(list.begin(), list.end());
}

/// Takes a further reference on @p object, which may be null.
template <typename T>
[[nodiscard]] InterfacePtr<T> shareInterface(T *object)
{
    if (object)
        object->addRef();
    return InterfacePtr<T>(object);
}
