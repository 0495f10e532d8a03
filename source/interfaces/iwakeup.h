#pragma once
#include "unknown.h"

/// Optional interface of an execution environment: whether IExecutionEnvironment::wakeUp() does something. Without it,
/// the host assumes that it does.
class IWakeUp : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xbecc6e3b, 0x339b, 0x4c92, 0xa3, 0xa5, 0x5d, 0xf8, 0xf0, 0xd0, 0x9f, 0xc6};

    /// Whether the processor can be woken up. The host asks when its state changes; it enables "Wake Up" if one of the
    /// processors of the workspace can be.
    virtual bool canWakeUp() = 0;

protected:
    ~IWakeUp() = default;
};
