#include "pyqtwrapper.h"
#include "pythonstring.h"
#include "qtwrapper.h"
#include "scripttypes.h"
using namespace Qt::StringLiterals;

namespace {

struct PyQtWrapper
{
    PyObject_HEAD QtWrapper *wrapper;
};

struct PySlotWrapper
{
    PyObject_HEAD PyObject *object; ///< a PyQtWrapper, which notices the end of its wrapper
    QString *name;
};

PyQtWrapper *asWrapper(PyObject *self)
{
    return reinterpret_cast<PyQtWrapper *>(self);
}

PySlotWrapper *asSlot(PyObject *self)
{
    return reinterpret_cast<PySlotWrapper *>(self);
}

QtWrapper &wrapperIn(PyObject *self)
{
    requireMainThread();
    if (!asWrapper(self)->wrapper)
        raiseDestroyed();
    return *asWrapper(self)->wrapper;
}

/// Calls @p function. If it throws, sets the error of Python and returns @p failed.
template <typename Result, typename Function>
Result guarded(Result failed, const Function &function)
{
    try {
        return function();
    } catch (py::error_already_set &error) {
        error.restore();
    } catch (const std::exception &error) { // of the object's own code
        PyErr_SetString(PyExc_RuntimeError, error.what());
    } catch (...) {
        PyErr_SetString(PyExc_RuntimeError, "unknown exception");
    }
    return failed;
}

template <typename Function>
PyObject *returned(const Function &function)
{
    return guarded<PyObject *>(nullptr, [&] { return function().release(); });
}

// PyQtWrapper

PyObject *wrapperText(PyObject *self)
{
    if (!isMainThread()) // an error while a log is written would hide what is logged
        return toPython(u"<Object of the main thread>"_s).release();
    const QtWrapper *wrapper = asWrapper(self)->wrapper;
    return toPython(wrapper ? wrapper->text() : u"<Destroyed object>"_s).release();
}

PyObject *readAttribute(PyObject *self, PyObject *name)
{
    return returned([&] { return wrapperIn(self).attribute(fromPython(name)); });
}

int writeAttribute(PyObject *self, PyObject *name, PyObject *value)
{
    return guarded(-1, [&] {
        if (!value)
            raisePython(PyExc_AttributeError, u"Attributes cannot be deleted"_s);
        wrapperIn(self).setAttribute(fromPython(name), value);
        return 0;
    });
}

PyObject *attributeNames(PyObject *self, PyObject *)
{
    return returned([&] {
        requireMainThread();
        const QtWrapper *wrapper = asWrapper(self)->wrapper;
        return PythonReference(py::cast(wrapper ? wrapper->attributeNames() : QStringList()).release().ptr());
    });
}

void deleteObject(PyObject *self)
{
    PyTypeObject *type = Py_TYPE(self);
    PyObject_Free(self);
    Py_DECREF(type);
}

// PySlotWrapper

/// Only the name: any other attribute fails without an exception, which Python reports as a SystemError.
PyObject *readSlotAttribute(PyObject *self, PyObject *name)
{
    const QString text = fromPython(name);
    return text == "__name__"_L1 || text == "__qualname__"_L1 ? toPython(*asSlot(self)->name).release() : nullptr;
}

PyObject *callSlot(PyObject *self, PyObject *arguments, PyObject *keywords)
{
    return returned([&] {
        if (keywords && PyDict_Size(keywords) > 0)
            raisePython(PyExc_TypeError, u"%1 takes no keyword arguments"_s.arg(*asSlot(self)->name));
        return wrapperIn(asSlot(self)->object).callSlot(*asSlot(self)->name, arguments);
    });
}

void deleteSlot(PyObject *self)
{
    Py_DECREF(asSlot(self)->object);
    delete asSlot(self)->name;
    deleteObject(self);
}

/// The full name has the module in front, which scripts do not read in the texts of errors.
PyObject *newType(const char *fullName, int size, PyType_Slot *slots)
{
    PyType_Spec spec{fullName, size, 0, Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION,
                     slots};
    auto *type = reinterpret_cast<PyTypeObject *>(PyType_FromSpec(&spec));
    type->tp_name = fullName + qstrlen("varnel.");
    return reinterpret_cast<PyObject *>(type);
}

PyTypeObject *asType(PyObject *type)
{
    return reinterpret_cast<PyTypeObject *>(type);
}

} // namespace

PyObject *pyQtWrapperType()
{
    static PyMethodDef methods[] = {{"__dir__", attributeNames, METH_NOARGS, nullptr}, {}};
    static PyType_Slot slots[] = {{Py_tp_repr, reinterpret_cast<void *>(wrapperText)},
                                  {Py_tp_getattro, reinterpret_cast<void *>(readAttribute)},
                                  {Py_tp_setattro, reinterpret_cast<void *>(writeAttribute)},
                                  {Py_tp_methods, methods},
                                  {Py_tp_dealloc, reinterpret_cast<void *>(deleteObject)},
                                  {}};
    static PyObject *const type = newType("varnel.PyQtWrapper", sizeof(PyQtWrapper), slots);
    return type;
}

PyObject *pySlotWrapperType()
{
    static PyType_Slot slots[] = {{Py_tp_getattro, reinterpret_cast<void *>(readSlotAttribute)},
                                  {Py_tp_call, reinterpret_cast<void *>(callSlot)},
                                  {Py_tp_dealloc, reinterpret_cast<void *>(deleteSlot)},
                                  {}};
    static PyObject *const type = newType("varnel.PySlotWrapper", sizeof(PySlotWrapper), slots);
    return type;
}

PythonReference newPyQtWrapper(QtWrapper *wrapper)
{
    auto *object = PyObject_New(PyQtWrapper, asType(pyQtWrapperType()));
    if (!object)
        throw py::error_already_set();
    object->wrapper = wrapper;
    return PythonReference(reinterpret_cast<PyObject *>(object));
}

void detachPyQtWrapper(PyObject *object)
{
    asWrapper(object)->wrapper = nullptr;
}

QtWrapper *wrapperOf(PyObject *object)
{
    return PyObject_TypeCheck(object, asType(pyQtWrapperType())) ? asWrapper(object)->wrapper : nullptr;
}

PythonReference newBoundSlot(PyObject *object, const QString &name)
{
    auto *slot = PyObject_New(PySlotWrapper, asType(pySlotWrapperType()));
    if (!slot)
        throw py::error_already_set();
    slot->object = Py_NewRef(object);
    slot->name = new QString(name);
    const PythonReference owner(reinterpret_cast<PyObject *>(slot));
    return PythonReference(PyMethod_New(owner.get(), object));
}
