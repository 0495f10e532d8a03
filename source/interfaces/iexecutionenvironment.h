#pragma once
#include "unknown.h"
#include <QString>

class IExecutionEvents;
class IProject;
struct _object; // a Python object, without Python's own header

/// Runs and debugs the program of one project, on a simulator or on hardware.
///
/// Offered by a plug-in object whose feature a project names as its execution environment; each project has an object
/// of its own. run() and the other commands only start an action of the target: IExecutionEvents::programStatusChanged
/// reports the result. Functions that return a result wait for the target, so they need a time limit. Optional
/// interfaces: IBreakpoints, ISourceMapping, ISymbolLookup, IMemory, IMemoryVerify, IRegisters, IPeripherals,
/// IPeripheralFields, IDisassembly, IDisassemblyAddress, IDisassemblyFetch, ILiveMemory, ICallStack, IVariables,
/// IBreakpointDetails, INextStatement, IProgressiveStart, IMemory64, ISymbols64, IMemoryRequests, IRegisterRequests,
/// IEvaluationRequests, IMultiProcessorSync, IWakeUp, IPropertyDefinitions, IExtensionCommands, IDockExtension,
/// IWorkspaceClient.
class IExecutionEnvironment : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x5d9e60b4, 0xa7b6, 0x491b, 0x86, 0xf3, 0x5b, 0x04, 0xbb, 0xec, 0x45, 0xc0};

    /// The state of the program. The host shows it and enables its commands by it.
    enum ProgramStatus : long {
        ProgramPaused = 0,
        ProgramRunning = 1,
        ProgramSleeping = 2, ///< the processor sleeps until it is woken up; the host shows it as running
        ProgramUnknown = 3,
        ProgramFinished = 4,
        ProgramBreakpointHit = 5 ///< paused at a breakpoint
    };
    /// The state of the processor. The plug-in defines the numbers; scripts can read them.
    enum ProcessorStatus : long {};

    /// Called once, before all other functions. Keep @p project and @p events with references of your own. @p option is
    /// the project file's "executionenvironmentoption"; the plug-in defines its meaning. If the result is false, the
    /// host asks the user to look at the "Debug" page; the object stays in use, so its other functions must not fail.
    virtual bool initialise(IProject *project, IExecutionEvents *events, const QString &option) = 0;
    /// Connects to the target, and loads the program into it unless @p attachOnly is true. On success a status report
    /// must follow, otherwise the host stays in its initialising state; false ends the session. The environments of all
    /// projects are started one after the other. If one of them returns false, stop() is called for those that were
    /// started before, but not for that one. After start(false) the host does not wait for a report before it calls
    /// run(), runTo(), stepInto(), stepOver() or restart(), by the command with which the user has started the session;
    /// after start(true) it calls none. So report ProgramPaused before this returns: a later report may arrive when the
    /// program runs.
    virtual bool start(bool attachOnly) = 0;
    virtual bool canAttach() = 0; ///< Whether start(true) is possible.
    virtual void run() = 0;       ///< Continues from the current location.
    /// Runs to the line, which counts from 1, or to any breakpoint. @p file is an absolute path or a location in the
    /// disassembly, as IBreakpoints describes it.
    virtual void runTo(const QString &file, int line) = 0;
    /// Runs to the next line, into calls. @p file is the document in front: relative to the project, or a name that
    /// starts with "disassembler:" for the disassembly, in which a step is one instruction; empty if there is no
    /// document.
    virtual void stepInto(const QString &file) = 0;
    virtual void stepOver(const QString &file) = 0; ///< Runs to the next line, over calls; @p file as for stepInto().
    virtual void pause() = 0;
    /// Ends the session that start() began, in any state of the program, also after ProgramFinished, which does not end
    /// it. The host is idle afterwards and expects no report. The next session begins with start() on the same object,
    /// which still has its breakpoints.
    virtual void stop() = 0;
    virtual void restart() = 0; ///< Resets the program to its start and pauses it there.
    virtual void wakeUp() = 0;  ///< Wakes a sleeping processor.
    virtual ProcessorStatus processorStatus() = 0;
    virtual ProgramStatus programStatus() = 0;
    /// The current location of the program: @p file relative to the project, or a location in the disassembly, as
    /// IBreakpoints describes it; @p line counts from 1. False if it is not known. On entry @p file is the document in
    /// which the place will be shown, as for stepInto(), so that a line of the disassembly can be returned for it.
    virtual bool currentLocation(QString &file, int &line) = 0;
    /// Evaluates an expression of the program's language, which may be an assignment. Returns 0 and the value as text
    /// in @p result, or another number and an error message in @p result. An environment may accept a format behind a
    /// last comma, such as "counter,x"; the watch window leaves it out when the user assigns a value.
    virtual int evaluate(const QString &expression, QString &result) = 0;
    /// A Python object of the plug-in for scripts (attribute "extension" of a processor), with a new reference for the
    /// caller, or null. Called once for each processor.
    virtual _object *pythonExtension() = 0;

protected:
    ~IExecutionEnvironment() = default;
};
