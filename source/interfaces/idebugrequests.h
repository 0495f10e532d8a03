#pragma once
#include "unknown.h"
#include <QString>

/// Identifies a question of the host about the stopped program. The answer contains the same request, unchanged.
struct DebugRequest
{
    quint64 number = 0; ///< of this question; no two questions of a session have the same
    /// The state of the program to which the question refers. The host raises it when the program has run, and when
    /// another thread or frame, a value or a format was chosen. It ignores answers of an older generation.
    quint64 generation = 0;
};

/// A stack frame of a thread.
struct StackPlace
{
    qint64 thread = 0; ///< ThreadInfo::id
    int frame = 0;     ///< StackFrame::level; 0 is the innermost
};

/// A thread or task of the program.
struct ThreadInfo
{
    qint64 id = 0;        ///< unique in the session
    QString name;         ///< as the user knows it; may be empty
    QString state;        ///< why it stopped, or what it waits for; shown as it is
    bool running = false; ///< it has no frames while it runs
};

/// One function call of a thread.
struct StackFrame
{
    int level = 0;       ///< 0 is the innermost
    quint64 address = 0; ///< of the next instruction
    QString function;    ///< empty if it is not known
    QString file;        ///< absolute, or relative to the project; empty if there is no source
    int line = 0;        ///< counts from 1
    QString module;      ///< the library or image that contains it; may be empty
};

/// A variable, or a part of one.
struct VariableInfo
{
    QString name;       ///< shown in the tree: "counter", "[3]", "next"
    QString expression; ///< identifies it in the functions of IVariables, in the same frame
    QString type;
    QString value;         ///< as text in the requested format; the reason, if it is not available
    bool available = true; ///< false if it was optimised away or cannot be read
    bool writable = false; ///< IVariables::assign() is possible
    int children = 0;      ///< number of its members or elements; -1 if it has some, but their number is not known
    quint64 address = 0;   ///< 0 if it has none
};

/// Answers to the questions of ICallStack and IVariables. Implemented by the host, and passed with each question: keep
/// a reference until the question is answered.
///
/// Each question has exactly one answer: the function named with it, or failed(). The answer may be given before the
/// question returns. A question whose generation is older than that of a newer question needs no answer, so
/// a plug-in can drop it from its queue. All calls are made on the user-interface thread.
class IDebugReplies : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x99e50432, 0xa0c6, 0x4477, 0x8e, 0xd4, 0x6e, 0x74, 0x34, 0xe3, 0xf6, 0x95};

    virtual void threads(const DebugRequest &request, const QList<ThreadInfo> &threads) = 0;
    /// @p more is true if the thread has frames behind the last of these.
    virtual void frames(const DebugRequest &request, const QList<StackFrame> &frames, bool more) = 0;
    /// @p more is true if there are variables behind the last of these.
    virtual void variables(const DebugRequest &request, const QList<VariableInfo> &variables, bool more) = 0;
    virtual void value(const DebugRequest &request, const VariableInfo &variable) = 0;
    /// The question cannot be answered. @p reason is a sentence for the user.
    virtual void failed(const DebugRequest &request, const QString &reason) = 0;

protected:
    ~IDebugReplies() = default;
};
