#pragma once
#include "facet.h"
#include "isymbols64.h"
class SymbolTable;

/// The program's symbols and lines with whole addresses, for scripts and the list of processors.
///
/// On 64-bit targets an address of the disassembly window, which has 32 bits, is accepted as well.
class WideSymbols : public Facet<ISymbols64>
{
public:
    WideSymbols(SymbolTable *symbols, QUnknownInterface *whole) : Facet(whole), m_symbols(symbols) {}

    bool symbolAddress(const QString &name, quint64 &address) override;
    bool sourceLocation(quint64 address, int kind, QString &file, int &line) override;
    bool addressOf(const QString &file, int line, quint64 &address) override;
    bool symbolAt(quint64 address, int region, QString &name) override;

private:
    SymbolTable *const m_symbols;
};
