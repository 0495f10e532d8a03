#include "processorgroup.h"
#include "gdbsession.h"

namespace {
/// All processors there are, in the order in which they came.
QList<ProcessorGroup *> &allProcessors()
{
    static QList<ProcessorGroup *> processors;
    return processors;
}
} // namespace

ProcessorGroup::ProcessorGroup(GdbSession *session, QUnknownInterface *whole) : Facet(whole), m_session(session)
{
    allProcessors().append(this);
}

ProcessorGroup::~ProcessorGroup()
{
    allProcessors().removeOne(this);
}

int ProcessorGroup::supportedOperations(const QString &groupId)
{
    if (m_name.isEmpty() || groupId != m_name)
        return 0;
    constexpr int lead = RunOperation | PauseOperation | RestartOperation | WakeupOperation;
    return lead | lead << FollowShift;
}

QList<GdbSession *> ProcessorGroup::sessions() const
{
    QList<GdbSession *> sessions;
    for (const ProcessorGroup *processor : std::as_const(allProcessors())) {
        if (processor->m_name == m_name)
            sessions.append(processor->m_session);
    }
    return sessions;
}

void ProcessorGroup::syncRun()
{
    GdbSession::resumeAll(sessions());
}

void ProcessorGroup::syncPause()
{
    GdbSession::pauseAll(sessions());
}

void ProcessorGroup::syncRestart()
{
    for (GdbSession *session : sessions())
        session->restart();
}

void ProcessorGroup::syncWakeup()
{
    for (GdbSession *session : sessions())
        session->wakeUp();
}
