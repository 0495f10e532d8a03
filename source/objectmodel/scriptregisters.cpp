#include "scriptregisters.h"
#include "iregisters.h"
#include "pythonnumber.h"

using namespace Qt::StringLiterals;

ScriptRegisters::ScriptRegisters(const ScriptTarget &target) : m_target(target) {}

QStringList ScriptRegisters::keys() const
{
    const auto registers = m_target.get<IRegisters>();
    QStringList names;
    for (const RegisterInfo &info : askTarget<&IRegisters::registers>(registers))
        names.append(info.name);
    return names;
}

uint ScriptRegisters::value(const QString &name) const
{
    if (!keys().contains(name))
        raisePython(PyExc_KeyError, u"Attempt to read unknown register '%1'"_s.arg(name));
    const auto registers = m_target.get<IRegisters>();
    return askTarget<&IRegisters::value>(registers, name, 0);
}

void ScriptRegisters::setValue(const QString &name, uint value) const
{
    if (!keys().contains(name))
        raisePython(PyExc_KeyError, u"Attempt to write unknown register '%1'"_s.arg(name));
    const auto registers = m_target.get<IRegisters>();
    runTarget<&IRegisters::setValue>(registers, name, value, 0);
    m_target.model().notifyDebugWindows(ObjectModel::RegisterWindow);
}

py::object bindRegisters()
{
    auto type = newScriptType<ScriptRegisters>("Registers", "Provides access to processor registers");
    type.def_property_readonly("keys", &ScriptRegisters::keys, "Returns a list of register names [R]");
    type.def("__len__", [](const ScriptRegisters &self) { return self.keys().size(); });
    type.def("__getitem__", &ScriptRegisters::value);
    type.def("__setitem__", [](const ScriptRegisters &self, const QString &name, py::handle value) {
        self.setValue(name, requireInteger(value.ptr()));
    });
    return type;
}
