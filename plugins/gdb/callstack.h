#pragma once
#include "facet.h"
#include "gdbsession.h"
#include "icallstack.h"
#include <memory>
#include <QHash>

/// The threads of the stopped program and their frames, and the selected one of these.
class CallStack : public Facet<ICallStack>
{
public:
    CallStack(GdbSession *session, QUnknownInterface *whole) : Facet(whole), m_session(session) {}

    void reset() { m_frames.clear(); } ///< There is a new program.

    void requestThreads(const DebugRequest &request, IDebugReplies *replies) override;
    void requestFrames(const DebugRequest &request, qint64 thread, int first, int count,
                       IDebugReplies *replies) override;
    bool currentPlace(StackPlace &place) override;
    bool setCurrentPlace(const StackPlace &place) override;

private:
    class Answer;
    void answerThreads(const std::shared_ptr<Answer> &answer, const MiRecord &record);
    void answerFrames(const std::shared_ptr<Answer> &answer, const MiRecord &record, qint64 thread, qsizetype count);
    void keepFrame(qint64 thread, const MiValue &frame);

    GdbSession *const m_session;
    QHash<QPair<qint64, int>, GdbSession::Frame> m_frames; ///< those that were read since the stop, by thread and level
    int m_stop = -1;                                       ///< GdbSession::stopNumber() of these
};
