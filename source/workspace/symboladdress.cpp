#include "symboladdress.h"
#include "callplugin.h"
#include "isourcemapping.h"
#include "isymbols64.h"
#include <limits>

std::optional<uint> symbolAddress(QUnknownInterface *environment, const QString &symbol)
{
    if (const auto mapping = queryPlugin<ISourceMapping>(environment)) {
        uint address = 0;
        const bool found = askPlugin<&ISourceMapping::symbolAddress>(mapping, symbol, address);
        return found ? std::optional(address) : std::nullopt;
    }
    quint64 address = 0;
    const bool found = askPlugin<&ISymbols64::symbolAddress>(queryPlugin<ISymbols64>(environment), symbol, address);
    return found && address <= std::numeric_limits<uint>::max() ? std::optional(uint(address)) : std::nullopt;
}
