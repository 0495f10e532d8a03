#include "widesymbols.h"
#include "symboltable.h"
#include <limits>

namespace {
bool isNarrow(quint64 address)
{
    return address <= std::numeric_limits<uint>::max();
}
} // namespace

bool WideSymbols::symbolAddress(const QString &name, quint64 &address)
{
    const std::optional<quint64> found = m_symbols->addressOfSymbol(name);
    address = found.value_or(address);
    return found.has_value();
}

bool WideSymbols::sourceLocation(quint64 address, int kind, QString &file, int &line)
{
    return m_symbols->placeOf(address, kind, file, line)
           || (isNarrow(address) && m_symbols->placeOf(m_symbols->widen(uint(address)), kind, file, line));
}

bool WideSymbols::addressOf(const QString &file, int line, quint64 &address)
{
    const std::optional<quint64> found = m_symbols->addressOfLine(file, line);
    address = found.value_or(address);
    return found.has_value();
}

bool WideSymbols::symbolAt(quint64 address, int, QString &name)
{
    QString found = m_symbols->symbolNear(address);
    if (found.isEmpty() && isNarrow(address))
        found = m_symbols->symbolNear(m_symbols->widen(uint(address)));
    if (!found.isEmpty())
        name = found;
    return !found.isEmpty();
}
