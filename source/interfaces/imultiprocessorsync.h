#pragma once
#include "unknown.h"
#include <QString>

/// Optional interface of an execution environment: run control of several processors at once, in hardware.
///
/// For a command on all processors the host looks for a leader: the first environment that supports the operation. If
/// every environment with this interface can follow it in the leader's group, the host calls the leader only; otherwise
/// it calls run(), pause(), restart() or wakeUp() of each environment in turn.
class IMultiProcessorSync : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x2d4be442, 0xda3f, 0x477f, 0xa1, 0x70, 0x50, 0xf8, 0x41, 0x55, 0x18, 0xd5};

    /// Bits of supportedOperations().
    enum Operation { RunOperation = 1, PauseOperation = 2, RestartOperation = 4, WakeupOperation = 8 };
    /// The bit of an operation that the environment can follow as a member of a group is the bit of the operation
    /// shifted left by this.
    static constexpr int FollowShift = 16;

    virtual QString groupId() = 0; ///< Identifies the processors that act together, for example those on one probe.
    /// The operations, as bits, that this environment can lead or follow in the given group.
    virtual int supportedOperations(const QString &groupId) = 0;
    virtual void syncRun() = 0; ///< Runs all processors of the group; the next three likewise.
    virtual void syncPause() = 0;
    virtual void syncRestart() = 0;
    virtual void syncWakeup() = 0;

protected:
    ~IMultiProcessorSync() = default;
};
