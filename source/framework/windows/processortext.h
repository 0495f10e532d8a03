#pragma once
#include "activitystate.h"
#include "iexecutionenvironment.h"
#include <optional>

/// What a processor does, as the list of processors shows it.
enum class ProcessorState {
    NoEnvironment, ///< the project cannot be run
    NoSession,
    Starting, ///< it has not reported yet
    Running,
    Sleeping,
    Paused,
    Finished,
    Unknown
};

/// The state of a processor that has an environment. For the @p current project the state of the whole program holds,
/// as its commands are enabled by it; for others the last report does.
[[nodiscard]] ProcessorState processorState(ActivityState activity, bool current,
                                            std::optional<IExecutionEnvironment::ProgramStatus> report);
[[nodiscard]] QString processorStateText(ProcessorState state);

/// Why a processor stopped: the text of the environment, or else one for its status.
[[nodiscard]] QString stopReasonText(std::optional<IExecutionEnvironment::ProgramStatus> lastStop,
                                     const QString &environmentText);

/// A time as "m:ss", or "h:mm:ss" from one hour on.
[[nodiscard]] QString elapsedText(qint64 milliseconds);

/// A place in a program.
struct ProgramSpot
{
    QString function; ///< empty if it is not known
    QString place;    ///< file and line, or an address in the disassembly; empty if it is not known

    bool operator==(const ProgramSpot &) const = default;
};

/// Where the paused program of @p environment is; @p directory is that of its project. Calls the plug-in, which may
/// call back.
[[nodiscard]] ProgramSpot programSpot(IExecutionEnvironment *environment, const QString &directory);
