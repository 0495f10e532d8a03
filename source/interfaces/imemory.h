#pragma once
#include "unknown.h"
#include <QString>

/// A range of target memory with addresses of its own. They count in the smallest unit that its modes allow.
struct MemoryRegion
{
    QString name; ///< what the user chooses it by
    int id = 0;   ///< what the calls of IMemory get as their region
    int reserved = 0;
    uchar flag = 0;
    uint lowAddress = 0;
    uint highAddress = 0; ///< the last address, still inside
    bool readOnly = false;
    uint modes = 0; ///< the IMemory::Mode bits that it supports
};

/// One word of a block.
struct MemoryBlockCell
{
    uint value = 0;
    int status = 0; ///< an IMemory::Status
};

/// Words in the order of their addresses.
using MemoryBlock = QList<MemoryBlockCell>;

/// Optional, on an execution environment: the target's memory.
///
/// Reads are made on the user-interface thread while a window is drawn: give up early on a target that is slow. Offer
/// IDisassembly here too, and scripts can disassemble.
class IMemory : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xce81cf33, 0xffe6, 0x4d5c, 0x9c, 0x28, 0xd7, 0x79, 0xe5, 0x67, 0xa8, 0xfc};

    /// Widths of a word.
    enum Mode { Byte = 1, Word16 = 2, Word24 = 8, Word32 = 4 };
    /// What became of a word.
    enum Status {
        Success = 0,
        BadPointer = 1,
        NoMemory = 2,      ///< nothing answers at the address
        Uninitialised = 3, ///< there is a value, but the program never wrote it
        WriteToRom = 4
    };

    virtual QList<MemoryRegion> regions() = 0; ///< The first is the one that the disassembly window shows.
    /// Reads one word of a width; returns a Status.
    virtual int read(int region, int mode, uint address, uint *value) = 0;
    /// Writes one word; returns a Status. With @p flush it has reached the target when the call returns; without, it
    /// may wait for the next read.
    virtual int write(int region, int mode, uint address, uint value, bool flush) = 0;
    /// Reads @p count words from @p address on, and makes @p result that many cells, each with its status.
    virtual void readBlock(int region, int mode, uint address, int count, MemoryBlock &result) = 0;
    /// Writes the values of @p count cells from @p address on, and sets their statuses. @p flush as for write().
    virtual void writeBlock(int region, int mode, uint address, int count, MemoryBlock &cells, bool flush) = 0;

protected:
    ~IMemory() = default;
};
