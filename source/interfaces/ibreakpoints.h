#pragma once
#include "unknown.h"
#include <QString>

/// States of a breakpoint.
enum BreakpointState {
    BreakpointRemoved = 0,
    BreakpointEnabled = 1,
    BreakpointDisabled = 2,
    BreakpointMultiple = 3 ///< stands for several breakpoints, which may differ in their states
};

/// A place of a breakpoint: a source line, or a program address.
struct BreakpointLocation
{
    QString file; ///< a path as in setBreakpoint()
    int line = 0;
};

/// One breakpoint with every place that it has; the first names it.
struct BreakpointRecord
{
    QList<BreakpointLocation> locations;
    int state = BreakpointRemoved;
};

/// Optional, on an execution environment: breakpoints. The environment keeps them, the host only asks.
///
/// A place in the disassembly has a file that contains "disassembler:" ("disassembler:" alone, or with more behind it
/// that says whose disassembly it is; accept both) and its address plus 1 as the line.
class IBreakpoints : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xb83aaef0, 0x6c5b, 0x4082, 0xa0, 0xc0, 0x3d, 0xa1, 0x8e, 0x11, 0xa0, 0x89};

    virtual QList<BreakpointRecord> breakpoints() = 0; ///< Also asked between sessions.
    /// Sets, changes or removes the breakpoint at a line, which counts from 1. @p state is BreakpointRemoved, -Enabled
    /// or -Disabled; BreakpointMultiple comes only where the record has it, and leaves it so. Returns 0 on success.
    /// What changed is told by IExecutionEvents::breakpointsChanged.
    virtual int setBreakpoint(const QString &file, int line, int state) = 0;

protected:
    ~IBreakpoints() = default;
};
