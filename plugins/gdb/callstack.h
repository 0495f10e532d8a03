#pragma once
#include "facet.h"
#include "gdbsession.h"
#include "icallstack.h"
#include "tasklist.h"
#include <memory>
#include <QHash>
class DebugAnswer;

/// The threads of the stopped program and their frames, and the selected one of these. With a single thread, the tasks
/// of the program's scheduler that wait are shown like further threads.
class CallStack : public QObject, public Facet<ICallStack>
{
    Q_OBJECT
public:
    CallStack(GdbSession *session, QUnknownInterface *whole) : Facet(whole), m_session(session), m_tasks(session) {}

    void reset(const QString &tasks); ///< There is a new program. @p tasks: TaskList::setExpressions().

    void requestThreads(const DebugRequest &request, IDebugReplies *replies) override;
    void requestFrames(const DebugRequest &request, qint64 thread, int first, int count,
                       IDebugReplies *replies) override;
    bool currentPlace(StackPlace &place) override;
    bool setCurrentPlace(const StackPlace &place) override;

Q_SIGNALS:
    void message(const QString &text, bool serious);

private:
    void answerThreads(const std::shared_ptr<DebugAnswer> &answer, const MiRecord &record);
    void addTasks(const std::shared_ptr<DebugAnswer> &answer, QList<ThreadInfo> threads, const TaskList::Tasks &tasks);
    void answerFrames(const std::shared_ptr<DebugAnswer> &answer, const MiRecord &record, qint64 thread,
                      qsizetype count);
    void keepFrame(qint64 thread, const MiValue &frame);

    GdbSession *const m_session;
    TaskList m_tasks;
    QHash<QPair<qint64, int>, GdbSession::Frame> m_frames; ///< those that were read since the stop, by thread and level
    int m_stop = -1;                                       ///< GdbSession::stopNumber() of these
    StackPlace m_task;                                     ///< the selected place, if it is that of a task that waits
    bool m_complained = false;                             ///< about the tasks
};
