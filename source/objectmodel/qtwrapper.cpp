#include "qtwrapper.h"
#include "pyqtwrapper.h"
#include "pythoncall.h"
#include "pythonerrors.h"
#include "pythonstring.h"
#include "qtvalues.h"
#include "scripttypes.h"
#include <QMetaProperty>
#include <QScopedValueRollback>
using namespace Qt::StringLiterals;

namespace {

using Registry = QMap<QObject *, QtWrapper *>;

/// Used until the end of the process, after the destruction of static objects.
Registry &registry()
{
    static auto &wrappers = *new Registry;
    return wrappers;
}

bool isForScripts(const QString &objectName)
{
    return !objectName.startsWith(u'_');
}

PythonReference listOf(const QStringList &texts)
{
    return PythonReference(py::cast(texts).release().ptr());
}

QString quotedName(const QObject &object)
{
    return object.objectName().isEmpty() ? u"unnamed"_s : object.objectName();
}

} // namespace

// Lifetime

QtWrapper *QtWrapper::get(QObject *object, bool owned)
{
    QtWrapper *known = registry().value(object);
    return known ? known : new QtWrapper(object, owned);
}

QtWrapper *QtWrapper::of(_object *pythonObject)
{
    return wrapperOf(pythonObject);
}

qsizetype QtWrapper::count()
{
    return registry().size();
}

void QtWrapper::deleteAll()
{
    const Registry all = std::exchange(registry(), {});
    for (const QtWrapper *wrapper : all)
        delete wrapper;
}

QtWrapper::QtWrapper(QObject *target, bool owned)
    : m_target(target)
    , m_owned(owned)
    , m_meta(target->metaObject())
    , m_names(cachedScriptNames(*m_meta))
    , m_pythonObject(newPyQtWrapper(this))
{
    connect(target, &QObject::destroyed, this, &QtWrapper::objectDestroyed); // before the sink: handlers find no target
    m_sink = std::make_unique<SignalSink>(target, this);
    registry().insert(target, this);
}

QtWrapper::~QtWrapper()
{
    m_sink.reset();
    detachPyQtWrapper(m_pythonObject.get());
    if (m_owned && m_target && PythonCall::isRunning())
        m_target->deleteLater(); // a script that closes the program may have been called by a signal of the target
    else if (m_owned)
        delete m_target.data();
}

void QtWrapper::objectDestroyed()
{
    m_target = nullptr;
}

PythonReference QtWrapper::pythonObject() const
{
    return newPythonReference(m_pythonObject.get());
}

QString QtWrapper::text() const
{
    if (!m_target)
        return u"<Destroyed object>"_s;
    const QString address = QString::asprintf("%.8llX", qulonglong(quintptr(m_target.data())));
    return u"<%2 instance '%1' at 0x%3>"_s.arg(quotedName(*m_target),
                                               QString::fromUtf8(m_target->metaObject()->className()), address);
}

// Attributes

PythonReference QtWrapper::attribute(const QString &name) const
{
    const QObject &target = requireAlive(m_target);
    if (name == "properties"_L1)
        return listOf(m_names.properties.keys());
    if (name == "signals"_L1)
        return listOf(m_names.handlers.keys());
    if (name == "slots"_L1)
        return listOf(m_names.methods.keys());
    if (name == "children"_L1)
        return children();
    if (QObject *found = child(name))
        return get(found, false)->pythonObject();
    if (const auto property = m_names.properties.find(name); property != m_names.properties.end())
        return propertyToPython(target.metaObject()->property(*property).read(&target));
    return member(name);
}

PythonReference QtWrapper::member(const QString &name) const
{
    if (m_names.methods.contains(name))
        return newBoundSlot(m_pythonObject.get(), name);
    const auto signal = m_names.handlers.find(name);
    if (signal == m_names.handlers.end())
        raisePython(PyExc_AttributeError, u"Unknown property '%1'"_s.arg(name));
    const auto handler = m_handlers.find(*signal);
    return newPythonReference(handler == m_handlers.end() ? Py_None : handler->second.get());
}

QObject *QtWrapper::child(const QString &name) const
{
    if (name.isEmpty() || !isForScripts(name))
        return nullptr;
    return m_target->findChild<QObject *>(name, Qt::FindDirectChildrenOnly);
}

PythonReference QtWrapper::children() const
{
    PythonReference list(PyList_New(0));
    for (QObject *child : m_target->children()) {
        if (isForScripts(child->objectName()))
            PyList_Append(list.get(), get(child, false)->m_pythonObject.get());
    }
    return list;
}

QStringList QtWrapper::attributeNames() const
{
    QStringList names{u"children"_s, u"properties"_s, u"signals"_s, u"slots"_s};
    names += m_names.properties.keys() + m_names.methods.keys() + m_names.handlers.keys();
    for (const QObject *child : m_target ? m_target->children() : QObjectList()) {
        if (!child->objectName().isEmpty() && isForScripts(child->objectName()))
            names.append(child->objectName());
    }
    return names;
}

void QtWrapper::setAttribute(const QString &name, _object *value)
{
    requireAlive(m_target);
    if (const auto property = m_names.properties.find(name); property != m_names.properties.end())
        writeProperty(*property, value);
    else if (const auto signal = m_names.handlers.find(name); signal != m_names.handlers.end())
        setHandler(*signal, value);
    else
        raisePython(PyExc_AttributeError, u"Unknown property"_s);
}

void QtWrapper::writeProperty(int index, _object *value)
{
    const QMetaProperty property = m_target->metaObject()->property(index);
    if (!property.isValid())
        raisePython(PyExc_AttributeError, u"Property is invalid"_s);
    if (!property.isScriptable())
        raisePython(PyExc_AttributeError, u"Property is not scriptable"_s);
    if (!property.isWritable())
        raisePython(PyExc_AttributeError, u"Property is read-only"_s);
    const QVariant converted = propertyFromPython(value);
    if (!converted.isValid())
        raisePython(PyExc_TypeError, u"Unsupported Python type"_s);
    if (!property.write(m_target, converted)) // which may run handlers, and so delete this wrapper
        raisePython(PyExc_AttributeError, u"Could not set property"_s);
}

// Slots

PythonReference QtWrapper::callSlot(const QString &name, _object *arguments) const
{
    QObject &target = requireAlive(m_target);
    const int index = m_names.methods.value(name, -1);
    const QMetaMethod slot = target.metaObject()->method(index);
    const int count = slot.parameterCount();
    if (PyTuple_Size(arguments) != count + 1)
        raisePython(PyExc_TypeError,
                    u"%1 expects %2 arguments"_s.arg(QString::fromUtf8(slot.name()), QString::number(count)));
    SlotArguments converted(slot);
    for (int i = 1; i <= count; ++i)
        converted.append(PyTuple_GetItem(arguments, i));
    QMetaObject::metacall(&target, QMetaObject::InvokeMetaMethod, index, converted.pointers());
    return converted.result(); // the slot may have deleted this wrapper
}

// Signals

void QtWrapper::setHandler(int id, _object *callable)
{
    if (callable != Py_None && !PyCallable_Check(callable))
        raisePython(PyExc_TypeError, u"Function expected"_s);
    PythonReference old; // its destructor may run Python code, which must find a consistent table
    if (const auto found = m_handlers.find(id); found != m_handlers.end()) {
        old = std::move(found->second);
        m_handlers.erase(found);
    }
    if (callable != Py_None)
        m_handlers.emplace(id, newPythonReference(callable));
}

/// Handlers that cause the next signal by what they do are stopped while there is still room to print the error.
void QtWrapper::signal(int id, void **args)
{
    const auto found = m_handlers.find(id);
    if (found == m_handlers.end())
        return;
    constexpr int MaximumDepth = 100;
    static int depth = 0;
    if (depth == MaximumDepth)
        return deferPythonError(PyExc_RecursionError, u"Too many signals within handlers of signals"_s);
    const QScopedValueRollback deeper(depth, depth + 1);
    const PythonReference handler = newPythonReference(found->second.get()); // it may replace itself, or delete this
    const PythonReference arguments = handlerArguments(id, args);
    if (!arguments)
        return;
    const PythonCall call;
    const PythonReference result(PyObject_CallObject(handler.get(), arguments.get()));
}

/// The sender and the arguments of the signal; null after one that cannot be converted, whose error is printed with the
/// next one.
PythonReference QtWrapper::handlerArguments(int id, void **args) const
{
    const QMetaMethod signal = m_meta->method(id);
    PythonReference arguments(PyTuple_New(signal.parameterCount() + 1));
    PyTuple_SetItem(arguments.get(), 0, pythonObject().release());
    try {
        for (int i = 0; i < signal.parameterCount(); ++i) {
            PythonReference argument =
                argumentToPython(signal.parameterMetaType(i), signal.parameterTypeName(i), args[i + 1]);
            PyTuple_SetItem(arguments.get(), i + 1, argument.release());
        }
        return arguments;
    } catch (py::error_already_set &error) {
        error.restore();
        deferPythonError();
        return nullptr;
    }
}
