#pragma once
#include "callstack.h"
#include "interfaceobject.h"
#include <QTest>

/// The answers to questions about the call stack.
class StackReplies : public InterfaceObject<IDebugReplies>
{
public:
    void threads(const DebugRequest &request, const QList<ThreadInfo> &list) override
    {
        lastThreads = list;
        numbers.append(request.number);
    }
    void frames(const DebugRequest &request, const QList<StackFrame> &list, bool hasMore) override
    {
        lastFrames = list;
        more = hasMore;
        numbers.append(request.number);
    }
    void variables(const DebugRequest &, const QList<VariableInfo> &, bool) override {}
    void value(const DebugRequest &, const VariableInfo &) override {}
    void failed(const DebugRequest &request, const QString &reason) override
    {
        failures.append(reason);
        numbers.append(request.number);
    }

    /// Asks for frames and waits for the answer. Empty after a failure.
    QList<StackFrame> askFrames(ICallStack *stack, qint64 thread, int first = 0, int count = 100)
    {
        lastFrames.clear();
        wait([&](const DebugRequest &request) { stack->requestFrames(request, thread, first, count, this); });
        return lastFrames;
    }
    QList<ThreadInfo> askThreads(ICallStack *stack)
    {
        lastThreads.clear();
        wait([&](const DebugRequest &request) { stack->requestThreads(request, this); });
        return lastThreads;
    }
    /// The names of functions.
    static QStringList functions(const QList<StackFrame> &frames)
    {
        QStringList names;
        for (const StackFrame &frame : frames)
            names.append(frame.function);
        return names;
    }

    QList<ThreadInfo> lastThreads;
    QList<StackFrame> lastFrames;
    bool more = false;
    QStringList failures;
    QList<quint64> numbers; ///< of the answered questions

private:
    template <typename Ask>
    void wait(const Ask &ask)
    {
        const quint64 number = ++m_number;
        ask({number, 1});
        if (!QTest::qWaitFor([&] { return numbers.contains(number); }))
            qWarning("no answer");
    }

    quint64 m_number = 1000;
};

/// Selects a frame like the user, who sees it first.
inline bool selectFrame(ICallStack *stack, qint64 thread, int level)
{
    const InterfacePtr<StackReplies> replies(new StackReplies);
    (void)replies->askFrames(stack, thread, level, 1);
    return stack->setCurrentPlace({thread, level});
}
