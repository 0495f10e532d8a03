#pragma once
#include <QString>

/// What a Cortex-M processor has recorded about a fault.
struct FaultRecord
{
    uint exception = 0;      ///< the number of the active exception
    uint configurable = 0;   ///< CFSR
    uint hard = 0;           ///< HFSR
    uint memoryAddress = 0;  ///< MMFAR
    uint busAddress = 0;     ///< BFAR
    uint programCounter = 0; ///< of the faulting instruction, from the stacked frame
    bool hasFrame = false;   ///< programCounter is known
    QString place;           ///< the function and line of programCounter; may be empty
};

/// The numbers of the exceptions that are faults.
constexpr int FirstFault = 3; // HardFault
constexpr int LastFault = 6;  // UsageFault

/// Explains a fault, one fact a line. Exceptions other than faults are explained as well: they come to a handler that
/// serves several vectors.
[[nodiscard]] QString faultReport(const FaultRecord &record);
