#include "scriptprocessor.h"
#include "imemory.h"
#include "iregisters.h"
#include "isourcemapping.h"
#include "isymbollookup.h"
#include "isymbols64.h"
#include "programplace.h"
#include "project.h"
#include "pythonnumber.h"
#include "scriptapp.h"
#include "scriptmemory.h"
#include "scriptperipherals.h"
#include "scriptregisters.h"
#include <limits>
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
constexpr auto DisassemblyPrefix = "disassembler:"_L1;

/// A line as environments count it, for a line of a script.
int environmentLine(const QString &file, int line)
{
    return file.contains(DisassemblyPrefix) ? lineOfAddress(uint(line)) : line;
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
            if (const auto place = source(address, kind))
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
    requireSymbols(wide || symbols, PyExc_RuntimeError); // another exception than its sisters
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

// The type

namespace {

QString toText(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// A line, or an address in the disassembly, which may have 32 bits.
int toLine(long long number)
{
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<uint>::max())
        raisePython(PyExc_OverflowError, u"The line number is too large"_s);
    return int(number);
}

/// Adds a method that takes any arguments, so that an inactive project is reported before wrong arguments.
template <typename Call>
void addMethod(py::class_<ScriptProcessor> &type, const char *name, const Call &call, const char *documentation)
{
    type.def(
        name,
        [call](ScriptProcessor &processor, const py::args &arguments) {
            processor.target().requireActive();
            return call(processor, arguments);
        },
        documentation);
}

void addCommand(py::class_<ScriptProcessor> &type, const char *name, const char *format,
                void (ScriptProcessor::*command)() const, const char *documentation)
{
    addMethod(
        type, name,
        [=](const ScriptProcessor &processor, const py::args &arguments) {
            parseArguments(arguments, format);
            (processor.*command)();
        },
        documentation);
}

/// @p command takes a text, as @p format says.
void addCommand(py::class_<ScriptProcessor> &type, const char *name, const char *format,
                void (ScriptProcessor::*command)(const QString &text) const, const char *documentation)
{
    addMethod(
        type, name,
        [=](const ScriptProcessor &processor, const py::args &arguments) {
            const char *text = nullptr;
            parseArguments(arguments, format, &text);
            (processor.*command)(toText(text));
        },
        documentation);
}

/// @p command takes a file and a line.
void addCommand(py::class_<ScriptProcessor> &type, const char *name, const char *format,
                void (ScriptProcessor::*command)(const QString &file, int line) const, const char *documentation)
{
    addMethod(
        type, name,
        [=](const ScriptProcessor &processor, const py::args &arguments) {
            const char *file = nullptr;
            long long line = 0;
            parseArguments(arguments, format, &file, &line);
            (processor.*command)(toText(file), toLine(line));
        },
        documentation);
}

template <typename Call>
void addAttribute(py::class_<ScriptProcessor> &type, const char *name, const Call &call, const char *documentation)
{
    type.def_property_readonly(
        name,
        [call](ScriptProcessor &processor) {
            processor.target().requireActive();
            return call(processor);
        },
        documentation);
}

py::list breakpointTuples(const ScriptProcessor &processor)
{
    py::list list;
    for (const BreakpointRecord &record : processor.breakpoints()) {
        const BreakpointLocation &place = record.locations.first();
        const bool disassembly = place.file.contains(DisassemblyPrefix);
        const py::int_ line = disassembly ? py::int_(addressOfLine(place.line)) : py::int_(place.line);
        list.append(py::make_tuple(place.file, line, record.state));
    }
    return list;
}

py::list placeTuples(const QList<BreakpointLocation> &places)
{
    py::list list;
    for (const BreakpointLocation &place : places)
        list.append(py::make_tuple(place.file, place.line));
    return list;
}

void addCommands(py::class_<ScriptProcessor> &type)
{
    addMethod(
        type, "evaluate",
        [](const ScriptProcessor &processor, const py::args &arguments) {
            const char *expression = nullptr;
            parseArguments(arguments, "s:evaluate", &expression);
            return processor.evaluate(toText(expression));
        },
        "evaluate(expression) - evaluetes 'expression' returning the result as a string");
    addCommand(type, "run", ":run", &ScriptProcessor::run, "run() - Set processor running");
    addCommand(type, "runTo", "sL:runTo", &ScriptProcessor::runTo,
               "runTo(filename, lineNumber) - Run the processor to 'lineNumber' in 'filename'");
    addCommand(type, "pause", ":pause", &ScriptProcessor::pause, "pause() - Pauses the processor.");
    addCommand(type, "stepInto", "s:stepInto", &ScriptProcessor::stepInto,
               "stepInto(filename) - Executes a 'Step Into' operation into 'filename'");
    addCommand(type, "stepOver", "s:stepOver", &ScriptProcessor::stepOver,
               "stepOver(filename) - Executes a 'Step Over' operation in 'filename'");
    addCommand(type, "wakeUp", ":wakeUp", &ScriptProcessor::wakeUp, "wakeup() - Triggers the processor to wake up");
}

/// The only argument, an address; those above the range of the format's type are valid, too.
quint64 addressOf(const py::args &arguments, const char *format)
{
    if (arguments.size() == 1 && PyLong_Check(arguments[0].ptr())) {
        const quint64 address = PyLong_AsUnsignedLongLong(arguments[0].ptr());
        if (!PyErr_Occurred())
            return address;
        PyErr_Clear();
    }
    long long address = 0;
    parseArguments(arguments, format, &address);
    return quint64(address);
}

void addBreakpoints(py::class_<ScriptProcessor> &type)
{
    addCommand(type, "setBreakpoint", "sL:setBreakpoint", &ScriptProcessor::setBreakpoint,
               "setBreakpont(filename,lineNumber) - Sets a breakpoint at line 'lineNumber' in file 'filename'");
    addMethod(
        type, "setBreakpointAtAddress",
        [](const ScriptProcessor &processor, const py::args &arguments) {
            processor.setBreakpointAtAddress(addressOf(arguments, "L:setBreakpointAtAddress"));
        },
        "setBreakpointAtAddress(address) - Sets a breakpoint at the program address 'address'");
    addCommand(type, "setBreakpointAtSymbol", "s:setBreakpointAtSymbol", &ScriptProcessor::setBreakpointAtSymbol,
               "setBreakpointAtSymbol(symbolName) - Sets a breakpoint at the symbol 'symbolName'");
    addCommand(type, "disableBreakpoint", "sL:disableBreakpoint", &ScriptProcessor::disableBreakpoint,
               "disableBreakpoint(filename, lineNumber) - Disables the breakpoint at 'lineNumber' in 'filename'");
    addCommand(type, "removeBreakpoint", "sL:removeBreakpoint", &ScriptProcessor::removeBreakpoint,
               "removeBreakpoint(filename, lineNumber) - Remove the brakepoint at line 'lineNumber' and in file "
               "'filename'");
}

void addSymbols(py::class_<ScriptProcessor> &type)
{
    addMethod(
        type, "getSymbolAddress",
        [](const ScriptProcessor &processor, const py::args &arguments) {
            const char *name = nullptr;
            parseArguments(arguments, "s:getSymbolAddress", &name);
            return processor.symbolAddress(toText(name));
        },
        "getSymbolAddress(symbolName) - Returns the address corresponding to the given symbol.");
    addMethod(
        type, "getSourceLines",
        [](const ScriptProcessor &processor, const py::args &arguments) {
            return placeTuples(processor.sourceLines(addressOf(arguments, "L:getSourceLines")));
        },
        "getSourceLines(address) - Returns a list of source files and lines of program address 'address'");
    addMethod(
        type, "getSourceAddress",
        [](const ScriptProcessor &processor, const py::args &arguments) {
            const char *file = nullptr;
            long long line = 0;
            parseArguments(arguments, "sL:getSourceAddress", &file, &line);
            return processor.sourceAddress(toText(file), toLine(line));
        },
        "getSourceAddress(filename,line) - Returns program address in 'filename' at 'line'");
    addMethod(
        type, "getSymbol",
        [](ScriptProcessor &processor, const py::args &arguments) {
            return processor.symbolAt(addressOf(arguments, "L:getSymbol"));
        },
        "getSymbol(address) - Returns the symbol corresponding to the given address");
}

/// An object of an interface; None if the target does not offer it.
template <typename Interface, typename Object>
PythonReference offered(const ScriptProcessor &processor)
{
    return processor.target().find<Interface>() ? newScriptObject<Object>(processor.target()) : nullptr;
}

void addStatus(py::class_<ScriptProcessor> &type)
{
    addAttribute(
        type, "processorStatus", [](const ScriptProcessor &processor) { return processor.processorStatus(); },
        "Returns the current processor status [R]");
    addAttribute(
        type, "programStatus", [](const ScriptProcessor &processor) { return processor.programStatus(); },
        "Returns the current program status [R]");
    addAttribute(
        type, "currentProgramLocation",
        [](const ScriptProcessor &processor) {
            const BreakpointLocation place = processor.currentLocation();
            return py::make_tuple(place.file, place.line);
        },
        "Returns a tuple containing the current program location [R]");
}

void addParts(py::class_<ScriptProcessor> &type)
{
    addAttribute(type, "registers", offered<IRegisters, ScriptRegisters>, "Returns the registers object");
    addAttribute(type, "peripherals", offered<IPeripherals, ScriptPeripherals>, "Returns the peripherals object");
    addAttribute(
        type, "memory", [](ScriptProcessor &processor) { return newPythonReference(processor.memory()); },
        "Returns the memory object");
    addAttribute(
        type, "extension", [](ScriptProcessor &processor) { return newPythonReference(processor.extension()); },
        "Plugin specific");
    addAttribute(type, "breakpoints", breakpointTuples, "Returns a list of tuples - one for each breakpoint [R]");
    addAttribute(
        type, "project",
        [](const ScriptProcessor &processor) {
            const ScriptTarget &target = processor.target();
            return py::cast<ScriptApp &>(py::handle(target.model().app())).objectOf(*target.project());
        },
        "Returns the project associated with the processor");
}

} // namespace

py::object bindProcessor()
{
    auto type = newScriptType<ScriptProcessor>(
        "Processor", "Provides access to an individual processor associated with an Varnel project");
    addCommands(type);
    addBreakpoints(type);
    addSymbols(type);
    addStatus(type);
    addParts(type);
    return type;
}
