#pragma once
#include <optional>
#include <QByteArray>
#include <QList>

/// A ring buffer in the target's memory: one side writes at an offset, the other reads behind it.
struct RttBuffer
{
    quint64 start = 0;
    uint size = 0;
    uint writeOffset = 0; ///< equal to the other one if the buffer is empty
    uint readOffset = 0;
    quint64 writeOffsetAddress = 0; ///< where these two are kept
    quint64 readOffsetAddress = 0;

    /// Whether the offsets are inside the buffer.
    [[nodiscard]] bool isValid() const { return size > 0 && writeOffset < size && readOffset < size; }
    /// The bytes that can be read at the read offset, or written at the write offset, up to the end of the memory.
    [[nodiscard]] uint readable() const;
    [[nodiscard]] uint writable() const;
    /// The offset after @p count bytes.
    [[nodiscard]] uint advanced(uint offset, uint count) const { return (offset + count) % size; }

    bool operator==(const RttBuffer &) const = default;
};

/// The control block by which a program and its debugger exchange text in memory (RTT). It begins with an identifier
/// and the numbers of its buffers; only the first buffer of each direction is used here.
struct RttBlock
{
    RttBuffer up; ///< to the debugger
    std::optional<RttBuffer> down;

    bool operator==(const RttBlock &) const = default;
};

/// How numbers and pointers of the target are stored.
struct RttLayout
{
    int pointerSize = 4; ///< 4 or 8
    bool bigEndian = false;
};

/// What a control block begins with.
[[nodiscard]] QByteArrayView rttIdentifier();
/// The length of identifier and numbers.
inline constexpr int RttHeaderLength = 24;
/// The length of the control block up to its first buffer of either direction, by its first RttHeaderLength bytes.
/// Nothing if they are not the begin of a control block.
[[nodiscard]] std::optional<int> rttLength(QByteArrayView header, const RttLayout &layout);
/// Reads a control block of that length at @p address. Nothing if @p bytes are none. Its values are as the target has
/// them: pointers and offsets can be anything.
[[nodiscard]] std::optional<RttBlock> parseRttBlock(QByteArrayView bytes, quint64 address, const RttLayout &layout);
