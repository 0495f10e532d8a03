#pragma once
#include "unknown.h"
#include <QString>

/// A range of target memory with its own addresses. They count units of the smallest width in its modes.
struct MemoryRegion
{
    QString name; ///< shown to the user for selection
    int id = 0;   ///< the region argument of the functions of IMemory
    int reserved = 0;
    uchar flag = 0;
    uint lowAddress = 0;
    uint highAddress = 0; ///< the last address, inclusive
    bool readOnly = false;
    uint modes = 0; ///< the IMemory::Mode bits that it supports
};

/// One word of a block.
struct MemoryBlockCell
{
    uint value = 0;
    int status = 0; ///< an IMemory::Status
};

/// Words in ascending order of address.
using MemoryBlock = QList<MemoryBlockCell>;

/// Optional interface of an execution environment: the memory of the target.
///
/// Read functions are called on the user-interface thread while a window is painted: use a short time limit for a slow
/// target. If this object also offers IDisassembly, scripts can disassemble.
class IMemory : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xce81cf33, 0xffe6, 0x4d5c, 0x9c, 0x28, 0xd7, 0x79, 0xe5, 0x67, 0xa8, 0xfc};

    /// Widths of a word. At first the memory window shows a region in the widest of its modes; scripts use the first of
    /// Byte, Word16, Word32 and Word24 that it supports.
    enum Mode { Byte = 1, Word16 = 2, Word24 = 8, Word32 = 4 };
    /// The result of reading or writing a word. The memory window shows the value of a word with Success or
    /// Uninitialised, and "?" for each digit of all others and of words that are missing in a block. It does not look
    /// at the result of a write, but reads again. Scripts get an OSError for each status except Success, also for
    /// Uninitialised.
    enum Status {
        Success = 0,
        BadPointer = 1,
        NoMemory = 2,      ///< no memory at the address
        Uninitialised = 3, ///< the value was read, but the program never wrote it
        WriteToRom = 4
    };

    virtual QList<MemoryRegion> regions() = 0; ///< The disassembly window shows the first one.
    /// Reads one word of a width; returns a Status.
    virtual int read(int region, int mode, uint address, uint *value) = 0;
    /// Writes one word; returns a Status. If @p flush is true, the word is in the target when the function returns;
    /// otherwise it may be delayed until the next read.
    virtual int write(int region, int mode, uint address, uint value, bool flush) = 0;
    /// Reads @p count words from @p address on into @p result, which becomes @p count cells, each with its status.
    virtual void readBlock(int region, int mode, uint address, int count, MemoryBlock &result) = 0;
    /// Writes the values of @p count cells from @p address on, and sets their statuses. @p flush as in write().
    virtual void writeBlock(int region, int mode, uint address, int count, MemoryBlock &cells, bool flush) = 0;

protected:
    ~IMemory() = default;
};
