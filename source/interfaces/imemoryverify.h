#pragma once
#include "unknown.h"

/// Optional interface of the IMemory object, or else of its execution environment: verified reads and writes, for
/// scripts.
class IMemoryVerify : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x91f0f91a, 0xa23e, 0x45cc, 0x94, 0x1f, 0x68, 0x59, 0xe5, 0xe6, 0xcb, 0x23};

    virtual bool verify() = 0; ///< Whether reads and writes are verified.
    virtual void setVerify(bool verify) = 0;

protected:
    ~IMemoryVerify() = default;
};
