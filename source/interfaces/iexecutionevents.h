#pragma once
#include "iexecutionenvironment.h"

/// Reports of an execution environment to the host. The host creates one object for each execution environment. A
/// report from inside a function that the host has called is delivered when the function has returned; only text is
/// shown at once. A report from a function with a result is dropped if the host has called it to handle an equal
/// report, together with other reports on the same subject that the function has made before.
class IExecutionEvents : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x173a5254, 0xed2a, 0x4d70, 0x80, 0xaa, 0xc2, 0x3d, 0xb8, 0xdf, 0xc6, 0x4e};

    /// Adds text to the output page @p page, which is created if it does not exist; an empty name means "Debug". Lines
    /// end in "\n". @p serious beeps and brings the page to the front.
    virtual void feedback(const QString &text, const QString &page, bool serious) = 0;
    virtual void processorStatusChanged(IExecutionEnvironment::ProcessorStatus status) = 0;
    /// Moves the host to its paused, running, finished or unknown state. It reads what its windows show when
    /// the program is paused; after the end they keep what they showed.
    virtual void programStatusChanged(IExecutionEnvironment::ProgramStatus status) = 0;
    /// Shows a short text in the status bar. Positions are 0 to 3; 0 is next to the cursor position. The text at
    /// position 1 is also shown as the reason of the last stop in the list of processors: set it before the report of
    /// the stop, empty if there is nothing to say.
    virtual void statusInfo(const QString &text, int position) = 0;
    virtual void breakpointsChanged() = 0; ///< The host calls IBreakpoints::breakpoints() again and marks the lines.

protected:
    ~IExecutionEvents() = default;
};
