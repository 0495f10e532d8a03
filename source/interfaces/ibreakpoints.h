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
    QString file; ///< an absolute path, spelled as in setBreakpoint(), or "disassembler:" alone
    int line = 0;
};

/// One breakpoint with all its places. The first place identifies it in lists; each place gets a mark, where the user
/// can change it. So that a breakpoint at a source line is also marked in the disassembly, add its address as a second
/// place: the file "disassembler:" and the address plus 1.
struct BreakpointRecord
{
    QList<BreakpointLocation> locations;
    int state = BreakpointRemoved;
};

/// Optional interface of an execution environment: breakpoints. The environment keeps them, also between sessions; the
/// host stores them when the workspace closes, sets them again when it is opened, and between sessions moves them when
/// their text is edited. If a line has no code, the environment refuses the breakpoint or moves it to a line with code;
/// breakpoints() returns the line where it is.
///
/// In a place in the disassembly, the file contains "disassembler:" and the line is the address plus 1. The file is
/// "disassembler:" alone, or is followed by text that identifies the environment; accept both.
class IBreakpoints : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xb83aaef0, 0x6c5b, 0x4082, 0xa0, 0xc0, 0x3d, 0xa1, 0x8e, 0x11, 0xa0, 0x89};

    virtual QList<BreakpointRecord> breakpoints() = 0; ///< Also called between sessions.
    /// Sets, changes or removes the breakpoint at a line, which counts from 1. @p file is an absolute path or a place
    /// in the disassembly; from scripts also a path relative to the project. It can be any place of a record. @p state
    /// is BreakpointRemoved, BreakpointEnabled or BreakpointDisabled; BreakpointMultiple is passed only for a record
    /// that has this state, and does not change it. Returns 0 on success. IExecutionEvents::breakpointsChanged reports
    /// each change.
    virtual int setBreakpoint(const QString &file, int line, int state) = 0;

protected:
    ~IBreakpoints() = default;
};
