#include "qtvalues.h"
#include "pythonstring.h"
#include "qtwrapper.h"
#include "scripttypes.h"
#include <climits>
using namespace Qt::StringLiterals;

namespace {

enum class Kind { Nothing, Bool, Int, Double, String, CString, Object, Unsupported };

/// The class of a pointer type such as "const QWidget*".
QByteArray pointedClass(QByteArray typeName)
{
    if (typeName.startsWith("const "))
        typeName.remove(0, int(qstrlen("const ")));
    return typeName.chopped(1);
}

Kind kindOf(QMetaType type, const QByteArray &typeName)
{
    switch (type.id()) {
    case QMetaType::Void:
        return Kind::Nothing;
    case QMetaType::Bool:
        return Kind::Bool;
    case QMetaType::Int:
        return Kind::Int;
    case QMetaType::Double:
        return Kind::Double;
    case QMetaType::QString:
        return Kind::String;
    default:
        break;
    }
    if (typeName == "const char*" || typeName == "char*")
        return Kind::CString;
    // A class that is only declared where its meta-object was compiled is not known to be one of objects.
    return typeName.endsWith('*') && !typeName.endsWith("**") ? Kind::Object : Kind::Unsupported;
}

PythonReference checked(_object *newReference)
{
    if (!newReference)
        throw py::error_already_set();
    return PythonReference(newReference);
}

[[noreturn]] void raiseUnsupported(const QByteArray &typeName)
{
    raisePython(PyExc_TypeError, u"Unsupported parameter type (%1)"_s.arg(QString::fromUtf8(typeName)));
}

PythonReference objectToPython(const QByteArray &className, QObject *object)
{
    if (className != "QObject" && className != "QWidget")
        raisePython(PyExc_TypeError, u"Unsupported pointer type (%1*)"_s.arg(QString::fromUtf8(className)));
    return object ? QtWrapper::get(object, false)->pythonObject() : newPythonReference(Py_None);
}

/// An integer of 32 bits, signed or unsigned. Fractions of a float are cut off.
int integerFromPython(_object *value)
{
    const PythonReference whole = PyFloat_Check(value) ? checked(PyNumber_Long(value)) : newPythonReference(value);
    const long long number = PyLong_AsLongLong(whole.get());
    if (number == -1 && PyErr_Occurred())
        throw py::error_already_set();
    if (number < INT_MIN || number > UINT_MAX)
        raisePython(PyExc_OverflowError, u"The number is too large"_s);
    return int(uint(number));
}

const char *utf8FromPython(_object *value)
{
    const char *text = PyUnicode_AsUTF8(value);
    if (!text)
        throw py::error_already_set();
    return text;
}

void requireString(_object *value)
{
    if (!PyUnicode_Check(value))
        raisePython(PyExc_TypeError, u"String expected, %1 found"_s.arg(QString::fromUtf8(Py_TYPE(value)->tp_name)));
}

QObject *objectFromPython(_object *value, QMetaType type, const QByteArray &typeName)
{
    const QByteArray className = pointedClass(typeName);
    const QtWrapper *wrapper = QtWrapper::of(value);
    QObject *object = wrapper ? wrapper->object() : nullptr;
    if (object && object->inherits(className.constData()))
        return object;
    if (type.flags() & QMetaType::PointerToQObject)
        raisePython(PyExc_TypeError, u"Expected %1*"_s.arg(QString::fromUtf8(className)));
    raiseUnsupported(typeName);
}

} // namespace

PythonReference propertyToPython(const QVariant &value)
{
    if (value.metaType().flags() & QMetaType::IsEnumeration)
        return checked(PyLong_FromLong(value.toInt()));
    switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::QByteArray:
        return toPython(value.toString());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Bool:
        return checked(PyLong_FromLong(value.toInt()));
    case QMetaType::Double:
    case QMetaType::Float:
        return checked(PyFloat_FromDouble(value.toDouble()));
    default:
        raisePython(PyExc_TypeError,
                    u"Property type is unsupported (%1)"_s.arg(QString::fromUtf8(value.metaType().name())));
    }
}

QVariant propertyFromPython(_object *value)
{
    if (PyUnicode_Check(value))
        return fromPython(value);
    if (PyLong_Check(value))
        return integerFromPython(value);
    if (PyFloat_Check(value))
        return PyFloat_AS_DOUBLE(value);
    return {};
}

PythonReference argumentToPython(QMetaType type, const QByteArray &typeName, const void *address)
{
    switch (kindOf(type, typeName)) {
    case Kind::Nothing:
        return newPythonReference(Py_None);
    case Kind::Bool:
        return checked(PyLong_FromLong(*static_cast<const bool *>(address)));
    case Kind::Int:
        return checked(PyLong_FromLong(*static_cast<const int *>(address)));
    case Kind::Double:
        return checked(PyFloat_FromDouble(*static_cast<const double *>(address)));
    case Kind::String:
        return toPython(*static_cast<const QString *>(address));
    case Kind::CString:
        return toPython(QString::fromUtf8(*static_cast<const char *const *>(address)));
    case Kind::Object:
        return objectToPython(pointedClass(typeName), *static_cast<QObject *const *>(address));
    case Kind::Unsupported:
        break;
    }
    raiseUnsupported(typeName);
}

SlotArguments::SlotArguments(const QMetaMethod &slot) : m_slot(slot), m_pointers{nullptr}
{
    const Kind kind = kindOf(slot.returnMetaType(), slot.typeName());
    if (kind != Kind::Nothing && kind != Kind::Unsupported)
        m_result = QVariant(slot.returnMetaType());
    if (m_result.isValid())
        m_pointers[0] = m_result.data();
}

void SlotArguments::append(_object *value)
{
    const int index = int(m_values.size());
    m_values.push_back(convert(value, m_slot.parameterMetaType(index), m_slot.parameterTypeName(index)));
    m_pointers.push_back(std::visit([](auto &stored) -> void * { return &stored; }, m_values.back()));
}

SlotArguments::Value SlotArguments::convert(_object *value, QMetaType type, const QByteArray &typeName) const
{
    switch (kindOf(type, typeName)) {
    case Kind::Bool:
        return integerFromPython(value) != 0;
    case Kind::Int:
        return integerFromPython(value);
    case Kind::Double: {
        const double number = PyFloat_AsDouble(value);
        if (number == -1 && PyErr_Occurred())
            throw py::error_already_set();
        return number;
    }
    case Kind::String:
        requireString(value);
        return fromPython(value);
    case Kind::CString:
        requireString(value);
        return utf8FromPython(value);
    case Kind::Object:
        return objectFromPython(value, type, typeName);
    case Kind::Nothing:
    case Kind::Unsupported:
        break;
    }
    raiseUnsupported(typeName);
}

PythonReference SlotArguments::result() const
{
    return argumentToPython(m_slot.returnMetaType(), m_slot.typeName(), m_pointers[0]);
}
