#include "rttblock.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray bytes = rttIdentifier().toByteArray();
    bytes.append(reinterpret_cast<const char *>(data), qsizetype(size));
    for (const RttLayout &layout : {RttLayout{4, false}, RttLayout{8, true}}) {
        const std::optional<RttBlock> block = parseRttBlock(bytes, 0x20000000, layout);
        if (!block || !block->up.isValid())
            continue;
        const RttBuffer &up = block->up;
        if (up.readable() >= up.size || up.writable() >= up.size
            || up.advanced(up.readOffset, up.readable()) >= up.size)
            __builtin_trap();
    }
    return 0;
}
