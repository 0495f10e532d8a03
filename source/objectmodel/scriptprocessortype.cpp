#include "iperipherals.h"
#include "iregisters.h"
#include "programplace.h"
#include "pythonnumber.h"
#include "scriptapp.h"
#include "scriptperipherals.h"
#include "scriptprocessor.h"
#include "scriptregisters.h"
#include <limits>

using namespace Qt::StringLiterals;

// The type "Processor".

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
        const bool disassembly = ProgramPlace::fromBreakpoint(place.file, place.line).isDisassembly();
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
