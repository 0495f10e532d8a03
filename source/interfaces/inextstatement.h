#pragma once
#include "unknown.h"
#include <QString>

/// Optional interface of an execution environment: the paused program can continue somewhere else.
class INextStatement : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x938c80f7, 0x1c51, 0x460e, 0xac, 0x9c, 0x38, 0xbb, 0x2b, 0x34, 0xab, 0x8c};

    /// Moves the paused program to a line, counted from 1, or to an address of the disassembly, without executing
    /// anything. A change of the program's status follows. False if that is impossible, which the environment has
    /// reported by feedback.
    virtual bool setNextStatement(const QString &file, int line) = 0;

protected:
    ~INextStatement() = default;
};
