#pragma once
#include "unknown.h"
#include <optional>
#include <QString>

/// The address of a symbol in the disassembly of @p environment, which may be null. The disassembly has addresses of 32
/// bits: ISymbols64 is asked only if ISourceMapping is not offered, and symbols above them are not found.
[[nodiscard]] std::optional<uint> symbolAddress(QUnknownInterface *environment, const QString &symbol);
