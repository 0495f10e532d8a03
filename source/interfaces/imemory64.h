#pragma once
#include "imemory.h"

/// A range of target memory with addresses of up to 64 bits; the other fields are those of MemoryRegion.
struct MemoryRegion64
{
    QString name;
    int id = 0;
    quint64 lowAddress = 0;
    quint64 highAddress = 0; ///< the last address, inclusive
    bool readOnly = false;
    uint modes = 0; ///< the IMemory::Mode bits that it supports, and IMemory64::Word64
};

/// One word of a block.
struct MemoryBlockCell64
{
    quint64 value = 0;
    int status = 0; ///< an IMemory::Status
};

using MemoryBlock64 = QList<MemoryBlockCell64>;

/// Optional interface of an execution environment or of its IMemory object: memory with addresses of up to 64 bits. The
/// functions are those of IMemory. The memory window prefers it. An environment that offers it still offers IMemory for
/// the regions that lie below 4 GB, for scripts and for hosts without this interface; they have the same ids in both.
/// Regions above 4 GB are also read while the program runs if ILiveMemory::canReadLive() returns true.
class IMemory64 : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x506da068, 0xe182, 0x4b0e, 0x82, 0x90, 0x92, 0x17, 0xbf, 0xd5, 0xb1, 0x8c};

    /// A further IMemory::Mode. This version of the host does not show such words: it reads a region in one of its
    /// other modes, so offer one.
    static constexpr int Word64 = 16;

    virtual QList<MemoryRegion64> regions() = 0;
    virtual int read(int region, int mode, quint64 address, quint64 *value) = 0;
    virtual int write(int region, int mode, quint64 address, quint64 value, bool flush) = 0;
    virtual void readBlock(int region, int mode, quint64 address, int count, MemoryBlock64 &result) = 0;
    virtual void writeBlock(int region, int mode, quint64 address, int count, MemoryBlock64 &cells, bool flush) = 0;

protected:
    ~IMemory64() = default;
};
