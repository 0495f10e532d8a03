#include "scriptperipherals.h"
#include "pythonnumber.h"

using namespace Qt::StringLiterals;

namespace {
QList<PeripheralInfo> peripheralsOf(const ScriptTarget &target)
{
    const auto interface = target.get<IPeripherals>();
    return askTarget<&IPeripherals::peripherals>(interface);
}

/// The names of peripherals, or of the registers of one.
template <typename Info>
QStringList namesOf(const QList<Info> &list)
{
    QStringList names;
    for (const Info &info : list)
        names.append(info.name);
    return names;
}
} // namespace

// All peripherals

ScriptPeripherals::ScriptPeripherals(const ScriptTarget &target) : m_target(target) {}

QStringList ScriptPeripherals::keys() const
{
    return namesOf(peripheralsOf(m_target));
}

int ScriptPeripherals::indexOf(const QString &name) const
{
    const auto index = keys().indexOf(name);
    if (index < 0)
        raisePython(PyExc_KeyError, u"Unknown peripheral '%1'"_s.arg(name));
    return int(index);
}

// One of them

ScriptPeripheral::ScriptPeripheral(const ScriptTarget &target, int index) : m_target(target), m_index(index) {}

/// An empty one if the target has fewer peripherals now.
PeripheralInfo ScriptPeripheral::info() const
{
    return peripheralsOf(m_target).value(m_index);
}

QStringList ScriptPeripheral::keys() const
{
    return namesOf(info().registers);
}

uint ScriptPeripheral::value(const QString &name) const
{
    const PeripheralInfo peripheral = info();
    if (!namesOf(peripheral.registers).contains(name))
        raisePython(PyExc_KeyError, u"Attempt to read unknown register '%1'"_s.arg(name));
    const auto interface = m_target.get<IPeripherals>();
    return askTarget<&IPeripherals::value>(interface, peripheral.name, name);
}

void ScriptPeripheral::setValue(const QString &name, uint value) const
{
    const PeripheralInfo peripheral = info();
    if (!namesOf(peripheral.registers).contains(name))
        raisePython(PyExc_KeyError, u"Attempt to write unknown register '%1'"_s.arg(name));
    const auto interface = m_target.get<IPeripherals>();
    runTarget<&IPeripherals::setValue>(interface, peripheral.name, name, value);
    m_target.model().notifyDebugWindows(ObjectModel::DataWindows);
}

// The types

py::object bindPeripherals()
{
    auto type = newScriptType<ScriptPeripherals>("Peripherals", "Provides access to peripheral registers");
    type.def_property_readonly("keys", &ScriptPeripherals::keys, "Returns list of peripheral names [R]");
    type.def("__len__", [](const ScriptPeripherals &self) { return self.keys().size(); });
    type.def("__getitem__", [](const ScriptPeripherals &self, const QString &name) {
        return newScriptObject<ScriptPeripheral>(self.target(), self.indexOf(name));
    });
    return type;
}

py::object bindPeripheral()
{
    auto type =
        newScriptType<ScriptPeripheral>("Peripheral", "Provides access to a single peripheral and its registers");
    type.def_property_readonly("keys", &ScriptPeripheral::keys, "Returns list of peripheral register names [R]");
    type.def("__len__", [](const ScriptPeripheral &self) { return self.keys().size(); });
    type.def("__getitem__", &ScriptPeripheral::value);
    type.def("__setitem__", [](const ScriptPeripheral &self, const QString &name, py::handle value) {
        self.setValue(name, requireInteger(value.ptr()));
    });
    return type;
}
