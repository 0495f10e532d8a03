#pragma once
#include "icallstack.h"
#include "ivariables.h"
#include "unknown.h"

/// Gives exactly one answer to a question: a failure, if gdb ends before it answers.
class DebugAnswer
{
public:
    DebugAnswer(const DebugRequest &request, IDebugReplies *replies);
    ~DebugAnswer();
    Q_DISABLE_COPY_MOVE(DebugAnswer)

    // One of these is called, once.
    void failed(const QString &reason) { take()->failed(m_request, reason); }
    void threads(const QList<ThreadInfo> &list) { take()->threads(m_request, list); }
    void frames(const QList<StackFrame> &list, bool more) { take()->frames(m_request, list, more); }
    void value(const VariableInfo &info) { take()->value(m_request, info); }
    void variables(const QList<VariableInfo> &list, bool more) { take()->variables(m_request, list, more); }

private:
    InterfacePtr<IDebugReplies> take() { return std::move(m_replies); }

    const DebugRequest m_request;
    InterfacePtr<IDebugReplies> m_replies; ///< null after the answer
};
