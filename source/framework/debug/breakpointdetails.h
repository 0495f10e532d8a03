#pragma once
#include "ibreakpointdetails.h"
#include "iexecutionenvironment.h"

/// What @p environment has of a breakpoint besides its state: that of a plain one if it does not offer
/// IBreakpointDetails. Calls the plug-in.
[[nodiscard]] BreakpointDetails detailsOf(IExecutionEnvironment *environment, const BreakpointRecord &breakpoint);

/// Whether the target has refused a breakpoint: it is not set, and there is a reason.
[[nodiscard]] bool isRefused(const BreakpointDetails &details);

/// The reason of a refusal, else the condition or text; empty for a plain breakpoint.
[[nodiscard]] QString remarkOf(const BreakpointDetails &details);
