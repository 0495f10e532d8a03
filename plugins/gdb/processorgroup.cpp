#include "processorgroup.h"
#include "gdbsession.h"

ProcessorGroup::ProcessorGroup(const Registry &registry, GdbSession *session, Restart restart, QUnknownInterface *whole)
    : Facet(whole), m_registry(registry), m_session(session), m_restart(std::move(restart))
{
    m_registry->append(this);
}

ProcessorGroup::~ProcessorGroup()
{
    m_registry->removeOne(this);
}

int ProcessorGroup::supportedOperations(const QString &groupId)
{
    if (m_name.isEmpty() || groupId != m_name)
        return 0;
    constexpr int lead = RunOperation | PauseOperation | RestartOperation | WakeupOperation;
    return lead | lead << FollowShift;
}

QList<ProcessorGroup *> ProcessorGroup::members() const
{
    QList<ProcessorGroup *> members;
    for (ProcessorGroup *processor : std::as_const(*m_registry)) {
        if (processor->m_name == m_name)
            members.append(processor);
    }
    return members;
}

QList<GdbSession *> ProcessorGroup::sessions() const
{
    QList<GdbSession *> sessions;
    for (const ProcessorGroup *member : members())
        sessions.append(member->m_session);
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
    for (const ProcessorGroup *member : members())
        member->m_restart();
}

void ProcessorGroup::syncWakeup()
{
    for (GdbSession *session : sessions())
        session->wakeUp();
}
