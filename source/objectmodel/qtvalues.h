#pragma once
#include "pythonreference.h"
#include <deque>
#include <QMetaMethod>
#include <QVariant>
#include <variant>

// Values between Python and the toolkit. All functions raise a Python exception (py::error_already_set) for values that
// they cannot convert.

/// The value of a property.
[[nodiscard]] PythonReference propertyToPython(const QVariant &value);

/// A string, int or float for a property; invalid for any other object.
[[nodiscard]] QVariant propertyFromPython(_object *value);

/// The value of type @p type at @p address, an argument of a signal or the result of a slot. @p typeName is the name
/// that its declaration uses.
[[nodiscard]] PythonReference argumentToPython(QMetaType type, const QByteArray &typeName, const void *address);

/// The arguments of one call of a slot, and its result.
class SlotArguments
{
public:
    explicit SlotArguments(const QMetaMethod &slot);

    /// Appends the next argument. @p value must exist until the call has ended.
    void append(_object *value);
    /// As `QObject::qt_metacall` takes them.
    [[nodiscard]] void **pointers() { return m_pointers.data(); }
    [[nodiscard]] PythonReference result() const; ///< None if the slot returns nothing.

private:
    using Value = std::variant<bool, int, double, QString, const char *, QObject *>;
    [[nodiscard]] Value convert(_object *value, QMetaType type, const QByteArray &typeName) const;

    const QMetaMethod m_slot;
    QVariant m_result;
    std::deque<Value> m_values; ///< the addresses of its elements do not change
    std::vector<void *> m_pointers;
};
