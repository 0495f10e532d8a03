#pragma once
#include "ibreakpoints.h"

// How the host writes a place in the disassembly: the file contains "disassembler:", and the line is the address plus
// 1, because lines count from 1.

/// Whether a file text refers to the disassembly instead of a source file.
[[nodiscard]] bool isDisassembly(const QString &file);
/// "disassembler:" alone, which the host completes with the environment.
[[nodiscard]] QString anyDisassembly();
/// Of an address, the lower 32 bits: lines have no more.
[[nodiscard]] int lineOfAddress(quint64 address);
[[nodiscard]] uint addressOfLine(int line);
[[nodiscard]] BreakpointLocation placeOfAddress(quint64 address);
