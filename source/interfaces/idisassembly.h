#pragma once
#include "unknown.h"
#include <QString>

/// Optional interface of an execution environment (for the disassembly window) and of its IMemory object (for scripts).
class IDisassembly : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xc1931575, 0x6147, 0x4a4f, 0x8d, 0xc5, 0xbe, 0xd6, 0x7c, 0x16, 0x4d, 0x4b};

    /// The instruction at an address of the memory region whose MemoryRegion::id is @p region, as rich text. For
    /// scripts, which get it without its tags and know the address.
    virtual QString disassemble(uint address, int region) = 0;
    /// The instruction at an index as rich text of one line; the null string if no instruction starts there. An index
    /// is an address minus the low address of the first memory region. The text is the whole line of the disassembly
    /// window: write the address into it, because the window adds none.
    virtual QString text(int index) = 0;

protected:
    ~IDisassembly() = default;
};
