#pragma once
#include "unknown.h"

/// Optional interface of an execution environment that offers IDisassembly and has to wait for its target when it reads
/// instructions. The disassembly window then keeps showing what it has until the instructions are there. Without the
/// interface it waits in IDisassemblyAddress::text() and sourceLines().
class IDisassemblyFetch : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x5c0f5f6e, 0x9b1a, 0x4a39, 0x9d, 0x0c, 0x3e, 0x61, 0x27, 0xd4, 0x58, 0xb1};

    /// Begins to read the instruction at an index, as in IDisassembly::text(), and those around it. Waits at most @p
    /// milliseconds, which may be 0. True if text() and sourceLines() of the index can now be called without waiting;
    /// if not, the host calls again soon. What cannot be read at all is not waited for.
    virtual bool fetch(int index, int milliseconds) = 0;

protected:
    ~IDisassemblyFetch() = default;
};
