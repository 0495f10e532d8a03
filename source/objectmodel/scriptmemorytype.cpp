#include "pythonnumber.h"
#include "scriptmemory.h"

using namespace Qt::StringLiterals;

// The type has both protocols, of sequences and of mappings, and most functions of the first are refused.
// So it fills in the slots of the type itself.

namespace {

constexpr auto NoInteger = "Index must be an integer";

ScriptMemory &memoryOf(PyObject *self)
{
    return py::handle(self).cast<ScriptMemory &>();
}

/// Calls @p call for a slot of the type: an exception becomes Python's error, with @p failure as the result.
template <typename Call, typename Result>
Result guarded(Result failure, const Call &call)
{
    try {
        return call();
    } catch (py::error_already_set &error) {
        error.restore();
    } catch (const std::bad_alloc &) {
        PyErr_NoMemory();
    } catch (const std::exception &exception) {
        PyErr_SetString(PyExc_RuntimeError, exception.what());
    }
    return failure;
}

// Indices. A number beyond 32 bits loses its upper bits, a bound beyond 64 bits becomes the nearest number.

uint addressOf(PyObject *index)
{
    if (!PyLong_Check(index))
        raisePython(PyExc_IndexError, QString::fromLatin1(NoInteger));
    return uint(PyLong_AsUnsignedLongMask(index));
}

qint64 boundOf(PyObject *bound, qint64 byDefault)
{
    if (bound == Py_None)
        return byDefault;
    if (!PyLong_Check(bound))
        raisePython(PyExc_IndexError, QString::fromLatin1(NoInteger));
    int overflow = 0;
    const qint64 value = PyLong_AsLongLongAndOverflow(bound, &overflow);
    if (overflow == 0)
        return value;
    return overflow < 0 ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
}

MemorySlice sliceOf(const ScriptMemory &memory, PyObject *key)
{
    const auto *slice = reinterpret_cast<PySliceObject *>(key);
    if (slice->step != Py_None)
        raisePython(PyExc_IndexError, QString::fromLatin1(NoInteger));
    const qint64 first = boundOf(slice->start, 0);
    const qint64 end = boundOf(slice->stop, std::numeric_limits<qint64>::max());
    // From an address of 64 bits, such as that of a symbol, to one near it: as for a single word.
    const qint64 upper = first > 0 && end >= first ? first - qint64(uint(first)) : 0;
    return memory.slice(first - upper, end - upper);
}

// Reading

py::object readSlice(const ScriptMemory &memory, PyObject *key)
{
    const MemoryBlock cells = memory.read(sliceOf(memory, key));
    py::list list(cells.size());
    for (qsizetype i = 0; i < cells.size(); ++i)
        PyList_SET_ITEM(list.ptr(), i, PyLong_FromUnsignedLong(cells[i].value));
    return list;
}

PyObject *subscript(PyObject *self, PyObject *key)
{
    return guarded<>(static_cast<PyObject *>(nullptr), [=] {
        const ScriptMemory &memory = memoryOf(self);
        if (PySlice_Check(key))
            return readSlice(memory, key).release().ptr();
        return PyLong_FromUnsignedLong(memory.read(addressOf(key)));
    });
}

Py_ssize_t length(PyObject *self)
{
    return guarded(Py_ssize_t(-1), [=] {
        const MemoryRegion region = memoryOf(self).region();
        return std::max<Py_ssize_t>(Py_ssize_t(region.highAddress) - Py_ssize_t(region.lowAddress), 0);
    });
}

// Writing

void writeWord(const ScriptMemory &memory, PyObject *key, PyObject *value)
{
    const uint address = addressOf(key);
    if (!value)
        raisePython(PyExc_TypeError, u"Memory object doesn't support item deletion"_s);
    if (!PyLong_Check(value))
        raisePython(PyExc_ValueError, u"Value must be an integer"_s);
    memory.write(address, uint(PyLong_AsUnsignedLongMask(value)));
}

/// The value of an item that is no int, as a conversion to an int gives it; -1 if there is none.
uint convertedItem(PyObject *item)
{
    const PyNumberMethods *numbers = Py_TYPE(item)->tp_as_number;
    const bool convertible = numbers && numbers->nb_int;
    const auto number = py::reinterpret_steal<py::object>(convertible ? PyNumber_Long(item) : nullptr);
    if (!number)
        PyErr_Clear();
    return number ? uint(PyLong_AsUnsignedLongMask(number.ptr())) : uint(-1);
}

void writeSlice(const ScriptMemory &memory, PyObject *key, PyObject *value)
{
    const MemorySlice slice = sliceOf(memory, key);
    if (!value)
        raisePython(PyExc_TypeError, u"Memory object doesn't support slice deletion"_s);
    if (!PyList_Check(value))
        raisePython(PyExc_IndexError, u"Memory slice assignment must be a list"_s);
    if (PyList_GET_SIZE(value) != Py_ssize_t(slice.units))
        raisePython(PyExc_IndexError, u"Memory slice assignment is wrong size"_s);
    // The conversion of an item may run code that changes the list.
    const auto items = py::reinterpret_steal<py::tuple>(PyList_AsTuple(value));
    MemoryBlock cells;
    bool allIntegers = true;
    for (uint i = 0; i < slice.cells; ++i) {
        PyObject *item = PyTuple_GET_ITEM(items.ptr(), i);
        const bool isInteger = PyLong_Check(item);
        allIntegers &= isInteger;
        cells.append({isInteger ? uint(PyLong_AsUnsignedLongMask(item)) : convertedItem(item), IMemory::Success});
    }
    memory.write(slice, cells);
    if (!allIntegers) // an error only after all has been written
        raisePython(PyExc_IndexError, u"Memory slice assignment must be a list of integers"_s);
}

int assign(PyObject *self, PyObject *key, PyObject *value)
{
    return guarded(-1, [=] {
        const ScriptMemory &memory = memoryOf(self);
        PySlice_Check(key) ? writeSlice(memory, key, value) : writeWord(memory, key, value);
        return 0;
    });
}

// The operations of sequences that are refused

template <typename Result>
Result refuse(const char *text, Result failure)
{
    PyErr_SetString(PyExc_IndexError, text);
    return failure;
}

constexpr PyObject *NoObject = nullptr;

void fillSlots(PyHeapTypeObject *type)
{
    PySequenceMethods &sequence = type->as_sequence;
    sequence.sq_length = length;
    sequence.sq_concat = [](PyObject *, PyObject *) { return refuse("Memory concat not implemented", NoObject); };
    sequence.sq_repeat = [](PyObject *, Py_ssize_t) { return refuse("Memory repeat not implemented", NoObject); };
    sequence.sq_item = [](PyObject *, Py_ssize_t) { return refuse("Memory item not implemented", NoObject); };
    sequence.sq_ass_item = [](PyObject *, Py_ssize_t, PyObject *) {
        return refuse("Memory ass_item not implemented", -1);
    };
    sequence.sq_contains = [](PyObject *, PyObject *) { return refuse("Memory contains not implemented", -1); };
    sequence.sq_inplace_concat = [](PyObject *, PyObject *) {
        return refuse("Memory inplace_concat not implemented", NoObject);
    };
    sequence.sq_inplace_repeat = [](PyObject *, Py_ssize_t) {
        return refuse("Memory inplace_repeat not implemented", NoObject);
    };
    PyMappingMethods &mapping = type->as_mapping;
    mapping.mp_length = length;
    mapping.mp_subscript = subscript;
    mapping.mp_ass_subscript = assign;
}

} // namespace

py::object bindMemory()
{
    auto type = newScriptType<ScriptMemory>("Memory", "Provides access to memory", py::custom_type_setup(fillSlots));
    type.def(
        "disassemble",
        [](const ScriptMemory &self, const py::args &arguments) {
            long long address = 0;
            parseArguments(arguments, "L:disassemble", &address);
            return self.disassemble(uint(address));
        },
        "disassemble(address) - Disassemble specified 'address'");
    type.def_property(
        "verify", [](const ScriptMemory &self) { return int(self.verify()); },
        [](const ScriptMemory &self, py::handle value) { self.setVerify(asLong(value.ptr()) != 0); },
        "Set to 1 to enable varification of memory reads and writes [RW]");
    type.def_property(
        "currentMode", [](const ScriptMemory &self) { return memoryModeName(self.mode()); }, &ScriptMemory::setMode,
        "The currently active mode for accessing memory [RW]");
    type.def_property(
        "currentRegion", [](const ScriptMemory &self) { return self.region().name; }, &ScriptMemory::setRegion,
        "The currently active memory region [RW]");
    type.def_property_readonly(
        "highAddress", [](const ScriptMemory &self) { return self.addresses().second; },
        "High address of current region [R]");
    type.def_property_readonly(
        "lowAddress", [](const ScriptMemory &self) { return self.addresses().first; },
        "Low address of current region [R]");
    type.def_property_readonly(
        "modes", [](const ScriptMemory &self) { return memoryModeNames(self.region()); },
        "List of available memory modes for accessing memory [R]");
    type.def_property_readonly("regions", &ScriptMemory::regions, "List of available memory regions [R]");
    return type;
}
