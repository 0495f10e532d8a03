#pragma once
#include "ibreakpoints.h"
#include <optional>

/// A place as the user reads and writes it: "main.c, 7" or "disassembler, 0x1f".
[[nodiscard]] QString breakpointText(const BreakpointLocation &place);

/// A place that the user has written.
struct BreakpointPlace
{
    BreakpointLocation location; ///< of an address: "disassembler:" and the address plus 1
    bool isAddress = false;      ///< otherwise the file is as written
};

/// The place that @p text means; none if it means no place.
[[nodiscard]] std::optional<BreakpointPlace> breakpointPlace(const QString &text);

/// The function that @p text names, such as "main" or "Motor::start(int)"; empty if it is no name of a function.
[[nodiscard]] QString breakpointSymbol(const QString &text);
