#pragma once
#include "imemory.h"
#include <optional>
#include <QStringList>

// How scripts address target memory: modes by name, slices of addresses, and the texts of errors.

/// The first mode of the region in the order byte, 16, 32, 24 bits; 0 if it has none.
[[nodiscard]] int firstMemoryMode(const MemoryRegion &region);
/// "Byte", "Word16", "Word24" or "Word32"; "Unknown" for any other mode.
[[nodiscard]] QString memoryModeName(int mode);
/// The mode of such a name in any case; 0 if there is none.
[[nodiscard]] int memoryModeOfName(const QString &name);
[[nodiscard]] QStringList memoryModeNames(const MemoryRegion &region);

/// By how much the address grows from one word of a mode to the next.
[[nodiscard]] uint memoryCellSize(const MemoryRegion &region, int mode);

/// A range of addresses within a region.
struct MemorySlice
{
    uint address = 0;
    uint units = 0; ///< how many addresses
    uint cells = 0; ///< how many whole words
};

/// The part of @p region from @p first to before @p end. Negative bounds count as 0. The highest address of the region
/// is never part of a slice. No value if @p end is below @p first.
[[nodiscard]] std::optional<MemorySlice> memorySlice(const MemoryRegion &region, int mode, qint64 first, qint64 end);

/// The text of an error other than IMemory::Success: of a single word, and of a word of a block.
[[nodiscard]] QString memoryErrorText(int status);
[[nodiscard]] QString memoryBlockErrorText(int status, uint address);

/// An instruction without the markup of @p richText, as one line of text. An incomplete tag stays.
[[nodiscard]] QString plainInstruction(QString richText);
