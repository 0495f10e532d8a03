#include "callstack.h"
#include "debuganswer.h"
#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(CallStack)
};

ThreadInfo threadInfo(const MiValue &thread)
{
    ThreadInfo info;
    info.id = thread.text(u"id").toLongLong();
    info.name = thread.contains(u"name") ? thread.text(u"name") : thread.text(u"target-id");
    info.state = thread.text(u"details");
    info.running = thread.text(u"state") == "running"_L1;
    return info;
}

StackFrame frameInfo(const MiValue &frame)
{
    StackFrame info;
    info.level = frame.number(u"level");
    info.address = frame.address(u"addr");
    info.function = frame.text(u"func");
    info.file = frame.text(frame.contains(u"fullname") ? u"fullname" : u"file");
    info.line = frame.number(u"line");
    info.module = frame.text(u"from");
    return info;
}
} // namespace

void CallStack::reset(const QString &tasks)
{
    m_frames.clear();
    m_task = {};
    m_complained = false;
    m_tasks.setExpressions(tasks);
}

void CallStack::requestThreads(const DebugRequest &request, IDebugReplies *replies)
{
    const auto answer = std::make_shared<DebugAnswer>(request, replies);
    if (!m_session->isStopped())
        return answer->failed(Text::tr("The program is not paused."));
    m_session->gdb()->send("-thread-info", [this, answer](const MiRecord &record) { answerThreads(answer, record); });
}

void CallStack::answerThreads(const std::shared_ptr<DebugAnswer> &answer, const MiRecord &record)
{
    if (record.isError())
        return answer->failed(record.errorText());
    QList<ThreadInfo> threads;
    for (const MiValue &thread : record.results[u"threads"].items()) {
        threads.append(threadInfo(thread));
        if (thread.contains(u"frame"))
            keepFrame(threads.constLast().id, thread[u"frame"]);
    }
    if (threads.size() != 1 || !m_tasks.isUsed())
        return answer->threads(threads);
    m_tasks.request([this, answer, threads](const TaskList::Tasks &tasks) { addTasks(answer, threads, tasks); });
}

void CallStack::addTasks(const std::shared_ptr<DebugAnswer> &answer, QList<ThreadInfo> threads,
                         const TaskList::Tasks &tasks)
{
    if (!tasks.problem.isEmpty() && !std::exchange(m_complained, true))
        Q_EMIT message(Text::tr("The tasks of the program are not known: %1\n").arg(tasks.problem), false);
    if (!tasks.running.isEmpty())
        threads.first().name = tasks.running;
    answer->threads(threads + tasks.waiting);
}

/// One frame more than was requested shows whether the thread has more.
void CallStack::requestFrames(const DebugRequest &request, qint64 thread, int first, int count, IDebugReplies *replies)
{
    const auto answer = std::make_shared<DebugAnswer>(request, replies);
    if (!m_session->isStopped())
        return answer->failed(Text::tr("The program is not paused."));
    if (first < 0 || count <= 0)
        return answer->frames({}, false);
    const qint64 last = std::min<qint64>(qint64(first) + count, INT_MAX);
    const auto show = [this, answer, thread, first, count](const MiRecord &record) {
        const bool behindEnd = first > 0 && record.errorText().contains(u"Not enough frames");
        if (behindEnd)
            answer->frames({}, false);
        else
            answerFrames(answer, record, thread, count);
    };
    if (TaskList::isTask(thread))
        m_tasks.requestFrames(thread, first, last, show);
    else
        m_session->gdb()->send("-stack-list-frames --thread " + QByteArray::number(thread) + " --no-frame-filters "
                                   + QByteArray::number(first) + ' ' + QByteArray::number(last),
                               show);
}

void CallStack::answerFrames(const std::shared_ptr<DebugAnswer> &answer, const MiRecord &record, qint64 thread,
                             qsizetype count)
{
    if (record.isError())
        return answer->failed(record.errorText());
    const QList<MiValue> read = record.results[u"stack"].items();
    QList<StackFrame> frames;
    for (const MiValue &frame : read.first(std::min(count, read.size()))) {
        frames.append(frameInfo(frame));
        keepFrame(thread, frame);
    }
    answer->frames(frames, read.size() > count);
}

// The selected frame --------------------------------------------------------------------------------------------------

void CallStack::keepFrame(qint64 thread, const MiValue &frame)
{
    if (std::exchange(m_stop, m_session->stopNumber()) != m_session->stopNumber()) {
        m_frames.clear();
        m_task = {};
    }
    m_frames.insert({thread, frame.number(u"level")}, GdbSession::frameOf(frame));
}

bool CallStack::currentPlace(StackPlace &place)
{
    if (!m_session->isStopped())
        return false;
    if (TaskList::isTask(m_task.thread) && m_stop == m_session->stopNumber())
        place = m_task;
    else
        place = {m_session->threadId().toLongLong(), m_session->frame().level};
    return true;
}

bool CallStack::setCurrentPlace(const StackPlace &place)
{
    const auto frame = m_frames.constFind({place.thread, place.frame});
    if (!m_session->isStopped() || m_stop != m_session->stopNumber() || frame == m_frames.cend())
        return false;
    m_task = TaskList::isTask(place.thread) ? place : StackPlace();
    if (TaskList::isTask(place.thread))
        m_session->showFrame(*frame);
    else
        m_session->selectFrame(QString::number(place.thread), *frame);
    return true;
}
