#pragma once
#include "ibreakpoints.h"
#include <optional>

/// Whether a place is a program address: its line is the address plus 1.
[[nodiscard]] bool isInDisassembly(const QString &file);

/// A place as the user reads and writes it: "main.c, 7" or "disassembler, 0x1f".
[[nodiscard]] QString breakpointText(const BreakpointLocation &place);

/// The place that @p text means, its file being as written or "disassembler:"; none if it means no place.
[[nodiscard]] std::optional<BreakpointLocation> breakpointPlace(const QString &text);
