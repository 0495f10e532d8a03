#pragma once
#include "unknown.h"
#include <QString>

class IExecutionEvents;
class IProject;
struct _object; // a Python object, without Python's own header

/// Runs and debugs the program of one project, on a simulator or on hardware.
///
/// Offered by a plug-in object whose feature a project names as its execution environment; each project has an object
/// of its own. run() and the other commands only set the target going: what became of it is told by
/// IExecutionEvents::programStatusChanged. Calls that give a result wait for the target, so they need a time limit.
/// Optional interfaces: IBreakpoints, ISourceMapping, ISymbolLookup, IMemory, IMemoryVerify, IRegisters, IPeripherals,
/// IDisassembly, IDisassemblyAddress, IMultiProcessorSync, IPropertyDefinitions, IExtensionCommands, IDockExtension,
/// IWorkspaceClient.
class IExecutionEnvironment : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x5d9e60b4, 0xa7b6, 0x491b, 0x86, 0xf3, 0x5b, 0x04, 0xbb, 0xec, 0x45, 0xc0};

    /// What the program does. The host shows it and enables its commands by it.
    enum ProgramStatus : long {
        ProgramPaused = 0,
        ProgramRunning = 1,
        ProgramSleeping = 2, ///< the processor waits to be woken up; for the host, running
        ProgramUnknown = 3,
        ProgramFinished = 4,
        ProgramBreakpointHit = 5 ///< paused, by a breakpoint
    };
    /// What the processor does. The numbers are the plug-in's own; scripts can read them.
    enum ProcessorStatus : long {};

    /// Called once, first. @p project and @p events are kept for later by references. @p option is the project file's
    /// "executionenvironmentoption", whose meaning is the plug-in's. False makes the host tell the user to look at the
    /// "Debug" page; the object stays in use all the same, so it must bear its other calls.
    virtual bool initialise(IProject *project, IExecutionEvents *events, const QString &option) = 0;
    /// Connects to the target, and loads the program into it unless @p attachOnly. On success a status report must
    /// follow, or the host stays in its initialising state; false ends the session.
    virtual bool start(bool attachOnly) = 0;
    virtual bool canAttach() = 0; ///< Whether start(true) makes sense.
    virtual void run() = 0;       ///< Runs on from where the program stands.
    /// Runs until the line, which counts from 1, or any breakpoint. @p file is an absolute path or a location in the
    /// disassembly, as IBreakpoints describes it.
    virtual void runTo(const QString &file, int line) = 0;
    /// Runs to the next line, into calls. @p file is the document in front, relative to the project or "disassembler:"
    /// and more for the disassembly, where a step is an instruction; empty if there is none.
    virtual void stepInto(const QString &file) = 0;
    virtual void stepOver(const QString &file) = 0; ///< Runs to the next line, over calls; @p file as for stepInto().
    virtual void pause() = 0;
    virtual void stop() = 0;    ///< Ends the session that start() began.
    virtual void restart() = 0; ///< Resets the program to its start and leaves it paused there.
    virtual void wakeUp() = 0;  ///< Wakes a sleeping processor.
    virtual ProcessorStatus processorStatus() = 0;
    virtual ProgramStatus programStatus() = 0;
    /// Where the program stands: @p file relative to the project, or a location in the disassembly, as IBreakpoints
    /// describes it; @p line from 1. False if it is not known. @p file comes in as the document that is to show the
    /// place, as for stepInto(), so that the disassembly can be told its own lines.
    virtual bool currentLocation(QString &file, int &line) = 0;
    /// Computes an expression of the program's language, assignments among them. Returns 0 and the value's text in
    /// @p result, or another number and a text in @p result that says what is wrong.
    virtual int evaluate(const QString &expression, QString &result) = 0;
    /// A Python object of the plug-in for scripts (attribute "extension" of a processor), with a new reference for the
    /// caller, or null. Asked once for each processor.
    virtual _object *pythonExtension() = 0;

protected:
    ~IExecutionEnvironment() = default;
};
