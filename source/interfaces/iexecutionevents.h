#pragma once
#include "iexecutionenvironment.h"

/// What an execution environment tells the host. The host makes one for each execution environment.
class IExecutionEvents : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x173a5254, 0xed2a, 0x4d70, 0x80, 0xaa, 0xc2, 0x3d, 0xb8, 0xdf, 0xc6, 0x4e};

    /// Adds text to the output page named @p page, which is made if there is none; an empty name means "Debug". Lines
    /// end in "\n".
    /// @p serious beeps and brings the page to the front.
    virtual void feedback(const QString &text, const QString &page, bool serious) = 0;
    virtual void processorStatusChanged(IExecutionEnvironment::ProcessorStatus status) = 0;
    /// Moves the host to its paused, running, finished or unknown state and refreshes what it shows.
    virtual void programStatusChanged(IExecutionEnvironment::ProgramStatus status) = 0;
    /// Shows a short text in the status bar; positions are 0 to 3, from the cursor's position on.
    virtual void statusInfo(const QString &text, int position) = 0;
    virtual void breakpointsChanged() = 0; ///< The host asks IBreakpoints anew and marks the lines.

protected:
    ~IExecutionEvents() = default;
};
