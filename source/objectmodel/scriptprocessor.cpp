#include "scriptprocessor.h"
#include "imemory.h"
#include "isourcemapping.h"
#include "isymbollookup.h"
#include "isymbols64.h"
#include "programplace.h"
#include "project.h"
#include "scriptmemory.h"
#include <utility>

using namespace Qt::StringLiterals;

ScriptProcessor::ScriptProcessor(const ScriptTarget &target)
    : m_target(target), m_binding(target.project()->executionBindings())
{}

// Running

QString ScriptProcessor::evaluate(const QString &expression) const
{
    const auto environment = m_target.environment();
    QString result;
    const int status = askTarget<&IExecutionEnvironment::evaluate>(environment, expression, result);
    if (status != 0)
        raisePython(PyExc_ValueError, u"Could not evaluate expression: %1"_s.arg(result));
    return result;
}

void ScriptProcessor::run() const
{
    const auto environment = m_target.environment();
    runTarget<&IExecutionEnvironment::run>(environment);
}

void ScriptProcessor::runTo(const QString &file, int line) const
{
    const auto environment = m_target.environment();
    runTarget<&IExecutionEnvironment::runTo>(environment, file, line);
}

void ScriptProcessor::pause() const
{
    const auto environment = m_target.environment();
    runTarget<&IExecutionEnvironment::pause>(environment);
}

void ScriptProcessor::stepInto(const QString &file) const
{
    const auto environment = m_target.environment();
    runTarget<&IExecutionEnvironment::stepInto>(environment, file);
}

void ScriptProcessor::stepOver(const QString &file) const
{
    const auto environment = m_target.environment();
    runTarget<&IExecutionEnvironment::stepOver>(environment, file);
}

void ScriptProcessor::wakeUp() const
{
    const auto environment = m_target.environment();
    runTarget<&IExecutionEnvironment::wakeUp>(environment);
}

long ScriptProcessor::processorStatus() const
{
    const auto environment = m_target.environment();
    return askTarget<&IExecutionEnvironment::processorStatus>(environment);
}

long ScriptProcessor::programStatus() const
{
    const auto environment = m_target.environment();
    return askTarget<&IExecutionEnvironment::programStatus>(environment);
}

BreakpointLocation ScriptProcessor::currentLocation() const
{
    const auto environment = m_target.environment();
    BreakpointLocation place;
    const bool known = askTarget<&IExecutionEnvironment::currentLocation>(environment, place.file, place.line);
    return known ? place : BreakpointLocation();
}

// Breakpoints

namespace {
/// A line as environments count it, for a line of a script.
int environmentLine(const QString &file, int line)
{
    return ProgramPlace::fromBreakpoint(file, line).isDisassembly() ? lineOfAddress(uint(line)) : line;
}

QString notSet()
{
    return u"Could not set breakpoint"_s;
}

/// The symbols of an environment: those with wide addresses if it offers them. An address without wide symbols is cut
/// to 32 bits.
class Symbols
{
public:
    explicit Symbols(const ScriptTarget &target)
        : m_wide(target.find<ISymbols64>()), m_mapping(target.find<ISourceMapping>())
    {}

    [[nodiscard]] bool exist() const { return m_wide || m_mapping; }
    [[nodiscard]] std::optional<quint64> address(const QString &name) const
    {
        quint64 wide = 0;
        uint narrow = 0;
        if (m_wide)
            return askTarget<&ISymbols64::symbolAddress>(m_wide, name, wide) ? std::optional(wide) : std::nullopt;
        const bool found = m_mapping && askTarget<&ISourceMapping::symbolAddress>(m_mapping, name, narrow);
        return found ? std::optional<quint64>(narrow) : std::nullopt;
    }
    [[nodiscard]] std::optional<BreakpointLocation> source(quint64 address, int kind) const
    {
        BreakpointLocation place;
        const bool found = m_wide
                               ? askTarget<&ISymbols64::sourceLocation>(m_wide, address, kind, place.file, place.line)
                               : m_mapping
                                     && askTarget<&ISourceMapping::sourceLocation>(m_mapping, uint(address), kind,
                                                                                   place.file, place.line);
        return found ? std::optional(place) : std::nullopt;
    }
    /// The first line of an address. The kind that the environment is asked for first is the one at which a breakpoint
    /// is expected.
    [[nodiscard]] std::optional<BreakpointLocation> breakpointPlace(quint64 address) const
    {
        for (const int kind : {1, 2, 0, 3}) {
            if (auto place = source(address, kind))
                return place;
        }
        return {};
    }

private:
    InterfacePtr<ISymbols64> m_wide;
    InterfacePtr<ISourceMapping> m_mapping;
};
} // namespace

void ScriptProcessor::setBreakpoint(const QString &file, int line) const
{
    changeBreakpoint(file, environmentLine(file, line), BreakpointEnabled, notSet());
}

void ScriptProcessor::setBreakpointAtAddress(quint64 address) const
{
    const std::optional<BreakpointLocation> place = Symbols(m_target).breakpointPlace(address);
    if (!place)
        raisePython(PyExc_ValueError, notSet());
    changeBreakpoint(place->file, place->line, BreakpointEnabled, notSet());
}

void ScriptProcessor::setBreakpointAtSymbol(const QString &name) const
{
    const std::optional<quint64> address = Symbols(m_target).address(name);
    if (!address)
        raisePython(PyExc_ValueError, notSet());
    setBreakpointAtAddress(*address);
}

void ScriptProcessor::disableBreakpoint(const QString &file, int line) const
{
    changeBreakpoint(file, line, BreakpointDisabled, u"Could not disable breakpoint"_s);
}

void ScriptProcessor::removeBreakpoint(const QString &file, int line) const
{
    changeBreakpoint(file, line, BreakpointRemoved, u"Could not remove breakpoint"_s);
}

/// Raises @p failure if the environment has no breakpoints. Only a breakpoint that is to be set must also succeed.
void ScriptProcessor::changeBreakpoint(const QString &file, int line, BreakpointState state,
                                       const QString &failure) const
{
    const auto breakpoints = m_target.find<IBreakpoints>();
    const bool done =
        breakpoints
        && (askTarget<&IBreakpoints::setBreakpoint>(breakpoints, file, line, state) == 0 || state != BreakpointEnabled);
    if (!done)
        raisePython(PyExc_ValueError, failure);
}

QList<BreakpointRecord> ScriptProcessor::breakpoints() const
{
    QList<BreakpointRecord> list;
    const auto breakpoints = m_target.find<IBreakpoints>();
    if (!breakpoints)
        return list;
    for (const BreakpointRecord &record : askTarget<&IBreakpoints::breakpoints>(breakpoints)) {
        if (!record.locations.isEmpty())
            list.append({{record.locations.first()}, record.state});
    }
    return list;
}

// Symbols

namespace {
void requireSymbols(bool exist, PyObject *failure)
{
    if (!exist)
        raisePython(failure, u"The debugger that you are using does not export symbol information"_s);
}
} // namespace

quint64 ScriptProcessor::symbolAddress(const QString &name) const
{
    const Symbols symbols(m_target);
    requireSymbols(symbols.exist(), PyExc_ValueError);
    const std::optional<quint64> address = symbols.address(name);
    if (!address)
        raisePython(PyExc_ValueError, u"Symbol '%1' not found"_s.arg(name));
    return *address;
}

QString ScriptProcessor::symbolAt(quint64 address)
{
    const auto wide = m_target.find<ISymbols64>();
    const auto symbols = m_target.find<ISymbolLookup>();
    requireSymbols(wide || symbols, PyExc_ValueError);
    const quint64 asked = wide ? address : uint(address);
    const int region = memoryRegion();
    QString name;
    if (!(wide ? askTarget<&ISymbols64::symbolAt>(wide, asked, region, name)
               : askTarget<&ISymbolLookup::symbolAt>(symbols, uint(asked), region, name)))
        raisePython(PyExc_ValueError, u"No symbol found at address 0x%1"_s.arg(QString::number(asked, 16)));
    return name;
}

quint64 ScriptProcessor::sourceAddress(const QString &file, int line) const
{
    const auto wide = m_target.find<ISymbols64>();
    const auto symbols = m_target.find<ISymbolLookup>();
    requireSymbols(wide || symbols, PyExc_RuntimeError); // RuntimeError, unlike the other functions for symbols
    quint64 address = 0;
    uint narrow = 0;
    if (!(wide ? askTarget<&ISymbols64::addressOf>(wide, file, line, address)
               : askTarget<&ISymbolLookup::addressOf>(symbols, file, line, narrow)))
        raisePython(PyExc_ValueError, u"Source line does not map to address"_s);
    return wide ? address : narrow;
}

QList<BreakpointLocation> ScriptProcessor::sourceLines(quint64 address) const
{
    const Symbols symbols(m_target);
    requireSymbols(symbols.exist(), PyExc_ValueError);
    QList<BreakpointLocation> lines;
    for (const int kind : {0, 1, 2}) {
        if (const auto place = symbols.source(address, kind))
            lines.append(*place);
    }
    return lines;
}

// Objects that are kept

/// The project may have got another environment when its file was reloaded.
void ScriptProcessor::forgetFormerEnvironment()
{
    const int binding = m_target.project()->executionBindings();
    if (std::exchange(m_binding, binding) == binding)
        return;
    const PythonReference former[] = {std::move(m_memory), std::move(m_extension)}; // their end may run scripts
}

_object *ScriptProcessor::memory()
{
    forgetFormerEnvironment();
    if (!m_target.find<IMemory>() && !m_memory)
        return Py_None;
    if (!m_memory)
        m_memory = newScriptObject<ScriptMemory>(m_target);
    return m_memory.get();
}

/// The region of the memory object; 0 if the target has no memory.
int ScriptProcessor::memoryRegion()
{
    const py::handle object = memory();
    return object.is_none() ? 0 : object.cast<ScriptMemory &>().region().id;
}

_object *ScriptProcessor::extension()
{
    forgetFormerEnvironment();
    if (!m_extension) {
        const auto environment = m_target.environment();
        PythonReference object(askTarget<&IExecutionEnvironment::pythonExtension>(environment));
        if (PyErr_Occurred())
            throw py::error_already_set();
        if (!m_extension) // the plug-in may have run scripts
            m_extension = object ? std::move(object) : newPythonReference(Py_None);
    }
    return m_extension.get();
}
