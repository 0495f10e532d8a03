#pragma once
#include "idebugrequests.h"

/// Optional interface of an execution environment: the threads of the stopped program and their function calls.
///
/// The functions named "request..." start the work and return at once; the answer goes to @p replies. They are called
/// after a report that the program has stopped. An environment without threads has a single one.
class ICallStack : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x4a452e87, 0x451b, 0x4633, 0x92, 0x02, 0xf3, 0x50, 0x89, 0x71, 0x9e, 0x3b};

    virtual void requestThreads(const DebugRequest &request, IDebugReplies *replies) = 0; ///< IDebugReplies::threads
    /// @p count frames of a thread from level @p first on, which may be beyond the end: IDebugReplies::frames. A stack
    /// may be damaged and have no end, so read only the frames of the portion.
    virtual void requestFrames(const DebugRequest &request, qint64 thread, int first, int count,
                               IDebugReplies *replies) = 0;
    /// The thread and frame to which the other interfaces refer: IExecutionEnvironment::currentLocation and evaluate,
    /// IRegisters. After a stop it is the innermost frame of the thread that has stopped. False if there is none.
    virtual bool currentPlace(StackPlace &place) = 0;
    /// Chooses another one until the program runs again. Must return at once. False if it does not exist. The host then
    /// reads its windows again, as after a stop, without a report of the environment.
    virtual bool setCurrentPlace(const StackPlace &place) = 0;

protected:
    ~ICallStack() = default;
};
