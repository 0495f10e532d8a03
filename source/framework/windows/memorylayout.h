#pragma once
#include "imemory.h"
#include "imemory64.h"
#include <QString>

// How a region of target memory is laid out in lines of words. The width of words has a code: 1 for bytes, 2 for 16,
// 3 for 24 and 4 for 32 bits; a word has twice as many hexadecimal digits.

/// One word on the screen.
struct MemoryCell
{
    int status = IMemory::NoMemory;
    uint value = 0;
    bool changed = false; ///< typed by the user and not yet written
};

struct MemoryLine
{
    quint64 address = 0; ///< of the first cell
    QList<MemoryCell> cells;
};

/// The positions of a line at which digits can be typed, both inclusive.
struct MemoryEditRange
{
    int first = 0;
    int last = -1;

    [[nodiscard]] bool contains(int index) const { return index >= first && index <= last; }
    bool operator==(const MemoryEditRange &) const = default;
};

/// The words of the last read, and what they are.
struct MemoryCache
{
    int region = 0;
    int mode = 0;
    quint64 address = 0;
    MemoryBlock block;

    /// The word at an address, if @p wantedRegion was read in @p wantedMode there; otherwise one without memory.
    [[nodiscard]] MemoryCell cell(int wantedRegion, int wantedMode, quint64 at, uint step) const;
};

/// The same region for functions that also take wider ones.
[[nodiscard]] MemoryRegion64 wideRegion(const MemoryRegion &region);
/// Whether all addresses of a region have 32 bits.
[[nodiscard]] bool isNarrow(const MemoryRegion64 &region);
/// The IMemory::Mode of a width code.
[[nodiscard]] int memoryMode(int width);
[[nodiscard]] bool supportsWidth(const MemoryRegion64 &region, int width);
/// The code of the widest words that a region supports; bytes if it supports none.
[[nodiscard]] int widestWidth(const MemoryRegion64 &region);
/// By how much the address grows from one word to the next.
[[nodiscard]] uint memoryStep(const MemoryRegion64 &region, int width);
/// The bits of a value that a word of that width has.
[[nodiscard]] uint maskedWord(uint value, int width);

/// The number of hexadecimal digits that the addresses of a region are shown with.
[[nodiscard]] int addressDigits(const MemoryRegion64 &region);
/// How many words fit into a line of @p characters: a power of two.
[[nodiscard]] int memoryColumns(int characters, int addressDigits, int width);
[[nodiscard]] MemoryEditRange memoryEditRange(int addressDigits, int columns, int width);

/// "0x" and the address in upper-case digits.
[[nodiscard]] QString memoryAddressText(quint64 address, int digits);
/// The number that a user has typed: "0x10" is 16, "010" is 8, "10" is 10, and what is no number is 0. Numbers above
/// 64 bits become the greatest one.
[[nodiscard]] quint64 typedMemoryAddress(const QString &text);
[[nodiscard]] bool isMemoryAddress(const QString &text); ///< Whether a typed text is such a number.
/// The address of the region nearest to @p address; its lowest one for all of the first line.
[[nodiscard]] quint64 addressInRegion(quint64 address, const MemoryRegion64 &region, int columns);

/// A line as it is shown: the address, the words and, for bytes, their characters.
[[nodiscard]] QString memoryLineText(const MemoryLine &line, int addressDigits, int width);
