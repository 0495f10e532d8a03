#pragma once
#include <memory>
#include <QList>
#include <QUuid>
#include <vector>

using QRESULT = unsigned long;
inline constexpr QRESULT QS_OK = 0;
inline constexpr QRESULT QE_NOINTERFACE = 0x80000004;

/// Base of every interface between Varnel and its plug-ins: reference counted, with a query for other interfaces by
/// UUID.
///
/// The order of the virtual functions is the binary contract, so an interface declares them in that order and inherits
/// from this class only. All calls, in both directions, are made on the user-interface thread, and no function may
/// throw. A returned pointer has a reference for the caller, who releases it. A pointer that is passed as an argument
/// is valid during the call; take a reference to keep it.
class QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x1d8518cd, 0xe8f5, 0x4366, 0x99, 0xe8, 0x87, 0x9f, 0xd7, 0xe4, 0x82, 0xde};

    /// Sets @p out to the interface @p id, with a reference that the caller releases, and returns QS_OK; otherwise sets
    /// it to null and returns QE_NOINTERFACE.
    virtual QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) = 0;
    /// Adds a reference. Use the result in logs only: some objects return the old count, some the new one.
    virtual unsigned long addRef() = 0;
    virtual unsigned long release() = 0; ///< Returns the new count; the object deletes itself when it is 0.

protected:
    ~QUnknownInterface() = default; // an interface is released, never deleted
};

namespace detail {
/// Makes a call of addRef() or release(), with @p operation as its name in messages. False if it throws, which it must
/// not do.
inline bool callReference(const char *operation, void (*call)(void *object), void *object)
{
    QT_TRY
    {
        call(object);
        return true;
    }
    QT_CATCH(...)
    {
        qWarning("%s: an exception has left the plug-in", operation);
    }
    return false;
}
/// The function that counts references for the functions below. The host replaces it by one that reports exceptions to
/// the user.
inline bool (*referenceCaller)(const char *operation, void (*call)(void *object), void *object) = &callReference;
} // namespace detail

/// Releases the reference of an InterfacePtr.
struct InterfaceReleaser
{
    template <typename T>
    void operator()(T *object) const
    {
        detail::referenceCaller(
            "QUnknownInterface::release", [](void *called) { static_cast<T *>(called)->release(); }, object);
    }
};

/// One reference to an interface, released by the destructor. No code counts by hand.
template <typename T>
using InterfacePtr = std::unique_ptr<T, InterfaceReleaser>;

/// The interface T of @p object, which may be null; null if it does not offer it. The same if it throws, which it must
/// not do: the exception is reported on the warning channel.
template <typename T>
[[nodiscard]] InterfacePtr<T> queryInterface(QUnknownInterface *object)
{
    QUnknownInterface *found = nullptr;
    QT_TRY
    {
        if (!object || object->queryInterface(T::Iid, &found) != QS_OK)
            return nullptr;
    }
    QT_CATCH(...)
    {
        qWarning("QUnknownInterface::queryInterface: an exception has left the plug-in");
        return nullptr;
    }
    return InterfacePtr<T>(static_cast<T *>(found));
}

/// Takes over the references that were returned with a list of interfaces.
template <typename T>
[[nodiscard]] std::vector<InterfacePtr<T>> takeInterfaces(const QList<T *> &list)
{
    return std::vector<InterfacePtr<T>>(list.begin(), list.end());
}

/// Adds a reference to @p object, which may be null. Null as well if it throws, which it must not do.
template <typename T>
[[nodiscard]] InterfacePtr<T> shareInterface(T *object)
{
    const auto addReference = [](void *called) { static_cast<T *>(called)->addRef(); };
    if (!object || !detail::referenceCaller("QUnknownInterface::addRef", addReference, object))
        return nullptr;
    return InterfacePtr<T>(object);
}
