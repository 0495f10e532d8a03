#pragma once
#include "idebugrequests.h"
#include "imemory64.h"

/// The value of one register.
struct RegisterValue
{
    QString name;
    QList<uint> words; ///< 32 bits each, the lowest first; empty if it cannot be read
};

/// Answers to the questions of IMemoryRequests, IRegisterRequests and IEvaluationRequests. The rules are those of
/// IDebugReplies: each question has exactly one answer, which may be given before the question returns.
class IValueReplies : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x3f1b5c0e, 0x8a64, 0x4e0d, 0x9c, 0x57, 0x21, 0xe6, 0x0d, 0x93, 0xb8, 0x4a};

    /// Words in ascending order of address; fewer than requested if memory ends before.
    virtual void memory(const DebugRequest &request, const MemoryBlock64 &cells) = 0;
    virtual void registers(const DebugRequest &request, const QList<RegisterValue> &values) = 0;
    virtual void evaluated(const DebugRequest &request, const QString &value) = 0; ///< As evaluate() returns it.
    /// The question cannot be answered. @p reason is a sentence for the user, or the message of the debugger.
    virtual void failed(const DebugRequest &request, const QString &reason) = 0;

protected:
    ~IValueReplies() = default;
};

/// Optional interface of an execution environment or of its IMemory object: memory by question and answer, so that a
/// slow target does not block the host's windows. If it is offered, the memory window reads with it in place of
/// IMemory::readBlock() and IMemory64::readBlock(); regions() must not wait then. Scripts use IMemory.
class IMemoryRequests : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xd4a0c7f3, 0x6b1e, 0x49d2, 0x83, 0xfa, 0x5e, 0x70, 0xc9, 0x1a, 0x46, 0xb5};

    /// Starts to read @p count words from @p address on, and returns at once: IValueReplies::memory. The region and the
    /// mode are those of IMemory64, or of IMemory if that is all the environment offers.
    virtual void requestMemory(const DebugRequest &request, int region, int mode, quint64 address, int count,
                               IValueReplies *replies) = 0;

protected:
    ~IMemoryRequests() = default;
};

/// Optional interface of the IRegisters object: values by question and answer. If it is offered, the register window
/// reads with it in place of IRegisters::value(); registers() must not wait then. Scripts use IRegisters.
class IRegisterRequests : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x917e2ab6, 0x40cd, 0x4f38, 0xa6, 0x0b, 0xd2, 0x5f, 0x73, 0x88, 0x1c, 0xe9};

    /// Starts to read registers and returns at once: IValueReplies::registers with the names in any order.
    virtual void requestRegisters(const DebugRequest &request, const QStringList &names, IValueReplies *replies) = 0;

protected:
    ~IRegisterRequests() = default;
};

/// Optional interface of an execution environment: IExecutionEnvironment::evaluate() by question and answer. If it is
/// offered, the watch window reads with it. Assignments of the user and scripts use evaluate().
class IEvaluationRequests : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x5ce83d17, 0xb92a, 0x4a61, 0x8f, 0x04, 0x77, 0x1b, 0xe2, 0x6d, 0x50, 0xc3};

    /// Starts to evaluate and returns at once: IValueReplies::evaluated, or failed() with the message to be shown.
    virtual void requestEvaluation(const DebugRequest &request, const QString &expression, IValueReplies *replies) = 0;

protected:
    ~IEvaluationRequests() = default;
};
