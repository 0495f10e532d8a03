#pragma once
#include "ibreakpoints.h"
#include "scripttarget.h"
#include "scripttypes.h"

/// The processor of a project in scripts (`Processor`). Its functions raise Python exceptions.
///
/// A place in the disassembly has the name "disassembler:" and, in scripts, the address as its line; environments count
/// such lines from 1.
class ScriptProcessor
{
public:
    explicit ScriptProcessor(const ScriptTarget &target);

    [[nodiscard]] const ScriptTarget &target() const { return m_target; }

    [[nodiscard]] QString evaluate(const QString &expression) const;
    void run() const;
    void runTo(const QString &file, int line) const;
    void pause() const;
    void stepInto(const QString &file) const;
    void stepOver(const QString &file) const;
    void wakeUp() const;

    void setBreakpoint(const QString &file, int line) const;
    void setBreakpointAtAddress(quint64 address) const;
    void setBreakpointAtSymbol(const QString &name) const;
    void disableBreakpoint(const QString &file, int line) const;
    void removeBreakpoint(const QString &file, int line) const;
    [[nodiscard]] QList<BreakpointRecord> breakpoints() const; ///< Each with its first location only.

    [[nodiscard]] quint64 symbolAddress(const QString &name) const;
    [[nodiscard]] QString symbolAt(quint64 address);
    [[nodiscard]] quint64 sourceAddress(const QString &file, int line) const;
    [[nodiscard]] QList<BreakpointLocation> sourceLines(quint64 address) const; ///< One per kind that has a line.

    [[nodiscard]] long processorStatus() const;
    [[nodiscard]] long programStatus() const;
    [[nodiscard]] BreakpointLocation currentLocation() const; ///< An empty one if it is not known.

    // Objects that are kept after the first call
    [[nodiscard]] _object *memory();    ///< None if the target has no memory; borrowed.
    [[nodiscard]] _object *extension(); ///< The plug-in's own object, or None; borrowed.

private:
    void changeBreakpoint(const QString &file, int line, BreakpointState state, const QString &failure) const;
    [[nodiscard]] int memoryRegion();
    void forgetFormerEnvironment();

    const ScriptTarget m_target;
    int m_binding; ///< Project::executionBindings() of the environment that the objects belong to
    PythonReference m_memory;
    PythonReference m_extension;
};

[[nodiscard]] py::object bindProcessor();
