#include "rttblock.h"
#include "memorycell.h"
#include <algorithm>

namespace {
constexpr int IdentifierLength = 16;
constexpr uint MostBuffers = 64; // more mean that it is no control block

uint numberAt(QByteArrayView bytes, qsizetype offset, const RttLayout &layout)
{
    return memoryCellValue(bytes.sliced(offset, 4), layout.bigEndian);
}

quint64 pointerAt(QByteArrayView bytes, qsizetype offset, const RttLayout &layout)
{
    if (layout.pointerSize == 4)
        return numberAt(bytes, offset, layout);
    const quint64 first = numberAt(bytes, offset, layout);
    const quint64 second = numberAt(bytes, offset + 4, layout);
    return layout.bigEndian ? first << 32 | second : second << 32 | first;
}

/// The size of a buffer's description: its name, its memory, its size, both offsets and flags.
int descriptionLength(const RttLayout &layout)
{
    return 2 * layout.pointerSize + 16;
}

RttBuffer bufferAt(QByteArrayView bytes, qsizetype offset, quint64 address, const RttLayout &layout)
{
    const qsizetype size = offset + 2 * qsizetype(layout.pointerSize);
    RttBuffer buffer;
    buffer.start = pointerAt(bytes, offset + layout.pointerSize, layout);
    buffer.size = numberAt(bytes, size, layout);
    buffer.writeOffset = numberAt(bytes, size + 4, layout);
    buffer.readOffset = numberAt(bytes, size + 8, layout);
    buffer.writeOffsetAddress = address + quint64(size) + 4;
    buffer.readOffsetAddress = address + quint64(size) + 8;
    return buffer;
}
} // namespace

uint RttBuffer::readable() const
{
    return writeOffset >= readOffset ? writeOffset - readOffset : size - readOffset;
}

/// One byte stays free: a full buffer would look like an empty one.
uint RttBuffer::writable() const
{
    if (readOffset > writeOffset)
        return readOffset - writeOffset - 1;
    return size - writeOffset - (readOffset == 0 ? 1 : 0);
}

QByteArrayView rttIdentifier()
{
    return "SEGGER RTT";
}

std::optional<int> rttLength(QByteArrayView header, const RttLayout &layout)
{
    if (header.size() < RttHeaderLength || !header.startsWith(rttIdentifier()))
        return std::nullopt;
    const uint up = numberAt(header, IdentifierLength, layout);
    const uint down = numberAt(header, IdentifierLength + 4, layout);
    if (up == 0 || up > MostBuffers || down > MostBuffers)
        return std::nullopt;
    return RttHeaderLength + descriptionLength(layout) * int(up + std::min(down, 1u));
}

std::optional<RttBlock> parseRttBlock(QByteArrayView bytes, quint64 address, const RttLayout &layout)
{
    const std::optional<int> length = rttLength(bytes, layout);
    if (!length || bytes.size() < *length)
        return std::nullopt;
    RttBlock block;
    block.up = bufferAt(bytes, RttHeaderLength, address, layout);
    if (numberAt(bytes, IdentifierLength + 4, layout) > 0)
        block.down = bufferAt(bytes, *length - descriptionLength(layout), address, layout);
    return block;
}
