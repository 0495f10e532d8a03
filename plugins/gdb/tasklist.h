#pragma once
#include "icallstack.h"
#include "mirecord.h"
#include <functional>
#include <memory>
#include <QStringList>
class GdbSession;

/// The tasks of the program's own scheduler. One of them runs on the processor, which is gdb's only thread; the
/// registers of the others are on their stacks: r4 to r11, and above them what a Cortex-M processor saves for an
/// exception.
class TaskList
{
public:
    struct Tasks
    {
        QString running;           ///< the name of the one that runs; may be empty
        QList<ThreadInfo> waiting; ///< the others
        QString problem;           ///< why they are not known; empty if they are
    };
    using ShowTasks = std::function<void(const Tasks &tasks)>;
    using ShowFrames = std::function<void(const MiRecord &answer)>;

    explicit TaskList(GdbSession *session) : m_session(session) {}

    /// @p expressions of the program, separated by ";": the number of tasks, the index of the one that runs, the stack
    /// pointer of the task with the index $task, and, if wanted, a pointer to what that task is named by. Empty if the
    /// program has no tasks.
    void setExpressions(const QString &expressions);
    [[nodiscard]] bool isUsed() const { return !m_expressions.isEmpty(); }
    /// Whether it is the number of a task that waits and not of a thread of gdb.
    [[nodiscard]] static bool isTask(qint64 thread) { return thread >= FirstTask; }

    void request(const ShowTasks &show) const;
    /// Asks for frames of a task that waits, as gdb lists those of a thread.
    void requestFrames(qint64 thread, qint64 first, qint64 last, const ShowFrames &show) const;

private:
    static constexpr qint64 FirstTask = 1000;
    struct Request;

    [[nodiscard]] QString expression(qsizetype index) const { return m_expressions.value(index); }
    void ask(const QString &expression, const std::function<void(const MiRecord &answer)> &take) const;
    void requestEach(const std::shared_ptr<Request> &request, int count, int running) const;
    void listFrames(quint64 stack, qint64 first, qint64 last, const ShowFrames &show) const;

    GdbSession *const m_session;
    QStringList m_expressions;
};
