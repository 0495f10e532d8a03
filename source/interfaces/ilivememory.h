#pragma once
#include "imemory.h"

/// Optional interface of an execution environment: memory that is read while the program runs, without stopping it, not
/// even for a moment. Regions, modes and addresses are those of its IMemory.
///
/// The functions are called several times a second on the user-interface thread while the program runs, so they must
/// return within a few milliseconds.
class ILiveMemory : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x1a641ed1, 0xcbd3, 0x428b, 0xa2, 0xdb, 0xcc, 0xcc, 0x28, 0x51, 0x53, 0xa6};

    /// Whether the target of this session can be read in this way; false without a session.
    virtual bool canReadLive() = 0;
    /// Reads @p count words from @p address on into @p result, like IMemory::readBlock(). False if that is not possible
    /// at present; @p result is not used then. Device registers are read as well if the user shows their region.
    virtual bool readLive(int region, int mode, uint address, int count, MemoryBlock &result) = 0;
    /// Called at a stop or while the program runs, for each expression that a window wants to read: finds the variable
    /// that it names and keeps its address until the next call. False if it has none that stays valid while the program
    /// runs, as for a local variable, or if its type is too complex.
    virtual bool prepareLive(const QString &expression) = 0;
    /// The value of a prepared expression as text, in the form that IExecutionEnvironment::evaluate() returns. False if
    /// it cannot be read at present.
    virtual bool evaluateLive(const QString &expression, QString &result) = 0;

protected:
    ~ILiveMemory() = default;
};
