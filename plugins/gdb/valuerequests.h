#pragma once
#include "facet.h"
#include "ivaluerequests.h"
#include <functional>
class GdbSession;
class MemoryAccess;
class RegisterAccess;

/// Memory, registers and expressions for the windows of the host, which need not wait for the target.
class ValueRequests : public Facet<IMemoryRequests, IRegisterRequests, IEvaluationRequests>
{
public:
    /// Evaluates at once: the result, or 1 and a message.
    using Evaluate = std::function<int(const QString &expression, QString &result)>;

    ValueRequests(GdbSession *session, MemoryAccess *memory, RegisterAccess *registers, Evaluate evaluate,
                  QUnknownInterface *whole)
        : Facet(whole), m_session(session), m_memory(memory), m_registers(registers), m_evaluate(std::move(evaluate))
    {}

    void requestMemory(const DebugRequest &request, int region, int mode, quint64 address, int count,
                       IValueReplies *replies) override;
    void requestRegisters(const DebugRequest &request, const QStringList &names, IValueReplies *replies) override;
    void requestEvaluation(const DebugRequest &request, const QString &expression, IValueReplies *replies) override;

private:
    GdbSession *const m_session;
    MemoryAccess *const m_memory;
    RegisterAccess *const m_registers;
    const Evaluate m_evaluate;
};
