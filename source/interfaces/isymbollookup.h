#pragma once
#include "unknown.h"
#include <QString>

/// Optional interface of an execution environment: from source lines to addresses, and from addresses to symbols.
class ISymbolLookup : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xfe07c9f5, 0x3efc, 0x45f0, 0x9f, 0xd4, 0x16, 0x4a, 0x55, 0xcd, 0xca, 0xeb};

    virtual void reserved1() = 0; ///< Never called.
    virtual void reserved2() = 0; ///< Never called.
    /// The program address of a line, counted from 1; false if the line has no code.
    virtual bool addressOf(const QString &file, int line, uint &address) = 0;
    /// The symbol at an address of the memory region whose MemoryRegion::id is @p region; false if there is none.
    virtual bool symbolAt(uint address, int region, QString &name) = 0;

protected:
    ~ISymbolLookup() = default;
};
